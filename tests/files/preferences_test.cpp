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

namespace {

TEST(PortFile, GivesThePortOrOne) {
    const std::tuple<const char*, QByteArray, int> cases[] = {{"ZQ-318.ini", "15\r\n", 1},
                                                              {"ZQ-318.ini", "0\r\n", 1},
                                                              {"ZQ-318.ini", "2.5\r\n", 1},
                                                              {"ZQ-318.ini", "  9  \r\n8\r\n", 9},
                                                              {"zq-318.INI", "4\r\n", 1}};
    for (const auto& [name, contents, port] : cases) {
        QTemporaryDir dir;
        ASSERT_TRUE(testdata::WriteFile(dir.filePath(QLatin1String(name)), contents));
        const files::PortSetting setting = files::LoadPortSetting(dir.filePath(files::PortFileName()));
        EXPECT_EQ(setting.port, port) << name << " " << contents.constData();
        EXPECT_TRUE(setting.result.ok()) << name << " " << contents.constData();
    }
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
