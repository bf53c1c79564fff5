// zq318's radio verbs end to end: the tool runs as a process against radios answering in this one.
#include "linkfixture.h"
#include "radio/radioimage.h"

#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

using namespace zq::radio;
using namespace linktest;

namespace {

struct ToolRun {
    int status = -1;
    QByteArray out;
    QString firstErrorLine;
    QStringList errorLines;
};

// Lets the radios answer while the tool runs; one still running after a minute is killed on return.
ToolRun RunTool(const QStringList& arguments) {
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    process.start(QStringLiteral(ZQ318_PATH), arguments);
    loop.exec();
    if (process.state() != QProcess::NotRunning || process.exitStatus() != QProcess::NormalExit) return {};
    const QStringList errors = QString::fromUtf8(process.readAllStandardError()).split(QLatin1Char('\n'));
    return {process.exitCode(), process.readAllStandardOutput(), errors.first(), errors};
}

TEST(CliTest, ReadWriteAndDumpCopyOneRadioToAnother) {
    VirtualRadio source, target;
    ASSERT_TRUE(source.open().ok());
    ASSERT_TRUE(target.open().ok());
    FillSampleRadio(source);
    source.setModelCode(kModelCodeE);
    source.setCloneCodeA(true);
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("copy.318"));

    const ToolRun readRun = RunTool({"--port", source.devicePath(), "--quiet", "read", "-o", file});
    ASSERT_EQ(readRun.status, 0) << readRun.firstErrorLine.toStdString();
    // Every block lands on its line of the file, except the repeater record, which a read does not fetch.
    QFile saved(file);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromLatin1(saved.readAll()).split(QStringLiteral("\r\n"));
    QStringList expected = CloneLines(source.memory()) << QString();
    lines.remove(7, 2);
    expected.remove(7, 2);
    EXPECT_EQ(lines, expected);

    const ToolRun writeRun = RunTool({"--port", target.devicePath(), "--quiet", "write", file});
    ASSERT_EQ(writeRun.status, 0) << writeRun.firstErrorLine.toStdString();
    QStringList copied = CloneLines(target.memory()); // the identity block is not written
    copied.remove(7, 2);
    EXPECT_EQ(copied.mid(1), expected.mid(1, 416));

    const ToolRun dump = RunTool({"--port", target.devicePath(), "dump"});
    ASSERT_EQ(dump.status, 0) << dump.firstErrorLine.toStdString();
    const QList<QByteArray> dumped = dump.out.split('\n');
    ASSERT_EQ(dumped.size(), 257); // the last line ends in CR LF too
    EXPECT_EQ(dumped.at(0x10), "10\t" + target.blockHex(0x100).toLatin1() + '\r');
    EXPECT_EQ(dumped.at(255), "FF\t" + target.blockHex(0xFF0).toLatin1() + '\r');
    EXPECT_EQ(target.commands().last(), QStringLiteral("KV~F0FF0R")); // no service control ends a session
}

// A save that fails after the transfer (the folder went away meanwhile) leaves what was read in a
// recovery file, named on standard error.
TEST(CliTest, ReadKeepsWhatItReadWhenTheSaveFails) {
    VirtualRadio source;
    ASSERT_TRUE(source.open().ok());
    FillSampleRadio(source);
    QTemporaryDir dir, home;
    QDir(dir.path()).mkdir(QStringLiteral("gone"));
    QObject::connect(&source, &VirtualRadio::commandReceived,
                     [&dir] { QDir(dir.filePath(QStringLiteral("gone"))).removeRecursively(); });
    qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
    const ToolRun run = RunTool(
        {"--port", source.devicePath(), "--quiet", "read", "-o", dir.filePath(QStringLiteral("gone/x.318"))});
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(run.status, 6);
    EXPECT_TRUE(run.firstErrorLine.startsWith(QStringLiteral("File Open Error: ") + dir.path()))
        << run.firstErrorLine.toStdString();
    const QString prefix = QStringLiteral("The data read are saved in ");
    ASSERT_TRUE(run.errorLines.value(1).startsWith(prefix)) << run.errorLines.join('\n').toStdString();
    const QString recovery = run.errorLines[1].mid(prefix.size());
    EXPECT_TRUE(recovery.startsWith(home.filePath(QStringLiteral("Korvex/zq318/recovery/"))));
    QFile saved(recovery);
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromLatin1(saved.readAll()).split(QStringLiteral("\r\n"));
    QStringList expected = CloneLines(source.memory()) << QString();
    lines.remove(7, 2); // the repeater record, which a read does not fetch
    expected.remove(7, 2);
    EXPECT_EQ(lines, expected);
}

struct FailureCase {
    const char* name;
    const char* arguments; // PORT: the radio's device, OUT: an existing file
    const char* fault;
    int status;
    const char* message;
    bool radioUntouched = false; // the tool gave up before sending anything
};

class CliFailureTest : public RadioTest, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(CliFailureTest, ReportsAndLeavesOutputAlone) {
    const FailureCase& c = GetParam();
    ASSERT_NO_FATAL_FAILURE(addFault(c.fault));
    QTemporaryDir dir;
    const QString output = dir.filePath(QStringLiteral("out.318"));
    QFile existing(output);
    ASSERT_TRUE(existing.open(QIODevice::ReadWrite));
    existing.write("previous contents\n");
    existing.close();
    const ToolRun run = RunTool(QString::fromLatin1(c.arguments)
                                    .split(QLatin1Char(' '))
                                    .replaceInStrings(QStringLiteral("OUT"), output)
                                    .replaceInStrings(QStringLiteral("PORT"), radio.devicePath()));
    EXPECT_EQ(run.status, c.status);
    EXPECT_TRUE(run.firstErrorLine.startsWith(QString::fromLatin1(c.message)))
        << run.firstErrorLine.toStdString();
    ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
    EXPECT_EQ(existing.readAll(), QByteArray("previous contents\n"));
    if (c.radioUntouched) {
        EXPECT_EQ(radio.commands(), QStringList());
    }
}

// One case per verb's failure path; the transfers' own failures are covered against the link. The service
// reads check nothing; the pulled cable shows when the port cannot be opened again.
const FailureCase kFailures[] = {
    {"DetectNg", "--port PORT detect", "ng@model", 3, "Communication Error: "},
    {"ReadSettingsHangup", "--port PORT read --settings -o OUT", "hangup@00F0", 4, "COM Port Error"},
    {"WriteDataError", "--port PORT write OUT", "", 5, "Data Error"},
    {"ReadBothOptions", "--port PORT read --settings --memory -o OUT", "", 2, "zq318 read"},
    {"DumpIntoFileHangup", "--port PORT dump -o OUT", "hangup@0100", 3,
     "Communication Error: no answer to KV~F0100R"},
    {"ReadIntoAMissingFolder", "--port PORT read -o OUT.d/out.318", "", 6, "File Open Error: ", true},
    {"DumpIntoAMissingFolder", "--port PORT dump -o OUT.d/out.txt", "", 6, "File Open Error: ", true},
    {"DumpUnanswered", "--port PORT dump", "timeout@0000", 3, "Communication Error: no answer to KV~F0000R"},
    {"NoSuchPort", "--port /dev/zq318-no-such-port detect", "", 4, "COM Port Error"}};
INSTANTIATE_TEST_SUITE_P(Verbs, CliFailureTest, ::testing::ValuesIn(kFailures), CaseName);

} // namespace
