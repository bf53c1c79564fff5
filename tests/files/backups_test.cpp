#include "files/backups.h"
#include "files/clonefile.h"
#include "files/userdata.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace zq;
using namespace zq::files;

namespace {

class BackupTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(home.isValid());
        qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
        SetProgramIdentity();
        ASSERT_TRUE(LoadCloneFile(demo, testdata::kDemoFile).ok());
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }
    QString folder() const { return home.filePath(QStringLiteral("Korvex/zq318/backups")); }
    QTemporaryDir home;
    model::Document demo;
};

TEST_F(BackupTest, KeepsWhatSaveWouldWriteAndLeavesTheDocumentAlone) {
    demo.setModelVariant(model::VariantE);
    demo.setCloneCodeA(true);
    // The settings bytes lag behind the pages until a save or write rebuilds them.
    demo.changeSettings([](model::RadioSettings& s) { s.volume = 3; }, model::Document::Mark::Edit);
    const model::Contents before = demo.contents();

    QString path;
    ASSERT_TRUE(KeepBackup(demo, QStringLiteral("read"), &path).ok());
    EXPECT_TRUE(demo.contents() == before);
    EXPECT_TRUE(demo.DataChanged());
    EXPECT_EQ(QFileInfo(path).path(), folder());
    EXPECT_TRUE(QFileInfo(path).fileName().contains(
        QRegularExpression(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d_\\d{6}-\\d{3}_E_read\\.318$"))))
        << path.toStdString();

    model::Document reopened;
    ASSERT_TRUE(LoadCloneFile(reopened, path).ok());
    EXPECT_EQ(reopened.ModelVariant(), model::VariantE);
    EXPECT_TRUE(reopened.CloneCodeA());
    EXPECT_EQ(reopened.settings().volume, 3);
    EXPECT_TRUE(reopened.memory() == demo.memory());
}

TEST_F(BackupTest, ListsNewestFirstWithSizeVariantAndChannels) {
    ASSERT_TRUE(KeepBackup(demo, QStringLiteral("read")).ok());
    demo.changeMemory(
        0, 1,
        [](model::MemoryTable& m) {
            m.setChannelInUse(0, false);
            m.setChannelInUse(1, false);
        },
        model::Document::Mark::Edit);
    QString written;
    ASSERT_TRUE(KeepBackup(demo, QStringLiteral("write-memory"), &written).ok());
    ASSERT_TRUE(
        testdata::WriteFile(QDir(folder()).filePath(QStringLiteral("0000-junk.318")), "not a clone file"));

    int inUse = 0;
    for (int channel = 0; channel < model::kChannelCount; ++channel)
        inUse += demo.memory().ChannelInUse(channel) ? 1 : 0;
    QString why;
    const QList<BackupEntry> backups = ListBackups(&why);
    ASSERT_EQ(backups.size(), 3) << why.toStdString();
    EXPECT_EQ(backups[0].path, written);
    EXPECT_EQ(backups[0].operation, QStringLiteral("write-memory"));
    EXPECT_EQ(backups[0].size, QFileInfo(written).size());
    EXPECT_TRUE(backups[0].valid);
    EXPECT_EQ(backups[0].variant, model::VariantT);
    EXPECT_FALSE(backups[0].cloneCodeA);
    EXPECT_EQ(backups[0].channels, inUse);
    EXPECT_EQ(backups[1].operation, QStringLiteral("read"));
    EXPECT_EQ(backups[1].channels, inUse + 2);
    EXPECT_LE(backups[1].when, backups[0].when);
    EXPECT_FALSE(backups[2].valid);
}

TEST_F(BackupTest, OnlyTheNewestHundredAreKept) {
    QStringList paths;
    for (int i = 0; i < kBackupsKept + 2; ++i) {
        QString path;
        ASSERT_TRUE(KeepBackup(demo, QStringLiteral("read"), &path).ok());
        paths << path;
    }
    EXPECT_EQ(QSet<QString>(paths.begin(), paths.end()).size(), paths.size()); // none overwrote another
    EXPECT_EQ(NewestFirst(folder(), {QStringLiteral("*.318")}).size(), kBackupsKept);
    EXPECT_FALSE(QFile::exists(paths[0]));
    EXPECT_FALSE(QFile::exists(paths[1]));
    EXPECT_TRUE(QFile::exists(paths[2]));
    EXPECT_TRUE(QFile::exists(paths.last()));
}

TEST_F(BackupTest, AFolderThatCannotBeMadeIsAFileOpenErrorWithTheReason) {
    QDir().mkpath(home.filePath(QStringLiteral("Korvex/zq318")));
    ASSERT_TRUE(testdata::WriteFile(folder(), "a file where the folder belongs"));
    const model::Result kept = KeepBackup(demo, QStringLiteral("read"));
    EXPECT_EQ(kept.outcome, model::Outcome::FileOpenError);
    EXPECT_TRUE(kept.detail.contains(folder())) << kept.detail.toStdString();
    QString why;
    EXPECT_TRUE(ListBackups(&why).isEmpty());
    EXPECT_FALSE(why.isEmpty());
}

} // namespace
