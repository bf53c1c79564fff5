#include "files/clonefile.h"
#include "files/recovery.h"
#include "files/userdata.h"
#include "sampledata.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace zq;
using namespace zq::files;

namespace {

class RecoveryTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(home.isValid());
        qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
        SetProgramIdentity();
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }
    QTemporaryDir home;
};

TEST_F(RecoveryTest, KeepsTheDocumentAsSaveWouldWithoutMarkingItSaved) {
    model::Document document;
    ASSERT_TRUE(LoadCloneFile(document, testdata::kDemoFile).ok());
    document.setCurrentFilePath(QStringLiteral("/media/stick/radio.318"));
    document.setDataChanged(true);
    const QDateTime when(QDate(2026, 11, 23), QTime(19, 27, 57, 123));

    const RecoveryFile saved = SaveRecoveryFile(document, QStringLiteral("read"), when);
    ASSERT_TRUE(saved.result.ok()) << saved.result.detail.toStdString();
    EXPECT_EQ(saved.path,
              home.filePath(QStringLiteral("Korvex/zq318/recovery/2026-11-23_192757-123_read.318")));
    EXPECT_EQ(testdata::ReadFile(saved.path), testdata::ReadFile(testdata::kDemoFile));
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(saved.path).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    EXPECT_EQ(document.CurrentFilePath(), QStringLiteral("/media/stick/radio.318"));
    EXPECT_TRUE(document.DataChanged());

    // The same moment again gets a name of its own; an earlier one sorts after both.
    const RecoveryFile again = SaveRecoveryFile(document, QStringLiteral("read"), when);
    const RecoveryFile earlier = SaveRecoveryFile(document, QStringLiteral("window"), when.addSecs(-60));
    ASSERT_TRUE(again.result.ok() && earlier.result.ok());
    EXPECT_NE(again.path, saved.path);
    EXPECT_EQ(RecoveryFiles(), (QStringList{again.path, saved.path, earlier.path}));
    EXPECT_EQ(NewestRecoveryFile(), again.path);

    EXPECT_TRUE(DeleteRecoveryFile(again.path));
    EXPECT_EQ(NewestRecoveryFile(), saved.path);
    // Only the recovery folder's own files are deleted.
    const QString elsewhere = home.filePath(QStringLiteral("radio.318"));
    ASSERT_TRUE(testdata::WriteFile(elsewhere, "keep"));
    EXPECT_FALSE(DeleteRecoveryFile(elsewhere));
    EXPECT_FALSE(DeleteRecoveryFile(
        QDir(home.path()).filePath(QStringLiteral("Korvex/zq318/recovery/../../../radio.318"))));
    EXPECT_TRUE(QFile::exists(elsewhere));
}

TEST_F(RecoveryTest, NoFolderNoFileAndAReason) {
    // A plain file where the folder should be.
    ASSERT_TRUE(QDir().mkpath(home.filePath(QStringLiteral("Korvex/zq318"))));
    ASSERT_TRUE(testdata::WriteFile(home.filePath(QStringLiteral("Korvex/zq318/recovery")), "in the way"));
    model::Document document;
    const RecoveryFile saved = SaveRecoveryFile(document, QStringLiteral("read"));
    EXPECT_EQ(saved.result.outcome, model::Outcome::FileOpenError);
    EXPECT_FALSE(saved.result.detail.isEmpty());
    EXPECT_TRUE(RecoveryFiles().isEmpty());
}

} // namespace
