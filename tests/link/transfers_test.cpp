// Every transfer against the virtual radio when nothing goes wrong, model detection, and a port
// that does not exist.
#include "link/transfers.h"
#include "linkfixture.h"

#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/settingscodec.h"
#include "model/tables.h"

using namespace zq::model;
using namespace zq::link;
using namespace linktest;

namespace {

// Block commands cut to their address and operation, "KV~F0200W"; other commands as they are.
QStringList Skeleton(const QStringList& commands) {
    QStringList skeleton;
    for (const QString& c : commands)
        skeleton << (c.startsWith(QLatin1String("KV~F")) ? c.left(9) : c);
    return skeleton;
}

QStringList Blocks(int first, int last, char operation) {
    QStringList blocks;
    for (int address = first; address <= last; address += 0x10)
        blocks << QStringLiteral("KV~F%1%2").arg(address, 4, 16, QLatin1Char('0')).toUpper().arg(operation);
    return blocks;
}

QStringList ChannelBlocks(char operation) {
    return Blocks(0x200, 0x1AF0, operation);
}

// Settings, the special records (the repeater's only when writing) and the dial memories.
QStringList SettingsBlocks(char operation) {
    return Blocks(0xE0, operation == 'W' ? 0x150 : 0x130, operation) + Blocks(0x1F00, 0x1F80, operation);
}

using TransferTest = RadioTest;

TEST_F(TransferTest, ReadMemoryReportsEachChannelAndPausesBetweenCommands) {
    QList<int> progress, notified, all;
    for (int n = 0; n < kChannelCount; ++n)
        all << n;
    QObject::connect(&document, &Document::memoryRowsChanged,
                     [&](int first, int last) { notified << (first == last ? first : -1); });
    ASSERT_TRUE(ReadMemory(link, document, [&](int channel) { progress << channel; }).ok());
    const qint64 elapsed = clock.elapsed();
    EXPECT_EQ(progress, all);
    EXPECT_EQ(notified, all);
    // 400 pauses after the commands, one before the end command and one after it.
    EXPECT_GE(elapsed, 402 * kCommandPauseMs);
    EXPECT_LT(elapsed, 402 * kCommandPauseMs * 3 / 2);
}

// Two sessions each way, and everything written is read back.
TEST_F(TransferTest, WriteAllThenReadAllCarriesEverything) {
    FillSampleDocument(document);
    QList<int> progress;
    const AllResult written = WriteAll(link, document, [&](int channel) { progress << channel; });
    EXPECT_TRUE(written.settings.ok() && written.memory.ok() && written.first().ok());
    EXPECT_EQ(progress.last(), 199);

    SettingsBlock built;
    BuildSettingsBlock(built, document.settings);
    EXPECT_EQ(document.settingsBlock, built);
    EXPECT_EQ(radio.blockHex(0xE0) + radio.blockHex(0xF0), built.halfA + built.halfB);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(radio.blockHex(0x100 + 0x20 * row), EncodeSpecialFirstHalf(document.special, row)) << row;
        EXPECT_EQ(radio.blockHex(0x110 + 0x20 * row), EncodeSpecialSecondHalf(document.special, row)) << row;
    }
    for (int k = 0; k < kDialCount; ++k)
        EXPECT_EQ(radio.blockHex(0x1F00 + 0x10 * k), MakeDialData(document.dialTexts[k])) << k;
    for (int n = 0; n < kChannelCount; ++n) { // empty channels included
        EXPECT_EQ(radio.blockHex(0x200 + 0x20 * n), EncodeChannelFirstHalf(document.memory, n)) << n;
        EXPECT_EQ(radio.blockHex(0x210 + 0x20 * n), EncodeChannelSecondHalf(document.memory, n)) << n;
    }
    const QStringList writes = Skeleton(radio.commands());
    EXPECT_EQ(writes, QStringList("ZQ318")
                          << SettingsBlocks('W') << QStringLiteral("KV~E") << QStringLiteral("ZQ318")
                          << ChannelBlocks('W') << QStringLiteral("KV~E"));
    // The second half of each special record follows its first half after 100 ms, not 10.
    ASSERT_EQ(arrivals.size(), writes.size());
    for (int i : {3, 5, 7})
        EXPECT_GE(arrivals.at(i + 1) - arrivals.at(i), 100) << i;
    EXPECT_LT(arrivals.at(2) - arrivals.at(1), 100);

