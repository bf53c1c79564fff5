// What the window keeps of its transfers (serial traces, backups) and its read-back comparison,
// against a virtual radio on a pseudo-terminal, with the per-user data in a temporary folder.
#include "files/clonefile.h"
#include "link/blockmap.h"
#include "model/tables.h"
#include "radio/virtualradio.h"
#include "ui/pagestrip.h"
#include "windowfixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QGuiApplication>
#include <QProgressBar>
#include <QSettings>
#include <QStandardPaths>
#include <QStatusBar>

namespace zq::ui::test {
namespace {

class WindowSafetyNets : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        // The settings store keeps its test location (its paths are fixed when first used); the
        // per-user data go to a folder of this test's own.
        QSettings().value(QStringLiteral("any"));
        QStandardPaths::setTestModeEnabled(false);
        qputenv("XDG_DATA_HOME", temp.filePath(QStringLiteral("data")).toLocal8Bit());
        ASSERT_TRUE(load().ok());
        ASSERT_TRUE(radio.open().ok());
        program->ports().setDeviceOverride(radio.devicePath());
    }
    void TearDown() override {
        qunsetenv("XDG_DATA_HOME");
        QStandardPaths::setTestModeEnabled(true);
        WindowFixture::TearDown();
    }
    QString dataFolder(const char* kind) const {
        return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QLatin1Char('/') +
               QLatin1String(kind);
    }
    QStringList filesIn(const char* kind) const {
        return QDir(dataFolder(kind)).entryList(QDir::Files, QDir::Name);
    }
    // Brings the control's page to the front and runs it: a button, or else a menu entry.
    void run(const char* name) {
        if (auto* button = window->findChild<QAbstractButton*>(QLatin1String(name))) {
            for (int i = 0; i < window->pages().count(); ++i)
                if (window->pages().widget(i)->isAncestorOf(button)) window->pages().setCurrentIndex(i);
            button->click();
            return;
        }
        find<QAction>(name)->trigger();
    }
    void setChannelFrequency(int channel, const QString& frequency) {
        doc().changeMemory(
            channel, channel,
            [&](model::MemoryTable& m) {
                m.set(channel, model::ColFrequency, frequency, frequency.toDouble());
                m.setChannelInUse(channel, true);
            },
            model::Document::Mark::Edit);
    }
    void expectIdle() {
        for (const char* name : {"cmbRxData", "cmbTxData", "cmbRxData1", "cmbTxData1", "cmdAuto"})
            EXPECT_FALSE(find<QAbstractButton>(name)->testAttribute(Qt::WA_ForceDisabled)) << name;
        EXPECT_FALSE(window->progressBar()->isVisible());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }

    radio::VirtualRadio radio;
};

struct KeptCase {
    const char* name;
    const char* control;
    const char* fault;  // "" for none
    const char* backup; // the backup's operation, "" for none
    const char* trace;  // the trace's operation
    const char* outcome;
};

class KeptRecords : public WindowSafetyNets, public ::testing::WithParamInterface<KeptCase> {};

// The All menus are one command: one trace, one backup. A failed session keeps no backup, and
// commands that move no data into or out of the document keep none either.
TEST_P(KeptRecords, TransfersLeaveATraceAndDataTransfersThatSucceededABackup) {
    const KeptCase& c = GetParam();
    window->pages().showServicePanel(true);
    setChannelFrequency(
        10, QStringLiteral("145.5000")); // a write sends it; a read from the blank radio clears it
    if (*c.fault) radio.addFault(radio::ParseFault(QLatin1String(c.fault)).value());
    run(c.control);
    expectIdle();
    EXPECT_TRUE(window->statusBar()->currentMessage().isEmpty());

    const QStringList backups = filesIn("backups"), traces = filesIn("traces");
    if (*c.backup) {
        ASSERT_EQ(backups.size(), 1) << backups.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(backups[0].endsWith(QStringLiteral("_T_%1.318").arg(QLatin1String(c.backup))))
            << backups[0].toStdString();
        model::Document kept;
        ASSERT_TRUE(files::OpenCloneFile(kept, dataFolder("backups") + QLatin1Char('/') + backups[0]).ok());
        EXPECT_EQ(kept.memory().ChannelInUse(10), doc().memory().ChannelInUse(10));
        EXPECT_EQ(kept.memory().text(10, model::ColFrequency), doc().memory().text(10, model::ColFrequency));
    } else {
        EXPECT_TRUE(backups.isEmpty()) << backups.join(QLatin1Char(' ')).toStdString();
    }
    ASSERT_EQ(traces.size(), 1);
    EXPECT_TRUE(traces[0].endsWith(QStringLiteral("_%1.txt").arg(QLatin1String(c.trace))));
    const QString trace = QString::fromUtf8(ReadFile(dataFolder("traces") + QLatin1Char('/') + traces[0]));
    EXPECT_TRUE(trace.contains(QStringLiteral("sent        KV~F"))) << trace.left(400).toStdString();
    EXPECT_TRUE(trace.contains(QLatin1String(c.outcome))) << trace.right(300).toStdString();
}

