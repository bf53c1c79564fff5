#include "files/clonefile.h"
#include "model/channelcodec.h"
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
using model::Outcome;

namespace {

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray demoBytes() {
    model::Document document;
    testdata::FillDemoData(document);
    return files::SerializeCloneFile(document);
}

QList<QByteArray> splitLines(const QByteArray& bytes) {
    QList<QByteArray> lines = bytes.split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

QByteArray joinLines(const QList<QByteArray>& lines) {
    QByteArray out;
    for (const QByteArray& line : lines)
        out += line + '\n';
    return out;
}

// Everything a load may change, to show that a failed one changed nothing.
struct Snapshot {
    model::MemoryTable memory;
    model::SpecialTable special;
    model::SettingsBlock block;
    model::RadioSettings settings;
    std::array<QString, 9> dials;
    QString path;
    bool changed;
    int variant;
    bool codeA;
    explicit Snapshot(const model::Document& d)
        : memory(d.memory), special(d.special), block(d.settingsBlock), settings(d.settings),
          dials(d.dialTexts), path(d.CurrentFilePath()), changed(d.DataChanged()), variant(d.ModelVariant()),
          codeA(d.CloneCodeA()) {}
    bool operator==(const Snapshot&) const = default;
};

class CloneFileTest : public ::testing::Test {
protected:
    QString path(const QString& name) const { return dir.filePath(name); }
    QTemporaryDir dir;
};

TEST_F(CloneFileTest, SaveWritesFourHundredNineteenLinesOfThirtyTwo) {
    model::Document document;
    testdata::FillDemoData(document);
    document.setDataChanged(true);
    ASSERT_TRUE(files::SaveCloneFile(document, path("demo.318")).ok());
    const QByteArray bytes = readAll(path("demo.318"));
    EXPECT_EQ(bytes.size(), 419 * 34);
    const QList<QByteArray> lines = bytes.split('\n');
    ASSERT_EQ(lines.size(), 420); // the last line end leaves an empty tail
    for (int i = 0; i < 419; ++i) {
        EXPECT_EQ(lines[i].size(), 33) << "line " << i;
        EXPECT_TRUE(lines[i].endsWith('\r')) << "line " << i;
    }
    EXPECT_EQ(lines[0], "Korvex ZQ-318T Clone 0 FileStart\r");
    EXPECT_EQ(lines[9], "5551234ZZZZZZZZZZZZZZZZZZZZZZZZZ\r");
    EXPECT_EQ(lines[418], "Korvex  ZQ-318  Clone  File  End\r");
    EXPECT_EQ(document.CurrentFilePath(), path("demo.318"));
    EXPECT_FALSE(document.DataChanged());
    EXPECT_EQ(document.windowCaption(), QStringLiteral("demo.318 - Korvex ZQ-318 Clone Utility"));
}

TEST_F(CloneFileTest, SaveAndOpenGiveIdenticalData) {
    model::Document first;
    testdata::FillDemoData(first);
    testdata::FillAllChannels(first);
    first.dialTexts[4] = QString(32, QLatin1Char('1')); // exactly 32: no padding
    ASSERT_TRUE(files::SaveCloneFile(first, path("a.318")).ok());

    model::Document second;
    second.setDataChanged(true);
    ASSERT_TRUE(files::OpenCloneFile(second, path("a.318")).ok());
    EXPECT_FALSE(second.DataChanged());
    EXPECT_EQ(second.dialTexts, first.dialTexts);
    EXPECT_EQ(second.settings, first.settings);
    EXPECT_EQ(second.settingsBlock, first.settingsBlock);
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        EXPECT_TRUE(second.memory.ChannelInUse(channel));
        for (int column = 0; column < model::kMemoryColumns; ++column)
            EXPECT_EQ(second.memory.cell(channel, column), first.memory.cell(channel, column))
                << "channel " << channel << " column " << column;
    }
    EXPECT_EQ(second.special.text(model::kVfoRow, model::ColFrequency), QStringLiteral("146.5200"));

    ASSERT_TRUE(files::SaveCloneFile(second, path("b.318")).ok());
    EXPECT_EQ(readAll(path("b.318")), readAll(path("a.318")));
}

TEST_F(CloneFileTest, DialTextsLoseTrailingZAndLongOnesAreRejected) {
    QList<QByteArray> lines = splitLines(demoBytes());
    lines[9] = "12ZZ" + QByteArray(28, 'Z') + '\r';
    lines[10] = "ZZZZ" + QByteArray(28, 'Z') + '\r';
    model::Document document;
    ASSERT_TRUE(files::ApplyCloneImage(document, files::ParseCloneFile(joinLines(lines)).image).ok());
    EXPECT_EQ(document.dialTexts[0], QStringLiteral("12"));
    EXPECT_EQ(document.dialTexts[1], QString());

    model::Document longDial;
    longDial.dialTexts[2] = QString(33, QLatin1Char('5'));
    ASSERT_TRUE(files::SaveCloneFile(longDial, path("long.318")).ok());
    const files::CloneReadResult read = files::ReadCloneFile(path("long.318"));
    EXPECT_EQ(read.result.outcome, Outcome::DataError);
    EXPECT_EQ(read.result.line, 11);
}

struct BadFileCase {
    const char* name;
    std::function<QByteArray(QByteArray)> make; // from the demonstration file's bytes
    Outcome outcome;
    int line; // 0-based line at fault, -1 when none is named
};

void PrintTo(const BadFileCase& c, std::ostream* os) {
    *os << c.name;
}

class BadCloneFile : public ::testing::TestWithParam<BadFileCase> {};

QByteArray replaceLine(QByteArray bytes, int index, const QByteArray& line) {
    QList<QByteArray> lines = splitLines(bytes);
    lines[index] = line + '\r';
    return joinLines(lines);
}

QByteArray firstLines(const QByteArray& bytes, int count) {
    return bytes.left(count * 34);
}

QByteArray channelWithToneIndex(QByteArray bytes, const QByteArray& toneByte) {
    QList<QByteArray> lines = splitLines(bytes);
    lines[18 + 2 * 5].replace(24, 2, toneByte); // channel 5's transmit tone
    return joinLines(lines);
}

const BadFileCase kBadFiles[] = {
    {"Empty", [](QByteArray) { return QByteArray(); }, Outcome::FileOpenError, 0},
    {"Binary",
     [](QByteArray) {
         return QByteArray("\x7f"
                           "ELF\x02\x01\x01\0\0\0\0\0\0\0\0\0\x03\0>\0\x01\0\0\0",
                           24)
             .repeated(50);
     },
     Outcome::DataError, 0},
    {"HeaderOnly", [](QByteArray b) { return firstLines(b, 1); }, Outcome::FileOpenError, 1},
    {"TruncatedAtLine100", [](QByteArray b) { return firstLines(b, 100); }, Outcome::FileOpenError, 100},
    {"FourHundredEighteenLines", [](QByteArray b) { return firstLines(b, 418); }, Outcome::FileOpenError,
     418},
    {"LineMissingBeforeEnd",
     [](QByteArray b) {
         QList<QByteArray> l = splitLines(b);
         l.removeAt(200);
         return joinLines(l);
     },
     Outcome::FileOpenError, 418},
    {"ExtraLineBeforeEnd",
     [](QByteArray b) {
         QList<QByteArray> l = splitLines(b);
         l.insert(418, l[417]);
         return joinLines(l);
     },
     Outcome::DataError, 418},
    {"CutInsideALine", [](QByteArray b) { return b.left(50 * 34 + 10); }, Outcome::DataError, 50},
    {"LfOnly", [](QByteArray b) { return b.replace("\r\n", "\n"); }, Outcome::DataError, 0},
    {"NulInHeader",
     [](QByteArray b) {
         b[6] = '\0';
         return b;
     },
     Outcome::DataError, 0},
    {"NulAddedToALine", [](QByteArray b) { return b.insert(20 * 34 + 5, '\0'); }, Outcome::DataError, 20},
    {"CommaInALine",
     [](QByteArray b) {
         b[30 * 34 + 16] = ',';
         return b;
     },
     Outcome::DataError, 30},
    {"EmptyLine", [](QByteArray b) { return b.insert(40 * 34, "\r\n"); }, Outcome::DataError, 40},
    {"HeaderWithOneBlankTooMany",
     [](QByteArray b) { return replaceLine(b, 0, "Korvex  ZQ-318T Clone 0 FileStart"); }, Outcome::DataError,
     0},
    {"UnknownVariant", [](QByteArray b) { return replaceLine(b, 0, "Korvex ZQ-318X Clone 0 FileStart"); },
     Outcome::DataError, 0},
    {"HeaderInOtherCase", [](QByteArray b) { return replaceLine(b, 0, "KORVEX ZQ-318T CLONE 0 FILESTART"); },
     Outcome::DataError, 0},
    {"EndLineWithSingleBlanks",
     [](QByteArray b) { return replaceLine(b, 418, "Korvex ZQ-318 Clone File End"); }, Outcome::DataError,
     418},
    {"EndLineOfRightLengthButWrong",
     [](QByteArray b) { return replaceLine(b, 418, "Korvex  ZQ-318  Clone  File  EnD"); }, Outcome::DataError,
     418},
    {"ToneIndexBeyondTable", [](QByteArray b) { return channelWithToneIndex(b, "27"); },
     Outcome::FileOpenError, 28},
    {"HugeLine", [](QByteArray b) { return b.left(34 * 3) + QByteArray(4 << 20, 'A'); }, Outcome::DataError,
     3},
};

TEST_P(BadCloneFile, OpenReportsItAndChangesNothing) {
    const BadFileCase& c = GetParam();
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bad.318"));
    ASSERT_TRUE(writeAll(file, c.make(demoBytes())));

    model::Document document;
    testdata::FillAllChannels(document);
    document.setCurrentFilePath(QStringLiteral("/somewhere/else.318"));
    document.setDataChanged(true);
    const Snapshot before(document);

    const model::Result result = files::OpenCloneFile(document, file);
    EXPECT_EQ(result.outcome, c.outcome) << result.detail.toStdString();
    EXPECT_EQ(result.line, c.line) << result.detail.toStdString();
    EXPECT_FALSE(result.detail.isEmpty());
    EXPECT_TRUE(Snapshot(document) == before);
}

INSTANTIATE_TEST_SUITE_P(Cases, BadCloneFile, ::testing::ValuesIn(kBadFiles),
                         [](const auto& info) { return std::string(info.param.name); });

// Quirks of the line reader that still make a valid file.
TEST(CloneFileQuirks, AcceptedVariations) {
    const QByteArray good = demoBytes();
    const QByteArray variations[] = {
        QByteArray("   ") + good,   // leading blanks of a read are skipped
        good.left(good.size() - 2), // no line end after the end line
        good + "anything after the end line\r\n" + QByteArray(1 << 20, 'x'),
    };
    for (const QByteArray& bytes : variations) {
        const files::CloneReadResult read = files::ParseCloneFile(bytes);
        EXPECT_TRUE(read.result.ok()) << read.result.detail.toStdString();
        EXPECT_EQ(read.image.lines.size(), 419);
    }
}

TEST(CloneFileQuirks, GigabyteFileIsRejectedWithoutReadingItAll) {
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("huge.318")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64(1) << 30)); // sparse: a gigabyte of NUL bytes
    file.close();
    QElapsedTimer timer;
    timer.start();
    const files::CloneReadResult read = files::ReadCloneFile(file.fileName());
    EXPECT_EQ(read.result.outcome, Outcome::DataError);
    EXPECT_EQ(read.result.line, 0);
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST(CloneFileQuirks, ToneIndexBeyondTableIsADecodeError) {
    // the precondition of the ToneIndexBeyondTable case above
    model::MemoryTable memory;
    const QList<QByteArray> lines = splitLines(channelWithToneIndex(demoBytes(), "27"));
    const QString record = QString::fromLatin1(lines[28].chopped(1) + lines[29].chopped(1));
    EXPECT_NE(model::DecodeChannelRecord(memory, record, 5), model::CodecError::None);
}