    Document copy;
    copy.special.set(kRptRow, ColFrequency, QStringLiteral("145.0000"), 145.0);
    copy.special.set(kRptRow, ColPower, QStringLiteral("High"), 2);
    const SpecialTable before = copy.special;
    const MemoryTable expected = DecodeRadioChannels(radio, copy.memory);
    int dialSignals = 0;
    QObject::connect(&copy, &Document::dialTextsChanged, [&] { ++dialSignals; });
    const AllResult read = ReadAll(link, copy);
    EXPECT_TRUE(read.settings.ok() && read.memory.ok());
    EXPECT_EQ(Skeleton(radio.commands().mid(writes.size())),
              SettingsBlocks('R') << QStringLiteral("KV~E") << ChannelBlocks('R') << QStringLiteral("KV~E"));
    EXPECT_EQ(copy.memory, expected);
    EXPECT_EQ(copy.settingsBlock, built);
    EXPECT_EQ(copy.settings, document.settings);
    EXPECT_EQ(copy.dialTexts, document.dialTexts);
    EXPECT_GE(dialSignals, 1);
    SpecialTable special = before;
    for (int row = 0; row < 2; ++row) {
        DecodeSpecialRecord(special, radio.blockHex(0x100 + 0x20 * row) + radio.blockHex(0x110 + 0x20 * row),
                            row);
        EXPECT_TRUE(SameRow(copy.special, special, row)) << row;
    }
    for (int c : {0, 1, 8, 9, 10, 11, 12}) // the repeater record is not read; its texts are blanked
        EXPECT_TRUE(copy.special.text(kRptRow, c).isEmpty()) << c;
    for (int c = 2; c <= 7; ++c)
        EXPECT_EQ(copy.special.cell(kRptRow, c), before.cell(kRptRow, c)) << c;
}

struct DetectCase {
    const char* name;
    int modelCode;
    bool cloneCodeA;
    const char* fault;
    Outcome outcome;
    int variant; // afterwards: VariantA, the starting one, when nothing was detected
    const char* caption;
};

class AutoSelectTest : public RadioTest, public ::testing::WithParamInterface<DetectCase> {};

TEST_P(AutoSelectTest, SelectsVariantAndCloneCode) {
    const DetectCase& c = GetParam();
    radio.setModelCode(c.modelCode);
    radio.setCloneCodeA(c.cloneCodeA);
    ASSERT_NO_FATAL_FAILURE(addFault(c.fault));
    document.setModelVariant(VariantA);
    document.setDataChanged(false);
    int redraws = 0;
    QObject::connect(&document, &Document::memoryRowsChanged, [&](int first, int last) {
        if (first == 0 && last == kChannelCount - 1) ++redraws;
    });

    const Result result = AutoSelect(link, document);
    EXPECT_EQ(result.outcome, c.outcome);
    // Once the identity is read the choice stands, even when the end command fails.
    const bool detected = c.variant != VariantA;
    EXPECT_EQ(document.ModelVariant(), c.variant);
    EXPECT_EQ(VariantCaption(document.ModelVariant()), QString::fromLatin1(c.caption));
    EXPECT_EQ(document.CloneCodeA(), detected && c.cloneCodeA);
    EXPECT_EQ(document.DataChanged(), detected);
    EXPECT_EQ(redraws, detected ? 1 : 0);
    EXPECT_EQ(radio.commands(), QStringList({"ZQ318", "KV~F0000R", "KV~E"}).mid(0, detected ? 3 : 2));
}

constexpr Outcome Done = Outcome::Done, Comm = Outcome::CommunicationError;
const DetectCase kDetectCases[] = {
    {"T", 0xAA, false, "", Done, VariantT, "ZQ-318 T"},
    {"EcloneA", 0x55, true, "", Done, VariantE, "ZQ-318 E"},
    {"TfhCloneA", 0x33, true, "", Done, VariantJ, "ZQ-318 TFH"},
    {"UnknownModel", 0x34, true, "", Comm, VariantA, "ZQ-318 A"},
    {"ZeroModel", 0x00, false, "", Comm, VariantA, "ZQ-318 A"},
    {"EndNg", 0x55, true, "ng@end", Comm, VariantE, "ZQ-318 E"},
    {"GarbledIdentity", 0x33, true, "garble@0000", Comm, VariantA, "ZQ-318 A"}}; // 33 garbles to CC, unknown
