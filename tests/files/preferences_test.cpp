#include "files/preferences.h"
#include "files/programfiles.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
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

// An installed program's folder is the system's even where it can write (as the superuser).
TEST(PortFileWrite, InstalledProgramKeepsItPerUser) {
    QTemporaryDir dir;
    const QString bin = dir.filePath(QStringLiteral("usr/bin")),
                  build = dir.filePath(QStringLiteral("build"));
    const QString config = dir.filePath(QStringLiteral("home/.config/Korvex/zq318"));
    ASSERT_TRUE(QDir().mkpath(bin) && QDir().mkpath(build));
    const QString locked = dir.filePath(QStringLiteral("locked"));
    ASSERT_TRUE(QDir().mkpath(locked) &&
                QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    const bool canWriteAnything = QFileInfo(locked).isWritable(); // the superuser
    const std::tuple<QString, QString, QString> cases[] = {
        {build, bin, build},
        {bin, bin, config},
        {locked, bin, canWriteAnything ? locked : config},
        {QString(), bin, config},
    };
    for (const auto& [program, installed, folder] : cases)
        EXPECT_EQ(files::PortFileFolder(program, installed, config), folder) << program.toStdString();

    // The per-user folder of a new user does not exist yet.
    const QString path = QDir(config).filePath(files::PortFileName());
    ASSERT_TRUE(files::SavePortSetting(7, path).ok());
    EXPECT_EQ(testdata::ReadFile(path), QByteArray("7\r\n"));
}

TEST(RememberedAdapter, KeptBesideTheNumberInTheUserSettings) {
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("Korvex"));
    QCoreApplication::setApplicationName(QStringLiteral("zq318"));
    QSettings().clear();
    EXPECT_EQ(files::LoadRememberedAdapter().port, 0);
    const QString cable = QStringLiteral("/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A1-if00-port0");
    files::SaveRememberedAdapter({3, cable});
    const files::RememberedAdapter loaded = files::LoadRememberedAdapter();
    EXPECT_EQ(loaded.port, 3);
    EXPECT_EQ(loaded.identity, cable);
    files::SaveRememberedAdapter({15, cable}); // no such number: nothing remembered
    EXPECT_EQ(files::LoadRememberedAdapter().port, 0);
    QSettings().clear();
}

TEST(UserGuide, InstalledBesideTheProgramElseInTheSources) {
    QTemporaryDir dir;
    const QString bin = dir.filePath(QStringLiteral("usr/bin"));
    const QString installed = dir.filePath(QStringLiteral("usr/share/doc/zq318-utility/guide.md"));
    const QString source = dir.filePath(QStringLiteral("src/docs/guide.md"));
    const QString relative = QStringLiteral("../share/doc/zq318-utility/guide.md");
    ASSERT_TRUE(QDir().mkpath(bin) && QDir().mkpath(QFileInfo(installed).path()) &&
                QDir().mkpath(QFileInfo(source).path()));
    EXPECT_EQ(files::UserGuidePathFrom(bin, relative, source), QString());
    ASSERT_TRUE(testdata::WriteFile(source, "# guide\n"));
    EXPECT_EQ(files::UserGuidePathFrom(bin, relative, source), source);
    ASSERT_TRUE(testdata::WriteFile(installed, "# guide\n"));
    EXPECT_EQ(files::UserGuidePathFrom(bin, relative, source), installed);
    EXPECT_EQ(files::UserGuidePathFrom(QString(), relative, source), source);
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
