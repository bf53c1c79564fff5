// File menu commands through the replaced dialogs and boxes, and the exit sequence.
#include "model/tables.h"
#include "windowfixture.h"

#include <QAction>
#include <QSettings>

namespace zq::ui {
namespace {

const QString kCloneFilter = QStringLiteral("Korvex ZQ-318 Clone Files (*.318);;All Files (*.*)");
const QString kCsvFilter = QStringLiteral("CSV Files (*.csv);;All Files (*.*)");
const FileRequest kSaveClone{FileRequest::Kind::Save, kCloneFilter};

class FileCommands : public test::WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
    }
    // One channel edited so that saves and loads can be told apart.
    void editChannel(int row, const QString& name) {
        doc().changeMemory(
            row, row,
            [&](model::MemoryTable& m) {
                m.set(row, model::ColName, name, 0);
                m.setChannelInUse(row, true);
            },
            model::Document::Mark::Edit);
    }
    void trigger(const char* name) { find<QAction>(name)->trigger(); }
};

TEST_F(FileCommands, SaveAsksOnceThenWritesToTheSamePathAndUnwritableTargetsShowFileOpenError) {
    editChannel(0, QStringLiteral("FIRST"));
    const QString file = path("saved.318");
    dialogs.answers = {file, path("other.318")};
    trigger("mnuFileSave");
    const QByteArray written = test::ReadFile(file);
    EXPECT_FALSE(written.isEmpty());
    EXPECT_FALSE(doc().DataChanged());

    editChannel(1, QStringLiteral("SECOND"));
    trigger("mnuFileSave"); // no dialog this time
    EXPECT_NE(test::ReadFile(file), written);
    trigger("mnuFileSaveAs");
    EXPECT_EQ(dialogs.asked, QList<FileRequest>({kSaveClone, kSaveClone}));
    EXPECT_EQ(test::ReadFile(path("other.318")), test::ReadFile(file));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("other.318 - Korvex ZQ-318 Clone Utility"));
    EXPECT_TRUE(boxes.shown.isEmpty());

    editChannel(2, QStringLiteral("X"));
    for (const char* command : {"mnuFileSaveAs", "mnuExport"}) {
        boxes.shown.clear();
        dialogs.answers = {path("no-such-folder/x")};
        trigger(command);
        EXPECT_EQ(boxes.shown, QVector<MessageRequest>{ErrorBox(QStringLiteral("File Open Error"))})
            << command;
        EXPECT_TRUE(doc().DataChanged());
    }
}

TEST_F(FileCommands, OpenLoadsAValidFileAndRejectsOthers) {
    dialogs.answers = {demoCopy("e.318", model::HeaderLine(1, true))};
    trigger("mnuFileOpen");
    EXPECT_EQ(dialogs.asked, QList<FileRequest>({{FileRequest::Kind::Open, kCloneFilter}}));
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("e.318 - Korvex ZQ-318 Clone Utility"));
    EXPECT_EQ(doc().ModelVariant(), 0); // Open keeps the variant whatever the header says

    dialogs.answers = {demoCopy("bad.318", QString(), true)};
    trigger("mnuFileOpen");
    EXPECT_EQ(boxes.shown, QVector<MessageRequest>{ErrorBox(QStringLiteral("Data Error"))});
    EXPECT_EQ(doc().CurrentFilePath(), path("e.318"));
}

struct ExitCase {
    const char* name;
    MessageAnswer answer;
    bool closes;
    bool saves;
};

class ExitPrompt : public FileCommands, public ::testing::WithParamInterface<ExitCase> {};

TEST_P(ExitPrompt, AsksThenWritesThePortFileAndGeometry) {
    const ExitCase& c = GetParam();
    doc().setDataChanged(true);
    boxes.answers = {c.answer};
    dialogs.answers = {path("prompted.318")};
    window->show();
    program->ports().choose({7, {}}, {});
    QSettings geometry(QCoreApplication::organizationName(), model::AppTitle());
    geometry.remove(QStringLiteral("Settings"));
    geometry.sync();

    EXPECT_EQ(window->close(), c.closes);
    EXPECT_EQ(boxes.shown, (QVector<MessageRequest>{
                               {QStringLiteral("Save changes to settings?"), QStringLiteral("Save Changes"),
                                MessageButtons::YesNoCancel, MessageIcon::Question, MessageAnswer::Yes}}));
    EXPECT_EQ(window->isVisible(), !c.closes);
    EXPECT_EQ(QFile::exists(path("prompted.318")), c.saves);
    EXPECT_EQ(test::ReadFile(portFile()), c.closes ? QByteArray("7\r\n") : QByteArray());
    geometry.sync();
    EXPECT_EQ(geometry.contains(QStringLiteral("Settings/MainWidth")), c.closes);
}

using enum MessageAnswer;
INSTANTIATE_TEST_SUITE_P(Answers, ExitPrompt,
                         ::testing::Values(ExitCase{"Yes", Yes, true, true}, ExitCase{"No", No, true, false},
                                           ExitCase{"Cancel", Cancel, false, false}),
                         [](const auto& info) { return std::string(info.param.name); });

// Nothing changed: no prompt.
TEST_F(FileCommands, UnwritablePortFileEndsTheProgramAtExit) {
    window->show();
    QDir(temp.path()).mkdir(QStringLiteral("ZQ-318.ini")); // a folder where the file should go
    EXPECT_TRUE(window->close());
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(fatalSpy.count(), 1);
}

TEST_F(FileCommands, ExportThenNewThenImportRoundTrip) {
    editChannel(7, QStringLiteral("SEVEN"));
    const QString csv = path("channels.csv");
    dialogs.answers = {csv, csv};
    trigger("mnuExport");
    EXPECT_EQ(window->windowTitle(), QStringLiteral("channels.csv - Korvex ZQ-318 Clone Utility"));
    EXPECT_FALSE(doc().DataChanged());

    trigger("mnuFileNew"); // nothing changed: no prompt
    EXPECT_EQ(memoryCell(8, 14), QString());
    memoryPage().setCurrentRow(50);
    doc().setDataChanged(true);
    trigger("mnuImport");
    EXPECT_EQ(dialogs.asked, QList<FileRequest>({{FileRequest::Kind::Save, kCsvFilter},
                                                 {FileRequest::Kind::Open, kCsvFilter}}));
    EXPECT_TRUE(boxes.shown.isEmpty()); // no prompt before an import either
    EXPECT_EQ(memoryCell(8, 14), QStringLiteral("SEVEN"));
    EXPECT_EQ(memoryPage().currentRow(), 1);
    EXPECT_TRUE(doc().CurrentFilePath().isEmpty());
    EXPECT_FALSE(doc().DataChanged());
}

TEST_F(FileCommands, ImportCancelledOrUnreadableEndsTheProgram) {
    dialogs.answers = {QString(), path("missing.csv")};
    for (int fatals = 1; fatals <= 2; ++fatals) {
        boxes.shown.clear();
        trigger("mnuImport");
        ASSERT_EQ(boxes.shown.size(), 1);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Critical);
        EXPECT_EQ(fatalSpy.count(), fatals);
    }
    window->show();
    EXPECT_TRUE(window->close()); // no prompt, no port file after the run-time error
    EXPECT_EQ(boxes.shown.size(), 1);
    EXPECT_FALSE(QFile::exists(portFile()));
}

} // namespace
} // namespace zq::ui
