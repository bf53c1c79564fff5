// File menu commands through the replaced dialogs and boxes, and the exit sequence.
#include "model/tables.h"
#include "windowfixture.h"

#include <QAction>
#include <QSettings>

namespace zq::ui {
namespace {

const QString kCloneFilter = QStringLiteral("Korvex ZQ-318 Clone Files (*.318);;All Files (*.*)");
const QString kCsvFilter = QStringLiteral("CSV Files (*.csv);;All Files (*.*)");
const FileRequest kOpenClone{FileRequest::Kind::Open, kCloneFilter};
const FileRequest kSaveClone{FileRequest::Kind::Save, kCloneFilter};

class FileCommands : public test::WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
    }
    // One channel edited so that saves and loads can be told apart.
    void editChannel(int row, const QString& name) {
        doc().memory.set(row, model::ColName, name, 0);
        doc().memory.setChannelInUse(row, true);
        doc().RefreshMemoryGrid();
        doc().setDataChanged(true);
    }
    void trigger(const char* name) { find<QAction>(name)->trigger(); }
};

TEST_F(FileCommands, SaveAsksOnceThenWritesToTheSamePath) {
    editChannel(0, QStringLiteral("FIRST"));
    trigger("mnuFileSave"); // cancelled dialog: nothing happens
    EXPECT_EQ(dialogs.asked, QList<FileRequest>{kSaveClone});
    EXPECT_TRUE(doc().DataChanged());

    const QString file = path("saved.318");
    dialogs.answers = {file};
    trigger("mnuFileSave");
    const QByteArray written = test::ReadFile(file);
    EXPECT_FALSE(written.isEmpty());
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("saved.318 - Korvex ZQ-318 Clone Utility"));

    editChannel(1, QStringLiteral("SECOND"));
    trigger("mnuFileSave"); // no dialog this time
    EXPECT_EQ(dialogs.asked.size(), 2);
    EXPECT_NE(test::ReadFile(file), written);
    EXPECT_TRUE(boxes.shown.isEmpty());

    dialogs.answers = {path("other.318")};
    trigger("mnuFileSaveAs");
    EXPECT_EQ(dialogs.asked.size(), 3);
    EXPECT_EQ(dialogs.asked.last(), kSaveClone);
    EXPECT_EQ(test::ReadFile(path("other.318")), test::ReadFile(file));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("other.318 - Korvex ZQ-318 Clone Utility"));
}

TEST_F(FileCommands, UnwritableTargetShowsFileOpenError) {
    editChannel(0, QStringLiteral("X"));
    for (const char* command : {"mnuFileSaveAs", "mnuExport"}) {
        boxes.shown.clear();
        trigger(command); // cancelled: nothing happens
        EXPECT_TRUE(boxes.shown.isEmpty()) << command;
        dialogs.answers = {path("no-such-folder/x")};
        trigger(command);
        ASSERT_EQ(boxes.shown.size(), 1) << command;
        EXPECT_EQ(boxes.shown[0], ErrorBox(QStringLiteral("File Open Error")));
        EXPECT_TRUE(doc().DataChanged());
    }
    EXPECT_EQ(fatalSpy->count(), 0);
}

TEST_F(FileCommands, OpenLoadsAValidFileAndRejectsOthers) {
    demoCopy("e.318", model::HeaderLine(1, true));
    demoCopy("bad.318", QString(), true);
    dialogs.answers = {path("e.318")};
    trigger("mnuFileOpen");
    EXPECT_EQ(dialogs.asked, QList<FileRequest>{kOpenClone});
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("e.318 - Korvex ZQ-318 Clone Utility"));
    EXPECT_EQ(doc().ModelVariant(), 0); // Open keeps the variant whatever the header says
    EXPECT_FALSE(doc().CloneCodeA());
    const model::MemoryTable loaded = doc().memory;

    const std::pair<const char*, const char*> failures[] = {{"bad.318", "Data Error"},
                                                            {"missing.318", "File Open Error"}};
    for (const auto& [file, message] : failures) {
        boxes.shown.clear();
        dialogs.answers = {path(file)};
        trigger("mnuFileOpen");
        ASSERT_EQ(boxes.shown.size(), 1) << file;
        EXPECT_EQ(boxes.shown[0], ErrorBox(QString::fromUtf8(message)));
        EXPECT_EQ(doc().memory, loaded);
        EXPECT_EQ(doc().CurrentFilePath(), path("e.318"));
    }
}

struct PromptCase {
    const char* name;
    bool changed;
    MessageAnswer answer;
    bool commandRuns;
    bool saves;
};

class UnsavedPrompt : public FileCommands, public ::testing::WithParamInterface<PromptCase> {
protected:
    void SetUp() override {
        FileCommands::SetUp();
        editChannel(3, QStringLiteral("KEEP"));
        doc().setDataChanged(GetParam().changed);
        boxes.answers = {GetParam().answer};
        dialogs.answers = {path("prompted.318")};
    }
};

