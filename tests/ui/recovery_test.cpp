// Unsaved changes outlive the window: a fatal error box, a signal or an exit whose save failed leave
// them in a recovery file, which the next start offers to open. The signals are sent for real, to this
// process during a transfer and to the real program in a child process.
#include "files/atomicwrite.h"
#include "files/clonefile.h"
#include "files/recovery.h"
#include "model/tables.h"
#include "radio/virtualradio.h"
#include "ui/terminationsignals.h"
#include "windowfixture.h"

#include <QAction>
#include <QDeadlineTimer>
#include <QProcess>
#include <csignal>
#include <sys/stat.h>

namespace zq::ui::test {
namespace {

using model::Document;

const QString kEdit = QStringLiteral("123"); // typed into dial memory 4, empty in the demonstration file
constexpr int kEditedDial = 4;

QString Line(const QString& cloneFile, int line) {
    return QString::fromLatin1(ReadFile(cloneFile)).split(QStringLiteral("\r\n")).value(line);
}
// Dial memory `dial` as a clone file keeps it ("123" padded with Z).
QString DialLine(const QString& cloneFile, int dial) {
    return Line(cloneFile, files::kDialLine + dial);
}

int Permissions(const QString& path) {
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 0777) : -1;
}

class Recovery : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
    }
    void edit() { doc().setDialText(kEditedDial, kEdit, Document::Mark::Edit); }
    void trigger(const char* name) { find<QAction>(name)->trigger(); }
    // The next start of the program, over the same per-user folder, answering the boxes from `answers`.
    struct NextStart {
        ScriptedMessageBoxes boxes;
        ScriptedFileDialogs dialogs;
        std::unique_ptr<Program> program;
    };
    std::unique_ptr<NextStart> startAgain(QVector<MessageAnswer> answers, const QString& file = QString()) {
        auto next = std::make_unique<NextStart>();
        next->boxes.answers = std::move(answers);
        next->program = std::make_unique<Program>(next->boxes, next->dialogs, strings);
        ProgramOptions options;
        options.commandLineFile = file;
        EXPECT_TRUE(next->program->start(options, LoadOptions{{}, portFile(), 0}).ok());
        return next;
    }
    QString keptText(const QString& path) const {
        return QStringLiteral(
                   "Your unsaved changes were kept in:\r\n%1\r\nThe next start offers to open them.")
            .arg(path);
    }
};

// A fatal error box keeps the changes and names their file after the error's own text; with nothing
// changed it is the box as it always was.
class FatalEnd : public Recovery, public ::testing::WithParamInterface<bool> {};

TEST_P(FatalEnd, KeepsUnsavedChangesAndNamesTheirFileInTheBox) {
    const bool edited = GetParam();
    if (edited) edit();
    trigger("mnuImport"); // its dialog cancelled: the import's untrapped error
    ASSERT_EQ(fatalSpy.count(), 1);
    EXPECT_EQ(fatalSpy[0][0].toInt(), 1);
    ASSERT_EQ(boxes.shown.size(), 1);
    const QString error = FatalErrorBox(QStringLiteral("Cancel was selected.")).text;
    const QStringList kept = files::RecoveryFiles();
    if (!edited) {
        EXPECT_EQ(boxes.shown[0], FatalErrorBox(QStringLiteral("Cancel was selected.")));
        EXPECT_TRUE(kept.isEmpty());
        return;
    }
    ASSERT_EQ(kept.size(), 1);
    EXPECT_TRUE(kept[0].endsWith(QStringLiteral("_fatal.318"))) << kept[0].toStdString();
    EXPECT_EQ(boxes.shown[0].text, error);
    EXPECT_EQ(boxes.shown[0].detail, keptText(kept[0]));
    EXPECT_EQ(Permissions(kept[0]), 0600);
    EXPECT_TRUE(DialLine(kept[0], kEditedDial).startsWith(kEdit + QLatin1Char('Z')));
}

INSTANTIATE_TEST_SUITE_P(Edited, FatalEnd, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "Changed" : "Unchanged"; });

struct OfferCase {
    const char* name;
    MessageAnswer answer;
    bool commandLineFile; // started with a file to open
    bool broken;          // the recovery file is no clone file
    bool opened;          // the document holds the recovered data
    bool fileStays;       // the recovery file is still there afterwards
};

