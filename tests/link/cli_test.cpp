// zq318's radio verbs end to end: the tool runs as a process against radios answering in this one.
#include "link/portnumbers.h"
#include "linkfixture.h"
#include "radio/radioimage.h"

#include "files/clonefile.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
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
    QString errors; // all of standard error
};

// Where the runs keep their backups and traces unless a test looks at them.
QString SharedDataHome() {
    static QTemporaryDir home;
    return home.path();
}

// Lets the radios answer while the tool runs; one still running after a minute is killed on return.
// `asUser` runs it through `setpriv` with the user's ids (and no supplementary groups).
ToolRun RunTool(const QStringList& arguments, const QString& dataHome = SharedDataHome(),
                const QStringList& asUser = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
    process.setProcessEnvironment(environment);
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
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    return {process.exitCode(), process.readAllStandardOutput(), errors.section(QLatin1Char('\n'), 0, 0),
            errors};
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

    target.setModelCode(kModelCodeE); // what the file's header says, or the write is refused
    target.setCloneCodeA(true);
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
    const ToolRun run = RunTool(
        {"--port", source.devicePath(), "--quiet", "read", "-o", dir.filePath(QStringLiteral("gone/x.318"))},
        home.path());
    EXPECT_EQ(run.status, 6);
    EXPECT_TRUE(run.firstErrorLine.startsWith(QStringLiteral("File Open Error: ") + dir.path()))
        << run.firstErrorLine.toStdString();
    const QString prefix = QStringLiteral("The data read are saved in ");
    const QString said = run.errors.section(QLatin1Char('\n'), 1, 1);
    ASSERT_TRUE(said.startsWith(prefix)) << run.errors.toStdString();
    const QString recovery = said.mid(prefix.size());
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
    EXPECT_TRUE(run.firstErrorLine.startsWith(
        QString::fromLatin1(c.message).replace(QStringLiteral("PORT"), radio.devicePath())))
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
    {"DetectNg", "--port PORT detect", "ng@model", 3,
     "Communication Error: reply to ZQ318 on PORT does not end in OK"},
    {"DetectSilent", "--port PORT detect", "timeout@model", 3,
     "Communication Error: no reply to ZQ318 on PORT within 2000 ms"},
    {"ReadSettingsHangup", "--port PORT read --settings -o OUT", "hangup@00F0", 4, "COM Port Error"},
    {"WriteDataError", "--port PORT write OUT", "", 5, "Data Error"},
    {"ReadBothOptions", "--port PORT read --settings --memory -o OUT", "", 2, "zq318 read"},
    {"DumpIntoFileHangup", "--port PORT dump -o OUT", "hangup@0100", 3,
     "Communication Error: no answer to KV~F0100R"},
    {"ReadIntoAMissingFolder", "--port PORT read -o OUT.d/out.318", "", 6, "File Open Error: ", true},
    {"DumpIntoAMissingFolder", "--port PORT dump -o OUT.d/out.txt", "", 6, "File Open Error: ", true},
    {"DumpUnanswered", "--port PORT dump", "timeout@0000", 3, "Communication Error: no answer to KV~F0000R"},
    {"NoSuchPort", "--port /dev/zq318-no-such-port detect", "", 4,
     "COM Port Error: cannot open /dev/zq318-no-such-port: no such device"},
    {"NoSuchPortNumber", "--port 14 read -o OUT", "", 4, "COM Port Error: no serial port 14 (COM 14); the "}};
INSTANTIATE_TEST_SUITE_P(Verbs, CliFailureTest, ::testing::ValuesIn(kFailures), CaseName);

struct WriteCase {
    const char* name;
    int modelCode; // the radio's
    bool cloneCodeA;
    const char* fault;
    const char* arguments; // FILE: the sample, variant T with clone code 0
    int status;
    const char* outStart; // how standard output starts
    const char* errorStart;
    bool written; // whether any block was written
};

class CliWriteTest : public RadioTest, public ::testing::WithParamInterface<WriteCase> {};

TEST_P(CliWriteTest, GuardsVerifiesAndReports) {
    const WriteCase& c = GetParam();
    radio.setModelCode(c.modelCode);
    radio.setCloneCodeA(c.cloneCodeA);
    ASSERT_NO_FATAL_FAILURE(addFault(c.fault));
    FillSampleDocument(document);
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("sample.318"));
    ASSERT_TRUE(zq::files::SaveCloneFile(document, file).ok());

    const ToolRun run = RunTool(QString::fromLatin1(c.arguments)
                                    .split(QLatin1Char(' '))
                                    .replaceInStrings(QStringLiteral("FILE"), file)
                                    .replaceInStrings(QStringLiteral("PORT"), radio.devicePath()));
    EXPECT_EQ(run.status, c.status) << run.errors.toStdString();
    EXPECT_TRUE(run.out.startsWith(c.outStart)) << run.out.toStdString();
    if (*c.errorStart)
        EXPECT_TRUE(
            run.errors.startsWith(QString::fromLatin1(c.errorStart).replace(QStringLiteral("FILE"), file)))
            << run.errors.toStdString();
    else
        EXPECT_EQ(run.errors, QString());
    EXPECT_EQ(!radio.commands().filter(QRegularExpression(QStringLiteral("^KV~F....W"))).isEmpty(),
              c.written);
}

