#include "files/clonefile.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <sys/resource.h>

using namespace zq;
using namespace zq::model;
using namespace zq::testdata;

namespace {

constexpr int L = 34; // a line with its CR LF
constexpr Outcome Open = Outcome::FileOpenError, Data = Outcome::DataError;

class CloneFileTest : public ::testing::Test {
protected:
    QString path(const QString& name) const { return dir.filePath(name); }
    QTemporaryDir dir;
    Document document;
};

TEST_F(CloneFileTest, SaveAndOpenGiveIdenticalData) {
    ASSERT_TRUE(files::LoadCloneFile(document, kDemoFile).ok());
    ASSERT_TRUE(files::SaveCloneFile(document, path("demo.318")).ok());
    const QByteArray bytes = ReadFile(path("demo.318"));
    EXPECT_EQ(bytes, ReadFile(kDemoFile));
    EXPECT_EQ(bytes.mid(418 * L), "Korvex  ZQ-318  Clone  File  End\r\n");

    Document second;
    testdata::FillAllChannels(document);
    document.setDialText(4, QString(32, QLatin1Char('1')), Document::Mark::Edit); // exactly 32: no padding
    ASSERT_TRUE(files::SaveCloneFile(document, path("a.318")).ok());
    second.setDataChanged(true);
    ASSERT_TRUE(files::OpenCloneFile(second, path("a.318")).ok());
    EXPECT_FALSE(second.DataChanged());
    EXPECT_EQ(second.dialTexts(), document.dialTexts());
    EXPECT_TRUE(second.memory() == document.memory());
    ASSERT_TRUE(files::SaveCloneFile(second, path("b.318")).ok());
    EXPECT_EQ(ReadFile(path("b.318")), ReadFile(path("a.318")));
}

TEST_F(CloneFileTest, DialTextsLoseTrailingZAndLongOnesAreRejected) {
    const QByteArray bytes = ReadFile(kDemoFile).replace(9 * L, 32, "12" + QByteArray(30, 'Z'));
    ASSERT_TRUE(files::ApplyCloneImage(document, files::ParseCloneFile(bytes).image).ok());
    EXPECT_EQ(document.dialTexts()[0], QStringLiteral("12"));
    document.setDialText(2, QString(33, QLatin1Char('5')), Document::Mark::Edit);
    ASSERT_TRUE(files::SaveCloneFile(document, path("long.318")).ok());
    const Result rejected = files::ReadCloneFile(path("long.318")).result;
    EXPECT_EQ(rejected.outcome, Data);
    EXPECT_EQ(rejected.line, 11);
}

std::function<QByteArray(QByteArray)> splice(int at, int removed, const QByteArray& inserted) {
    return [=](QByteArray b) { return b.replace(at, removed, inserted); };
}

struct BadFileCase {
    const char* name;
    std::function<QByteArray(QByteArray)> make; // of the demonstration file's bytes
    Outcome outcome;
    int line;                      // 0-based line at fault
    int startupVariant = VariantT; // the header is taken at start-up before a later line fails
};

const BadFileCase kBadFiles[] = {
    {"LineMissingBeforeEnd", splice(200 * L, L, ""), Open, 418},
    {"CommaCutsALineShort", splice(30 * L + 16, 1, ","), Data, 30},
    {"LfOnly", [](QByteArray b) { return b.replace("\r\n", "\n"); }, Data, 0},
    {"HeaderInOtherCase", splice(0, 32, "KORVEX ZQ-318T CLONE 0 FILESTART"), Data, 0},
    {"EndLineOfRightLengthButWrong",
     [](QByteArray b) {
         return b.replace(0, 32, "Korvex ZQ-318J Clone A FileStart")
             .replace(418 * L, 32, QByteArray(32, 'E'));
     },
     Data, 418, VariantJ},
    {"ToneIndexBeyondTable", splice(28 * L + 24, 2, "27"), Open, 28}, // channel 5's transmit tone
};

class BadCloneFile : public CloneFileTest, public ::testing::WithParamInterface<BadFileCase> {};

TEST_P(BadCloneFile, OpenReportsItAndChangesNothing) {
    ASSERT_TRUE(WriteFile(path("bad.318"), GetParam().make(ReadFile(kDemoFile))));
    Document startup;
    testdata::FillAllChannels(document);
    document.setCurrentFilePath(QStringLiteral("/somewhere/else.318"));
    document.setDataChanged(true);
    const auto state = [](const Document& d) {
        return std::tuple(d.memory(), d.special(), d.settingsBlock(), d.settings(), d.dialTexts(),
                          d.CurrentFilePath(), d.DataChanged(), d.ModelVariant(), d.CloneCodeA());
    };
    const auto before = state(document);
    const Result result = files::OpenCloneFile(document, path("bad.318"));
    EXPECT_EQ(result.outcome, GetParam().outcome) << result.detail.toStdString();
    EXPECT_EQ(result.line, GetParam().line) << result.detail.toStdString();
    EXPECT_TRUE(state(document) == before);

    // At start-up, a file that cannot be read in full or decoded is fatal.
    const Result fatal = files::LoadCloneFile(startup, path("bad.318"));
    EXPECT_EQ(fatal.outcome, GetParam().outcome == Open ? Outcome::Fatal : GetParam().outcome);
    EXPECT_FALSE(fatal.message().isEmpty());
    EXPECT_TRUE(startup.memory() == Document().memory());
    EXPECT_EQ(startup.ModelVariant(), GetParam().startupVariant);
}

INSTANTIATE_TEST_SUITE_P(Cases, BadCloneFile, ::testing::ValuesIn(kBadFiles),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(CloneFileQuirks, AcceptedVariations) {
    const QByteArray good = ReadFile(kDemoFile);
    for (const QByteArray& bytes : {QByteArray("   ") + good,   // leading blanks of a read are skipped
                                    good.left(good.size() - 2), // no line end after the end line
                                    good + "anything after the end line\r\n"}) {
        const files::CloneReadResult read = files::ParseCloneFile(bytes);
        EXPECT_TRUE(read.result.ok()) << read.result.detail.toStdString();
        EXPECT_EQ(read.image.lines.size(), 419);
    }
}

TEST_F(CloneFileTest, GigabyteFileIsRejectedWithoutReadingItAll) {
    ASSERT_TRUE(WriteFile(path("huge.318"), "") && QFile::resize(path("huge.318"), qint64(1) << 30));
    QElapsedTimer timer;
    timer.start();
    const files::CloneReadResult read = files::ReadCloneFile(path("huge.318"));
    EXPECT_EQ(read.result.outcome, Outcome::DataError);
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(CloneFileTest, HeaderNamesTheVariant) {
    document.setModelVariant(VariantE);
    document.setCloneCodeA(true);
    ASSERT_TRUE(files::SaveCloneFile(document, path("e.318")).ok());
    ASSERT_TRUE(ReadFile(path("e.318")).startsWith("Korvex ZQ-318E Clone A FileStart\r\n"));
    document.setModelVariant(-1); // no option selected: the last header row
    EXPECT_EQ(files::CloneFileLines(document).first(), QStringLiteral("Korvex ZQ-318A Clone A FileStart"));
}

TEST_F(CloneFileTest, FailedSaveKeepsThePreviousFile) {
    ASSERT_TRUE(WriteFile(path("keep.318"), "previous\r\n"));
    // A file system that refuses the data part-way (as a full disk does).
    struct rlimit saved {};
    getrlimit(RLIMIT_FSIZE, &saved);
    const struct rlimit small { 4096, saved.rlim_max };
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const Result full = files::SaveCloneFile(document, path("keep.318"));
    setrlimit(RLIMIT_FSIZE, &saved);
    EXPECT_EQ(full.outcome, Outcome::FileOpenError);
    EXPECT_EQ(ReadFile(path("keep.318")), QByteArray("previous\r\n"));
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("keep.318")});
}

TEST_F(CloneFileTest, NewDocumentClearsChannelsAndKeepsTheTemplateRow) {
    ASSERT_TRUE(files::LoadCloneFile(document, kDemoFile).ok());
    document.changeMemory(
        kTemplateRow, kTemplateRow,
        [](MemoryTable& memory) { memory.set(kTemplateRow, ColName, QStringLiteral("TMPL"), 1); },
        Document::Mark::Edit);
    files::NewDocument(document);
    MemoryTable cleared; // rows 0..199 blank and not in use, the template row as it was
    for (int column = 0; column < kMemoryColumns; ++column)
        cleared.set(kTemplateRow, column, document.memory().cell(kTemplateRow, column));
    EXPECT_TRUE(document.memory() == cleared);
    EXPECT_EQ(document.memory().text(kTemplateRow, ColName), QStringLiteral("TMPL"));
    EXPECT_EQ(document.settingsBlock(), SettingsBlock{});
    EXPECT_EQ(document.dialTexts(), (std::array<QString, 9>{}));
    EXPECT_EQ(document.special().text(kVfoRow, ColFrequency), QStringLiteral("145.0000"));
    EXPECT_FALSE(document.DataChanged());
}

} // namespace