const KeptCase kKeptCases[] = {
    {"ReadAll", "mnuReAll", "", "read", "read", "outcome     Read Settings: done; Read Memory: done"},
    {"WriteAll", "mnuWrAll", "", "write", "write", "outcome     Write Settings: done; Write Memory: done"},
    {"ReadMemory", "cmbRxData", "", "read-memory", "read-memory", "outcome     done"},
    {"WriteMemory", "cmbTxData", "", "write-memory", "write-memory", "outcome     done"},
    {"ReadSettings", "cmbRxData1", "", "read-settings", "read-settings", "outcome     done"},
    {"WriteSettings", "mnuWrSet", "", "write-settings", "write-settings", "outcome     done"},
    {"ReadAllHalfFailed", "mnuReAll", "ng@0200", "read-settings", "read",
     "outcome     Read Settings: done; Read Memory: Communication Error"},
    {"ReadSettingsFailed", "cmbRxData1", "ng@00E0", "", "read-settings", "outcome     Communication Error"},
    {"AutoSelect", "cmdAuto", "", "", "auto-select", "outcome     done"},
    {"VerifyBlankRadio", "mnuToolsVerify", "", "", "verify", "outcome     Communication Error: "},
    {"ServiceDump", "Command6", "", "", "dump", "outcome     done"},
};
INSTANTIATE_TEST_SUITE_P(Commands, KeptRecords, ::testing::ValuesIn(kKeptCases),
                         [](const auto& info) { return std::string(info.param.name); });

// The backups path is a file: the folder cannot be made. The transfer goes through and says so
// once in the status bar, never in a box; the trace is kept all the same.
TEST_F(WindowSafetyNets, AnUnwritableBackupFolderNeitherStopsNorFailsTheTransfer) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(dataFolder("backups")).path()));
    WriteFile(dataFolder("backups"), "not a folder");
    ASSERT_TRUE(radio.setBlockHex(0x00E0, QStringLiteral("A50000010C0C03000000000000000000")));
    QSignalSpy noted(&program->transfers(), &TransferController::noted);

    run("mnuReAll");
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(doc().settings().volume, 12);
    EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
    ASSERT_EQ(noted.count(), 1);
    EXPECT_TRUE(
        window->statusBar()->currentMessage().startsWith(QStringLiteral("No backup kept: cannot make ")))
        << window->statusBar()->currentMessage().toStdString();
    EXPECT_EQ(filesIn("traces").size(), 1);
    expectIdle();
}

TEST_F(WindowSafetyNets, VerifyTellsTheDroppedWriteAndNeverTouchesTheDocument) {
    // The radio holds what a write would send: the settings written, the channels put there directly.
    setChannelFrequency(10, QStringLiteral("145.5000"));
    run("mnuWrSet");
    for (const link::BlockSlot& slot : link::MemorySlots())
        ASSERT_TRUE(radio.setBlockHex(slot.address.toInt(nullptr, 16), link::SlotData(doc(), slot)));
    QSignalSpy progress(&program->transfers(), &TransferController::progressed);
    run("mnuToolsVerify");
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0].text, QStringLiteral("No differences")) << boxes.shown[0].text.toStdString();
    EXPECT_EQ(boxes.shown[0].title, QStringLiteral("Verify Radio"));
    ASSERT_FALSE(progress.isEmpty());
    EXPECT_EQ(progress.last()[0].toInt(), model::kChannelCount - 1);
    expectIdle();

    // The radio answers "OK" to the channel's first block but keeps the old one.
    setChannelFrequency(10, QStringLiteral("146.5200"));
    radio.addFault(radio::ParseFault(QStringLiteral("drop@0340")).value());
    run("cmbTxData");
    doc().setDataChanged(false);
    boxes.shown.clear();
    run("mnuToolsVerify");
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Warning);
    EXPECT_TRUE(boxes.shown[0].text.startsWith(
        QStringLiteral("1 difference between the radio and the window's data:")));
    EXPECT_TRUE(boxes.shown[0].text.contains(QStringLiteral("0340 channel 10, Frequency:")))
        << boxes.shown[0].text.toStdString();
    EXPECT_TRUE(boxes.shown[0].details.isEmpty());
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_TRUE(doc().CurrentFilePath().isEmpty());
    EXPECT_EQ(doc().memory().text(10, model::ColFrequency), QStringLiteral("146.5200"));
    expectIdle();
}

// A blank radio differs everywhere: the box names the first lines, its details all of them.
TEST_F(WindowSafetyNets, VerifyListsManyDifferencesBehindTheDetails) {
    for (int channel = 0; channel < 20; ++channel)
        setChannelFrequency(channel, QStringLiteral("145.0000"));
    run("mnuToolsVerify");
    ASSERT_EQ(boxes.shown.size(), 1);
    const QStringList details = boxes.shown[0].details.split(QLatin1Char('\n'));
    ASSERT_GT(details.size(), kListBoxLines);
    EXPECT_TRUE(boxes.shown[0].text.contains(details[kListBoxLines - 1]));
    EXPECT_FALSE(boxes.shown[0].text.contains(details[kListBoxLines]));
    EXPECT_TRUE(
        boxes.shown[0].text.endsWith(QStringLiteral("... and %1 more").arg(details.size() - kListBoxLines)));
}

// The folder is made if need be and handed to the opener; one the desktop cannot show is named in a box.
TEST_F(WindowSafetyNets, HelpOpensTheTraceFolderMakingItFirst) {
    for (const bool opens : {true, false}) {
        QDir(dataFolder("traces")).removeRecursively();
        QList<QUrl> opened;
        window->setUrlOpener([&](const QUrl& url) {
            opened.append(url);
            return opens;
        });
        boxes.shown.clear();
        run("mnuHelpTraces");
        EXPECT_EQ(opened, QList<QUrl>{QUrl::fromLocalFile(dataFolder("traces"))});
        EXPECT_TRUE(QFileInfo(dataFolder("traces")).isDir());
        EXPECT_EQ(boxes.shown.size(), opens ? 0 : 1);
        if (!opens && !boxes.shown.isEmpty()) {
            EXPECT_EQ(boxes.shown[0].text, QStringLiteral("The serial traces are kept in\r\n") +
                                               QDir::toNativeSeparators(dataFolder("traces")));
        }
    }
}

} // namespace
} // namespace zq::ui::test