TEST_P(UnsavedPrompt, NewAsksFirst) {
    const PromptCase& c = GetParam();
    trigger("mnuFileNew");
    ASSERT_EQ(boxes.shown.size(), c.changed ? 1 : 0);
    if (c.changed) {
        EXPECT_EQ(boxes.shown[0],
                  (MessageRequest{QStringLiteral("Save changes to settings?"), QStringLiteral("Save Changes"),
                                  MessageButtons::YesNoCancel, MessageIcon::Question, MessageAnswer::Yes}));
    }
    EXPECT_EQ(QFile::exists(path("prompted.318")), c.saves);
    EXPECT_EQ(doc().memory.ChannelInUse(3), !c.commandRuns);
    EXPECT_EQ(doc().DataChanged(), c.changed && !c.commandRuns);
    EXPECT_EQ(memoryCell(4, 14), c.commandRuns ? QString() : QStringLiteral("KEEP"));
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
}

TEST_P(UnsavedPrompt, ExitAsksThenWritesThePortFileAndGeometry) {
    const PromptCase& c = GetParam();
    window->show();
    window->setPortNumber(7);
    QSettings geometry(QCoreApplication::organizationName(), model::AppTitle());
    geometry.remove(QStringLiteral("Settings"));
    geometry.sync();

    EXPECT_EQ(window->close(), c.commandRuns);
    EXPECT_EQ(boxes.shown.size(), c.changed ? 1 : 0);
    EXPECT_EQ(window->isVisible(), !c.commandRuns);
    EXPECT_EQ(QFile::exists(path("prompted.318")), c.saves);
    EXPECT_EQ(test::ReadFile(portFile()), c.commandRuns ? QByteArray("7\r\n") : QByteArray());
    geometry.sync();
    EXPECT_EQ(geometry.contains(QStringLiteral("Settings/MainWidth")), c.commandRuns);
    EXPECT_TRUE(doc().memory.ChannelInUse(3));
}

using enum MessageAnswer;
INSTANTIATE_TEST_SUITE_P(Answers, UnsavedPrompt,
                         ::testing::Values(PromptCase{"Yes", true, Yes, true, true},
                                           PromptCase{"No", true, No, true, false},
                                           PromptCase{"Cancel", true, Cancel, false, false},
                                           PromptCase{"Unchanged", false, Cancel, true, false}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(FileCommands, UnwritablePortFileEndsTheProgramAtExit) {
    window->show();
    QDir(temp.path()).mkdir(QStringLiteral("ZQ-318.ini")); // a folder where the file should go
    EXPECT_TRUE(window->close());
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(fatalSpy->count(), 1);
}

TEST_F(FileCommands, ExportThenImportRoundTrip) {
    editChannel(7, QStringLiteral("SEVEN"));
    const QString csv = path("channels.csv");
    dialogs.answers = {csv};
    trigger("mnuExport");
    EXPECT_EQ(dialogs.asked, QList<FileRequest>({{FileRequest::Kind::Save, kCsvFilter}}));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("channels.csv - Korvex ZQ-318 Clone Utility"));
    EXPECT_FALSE(doc().DataChanged());

    trigger("mnuFileNew");
    EXPECT_EQ(memoryCell(8, 14), QString());
    window->setCurrentMemoryRow(50);
    doc().setDataChanged(true);
    dialogs.answers = {csv};
    trigger("mnuImport");
    EXPECT_EQ(dialogs.asked.last(), (FileRequest{FileRequest::Kind::Open, kCsvFilter}));
    EXPECT_TRUE(boxes.shown.isEmpty()); // no prompt before an import
    EXPECT_EQ(memoryCell(8, 14), QStringLiteral("SEVEN"));
    EXPECT_EQ(window->currentMemoryRow(), 1);
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
    EXPECT_TRUE(doc().CurrentFilePath().isEmpty());
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_EQ(fatalSpy->count(), 0);
}

TEST_F(FileCommands, ImportCancelledOrUnreadableEndsTheProgram) {
    int fatals = 0;
    for (const QString& answer : {QString(), path("missing.csv")}) {
        boxes.shown.clear();
        dialogs.answers = {answer};
        trigger("mnuImport");
        ASSERT_EQ(boxes.shown.size(), 1);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Critical);
        EXPECT_EQ(fatalSpy->count(), ++fatals);
    }
    EXPECT_TRUE(window->fatalErrorShown());
    window->show();
    EXPECT_TRUE(window->close()); // no prompt, no port file after the run-time error
    EXPECT_EQ(boxes.shown.size(), 1);
    EXPECT_FALSE(QFile::exists(portFile()));
}

} // namespace
} // namespace zq::ui