TEST_F(CloneFileTest, HeaderSelectsVariantOnlyAtStartUp) {
    model::Document source;
    testdata::FillDemoData(source);
    source.setModelVariant(model::VariantE);
    source.setCloneCodeA(true);
    ASSERT_TRUE(files::SaveCloneFile(source, path("e.318")).ok());
    ASSERT_TRUE(readAll(path("e.318")).startsWith("Korvex ZQ-318E Clone A FileStart\r\n"));

    model::Document menu;
    ASSERT_TRUE(files::OpenCloneFile(menu, path("e.318")).ok());
    EXPECT_EQ(menu.ModelVariant(), model::VariantT);
    EXPECT_FALSE(menu.CloneCodeA());
    EXPECT_EQ(menu.memory.text(1, model::ColName), QStringLiteral("SIMPLX"));

    model::Document startup;
    ASSERT_TRUE(files::LoadCloneFile(startup, path("e.318")).ok());
    EXPECT_EQ(startup.ModelVariant(), model::VariantE);
    EXPECT_TRUE(startup.CloneCodeA());
    EXPECT_EQ(startup.memory.text(1, model::ColName), QStringLiteral("SIMPLX"));
    EXPECT_EQ(startup.CurrentFilePath(), path("e.318"));
}

TEST_F(CloneFileTest, StartUpOpenSwitchesVariantBeforeTheEndLineFails) {
    QList<QByteArray> lines = splitLines(demoBytes());
    lines[0] = "Korvex ZQ-318J Clone A FileStart\r";
    lines[418] = "Korvex ZQ-318 Clone File End----\r";
    ASSERT_TRUE(writeAll(path("j.318"), joinLines(lines)));
    model::Document document;
    const model::MemoryTable memory = document.memory;
    const model::Result result = files::LoadCloneFile(document, path("j.318"));
    EXPECT_EQ(result.outcome, Outcome::DataError);
    EXPECT_EQ(document.ModelVariant(), model::VariantJ);
    EXPECT_TRUE(document.CloneCodeA());
    EXPECT_TRUE(document.memory == memory);
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
}

