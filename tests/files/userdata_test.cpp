#include "files/userdata.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sys/stat.h>

using namespace zq::files;

namespace {
unsigned modeOf(const QString& path) {
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
}

class UserDataTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(home.isValid());
        qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
        SetProgramIdentity();
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }
    QTemporaryDir home;
};
} // namespace

TEST_F(UserDataTest, FoldersAndFilesAreTheOwnersAlone) {
    const QString folder = UserDataFolder(QStringLiteral("backups"));
    EXPECT_EQ(folder, home.filePath(QStringLiteral("Korvex/zq318/backups")));
    EXPECT_EQ(modeOf(folder), 0700u);
    const QString file = QDir(folder).filePath(QStringLiteral("a.318"));
    EXPECT_EQ(WritePrivateFile(file, "data"), QString());
    EXPECT_EQ(modeOf(file), 0600u);

    // A plain file where the folder should be: no folder, and a reason.
    QFile(home.filePath(QStringLiteral("Korvex/zq318/traces"))).open(QIODevice::WriteOnly);
    QString why;
    EXPECT_EQ(UserDataFolder(QStringLiteral("traces"), &why), QString());
    EXPECT_FALSE(why.isEmpty());
}

TEST_F(UserDataTest, NamesSortByTimeAndOnlyTheNewestAreKept) {
    const QString folder = UserDataFolder(QStringLiteral("traces"));
    const QDateTime start(QDate(2026, 11, 23), QTime(9, 5, 7, 30));
    EXPECT_EQ(TimestampedName(start, {QStringLiteral("E"), QString(), QStringLiteral("read")},
                              QStringLiteral(".318")),
              QStringLiteral("2026-11-23_090507-030_E_read.318"));
    for (int i = 0; i < 12; ++i)
        WritePrivateFile(
            QDir(folder).filePath(TimestampedName(start.addSecs(i * 3600), {}, QStringLiteral(".txt"))), "x");
    WritePrivateFile(QDir(folder).filePath(QStringLiteral("notes.md")), "kept: another kind of file");
    KeepNewest(folder, {QStringLiteral("*.txt")}, 10);
    const QStringList kept = NewestFirst(folder, {QStringLiteral("*.txt")});
    ASSERT_EQ(kept.size(), 10);
    EXPECT_EQ(kept.first(), TimestampedName(start.addSecs(11 * 3600), {}, QStringLiteral(".txt")));
    EXPECT_EQ(kept.last(), TimestampedName(start.addSecs(2 * 3600), {}, QStringLiteral(".txt")));
    EXPECT_TRUE(QFile::exists(QDir(folder).filePath(QStringLiteral("notes.md"))));
}

TEST_F(UserDataTest, StartingAUserFileMakesItAndPrunesOnlyAfterASuccess) {
    using zq::model::Outcome;
    using zq::model::Result;
    const QString folder = UserDataFolder(QStringLiteral("traces"));
    const QDateTime old(QDate(2020, 1, 1), QTime(0, 0));
    for (int i = 0; i < 3; ++i)
        WritePrivateFile(QDir(folder).filePath(TimestampedName(old.addSecs(i), {}, QStringLiteral(".txt"))),
                         "x");
    const auto create = [](const QString& path) {
        return WritePrivateFile(path, "trace").isEmpty() ? Result::done()
                                                         : Result::fail(Outcome::FileOpenError, path);
    };

    // A start that fails leaves the old files alone.
    QString tried;
    const Result failed =
        StartUserFile(QStringLiteral("traces"), {QStringLiteral("read")}, QStringLiteral(".txt"), 2,
                      [&](const QString& path) {
                          tried = path;
                          return Result::fail(Outcome::FileOpenError, QStringLiteral("disk full"));
                      });
    EXPECT_EQ(failed.detail, QStringLiteral("disk full"));
    EXPECT_TRUE(tried.startsWith(folder + QLatin1Char('/')) && tried.endsWith(QStringLiteral("_read.txt")))
        << tried.toStdString();
    EXPECT_EQ(NewestFirst(folder, {QStringLiteral("*.txt")}).size(), 3);

    // A new file is the newest, and only `keep` stay.
    QString made;
    ASSERT_TRUE(StartUserFile(QStringLiteral("traces"), {QStringLiteral("read")}, QStringLiteral(".txt"), 2,
                              [&](const QString& path) {
                                  made = path;
                                  return create(path);
                              })
                    .ok());
    const QStringList kept = NewestFirst(folder, {QStringLiteral("*.txt")});
    ASSERT_EQ(kept.size(), 2);
    EXPECT_EQ(QDir(folder).filePath(kept.first()), made);

    // No folder: the reason, and start is never called.
    QFile(home.filePath(QStringLiteral("Korvex/zq318/nowhere"))).open(QIODevice::WriteOnly);
    bool called = false;
    const Result noFolder =
        StartUserFile(QStringLiteral("nowhere"), {}, QStringLiteral(".txt"), 2, [&](const QString&) {
            called = true;
            return Result::done();
        });
    EXPECT_EQ(noFolder.outcome, Outcome::FileOpenError);
    EXPECT_FALSE(called);
}