// The sample's channel n is at 136 + 0.1875 n MHz, in use unless n % 4 is 3; the radio starts blank.
const WriteCase kWrites[] = {
    {"VerifyPasses", kModelCodeT, false, "", "--port PORT write FILE --memory --verify", 0,
     "No differences\n", "", true},
    {"VerifyCatchesADroppedWrite", kModelCodeT, false, "drop@0340",
     "--port PORT write FILE --memory --verify", 3, "0340 channel 10, in use: file \"yes\", radio \"no\"\n",
     "Communication Error: 1 difference", true},
    {"VerifyAloneOnABlankRadio", kModelCodeT, false, "", "--port PORT verify FILE --settings", 3,
     "00E0 settings, ", "Communication Error: ", false},
    {"OtherVariantRefused", kModelCodeE, false, "", "--port PORT write FILE --settings", 5, "",
     "Data Error: FILE was made for ZQ-318 T, clone code 0, the radio is ZQ-318 E, clone code 0; --force "
     "writes it "
     "anyway\nOutside the radio's band (144.000-145.995MHz): VFO (146.5200), channel 0 (136.0000), channel 1 "
     "(136.1875), channel 2 (136.3750), channel 4",
     false},
    {"OtherCloneCodeRefused", kModelCodeT, true, "", "--port PORT write FILE --settings", 5, "",
     "Data Error: ", false},
    {"ForceWritesAnyway", kModelCodeE, false, "", "--port PORT write FILE --settings --force", 0, "", "",
     true},
    {"UnknownRadioRefused", 0x34, false, "", "--port PORT write FILE --settings", 3, "",
     "Communication Error: unknown model code 34", false},
};
INSTANTIATE_TEST_SUITE_P(Writes, CliWriteTest, ::testing::ValuesIn(kWrites), CaseName);

// Reads and writes leave a backup and a trace each under the data folder; `backups` lists them.
TEST(CliDataTest, BackupsAndTracesFollowTransfers) {
    VirtualRadio radio;
    ASSERT_TRUE(radio.open().ok());
    FillSampleRadio(radio);
    QTemporaryDir home, dir;
    const QString file = dir.filePath(QStringLiteral("read.318"));
    const QString port = radio.devicePath();
    ASSERT_EQ(RunTool({"--port", port, "read", "--settings", "-o", file}, home.path()).status, 0);
    ASSERT_EQ(RunTool({"--port", port, "write", "--settings", file}, home.path()).status, 0);
    const QString trace = dir.filePath(QStringLiteral("detect.txt"));
    ASSERT_EQ(RunTool({"--trace", trace, "--port", port, "detect"}, home.path()).status, 0);

    const ToolRun listed = RunTool({"backups"}, home.path());
    ASSERT_EQ(listed.status, 0);
    const QStringList lines = QString::fromUtf8(listed.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3) << listed.out.toStdString();
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Date ")));
    // The read kept what the start-up data hold in memory: no channel in use.
    for (const auto& [line, operation] : {std::pair{1, "write-settings"}, std::pair{2, "read-settings"}}) {
        const QStringList cells = lines[line].split(QRegularExpression(QStringLiteral("  +")));
        ASSERT_EQ(cells.size(), 6) << lines[line].toStdString();
        EXPECT_EQ(cells[1], QLatin1String(operation));
        EXPECT_EQ(cells[2].toLongLong(), QFileInfo(cells[5]).size());
        EXPECT_EQ(cells[3], QStringLiteral("ZQ-318 T, clone code 0"));
        EXPECT_EQ(cells[4], QStringLiteral("0"));
    }
    const QDir traces(home.filePath(QStringLiteral("Korvex/zq318/traces")));
    EXPECT_EQ(traces.entryList(QDir::Files).size(), 2); // read and write; detect went to its own file
    QFile detected(trace);
    ASSERT_TRUE(detected.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(detected.readAll());
    EXPECT_TRUE(text.contains(QStringLiteral("sent        ZQ318\\r\n"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("outcome     done\n"))) << text.toStdString();
}

// A backup that cannot be kept is told once; the read goes on and saves its file.
TEST(CliDataTest, AnUnwritableBackupFolderDoesNotStopARead) {
    VirtualRadio radio;
    ASSERT_TRUE(radio.open().ok());
    QTemporaryDir home, dir;
    ASSERT_TRUE(QDir(home.path()).mkpath(QStringLiteral("Korvex/zq318")));
    QFile blocker(home.filePath(QStringLiteral("Korvex/zq318/backups")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const QString file = dir.filePath(QStringLiteral("read.318"));
    const ToolRun run =
        RunTool({"--port", radio.devicePath(), "read", "--settings", "-o", file}, home.path());
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_EQ(run.errors.count(QStringLiteral("\n")), 1) << run.errors.toStdString();
    EXPECT_TRUE(run.firstErrorLine.startsWith(QStringLiteral("zq318: no backup kept: ")))
        << run.errors.toStdString();
}

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
    const ToolRun refused = RunTool({"--port", device, "detect"}, SharedDataHome(), asUser);
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
