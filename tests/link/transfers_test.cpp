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

// The address and operation of each block command: "0200R".
QStringList BlockCommands(const QStringList& commands) {
    QStringList blocks;
    for (const QString& c : commands)
        if (c.startsWith(QLatin1String("KV~F"))) blocks << c.mid(4, 5);
    return blocks;
}

QStringList ChannelBlocks(char operation) {
    QStringList blocks;
    for (int address = 0x200; address < 0x1B00; address += 0x10)
        blocks << QStringLiteral("%1%2").arg(address, 4, 16, QLatin1Char('0')).toUpper().arg(operation);
    return blocks;
}

using TransferTest = RadioTest;

TEST_F(TransferTest, ReadMemoryDecodesEveryChannelInAddressOrder) {
    FillSampleRadio(radio);
    const MemoryTable before = document.memory;
    QList<int> progress, notified, all;
    for (int n = 0; n < kChannelCount; ++n)
        all << n;
    QObject::connect(&document, &Document::memoryRowsChanged,
                     [&](int first, int last) { notified << (first == last ? first : -1); });
    const Result result = ReadMemory(link, document, [&](int channel) { progress << channel; });
    const qint64 elapsed = clock.elapsed();
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();

    const MemoryTable expected = DecodeRadioChannels(radio, before);
    for (int n = 0; n < kChannelCount; ++n)
        EXPECT_TRUE(SameMemoryRow(document.memory, expected, n)) << n;
    EXPECT_TRUE(SameMemoryRow(document.memory, before, kTemplateRow));
    EXPECT_EQ(progress, all);
    EXPECT_EQ(notified, all);
    EXPECT_EQ(BlockCommands(radio.commands()), ChannelBlocks('R'));
    EXPECT_EQ(radio.commands().size(), 401);
    EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
    // 400 pauses after the commands, one before the end command and one after it.
    EXPECT_GE(elapsed, 402 * kCommandPauseMs);
    EXPECT_LT(elapsed, 402 * kCommandPauseMs * 3 / 2);
}

TEST_F(TransferTest, WriteMemorySendsEveryChannelEmptyOnesIncluded) {
    document.memory = SampleMemory();
    QList<int> progress;
    const Result result = WriteMemory(link, document, [&](int channel) { progress << channel; });
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();
    for (int n = 0; n < kChannelCount; ++n) {
        EXPECT_EQ(radio.blockHex(0x200 + 0x20 * n), EncodeChannelFirstHalf(document.memory, n)) << n;
        EXPECT_EQ(radio.blockHex(0x210 + 0x20 * n), EncodeChannelSecondHalf(document.memory, n)) << n;
    }
    EXPECT_EQ(radio.commands().first(), QStringLiteral("ZQ318"));
    EXPECT_EQ(BlockCommands(radio.commands()), ChannelBlocks('W'));
    EXPECT_EQ(radio.commands().size(), 402);
    EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
    EXPECT_EQ(progress.last(), 199);
}

TEST_F(TransferTest, ReadSettingsFillsSettingsSpecialRowsAndDials) {
    FillSampleRadio(radio);
    document.special.set(kRptRow, ColFrequency, QStringLiteral("145.0000"), 145.0);
    document.special.set(kRptRow, ColPower, QStringLiteral("High"), 2);
    const SpecialTable before = document.special;
    int dialSignals = 0;
    QObject::connect(&document, &Document::dialTextsChanged, [&] { ++dialSignals; });

    const Result result = ReadSettings(link, document);
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();

    SettingsBlock applied = SampleSettingsBlock();
    EXPECT_EQ(document.settingsBlock, applied);
    RadioSettings expectedSettings;
    ApplySettingsBlock(applied, expectedSettings);
    EXPECT_EQ(document.settings, expectedSettings);

    SpecialTable expected = before;
    for (int row = 0; row < 2; ++row) {
        DecodeSpecialRecord(expected, radio.blockHex(0x100 + 0x20 * row) + radio.blockHex(0x110 + 0x20 * row),
                            row);
        EXPECT_TRUE(SameSpecialRow(document.special, expected, row)) << row;
    }
    for (int c : {0, 1, 8, 9, 10, 11, 12}) // the repeater record is not read; its texts are blanked
        EXPECT_TRUE(document.special.text(kRptRow, c).isEmpty()) << c;
    for (int c = 2; c <= 7; ++c)
        EXPECT_EQ(document.special.cell(kRptRow, c), before.cell(kRptRow, c)) << c;

    const QStringList dials = SampleDialTexts();
    for (int k = 0; k < kDialCount; ++k)
        EXPECT_EQ(document.dialTexts[k], dials.at(k)) << k;
    EXPECT_GE(dialSignals, 1);
    EXPECT_EQ(BlockCommands(radio.commands()),
              (QStringList{"00E0R", "00F0R", "0100R", "0110R", "0120R", "0130R", "1F00R", "1F10R", "1F20R",
                           "1F30R", "1F40R", "1F50R", "1F60R", "1F70R", "1F80R"}));
    EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
}