class Offer : public Recovery, public ::testing::WithParamInterface<OfferCase> {};

TEST_P(Offer, OpenDiscardOrLater) {
    const OfferCase& c = GetParam();
    edit();
    doc().setCurrentFilePath(path("edited.318"));
    const files::RecoveryFile kept = files::SaveRecoveryFile(doc(), QStringLiteral("sigterm"));
    ASSERT_TRUE(kept.result.ok());
    if (c.broken) {
        ASSERT_TRUE(files::WriteFileAtomically(kept.path, "not a clone file\r\n").isEmpty());
    }
    const QString file = c.commandLineFile ? demoCopy("given.318") : QString();

    const auto next = startAgain({c.answer}, file);
    Document& recovered = next->program->document();
    ASSERT_FALSE(next->boxes.shown.isEmpty());
    const MessageRequest& offer = next->boxes.shown[0];
    EXPECT_EQ(offer.title, QStringLiteral("Recover Unsaved Changes"));
    EXPECT_TRUE(offer.text.contains(kept.path));
    EXPECT_EQ(offer.buttons, MessageButtons::OpenDiscardLater);
    EXPECT_EQ(offer.buttonTexts, QStringList({"Open", "Discard", "Later"}));
    EXPECT_EQ(next->boxes.shown.mid(1), c.broken
                                            ? QVector<MessageRequest>{ErrorBox(QStringLiteral("Data Error"))}
                                            : QVector<MessageRequest>{});
    EXPECT_EQ(recovered.dialTexts()[kEditedDial] == kEdit, c.opened);
    EXPECT_EQ(recovered.DataChanged(), c.opened);
    EXPECT_EQ(recovered.CurrentFilePath(), c.opened || !c.commandLineFile ? QString() : file);
    EXPECT_EQ(QFile::exists(kept.path), c.fileStays);
    if (!c.opened) return;
    EXPECT_EQ(next->program->window().windowTitle(), model::AppTitle());

    // Kept until the data are saved, under a name the user chooses.
    next->dialogs.answers = {path("recovered.318")};
    next->program->window().findChild<QAction*>(QStringLiteral("mnuFileSave"))->trigger();
    EXPECT_EQ(next->dialogs.asked.size(), 1);
    EXPECT_TRUE(DialLine(path("recovered.318"), kEditedDial).startsWith(kEdit));
    EXPECT_FALSE(QFile::exists(kept.path));
}

using enum MessageAnswer;
INSTANTIATE_TEST_SUITE_P(Answers, Offer,
                         ::testing::Values(OfferCase{"Open", Open, false, false, true, true},
                                           OfferCase{"OpenOverCommandLineFile", Open, true, false, true,
                                                     true},
                                           OfferCase{"OpenBrokenFile", Open, false, true, false, true},
                                           OfferCase{"Discard", Discard, false, false, false, false},
                                           OfferCase{"Later", Later, true, false, false, true}),
                         [](const auto& info) { return std::string(info.param.name); });

// Closing the window after Yes to saving, when the save failed, still closes: the changes are kept.
// No gives them up.
class ExitKeeps : public Recovery, public ::testing::WithParamInterface<MessageAnswer> {};

TEST_P(ExitKeeps, WhatAFailedSaveWouldHaveLost) {
    edit();
    boxes.answers = {GetParam()};
    dialogs.answers = {path("no-such-folder/x.318")};
    window->show();
    EXPECT_TRUE(window->close());
    const QStringList kept = files::RecoveryFiles();
    if (GetParam() == No) {
        EXPECT_TRUE(kept.isEmpty());
        return;
    }
    EXPECT_EQ(boxes.shown.last(), ErrorBox(QStringLiteral("File Open Error")));
    ASSERT_EQ(kept.size(), 1);
    EXPECT_TRUE(DialLine(kept[0], kEditedDial).startsWith(kEdit));
}

INSTANTIATE_TEST_SUITE_P(Answers, ExitKeeps, ::testing::Values(Yes, No),
                         [](const auto& info) { return info.param == Yes ? "Yes" : "No"; });

