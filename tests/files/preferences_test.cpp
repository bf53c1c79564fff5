#include "files/preferences.h"
#include "model/tables.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
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
    Outcome outcome;
};

const PortCase kPortCases[] = {
    {"Missing", nullptr, "", 1, Outcome::Done},
    {"Three", "ZQ-318.ini", "3\r\n", 3, Outcome::Done},
    {"Fourteen", "ZQ-318.ini", "14\r\n", 14, Outcome::Done},
    {"Fifteen", "ZQ-318.ini", "15\r\n", 1, Outcome::Done},
    {"Zero", "ZQ-318.ini", "0\r\n", 1, Outcome::Done},
    {"Negative", "ZQ-318.ini", "-3\r\n", 1, Outcome::Done},
    {"NoLineEnd", "ZQ-318.ini", "7", 7, Outcome::Done},
    {"BlanksAround", "ZQ-318.ini", "  9  \r\n", 9, Outcome::Done},
    {"OnlyTheFirstLine", "ZQ-318.ini", "5\r\n8\r\n", 5, Outcome::Done},
    {"NonNumeric", "ZQ-318.ini", "COM3\r\n", 1, Outcome::Done},
    {"BinaryGarbage", "ZQ-318.ini", QByteArray("\0\xff\x01", 3), 1, Outcome::Done},
    {"EmptyFirstLine", "ZQ-318.ini", "\r\n4\r\n", 1, Outcome::Done},
    {"OtherLetterCase", "zq-318.INI", "4\r\n", 1, Outcome::Done},
    {"Empty", "ZQ-318.ini", "", 1, Outcome::Fatal},
};

void PrintTo(const PortCase& c, std::ostream* os) {
    *os << c.name;
}

class PortFile : public ::testing::TestWithParam<PortCase> {};

TEST_P(PortFile, GivesThePortOrOne) {
    const PortCase& c = GetParam();
    QTemporaryDir dir;
    if (c.fileName) {
        QFile file(dir.filePath(QLatin1String(c.fileName)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(c.contents);
    }
    const files::PortSetting setting = files::LoadPortSetting(dir.filePath(files::PortFileName()));
    EXPECT_EQ(setting.port, c.port);
    EXPECT_EQ(setting.result.outcome, c.outcome);
    if (c.outcome == Outcome::Fatal) {
        EXPECT_FALSE(setting.result.message().isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, PortFile, ::testing::ValuesIn(kPortCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PortFileWrite, WritesTheNumberAndReadsItBack) {
    QTemporaryDir dir;
    // a file differing only in letter case stays, and the exact name is written beside it
    QFile other(dir.filePath(QStringLiteral("zq-318.ini")));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.close();
    const QString path = dir.filePath(files::PortFileName());
    for (int port : {1, 7, 14}) {
        ASSERT_TRUE(files::SavePortSetting(port, path).ok());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), QByteArray::number(port) + "\r\n");
        EXPECT_EQ(files::LoadPortSetting(path).port, port);
    }
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("zq-318.ini"))));

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
    const bool programDirWritable = QFileInfo(QCoreApplication::applicationDirPath()).isWritable();
    if (programDirWritable) {
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