TEST_F(CloneFileTest, StartUpOpenOfUnreadableFilesIsFatal) {
    ASSERT_TRUE(writeAll(path("short.318"), firstLines(demoBytes(), 300)));
    ASSERT_TRUE(writeAll(path("tone.318"), channelWithToneIndex(demoBytes(), "FF")));
    for (const QString& name :
         {QStringLiteral("missing.318"), QStringLiteral("short.318"), QStringLiteral("tone.318")}) {
        model::Document document;
        const model::MemoryTable memory = document.memory;
        const model::Result result = files::LoadCloneFile(document, path(name));
        EXPECT_EQ(result.outcome, Outcome::Fatal) << name.toStdString();
        EXPECT_FALSE(result.message().isEmpty());
        EXPECT_TRUE(document.memory == memory);
    }
}

TEST_F(CloneFileTest, HeaderFollowsVariantAndCloneCode) {
    const struct {
        int variant;
        bool codeA;
        const char* header;
    } cases[] = {
        {0, false, "Korvex ZQ-318T Clone 0 FileStart"},  {1, true, "Korvex ZQ-318E Clone A FileStart"},
        {2, false, "Korvex ZQ-318J Clone 0 FileStart"},  {3, true, "Korvex ZQ-318A Clone A FileStart"},
        {-1, false, "Korvex ZQ-318A Clone 0 FileStart"}, // no option selected
    };
    for (const auto& c : cases) {
        model::Document document;
        document.setModelVariant(c.variant);
        document.setCloneCodeA(c.codeA);
        EXPECT_EQ(files::CloneFileLines(document).first(), QLatin1String(c.header));
    }
}

