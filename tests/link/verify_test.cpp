// The read-back comparison and the serial trace against the virtual radio.
#include "link/tracerecorder.h"
#include "link/transfers.h"
#include "link/verify.h"
#include "link/writeguard.h"
#include "linkfixture.h"

#include "model/tables.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

using namespace zq::model;
using namespace zq::link;
using namespace linktest;

namespace {

using VerifyTest = RadioTest;

// Every block a write sent is read back once, nothing else (not the identity block); the lower-case
// digits the encoder writes for "(" compare equal to the radio's upper-case ones.
TEST_F(VerifyTest, GoodRadioHasNoDifferencesAndTheDocumentIsLeftAlone) {
    FillSampleDocument(document);
    document.changeMemory(
        4, 4, [](MemoryTable& m) { m.set(4, ColName, QStringLiteral("(A)"), 1); }, Document::Mark::Quiet);
    ASSERT_TRUE(WriteAll(link, document).first().ok());
    QStringList written;
    for (const QString& command : radio.commands())
        if (command.size() > 9 && command.at(8) == QLatin1Char('W')) written << command.mid(4, 4);
    ASSERT_TRUE(radio.commands().join(QString()).contains(QStringLiteral("5c")));

    const Contents before = document.contents();
    const qsizetype sent = radio.commands().size();
    QList<int> steps;
    const VerifyReport report =
        VerifyRadio(link, document, VerifyScope::All, [&](int step, int total) { steps << step << total; });
    EXPECT_TRUE(report.same()) << (report.differences.isEmpty()
                                       ? report.result.detail.toStdString()
                                       : DifferenceText(report.differences.first()).toStdString());
    EXPECT_EQ(report.blocksCompared, 417);
    QStringList read;
    for (const QString& command : radio.commands().mid(sent))
        if (command != QLatin1String("KV~E")) read << command.mid(4, 4);
    EXPECT_EQ(read, written);
    EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
    EXPECT_EQ(steps.mid(0, 2), (QList<int>{0, 417}));
    EXPECT_EQ(steps.mid(steps.size() - 2), (QList<int>{416, 417}));
    EXPECT_TRUE(document.contents() == before);
    EXPECT_FALSE(document.DataChanged());
}

struct DropCase {
    const char* name;
    const char* fault;
    VerifyScope scope;
    const char* owner;
    const char* field; // of the first difference
    const char* inFile;
    const char* inRadio;
};

class DroppedWriteTest : public RadioTest, public ::testing::WithParamInterface<DropCase> {};

// The radio holds the sample; the document changes one thing in each region, and the write of
// one block is answered "OK" but not stored: the comparison names that block and what it holds.
TEST_P(DroppedWriteTest, NamesTheBlockAndTheField) {
    const DropCase& c = GetParam();
    FillSampleRadio(radio);
    FillSampleDocument(document);
    document.changeMemory(
        10, 11,
        [](MemoryTable& m) {
            m.set(10, ColFrequency, QStringLiteral("145.5000"), 145.5);
            m.setChannelInUse(11, true);
        },
        Document::Mark::Quiet);
    document.changeSpecial(
        kVfoRow, kRptRow,
        [](SpecialTable& s) {
            s.set(kVfoRow, ColBclo, QStringLiteral("On"), 1);
            s.set(kRptRow, ColShift, QStringLiteral("+Shift"), 2);
        },
        Document::Mark::Quiet);
    document.changeSettings([](RadioSettings& s) { s.volume = 7; }, Document::Mark::Quiet);
    document.setDialText(3, QStringLiteral("911"), Document::Mark::Quiet);
    ASSERT_NO_FATAL_FAILURE(addFault(c.fault));
    if (c.scope == VerifyScope::Settings)
        ASSERT_TRUE(WriteSettings(link, document).ok());
    else
        ASSERT_TRUE(WriteMemory(link, document).ok());

    const VerifyReport report = VerifyRadio(link, document, c.scope);
    ASSERT_TRUE(report.result.ok()) << report.result.detail.toStdString();
    ASSERT_FALSE(report.differences.isEmpty());
    const QString address = QString::fromLatin1(c.fault).section(QLatin1Char('@'), 1);
    for (const Difference& difference : report.differences)
        EXPECT_EQ(difference.address, address) << DifferenceText(difference).toStdString();
    const Difference& first = report.differences.first();
    EXPECT_EQ(first.owner, QLatin1String(c.owner));
    EXPECT_EQ(first.field, QLatin1String(c.field));
    EXPECT_EQ(first.inFile, QLatin1String(c.inFile));
    EXPECT_EQ(first.inRadio, QLatin1String(c.inRadio));
}

// Channel 10 is in use and skipped on both sides; channel 11 empty on the radio; the sample's volume
// is 14.
const DropCase kDrops[] = {
    {"ChannelField", "drop@0340", VerifyScope::Memory, "channel 10", "Frequency", "145.5000*", "137.8750*"},
    {"ChannelInUse", "drop@0360", VerifyScope::Memory, "channel 11", "in use", "yes", "no"},
    {"SettingsByte", "drop@00E0", VerifyScope::Settings, "settings", "volume (byte 5)", "07", "0E"},
    {"SpecialSecondHalf", "drop@0110", VerifyScope::Settings, "VFO", "BCLO", "On", "Off"},
    {"Repeater", "drop@0140", VerifyScope::Settings, "RPT", "Shift", "+Shift", "-Shift"},
    {"DialMemory", "drop@1F30", VerifyScope::Settings, "autodial memory 3", "text", "911", "555-1212"},
};
INSTANTIATE_TEST_SUITE_P(Drops, DroppedWriteTest, ::testing::ValuesIn(kDrops), CaseName);

TEST_F(VerifyTest, ScopeLimitsTheBlocksAndAFailedReadStopsTheComparison) {
    FillSampleDocument(document);
    VerifyReport report = VerifyRadio(link, document, VerifyScope::Settings);
    EXPECT_EQ(report.blocksCompared, 17);
    EXPECT_FALSE(report.differences.isEmpty()); // the radio is blank

    ASSERT_NO_FATAL_FAILURE(addFault("timeout@0210"));
    report = VerifyRadio(link, document, VerifyScope::Memory);
    EXPECT_EQ(report.result.outcome, Outcome::CommunicationError);
    EXPECT_EQ(report.blocksCompared, 1);
    EXPECT_FALSE(report.same());
}

// The trace names the command that went unanswered and how long it waited, and ends with the outcome.
TEST_F(VerifyTest, TraceRecordsEveryExchangeAndTheTimeOut) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("trace.txt"));
    ASSERT_NO_FATAL_FAILURE(addFault("timeout@00F0"));
    Result outcome;
    {
        TraceRecorder trace;
        ASSERT_TRUE(trace.start(path, QStringLiteral("read settings")).ok());
        trace.attach(link);
        outcome = ReadSettings(link, document);
        EXPECT_TRUE(trace.finish(TraceRecorder::OutcomeText(outcome)).ok());
    }
    ReadSettings(link, document); // after finish(): not recorded
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.permissions() & (QFileDevice::ReadOther | QFileDevice::ReadGroup),
              QFileDevice::Permissions{});
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const auto find = [&](const QString& what) {
        for (const QString& line : lines)
            if (line.mid(14).startsWith(what)) return line.mid(14);
        return QString();
    };
    EXPECT_EQ(lines.at(1), QStringLiteral("# read settings"));
    EXPECT_TRUE(
        lines.at(2).contains(QRegularExpression(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3}  opened "))))
        << lines.at(2).toStdString();
    EXPECT_EQ(find(QStringLiteral("sent        KV~F00E0R")), QStringLiteral("sent        KV~F00E0R\\r"));
    EXPECT_TRUE(find(QStringLiteral("received")).endsWith(QStringLiteral("\\r\\n")));
    EXPECT_TRUE(
        find(QStringLiteral("reply")).startsWith(QStringLiteral("reply       complete, 44 characters")));
    EXPECT_EQ(find(QStringLiteral("pause")), QStringLiteral("pause       10 ms"));
    const QString timeout = find(QStringLiteral("time-out"));
    EXPECT_TRUE(timeout.startsWith(QStringLiteral("time-out    no complete reply to KV~F00F0R\\r after 2")))
        << timeout.toStdString();
    EXPECT_TRUE(timeout.endsWith(QStringLiteral("received \"KV~F00F0R\\r\""))) << timeout.toStdString();
    EXPECT_EQ(lines.last().mid(14), QStringLiteral("outcome     ") + TraceRecorder::OutcomeText(outcome));
    EXPECT_TRUE(lines.last().contains(QStringLiteral("Communication Error: no reply to KV~F00F0R")));
    EXPECT_EQ(lines.filter(QStringLiteral("sent ")).size(), 2);
}

struct GuardCase {
    const char* name;
    int fileVariant;
    bool fileCodeA;
    int radioVariant;
    bool radioCodeA;
    double frequency; // of channel 7, the only one in use
    bool matches;
    const char* outside; // joined by "; "
};

class WriteGuardTest : public ::testing::TestWithParam<GuardCase> {};

TEST_P(WriteGuardTest, ComparesTheHeaderWithTheRadioAndListsWhatLiesOutsideItsBand) {
    const GuardCase& c = GetParam();
    Document document;
    document.setModelVariant(c.fileVariant);
    document.setCloneCodeA(c.fileCodeA);
    document.changeMemory(
        7, 7,
        [&](MemoryTable& m) {
            m.setChannelInUse(7, true);
            m.set(7, ColFrequency, QString::number(c.frequency, 'f', 4) + QLatin1Char('*'), c.frequency);
        },
        Document::Mark::Quiet);
    const WriteCheck check = CheckWrite(document, {c.radioVariant, c.radioCodeA});
    EXPECT_EQ(check.matches, c.matches);
    EXPECT_EQ(check.outsideBand.join(QStringLiteral("; ")), QLatin1String(c.outside));
    EXPECT_EQ(check.radioModel, ModelText(c.radioVariant, c.radioCodeA));
}

// The VFO and CALL defaults are 145.0000, inside every band.
const GuardCase kGuards[] = {
    {"Same", VariantE, false, VariantE, false, 150.0, true, "channel 7 (150.0000)"},
    {"OtherVariant", VariantT, false, VariantE, false, 145.995, false, ""},
    {"NarrowBandUpperEdge", VariantT, false, VariantE, false, 146.0, false, "channel 7 (146.0000)"},
    {"NarrowBandLowerEdge", VariantT, false, VariantE, false, 143.9875, false, "channel 7 (143.9875)"},
    {"OtherCloneCode", VariantT, true, VariantT, false, 135.0, false, "channel 7 (135.0000)"},
    {"WideBandOfCodeA", VariantT, false, VariantT, true, 100.0, false, ""},
    {"FourthVariantNeverMatches", VariantA, false, VariantJ, false, 173.995, false, ""},
};
INSTANTIATE_TEST_SUITE_P(Guards, WriteGuardTest, ::testing::ValuesIn(kGuards), CaseName);

} // namespace