// The end of the program while a transfer waits for the radio, by a signal (whose notifier runs inside
// the link's own event loop) or by the fatal error of an import chosen from the menu meanwhile: the
// transfer stops at once without a failure box, the edits are kept, and the next start opens them.
struct TransferEnd {
    const char* name;
    int signalNumber; // 0: the import's fatal error
    int exitStatus;
    const char* reason; // in the recovery file's name
};

class EndDuringTransfer : public Recovery, public ::testing::WithParamInterface<TransferEnd> {
protected:
    radio::VirtualRadio radio;
};

TEST_P(EndDuringTransfer, StopsTheTransferAndKeepsTheEdits) {
    const TransferEnd& c = GetParam();
    ASSERT_TRUE(radio.open().ok());
    program->ports().setDeviceOverride(radio.devicePath());
    TerminationSignals watcher;
    ASSERT_TRUE(watcher.active());
    QObject::connect(&watcher, &TerminationSignals::arrived, program.get(), &Program::endBySignal);
    edit();
    QObject::connect(&radio, &radio::VirtualRadio::commandReceived, &radio, [&] {
        if (radio.commands().size() != 5) return;
        if (c.signalNumber)
            std::raise(c.signalNumber);
        else
            trigger("mnuImport"); // its dialog cancelled
    });

    program->transfers().readMemory();
    EXPECT_FALSE(program->transfers().busy());
    EXPECT_LT(radio.commands().size(), 8); // 400 blocks when nothing stops it
    ASSERT_EQ(fatalSpy.count(), 1);
    EXPECT_EQ(fatalSpy[0][0].toInt(), c.exitStatus);
    const QStringList kept = files::RecoveryFiles();
    ASSERT_EQ(kept.size(), 1);
    EXPECT_TRUE(kept[0].endsWith(QStringLiteral("_%1.318").arg(QLatin1String(c.reason))))
        << kept[0].toStdString();
    EXPECT_TRUE(DialLine(kept[0], kEditedDial).startsWith(kEdit));
    if (c.signalNumber) {
        EXPECT_TRUE(boxes.shown.isEmpty());
    } else {
        ASSERT_EQ(boxes.shown.size(), 1); // the fatal error box alone: no failure box of the transfer
        EXPECT_EQ(boxes.shown[0].text, FatalErrorBox(QStringLiteral("Cancel was selected.")).text);
        EXPECT_EQ(boxes.shown[0].detail, keptText(kept[0]));
    }
    // No session starts any more, and the window closes without asking.
    program->transfers().readSettings();
    EXPECT_LT(radio.commands().size(), 8);
    window->show();
    EXPECT_TRUE(window->close());
    EXPECT_EQ(boxes.shown.size(), c.signalNumber ? 0 : 1);

    const auto next = startAgain({MessageAnswer::Open});
    EXPECT_EQ(next->program->document().dialTexts()[kEditedDial], kEdit);
    EXPECT_TRUE(next->program->document().DataChanged());
    next->program->document().setDataChanged(false);
}

INSTANTIATE_TEST_SUITE_P(Ends, EndDuringTransfer,
                         ::testing::Values(TransferEnd{"SIGTERM", SIGTERM, 128 + SIGTERM, "sigterm"},
                                           TransferEnd{"SIGHUP", SIGHUP, 128 + SIGHUP, "sighup"},
                                           TransferEnd{"SIGINT", SIGINT, 128 + SIGINT, "sigint"},
                                           TransferEnd{"FatalImport", 0, 1, "fatal"}),
                         [](const auto& info) { return std::string(info.param.name); });