TEST_F(TransferTest, WriteSettingsSendsSeventeenBlocksAndPausesInsideSpecialRecords) {
    document.special = SampleSpecial();
    document.settings.volume = 7;
    document.settings.lamp = 1;
    const QStringList dials = SampleDialTexts();
    for (int k = 0; k < kDialCount; ++k)
        document.dialTexts[k] = dials.at(k);

    const Result result = WriteSettings(link, document);
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();

    SettingsBlock built;
    BuildSettingsBlock(built, document.settings);
    EXPECT_EQ(document.settingsBlock, built);
    EXPECT_EQ(radio.blockHex(0xE0), built.halfA);
    EXPECT_EQ(radio.blockHex(0xF0), built.halfB);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(radio.blockHex(0x100 + 0x20 * row), EncodeSpecialFirstHalf(document.special, row)) << row;
        EXPECT_EQ(radio.blockHex(0x110 + 0x20 * row), EncodeSpecialSecondHalf(document.special, row)) << row;
    }
    for (int k = 0; k < kDialCount; ++k)
        EXPECT_EQ(radio.blockHex(0x1F00 + 0x10 * k), MakeDialData(dials.at(k)));

    const QStringList& commands = radio.commands();
    ASSERT_EQ(commands.size(), 19);
    EXPECT_EQ(commands.first(), QStringLiteral("ZQ318"));
    EXPECT_EQ(commands.last(), QStringLiteral("KV~E"));
    // The second half of each special record follows its first half after 100 ms, not 10.
    ASSERT_EQ(arrivals.size(), 19);
    for (int i : {3, 5, 7}) {
        EXPECT_TRUE(commands.at(i + 1).startsWith(QStringLiteral("KV~F01"))) << i;
        EXPECT_GE(arrivals.at(i + 1) - arrivals.at(i), 100) << i;
    }
    EXPECT_LT(arrivals.at(2) - arrivals.at(1), 100);
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

INSTANTIATE_TEST_SUITE_P(
    Codes, AutoSelectTest,
    ::testing::Values(
        DetectCase{"T", 0xAA, false, "", Outcome::Done, VariantT, "ZQ-318 T"},
        DetectCase{"EcloneA", 0x55, true, "", Outcome::Done, VariantE, "ZQ-318 E"},
        DetectCase{"TfhCloneA", 0x33, true, "", Outcome::Done, VariantJ, "ZQ-318 TFH"},
        DetectCase{"UnknownModel", 0x34, true, "", Outcome::CommunicationError, VariantA, "ZQ-318 A"},
        DetectCase{"ZeroModel", 0x00, false, "", Outcome::CommunicationError, VariantA, "ZQ-318 A"},
        DetectCase{"EndNgKeepsDetected", 0x55, true, "ng@end", Outcome::CommunicationError, VariantE,
                   "ZQ-318 E"},
        // 33 garbles to CC, a model code no radio reports.
        DetectCase{"GarbledIdentity", 0x33, true, "garble@0000", Outcome::CommunicationError, VariantA,
                   "ZQ-318 A"}),
    CaseName<DetectCase>);

TEST_F(TransferTest, ReadAllRunsMemoryEvenAfterSettingsFailed) {
    FillSampleRadio(radio);
    addFault("ng@00F0");
    const AllResult all = ReadAll(link, document);
    EXPECT_EQ(all.settings.outcome, Outcome::CommunicationError);
    EXPECT_TRUE(all.memory.ok());
    EXPECT_EQ(all.first().outcome, Outcome::CommunicationError);
    EXPECT_EQ(radio.commands().count(QStringLiteral("KV~E")), 1); // only the memory session ended
    EXPECT_EQ(radio.commands().at(2), QStringLiteral("KV~F0200R"));
    EXPECT_TRUE(SameMemoryRow(document.memory, DecodeRadioChannels(radio, document.memory), 199));
}

TEST_F(TransferTest, WriteAllIsTwoSessionsEachWithModelCheck) {
    document.memory = SampleMemory();
    const AllResult all = WriteAll(link, document);
    EXPECT_TRUE(all.settings.ok());
    EXPECT_TRUE(all.memory.ok());
    EXPECT_TRUE(all.first().ok());
    const QStringList& commands = radio.commands();
    ASSERT_EQ(commands.size(), 19 + 402);
    EXPECT_EQ(commands.at(18), QStringLiteral("KV~E"));
    EXPECT_EQ(commands.at(19), QStringLiteral("ZQ318"));
    EXPECT_EQ(radio.blockHex(0x1AF0), EncodeChannelSecondHalf(document.memory, 199));
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
