#include "files/preferences.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QCoreApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace zq;
using model::Outcome;

namespace {

struct PortCase {
    const char* name;
    const char* fileName; // nullptr: no file
    QByteArray contents;
    int port;
    Outcome outcome = Outcome::Done;
};

const PortCase kPortCases[] = {
    {"Missing", nullptr, "", 1},
    {"Fourteen", "ZQ-318.ini", "14\r\n", 14},
    {"Fifteen", "ZQ-318.ini", "15\r\n", 1},
    {"Zero", "ZQ-318.ini", "0\r\n", 1},
    {"Fraction", "ZQ-318.ini", "2.5\r\n", 1},
    {"BlanksAroundNoLineEnd", "ZQ-318.ini", "  9  ", 9},
    {"OnlyTheFirstLine", "ZQ-318.ini", "5\r\n8\r\n", 5},
    {"OtherLetterCase", "zq-318.INI", "4\r\n", 1},
    {"Empty", "ZQ-318.ini", "", 1, Outcome::Fatal},
};

class PortFile : public ::testing::TestWithParam<PortCase> {};

TEST_P(PortFile, GivesThePortOrOne) {
    const PortCase& c = GetParam();
    QTemporaryDir dir;
    ASSERT_TRUE(!c.fileName || testdata::WriteFile(dir.filePath(QLatin1String(c.fileName)), c.contents));
    const files::PortSetting setting = files::LoadPortSetting(dir.filePath(files::PortFileName()));
    EXPECT_EQ(setting.port, c.port);
    EXPECT_EQ(setting.result.outcome, c.outcome);
    EXPECT_TRUE(c.outcome != Outcome::Fatal || !setting.result.message().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Cases, PortFile, ::testing::ValuesIn(kPortCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PortFileWrite, WritesTheNumberBesideAFileOfOtherLetterCase) {
    QTemporaryDir dir;
    ASSERT_TRUE(testdata::WriteFile(dir.filePath(QStringLiteral("zq-318.ini")), "7\r\n"));
    const QString path = dir.filePath(files::PortFileName());
    ASSERT_TRUE(files::SavePortSetting(14, path).ok());
    EXPECT_EQ(testdata::ReadFile(path), "14\r\n");
    EXPECT_EQ(testdata::ReadFile(dir.filePath(QStringLiteral("zq-318.ini"))), "7\r\n");
    const model::Result unwritable =
        files::SavePortSetting(3, dir.filePath(QStringLiteral("gone/ZQ-318.ini")));
    EXPECT_EQ(unwritable.outcome, Outcome::Fatal);
    EXPECT_FALSE(unwritable.message().isEmpty());
}

TEST(PortFileWrite, LivesBesideTheProgramWhenThatFolderIsWritable) {
    int argc = 1;
    char name[] = "files_tests";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    const QString path = files::PortFilePath();
    EXPECT_TRUE(path.endsWith(QStringLiteral("/ZQ-318.ini")));
    if (QFileInfo(QCoreApplication::applicationDirPath()).isWritable()) {
        EXPECT_EQ(QFileInfo(path).absolutePath(), QCoreApplication::applicationDirPath());
    }
}

TEST(WindowGeometry, StoredInTwipsUnderTheTitle) {
    QStandardPaths::setTestModeEnabled(true);
    files::SaveWindowGeometry(QRect(10, 20, 680, 480));
    QSettings store(QCoreApplication::organizationName(), model::AppTitle());
    store.beginGroup(QStringLiteral("Settings"));
    EXPECT_EQ(store.value(QStringLiteral("MainLeft")).toString(), QStringLiteral("150"));
    EXPECT_EQ(store.value(QStringLiteral("MainTop")).toString(), QStringLiteral("300"));
    EXPECT_EQ(store.value(QStringLiteral("MainWidth")).toString(), QStringLiteral("10200"));
    EXPECT_EQ(store.value(QStringLiteral("MainHeight")).toString(), QStringLiteral("7200"));
    store.endGroup();
    store.clear();
}

} // namespace