// The real program in a child process, driven by the test input device (tests/ui/driver): started
// with a file, edited, ended by a signal; started again, the offer accepted, ended again. The second
// recovery file holds the edits only if the first was opened and marked unsaved.
class SignalledProgram : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    QString recoveryFolder() const { return dir.filePath(QStringLiteral("data/Korvex/zq318/recovery")); }
    QStringList recoveryFiles() const {
        const QDir folder(recoveryFolder());
        QStringList paths;
        for (const QString& name : folder.entryList({QStringLiteral("*.318")}, QDir::Files, QDir::Name))
            paths.append(folder.filePath(name));
        return paths;
    }
    // Starts the program and waits until the driver says `told`.
    void start(QProcess& child, const QStringList& arguments, const QString& driver, const QString& told) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("HOME"), dir.path());
        env.insert(QStringLiteral("XDG_DATA_HOME"), dir.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        env.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(ZQ_DRIVER_PLUGIN_DIR));
        env.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("zqwindowdriver"));
        env.remove(QStringLiteral("ZQ_DRIVER_TYPE"));
        env.remove(QStringLiteral("ZQ_DRIVER_ANSWER"));
        env.insert(driver.section(QLatin1Char(':'), 0, 0), driver.section(QLatin1Char(':'), 1));
        child.setProcessEnvironment(env);
        child.setReadChannel(QProcess::StandardError); // where the driver and the program speak
        child.start(QStringLiteral(ZQ318_UTILITY_PATH), arguments);
        ASSERT_TRUE(child.waitForStarted());
        const QDeadlineTimer deadline(60000);
        while (!errors.contains(told.toUtf8()) && !deadline.hasExpired() &&
               child.state() == QProcess::Running) {
            child.waitForReadyRead(int(std::max<qint64>(1, deadline.remainingTime())));
            errors += child.readAllStandardError();
        }
        ASSERT_TRUE(errors.contains(told.toUtf8())) << errors.toStdString();
    }
    // Sends the signal; the program must end by itself with 128 + its number.
    void end(QProcess& child, int signalNumber) {
        ASSERT_EQ(::kill(pid_t(child.processId()), signalNumber), 0);
        ASSERT_TRUE(child.waitForFinished(60000));
        errors += child.readAllStandardError();
        EXPECT_EQ(child.exitStatus(), QProcess::NormalExit) << errors.toStdString();
        EXPECT_EQ(child.exitCode(), 128 + signalNumber) << errors.toStdString();
    }

    QTemporaryDir dir;
    QByteArray errors; // the child's standard error so far
};

TEST_P(SignalledProgram, KeepsTheEditsAndTheNextStartOpensThem) {
    const int signalNumber = GetParam();
    const QString name = TerminationSignals::Name(signalNumber);
    const QString demo = QStringLiteral(ZQ_EXAMPLES_DIR "/demo.318");
    {
        QProcess child;
        ASSERT_NO_FATAL_FAILURE(
            start(child, {demo}, QStringLiteral("ZQ_DRIVER_TYPE:txtDial_%1=%2").arg(kEditedDial).arg(kEdit),
                  QStringLiteral("typed into")));
        ASSERT_NO_FATAL_FAILURE(end(child, signalNumber));
    }
    QStringList kept = recoveryFiles();
    ASSERT_EQ(kept.size(), 1) << errors.toStdString();
    EXPECT_TRUE(kept[0].endsWith(QLatin1Char('_') + name.toLower() + QStringLiteral(".318")));
    EXPECT_TRUE(errors.contains(
        QStringLiteral("ended by %1; unsaved changes kept in %2").arg(name, kept[0]).toUtf8()))
        << errors.toStdString();
    EXPECT_EQ(Permissions(kept[0]), 0600);
    EXPECT_TRUE(DialLine(kept[0], kEditedDial).startsWith(kEdit + QLatin1Char('Z')));
    // The rest is the file named on the command line.
    for (int line : {files::kDialLine + kEditedDial + 1, files::kChannelLine, files::kEndLine})
        EXPECT_EQ(Line(kept[0], line), Line(demo, line)) << line;

    {
        errors.clear();
        QProcess child;
        ASSERT_NO_FATAL_FAILURE(
            start(child, {}, QStringLiteral("ZQ_DRIVER_ANSWER:Open"), QStringLiteral("answered Open")));
        ASSERT_NO_FATAL_FAILURE(end(child, SIGTERM));
    }
    const QStringList again = recoveryFiles();
    ASSERT_EQ(again.size(), 1) << errors.toStdString(); // the opened file made way for the new one
    EXPECT_NE(again[0], kept[0]);
    EXPECT_TRUE(again[0].endsWith(QStringLiteral("_sigterm.318")));
    EXPECT_TRUE(DialLine(again[0], kEditedDial).startsWith(kEdit + QLatin1Char('Z')));
}

INSTANTIATE_TEST_SUITE_P(Signals, SignalledProgram, ::testing::Values(SIGTERM, SIGHUP, SIGINT),
                         [](const auto& info) { return TerminationSignals::Name(info.param).toStdString(); });

} // namespace
} // namespace zq::ui::test