INSTANTIATE_TEST_SUITE_P(Codes, AutoSelectTest, ::testing::ValuesIn(kDetectCases), CaseName<DetectCase>);

TEST_F(TransferTest, ReadAllRunsMemoryEvenAfterSettingsFailed) {
    FillSampleRadio(radio);
    addFault("ng@00F0");
    const AllResult all = ReadAll(link, document);
    EXPECT_EQ(all.settings.outcome, Outcome::CommunicationError);
    EXPECT_TRUE(all.memory.ok());
    EXPECT_EQ(all.first().outcome, Outcome::CommunicationError);
    EXPECT_EQ(radio.commands().count(QStringLiteral("KV~E")), 1); // only the memory session ended
    EXPECT_EQ(radio.commands().at(2), QStringLiteral("KV~F0200R"));
    EXPECT_TRUE(SameRow(document.memory, DecodeRadioChannels(radio, document.memory), 199));
}

TEST_F(TransferTest, ServiceReadShowsRawReplyAndDumpCoversFirstFourKilobytes) {
    FillSampleRadio(radio);
    QString reply;
    QStringList shown;
    ASSERT_TRUE(
        ReadServiceBlock(link, QStringLiteral("0200"), reply, [&](const QString& s) { shown << s; }).ok());
    EXPECT_EQ(reply, QStringLiteral("KV~F0200R\r") + radio.blockHex(0x200) + QStringLiteral("\r\n"));
    EXPECT_EQ(shown.last(), reply);

    // A typed address goes out exactly as typed; the radio's refusal is shown as it came.
    ASSERT_TRUE(ReadServiceBlock(link, QStringLiteral("zz"), reply).ok());
    EXPECT_EQ(reply, QStringLiteral("KV~FzzR\rNG\r\n"));

    QString dump;
    ASSERT_TRUE(DumpBlocks(link, dump).ok());
    const QStringList lines = dump.split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 257); // the last line ends in CR LF too
    EXPECT_EQ(lines.at(0), QStringLiteral("00\t") + radio.blockHex(0));
    EXPECT_EQ(lines.at(0x20), QStringLiteral("20\t") + radio.blockHex(0x200));
    EXPECT_EQ(lines.at(255), QStringLiteral("FF\t") + radio.blockHex(0xFF0));
    EXPECT_TRUE(lines.at(256).isEmpty());
    EXPECT_FALSE(endSent()); // no service control ends a session
}

TEST_F(TransferTest, SilentServiceReadGivesUpAfterHalfASecond) {
    addFault("timeout@0300");
    QString reply;
    ASSERT_TRUE(ReadServiceBlock(link, QStringLiteral("0300"), reply).ok());
    EXPECT_GE(clock.elapsed(), kServiceTimeoutMs);
    EXPECT_LT(clock.elapsed(), kServiceTimeoutMs + 200);
    EXPECT_EQ(reply, QStringLiteral("KV~F0300R\r")); // only the echo arrived
}

TEST_F(TransferTest, PortThatDoesNotExist) {
    link.setPortName(QStringLiteral("/dev/zq318-no-such-port"));
    const MemoryTable memory = document.memory;
    // The memory write and the service panel have no error trap of their own.
    const std::pair<Transfer, Outcome> cases[] = {
        {Transfer::ReadMemory, Outcome::ComPortError},    {Transfer::ReadSettings, Outcome::ComPortError},
        {Transfer::WriteSettings, Outcome::ComPortError}, {Transfer::AutoSelect, Outcome::ComPortError},
        {Transfer::WriteMemory, Outcome::Fatal},          {Transfer::Dump, Outcome::Fatal}};
    for (const auto& [transfer, outcome] : cases) {
        SCOPED_TRACE(int(transfer));
        const Result result = RunTransfer(transfer, link, document);
        EXPECT_EQ(result.outcome, outcome);
        EXPECT_TRUE(result.message().contains(QStringLiteral("COM Port Error")) ||
                    result.detail.contains(QStringLiteral("zq318-no-such-port")))
            << result.message().toStdString();
        EXPECT_EQ(document.memory, memory);
    }
}

} // namespace
