// The file core's readers against files a user may name by mistake, and its writers against places
// that cannot take a file: each gives its error at once, and nothing already on disk changes.
#include "files/atomicwrite.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "files/preferences.h"
#include "sampledata.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace zq;
using namespace zq::model;
using testdata::Hostile;

namespace {

constexpr int kFatalPort = -1; // the port file read ends the program

struct HostileRead {
    const char* name;
    Hostile kind;
    Outcome open;    // Open after the dialog
    Outcome startup; // the start-up open of a file named on the command line
    Outcome import;  // CSV import
    int port;        // the port the port file gives
};

// Whatever cannot be read is "File Open Error" for Open and fatal where nothing traps it (the start-up
// open, the import, the port file); what is read but is no clone file is "Data Error"; the import skips
// what it cannot place. A file far too large is refused unread: Huge starts with valid data that would
// otherwise be taken. The port file reads only its first line, and only a file listed as such (a folder
// or FIFO of that name is passed over, a link to a FIFO is not).
const HostileRead kReads[] = {
    {"Empty", Hostile::Empty, Outcome::FileOpenError, Outcome::Fatal, Outcome::Done, kFatalPort},
    {"Folder", Hostile::Folder, Outcome::FileOpenError, Outcome::Fatal, Outcome::Fatal, 1},
    {"Fifo", Hostile::Fifo, Outcome::FileOpenError, Outcome::Fatal, Outcome::Fatal, 1},
    {"LinkToFifo", Hostile::LinkToFifo, Outcome::FileOpenError, Outcome::Fatal, Outcome::Fatal, kFatalPort},
    {"HundredMegabytes", Hostile::Huge, Outcome::DataError, Outcome::DataError, Outcome::DataError, 1},
    {"BinaryGarbage", Hostile::Garbage, Outcome::DataError, Outcome::DataError, Outcome::Done, 1},
    {"InvalidUtf8", Hostile::BadUtf8, Outcome::DataError, Outcome::DataError, Outcome::Done, 1},
    {"Vanished", Hostile::Missing, Outcome::FileOpenError, Outcome::Fatal, Outcome::Fatal, 1},
    {"Unreadable", Hostile::Unreadable, Outcome::FileOpenError, Outcome::Fatal, Outcome::Fatal, kFatalPort},
};

class HostileReadTest : public ::testing::TestWithParam<HostileRead> {
protected:
    void SetUp() override {
        if (GetParam().kind == Hostile::Unreadable && geteuid() == 0)
            GTEST_SKIP() << "permissions do not bind root; zq318's table runs this case unprivileged";
        ASSERT_TRUE(files::LoadCloneFile(document, testdata::kDemoFile).ok());
        document.setCurrentFilePath(QStringLiteral("/somewhere/else.318"));
        document.setDataChanged(true);
    }
    // Makes the input under `name` in a folder of its own; `valid` what Huge starts with.
    QString make(const QString& name, const QByteArray& valid) {
        const QString folder = dir.filePath(name + QStringLiteral(".d"));
        EXPECT_TRUE(QDir().mkpath(folder));
        const QString path = QDir(folder).filePath(name);
        EXPECT_TRUE(testdata::MakeHostile(GetParam().kind, path, valid));
        return path;
    }
    QTemporaryDir dir;
    Document document;
};

TEST_P(HostileReadTest, EachReaderRefusesAndNothingChanges) {
    const HostileRead& c = GetParam();
    const QByteArray clone = testdata::ReadFile(testdata::kDemoFile);
    files::CsvImportReport report;
    // One file for the clone and port readers (a clone file is read whatever its name), one for the import.
    const QString clonePath = make(files::PortFileName(), clone);
    const QString csvPath = make(QStringLiteral("import.csv"), files::CsvExportText(document));
    const std::map<QString, QString> before = testdata::Snapshot(dir.path());

    const Contents contents = document.contents();
    const Result opened = files::OpenCloneFile(document, clonePath);
    EXPECT_EQ(opened.outcome, c.open) << opened.detail.toStdString();
    EXPECT_TRUE(document.contents() == contents);
    EXPECT_EQ(document.CurrentFilePath(), QStringLiteral("/somewhere/else.318"));
    EXPECT_TRUE(document.DataChanged());

    Document startup;
    const Result loaded = files::LoadCloneFile(startup, clonePath);
    EXPECT_EQ(loaded.outcome, c.startup) << loaded.detail.toStdString();
    EXPECT_FALSE(loaded.ok() || loaded.message().isEmpty());
    EXPECT_TRUE(startup.memory() == Document().memory());

    const Result imported = files::ImportCsv(document, csvPath, &report);
    EXPECT_EQ(imported.outcome, c.import) << imported.detail.toStdString();
    EXPECT_TRUE(document.memory() == contents.memory);
    EXPECT_EQ(report.recordsStored, 0);
    EXPECT_EQ(report.read, c.import == Outcome::Done);

    const files::PortSetting port = files::LoadPortSetting(clonePath);
    EXPECT_EQ(port.result.ok() ? port.port : kFatalPort, c.port) << port.result.detail.toStdString();

    EXPECT_EQ(testdata::Snapshot(dir.path()), before);
}

INSTANTIATE_TEST_SUITE_P(Inputs, HostileReadTest, ::testing::ValuesIn(kReads),
                         [](const auto& info) { return std::string(info.param.name); });

struct HostileWrite {
    const char* name;
    std::function<QString(const QDir&)> make; // the target, made in the folder
};

const HostileWrite kWrites[] = {
    {"Folder", [](const QDir& d) { return d.mkdir("out") ? d.filePath("out") : QString(); }},
    {"Fifo",
     [](const QDir& d) {
         return ::mkfifo(QFile::encodeName(d.filePath("out")).constData(), 0644) == 0 ? d.filePath("out")
                                                                                      : QString();
     }},
    // With the rights to replace /dev/full, a copy of it here stands in (root must not touch the real one).
    {"DevFull",
     [](const QDir& d) {
         if (geteuid() != 0) return QStringLiteral("/dev/full");
         return ::mknod(QFile::encodeName(d.filePath("full")).constData(), S_IFCHR | 0666, makedev(1, 7)) == 0
                    ? d.filePath("full")
                    : QString();
     }},
    {"MissingFolder", [](const QDir& d) { return d.filePath("none/out"); }},
    {"ReadOnlyFolder",
     [](const QDir& d) {
         d.mkdir("ro");
         testdata::WriteFile(d.filePath("ro/out"), "previous\r\n");
         return QFile::setPermissions(d.filePath("ro"), QFileDevice::ReadOwner | QFileDevice::ExeOwner)
                    ? d.filePath("ro/out")
                    : QString();
     }},
};

class HostileWriteTest : public ::testing::TestWithParam<HostileWrite> {};

// Save and Export go through the same atomic write; neither replaces what is there.
TEST_P(HostileWriteTest, SaveAndExportFailAndLeaveTheTarget) {
    if (QLatin1String(GetParam().name) == QLatin1String("ReadOnlyFolder") && geteuid() == 0)
        GTEST_SKIP() << "permissions do not bind root; zq318's table runs this case unprivileged";
    QTemporaryDir dir;
    const QString target = GetParam().make(QDir(dir.path()));
    ASSERT_FALSE(target.isEmpty());
    const std::map<QString, QString> before = testdata::Snapshot(dir.path());
    struct stat device {};
    ::stat(QFile::encodeName(target).constData(), &device);

    Document document;
    document.setDataChanged(true);
    EXPECT_EQ(files::SaveCloneFile(document, target).outcome, Outcome::FileOpenError);
    EXPECT_EQ(files::ExportCsv(document, target).outcome, Outcome::FileOpenError);
    EXPECT_TRUE(document.DataChanged());

    EXPECT_EQ(testdata::Snapshot(dir.path()), before);
    struct stat after {};
    ::stat(QFile::encodeName(target).constData(), &after);
    EXPECT_EQ(after.st_mode, device.st_mode);
    EXPECT_EQ(after.st_rdev, device.st_rdev);
    QFile::setPermissions(dir.filePath("ro"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

INSTANTIATE_TEST_SUITE_P(Targets, HostileWriteTest, ::testing::ValuesIn(kWrites),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
