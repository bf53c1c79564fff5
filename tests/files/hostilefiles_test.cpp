// The file core's readers against files a user may name by mistake: each gives its error at once, and
// nothing already on disk changes. The writers' table runs through zq318 (tests/cli).
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "files/preferences.h"
#include "sampledata.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
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

} // namespace
