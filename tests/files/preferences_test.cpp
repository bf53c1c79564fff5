#include "files/preferences.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QCoreApplication>
#include <QDir>
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
    {"OnlyTheFirstLineTrimmed", "ZQ-318.ini", "  9  \r\n8\r\n", 9},
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

TEST(PortFileWrite, WritesTheNumberOrFails) {
    QTemporaryDir dir;
    ASSERT_TRUE(files::SavePortSetting(14, dir.filePath(files::PortFileName())).ok());
    EXPECT_EQ(testdata::ReadFile(dir.filePath(files::PortFileName())), "14\r\n");
    const model::Result unwritable =
        files::SavePortSetting(3, dir.filePath(QStringLiteral("gone/ZQ-318.ini")));
    EXPECT_EQ(unwritable.outcome, Outcome::Fatal);
    EXPECT_FALSE(unwritable.message().isEmpty());
}

TEST(PortFileWrite, LivesBesideTheProgramWhoseFolderIsWritable) {
    int argc = 1;
    char name[] = "files_tests";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    EXPECT_EQ(files::PortFilePath(), QDir(QCoreApplication::applicationDirPath()).filePath("ZQ-318.ini"));
}

TEST(WindowGeometry, StoredInTwipsUnderTheTitle) {
    QStandardPaths::setTestModeEnabled(true);
    files::SaveWindowGeometry(QRect(10, 20, 680, 480));
    QSettings store(QCoreApplication::organizationName(), model::AppTitle());
    store.beginGroup(QStringLiteral("Settings"));
    const std::pair<const char*, const char*> twips[] = {
        {"MainLeft", "150"}, {"MainTop", "300"}, {"MainWidth", "10200"}, {"MainHeight", "7200"}};
    for (const auto& [key, value] : twips)
        EXPECT_EQ(store.value(QLatin1String(key)).toString(), QLatin1String(value)) << key;
    store.clear();
}

} // namespace
