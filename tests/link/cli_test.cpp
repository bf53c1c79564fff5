// zq318's radio verbs end to end: the tool runs as a process against radios answering in this one.
#include "link/portnumbers.h"
#include "linkfixture.h"
#include "radio/radioimage.h"

#include <QCoreApplication>

#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zq::radio;
using namespace linktest;

namespace {

struct ToolRun {
    int status = -1;
    QByteArray out;
    QString firstErrorLine;
};

// Lets the radios answer while the tool runs; one still running after a minute is killed on return.
// `asUser` runs it through `setpriv` with the user's ids (and no supplementary groups).
ToolRun RunTool(const QStringList& arguments, const QStringList& asUser = {}) {
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    if (asUser.isEmpty())
        process.start(QStringLiteral(ZQ318_PATH), arguments);
    else
        process.start(QStringLiteral("setpriv"),
                      asUser + QStringList{QStringLiteral(ZQ318_PATH)} + arguments);
    loop.exec();
    if (process.state() != QProcess::NotRunning || process.exitStatus() != QProcess::NormalExit) return {};
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError()).section(QLatin1Char('\n'), 0, 0)};
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

struct FailureCase {
    const char* name;
    const char* arguments; // PORT: the radio's device, OUT: an existing file
    const char* fault;
    int status;
    const char* message;
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
    EXPECT_TRUE(run.firstErrorLine.startsWith(
        QString::fromLatin1(c.message).replace(QStringLiteral("PORT"), radio.devicePath())))
        << run.firstErrorLine.toStdString();
    ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
    EXPECT_EQ(existing.readAll(), QByteArray("previous contents\n"));
}

// One case per verb's failure path; the transfers' own failures are covered against the link. The service
// reads check nothing; the pulled cable shows when the port cannot be opened again.
const FailureCase kFailures[] = {
    {"DetectNg", "--port PORT detect", "ng@model", 3,
     "Communication Error: reply to ZQ318 on PORT does not end in OK"},
    {"DetectSilent", "--port PORT detect", "timeout@model", 3,
     "Communication Error: no reply to ZQ318 on PORT within 2000 ms"},
    {"ReadSettingsHangup", "--port PORT read --settings -o OUT", "hangup@00F0", 4, "COM Port Error"},
    {"WriteDataError", "--port PORT write OUT", "", 5, "Data Error"},
    {"ReadBothOptions", "--port PORT read --settings --memory -o OUT", "", 2, "zq318 read"},
    {"DumpIntoFileHangup", "--port PORT dump -o OUT", "hangup@0100", 6, "Run-time error: cannot open"},
    {"NoSuchPort", "--port /dev/zq318-no-such-port detect", "", 4,
     "COM Port Error: cannot open /dev/zq318-no-such-port: no such device"},
    {"NoSuchPortNumber", "--port 14 read -o OUT", "", 4, "COM Port Error: no serial port 14 (COM 14); the "}};
INSTANTIATE_TEST_SUITE_P(Verbs, CliFailureTest, ::testing::ValuesIn(kFailures), CaseName);

// A port this user may not open says which group to join and how; one held by a program says which.
TEST_F(RadioTest, PortThatCannotBeOpenedSaysWhy) {
    const QString device = radio.devicePath();
    const QString cannotOpen = QStringLiteral("COM Port Error: cannot open %1: ").arg(device);
    ASSERT_TRUE(link.open().ok());
    const ToolRun busy = RunTool({"--port", device, "detect"});
    EXPECT_EQ(busy.status, 4);
    EXPECT_EQ(busy.firstErrorLine,
              cannotOpen + QStringLiteral("the port is busy: link_cli_tests (process %1) has it "
                                          "open; close that program and try again")
                               .arg(QCoreApplication::applicationPid()));
    link.close();

    QStringList asUser;
    QString denied = cannotOpen + QStringLiteral("permission denied");
    const QByteArray path = QFile::encodeName(device);
    if (geteuid() == 0) { // as nobody, on a device of the group dialout as udev makes them
        const group* dialout = getgrnam("dialout");
        ASSERT_TRUE(dialout);
        ASSERT_EQ(chown(path.constData(), 0, dialout->gr_gid), 0);
        ASSERT_EQ(chmod(path.constData(), 0660), 0);
        asUser = QStringList{"--reuid=65534", "--regid=65534", "--clear-groups"};
        denied +=
            QStringLiteral(": the device belongs to group dialout; join it with \"sudo usermod -aG dialout "
                           "$USER\", then log out and back in");
    } else {
        ASSERT_EQ(chmod(path.constData(), 0), 0);
    }
    const ToolRun refused = RunTool({"--port", device, "detect"}, asUser);
    EXPECT_EQ(refused.status, 4);
    EXPECT_TRUE(refused.firstErrorLine.startsWith(denied)) << refused.firstErrorLine.toStdString();
}

TEST(CliPortsTest, ListsTheFourteenNumbers) {
    const ToolRun run = RunTool({"ports"});
    ASSERT_EQ(run.status, 0);
    const QStringList lines = QString::fromUtf8(run.out).split(QLatin1Char('\n'));
    ASSERT_GT(lines.size(), 16);
    EXPECT_TRUE(lines.at(0).contains(QStringLiteral("Port    Device"))) << lines.at(0).toStdString();
    for (int number = 1; number <= 14; ++number)
        EXPECT_EQ(lines.at(number).mid(3, 6), zq::link::PortCaption(number))
            << lines.at(number).toStdString();
    EXPECT_TRUE(lines.filter(QStringLiteral("* Without --port: COM")).size() == 1) << run.out.constData();
}

} // namespace
