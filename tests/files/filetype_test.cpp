// The clone file type that the desktop learns from the installed shared-mime-info package: a file
// manager knows a clone file by its name, and by its first line when the name does not tell.
#include "sampledata.h"

#include <QDir>
#include <QMimeDatabase>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(CloneFileType, KnownByNameAndByFirstLine) {
    QTemporaryDir data;
    ASSERT_TRUE(QDir(data.path()).mkpath(QStringLiteral("mime/packages")));
    const QByteArray package = zq::testdata::ReadFile(QStringLiteral(ZQ_SOURCE_DIR "/data/zq318-clone.xml"));
    ASSERT_FALSE(package.isEmpty());
    ASSERT_TRUE(
        zq::testdata::WriteFile(data.filePath(QStringLiteral("mime/packages/zq318-utility.xml")), package));
    // Before the first look-up: the database is read once per process.
    qputenv("XDG_DATA_DIRS", (data.path() + QStringLiteral(":/usr/share")).toLocal8Bit());

    const QByteArray clone = zq::testdata::ReadFile(zq::testdata::kDemoFile);
    QTemporaryDir files;
    const std::tuple<const char*, QByteArray, const char*> cases[] = {
        {"radio.318", clone, "application/x-zq318-clone"},
        {"radio-backup", clone, "application/x-zq318-clone"}, // no suffix: the first line tells
        {"notes.318", "not a clone file\r\n", "application/x-zq318-clone"},
        {"notes.txt", "Korvex ZQ-318 owners' notes\r\n", "text/plain"},
    };
    QMimeDatabase types;
    for (const auto& [name, contents, type] : cases) {
        const QString path = files.filePath(QLatin1String(name));
        ASSERT_TRUE(zq::testdata::WriteFile(path, contents));
        EXPECT_EQ(types.mimeTypeForFile(path).name().toStdString(), type) << name;
    }
    const QMimeType cloneType = types.mimeTypeForName(QStringLiteral("application/x-zq318-clone"));
    EXPECT_TRUE(cloneType.inherits(QStringLiteral("text/plain"))); // any text editor opens one too
    EXPECT_EQ(cloneType.comment().toStdString(), "ZQ-318 clone file");
}

} // namespace
