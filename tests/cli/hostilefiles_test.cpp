// zq318's file verbs and the virtual radio's --image against files a user may name by mistake, and
// outputs that cannot or must not be written: each run fails at once with its status and a message,
// and every file already there keeps its SHA-256. Run as root, the tools run as "nobody", so that
// folder and file permissions bind them as they bind a user.
#include "files/csvexchange.h"
#include "sampledata.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace zq;
using testdata::Hostile;

namespace {

constexpr uid_t kNobody = 65534;

struct ToolRun {
    int status = -1;
    QString firstErrorLine;
};

class ToolWorkspace : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        const auto all = QFileDevice::Permissions(0x7777);
        ASSERT_TRUE(QFile::setPermissions(dir.path(), all));
        ASSERT_TRUE(QFile::copy(testdata::kDemoFile, path("demo.318")));
        model::Document demo;
        ASSERT_TRUE(testdata::WriteFile(path("demo.csv"), files::CsvExportText(demo)));
        ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("home")));
        ASSERT_TRUE(QFile::setPermissions(path("home"), all));
    }
    QString path(const QString& name) const { return dir.filePath(name); }

    // Runs a tool in the workspace with the user's folders inside it; a file size limit stands for a
    // full disk.
    ToolRun run(const QString& program, const QStringList& arguments, rlim_t fileSizeLimit = 0) const {
        QProcess process;
        process.setWorkingDirectory(dir.path());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            environment.insert(QLatin1String(name), path("home"));
        process.setProcessEnvironment(environment);
        process.setChildProcessModifier([fileSizeLimit] {
            if (fileSizeLimit > 0) {
                std::signal(SIGXFSZ, SIG_IGN);
                const struct rlimit limit { fileSizeLimit, fileSizeLimit };
                setrlimit(RLIMIT_FSIZE, &limit);
            }
            if (geteuid() == 0 &&
                (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
                _exit(127);
        });
        process.start(program, arguments);
        if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        // Qt's own warnings about the environment are not the tool's message.
        QString first;
        for (const QString& line : QString::fromUtf8(process.readAllStandardError()).split(QLatin1Char('\n')))
            if (!line.startsWith(QLatin1String("QStandardPaths:"))) {
                first = line;
                break;
            }
        return {process.exitCode(), first};
    }

    QTemporaryDir dir;
};

QString Tool(const char* name) {
    return QLatin1String(name) == QLatin1String("radio") ? QStringLiteral(ZQ318_RADIO_PATH)
                                                         : QStringLiteral(ZQ318_PATH);
}

QStringList Arguments(const char* text, const QString& input = QString()) {
    return QString::fromLatin1(text)
        .split(QLatin1Char(' '), Qt::SkipEmptyParts)
        .replaceInStrings(QStringLiteral("IN"), input);
}

// ---- inputs: every verb that reads a file, against every kind of bad file ----

struct Reader {
    const char* name;
    const char* tool;
    const char* arguments; // IN: the input
    bool csv;              // reads CSV rather than a clone file
};

const Reader kReaders[] = {
    {"Check", "zq318", "check IN", false},
    {"Show", "zq318", "show IN", false},
    {"Export", "zq318", "export IN -o out.csv", false},
    {"Diff", "zq318", "diff demo.318 IN", false},
    {"Write", "zq318", "--port /dev/zq318-no-port write IN", false},
    {"ImportBase", "zq318", "import demo.csv --base IN -o out.318", false},
    {"ReadBase", "zq318", "--port /dev/zq318-no-port read --base IN -o out.318", false},
    {"RadioImage", "radio", "--image IN", false},
    {"Import", "zq318", "import IN -o out.318", true},
    {"ImportChirp", "zq318", "import IN --format chirp -o out.318", true},
};

enum class Other { None, OtherKind, Semicolons };

struct Input {
    const char* name;
    Hostile kind;
    Other other;
    int cloneStatus; // 5 Data Error: read but not a clone file; 6: could not be read
    int csvStatus;   // 5: no record found, 6: could not be read
};

const Input kInputs[] = {
    {"Empty", Hostile::Empty, Other::None, 6, 5},
    {"Folder", Hostile::Folder, Other::None, 6, 6},
    {"Fifo", Hostile::Fifo, Other::None, 6, 6},
    {"LinkToFifo", Hostile::LinkToFifo, Other::None, 6, 6},
    {"HundredMegabytes", Hostile::Huge, Other::None, 5, 5},
    {"BinaryGarbage", Hostile::Garbage, Other::None, 5, 5},
    {"InvalidUtf8", Hostile::BadUtf8, Other::None, 5, 5},
    {"Vanished", Hostile::Missing, Other::None, 6, 6},
    {"Unreadable", Hostile::Unreadable, Other::None, 6, 6},
    {"OtherKindOfFile", Hostile::Empty, Other::OtherKind, 5, 5}, // a CSV file for a clone file, and back
    {"SemicolonSeparated", Hostile::Empty, Other::Semicolons, 5, 5},
};

struct ReadCase {
    Reader reader;
    Input input;
};

std::vector<ReadCase> ReadCases() {
    std::vector<ReadCase> cases;
    for (const Reader& reader : kReaders)
        for (const Input& input : kInputs)
            cases.push_back({reader, input});
    return cases;
}

void PrintTo(const ReadCase& c, std::ostream* out) {
    *out << c.reader.name << " of " << c.input.name;
}

class HostileInput : public ToolWorkspace, public ::testing::WithParamInterface<ReadCase> {};

TEST_P(HostileInput, RefusedWithItsStatusAndNothingChanges) {
    const auto& [reader, input] = GetParam();
    const QString name = reader.csv ? QStringLiteral("in.csv") : QStringLiteral("in.318");
    const QByteArray clone = testdata::ReadFile(path("demo.318"));
    const QByteArray csv = testdata::ReadFile(path("demo.csv"));
    if (input.other == Other::None) {
        ASSERT_TRUE(testdata::MakeHostile(input.kind, path(name), reader.csv ? csv : clone));
    } else {
        const QByteArray text = input.other == Other::Semicolons ? QByteArray(csv).replace(',', ';')
                                : reader.csv                     ? clone
                                                                 : csv;
        ASSERT_TRUE(testdata::WriteFile(path(name), text));
    }
    const std::map<QString, QString> before = testdata::Snapshot(dir.path());

    const ToolRun result = run(Tool(reader.tool), Arguments(reader.arguments, name));
    const int status = reader.csv ? input.csvStatus : input.cloneStatus;
    EXPECT_EQ(result.status, status) << result.firstErrorLine.toStdString();
    // "Data Error" for what was read but is no clone file or holds no record, else the file is named.
    const bool told = status == 5 ? result.firstErrorLine.contains(QLatin1String("Data Error"))
                                  : result.firstErrorLine.contains(QLatin1String("File Open Error")) ||
                                        result.firstErrorLine.contains(name);
    EXPECT_TRUE(told) << result.firstErrorLine.toStdString();
    EXPECT_EQ(testdata::Snapshot(dir.path()), before);
}

INSTANTIATE_TEST_SUITE_P(Table, HostileInput, ::testing::ValuesIn(ReadCases()), [](const auto& info) {
    return std::string(info.param.reader.name) + "Of" + info.param.input.name;
});

// ---- outputs: places a verb must not or cannot write ----

struct OutputCase {
    const char* name;
    const char* arguments;
    int status;
    const char* message; // how the first line on standard error starts
    rlim_t fileSizeLimit = 0;
};

const OutputCase kOutputs[] = {
    {"ExportOntoItsInput", "export demo.318 -o demo.318", 2,
     "zq318 export: the output demo.318 is the input"},
    {"ExportOntoItsInputByAnotherName", "export demo.318 -o ./folder/../demo.318", 2, "zq318 export: "},
    {"ExportThroughASymbolicLink", "export link.318 -o demo.318", 2, "zq318 export: "},
    {"ExportOntoAHardLink", "export demo.318 -o hard.318", 2, "zq318 export: "},
    {"ImportOntoItsInput", "import demo.csv -o demo.csv", 2, "zq318 import: "},
    {"ImportOntoItsBase", "import demo.csv --base demo.318 -o ./demo.318", 2, "zq318 import: "},
    {"ReadOntoItsBase", "--port /dev/zq318-no-port read --base link.318 -o demo.318", 2, "zq318 read: "},
    // Checked before the port is even opened, so no radio is needed to see it.
    {"ReadIntoAMissingFolder", "--port /dev/zq318-no-port read -o none/out.318", 6,
     "File Open Error: none/out.318"},
    {"ReadIntoAReadOnlyFolder", "--port /dev/zq318-no-port read -o readonly/out.318", 6, "File Open Error: "},
    {"ReadOntoAFolder", "--port /dev/zq318-no-port read -o folder", 6, "File Open Error: "},
    {"DumpIntoAReadOnlyFolder", "--port /dev/zq318-no-port dump -o readonly/out.txt", 6, "File Open Error: "},
    {"ExportIntoAReadOnlyFolder", "export demo.318 -o readonly/old.csv", 6, "File Open Error: "},
    {"ExportOntoAWriteProtectedFile", "export demo.318 -o protected.csv", 6, "File Open Error: "},
    {"ExportOntoDevFull", "export demo.318 -o /dev/full", 6, "File Open Error: /dev/full"},
    {"ExportOntoAFifo", "export demo.318 -o fifo.csv", 6, "File Open Error: fifo.csv"},
    // A copy of /dev/full that the tool has the rights to replace (it and the folder are everyone's).
    {"ExportOntoADevice", "export demo.318 -o device", 6, "File Open Error: device"},
    {"ExportOnAFullDisk", "export demo.318 -o demo.csv", 6, "File Open Error: demo.csv", 1000},
    {"ImportOnAFullDisk", "import demo.csv -o old.318", 6, "File Open Error: old.318", 4096},
};

void PrintTo(const OutputCase& c, std::ostream* out) {
    *out << c.arguments;
}

class HostileOutput : public ToolWorkspace, public ::testing::WithParamInterface<OutputCase> {};

TEST_P(HostileOutput, RefusedBeforeAnythingIsWritten) {
    const OutputCase& c = GetParam();
    QDir workspace(dir.path());
    if (QLatin1String(c.name) == QLatin1String("ExportOntoADevice")) {
        if (geteuid() != 0) GTEST_SKIP() << "making a device takes root; ExportOntoDevFull stands in";
        ASSERT_EQ(::mknod(QFile::encodeName(path("device")).constData(), S_IFCHR, makedev(1, 7)), 0);
        ASSERT_TRUE(QFile::setPermissions(path("device"), QFileDevice::Permissions(0x6666)));
    }
    ASSERT_TRUE(QFile::link(QStringLiteral("demo.318"), path("link.318")));
    ASSERT_EQ(::link(QFile::encodeName(path("demo.318")).constData(),
                     QFile::encodeName(path("hard.318")).constData()),
              0);
    ASSERT_TRUE(workspace.mkdir(QStringLiteral("folder")) && workspace.mkdir(QStringLiteral("readonly")));
    ASSERT_TRUE(testdata::WriteFile(path("readonly/old.csv"), "old\r\n"));
    ASSERT_TRUE(QFile::setPermissions(path("readonly"), QFileDevice::Permissions(0x5555)));
    ASSERT_TRUE(testdata::WriteFile(path("protected.csv"), "old\r\n"));
    ASSERT_TRUE(QFile::setPermissions(path("protected.csv"), QFileDevice::Permissions(0x4444)));
    ASSERT_TRUE(testdata::MakeHostile(Hostile::Fifo, path("fifo.csv"), {}));
    ASSERT_TRUE(QFile::setPermissions(path("fifo.csv"), QFileDevice::Permissions(0x6666))); // writable by all
    ASSERT_TRUE(QFile::copy(path("demo.318"), path("old.318")));
    // Files the tool may replace, so that only the full disk stops it.
    for (const char* name : {"old.318", "demo.csv", "readonly/old.csv"})
        ASSERT_TRUE(QFile::setPermissions(path(name), QFileDevice::Permissions(0x6666)));
    const std::map<QString, QString> before = testdata::Snapshot(dir.path());
    struct stat full {};
    ASSERT_EQ(::stat("/dev/full", &full), 0);

    const ToolRun result = run(Tool("zq318"), Arguments(c.arguments), c.fileSizeLimit);
    EXPECT_EQ(result.status, c.status) << result.firstErrorLine.toStdString();
    EXPECT_TRUE(result.firstErrorLine.startsWith(QLatin1String(c.message)))
        << result.firstErrorLine.toStdString();
    EXPECT_EQ(testdata::Snapshot(dir.path()), before);
    struct stat fullAfter {};
    ASSERT_EQ(::stat("/dev/full", &fullAfter), 0);
    EXPECT_TRUE(S_ISCHR(fullAfter.st_mode) && fullAfter.st_rdev == full.st_rdev);
    QFile::setPermissions(path("readonly"), QFileDevice::Permissions(0x7777));
}

INSTANTIATE_TEST_SUITE_P(Table, HostileOutput, ::testing::ValuesIn(kOutputs),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