TEST_F(CloneFileTest, FailedSaveKeepsThePreviousFile) {
    model::Document document;
    testdata::FillDemoData(document);
    ASSERT_TRUE(writeAll(path("keep.318"), "previous contents\r\n"));
    document.setDataChanged(true);

    // A file system that refuses the data part-way (as a full disk does).
    struct rlimit saved {};
    getrlimit(RLIMIT_FSIZE, &saved);
    struct rlimit small = saved;
    small.rlim_cur = 4096;
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const model::Result full = files::SaveCloneFile(document, path("keep.318"));
    setrlimit(RLIMIT_FSIZE, &saved);
    EXPECT_EQ(full.outcome, Outcome::FileOpenError);
    EXPECT_EQ(readAll(path("keep.318")), QByteArray("previous contents\r\n"));

    const model::Result missingDir = files::SaveCloneFile(document, path("no/such/dir/x.318"));
    EXPECT_EQ(missingDir.outcome, Outcome::FileOpenError);
    EXPECT_EQ(missingDir.message(), QStringLiteral("File Open Error"));
    EXPECT_TRUE(document.DataChanged());
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("keep.318")});
}

TEST(NewDocument, ClearsChannelsAndKeepsTheTemplateRow) {
    model::Document document;
    testdata::FillDemoData(document);
    document.memory.set(model::kTemplateRow, model::ColName, QStringLiteral("TMPL"), 1);
    document.setCurrentFilePath(QStringLiteral("x.318"));
    document.setDataChanged(true);
    files::NewDocument(document);
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        EXPECT_FALSE(document.memory.ChannelInUse(channel));
        for (int column = 0; column < model::kMemoryColumns; ++column)
            EXPECT_EQ(document.memory.cell(channel, column), model::Cell{});
    }
    EXPECT_EQ(document.memory.text(model::kTemplateRow, model::ColName), QStringLiteral("TMPL"));
    EXPECT_EQ(document.settingsBlock, model::SettingsBlock{});
    EXPECT_EQ(document.dialTexts, (std::array<QString, 9>{}));
    EXPECT_EQ(document.special.text(model::kVfoRow, model::ColFrequency), QStringLiteral("145.0000"));
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
    EXPECT_FALSE(document.DataChanged());
    EXPECT_EQ(document.windowCaption(), model::AppTitle());
}

} // namespace
