// One exchange goes wrong: the transfer reports it at once, sends nothing more (no end command), and the
// stores change exactly up to the failure.
#include "linkfixture.h"

#include "link/transfers.h"
#include "model/dialcodec.h"
#include "model/tables.h"

using namespace zq::model;
using namespace linktest;

namespace {

struct FaultCase {
    const char* name;
    Transfer transfer;
    const char* fault;
    Outcome outcome;
    const char* failing; // the last command sent
    int progress;        // memory read: channel of the failing block; settings read: blocks read before it;
                         // detection: the variant chosen (VariantA, the starting one, when none was)
    int modelCode = 0xAA;
    bool cloneCodeA = false;
};

class FaultTest : public RadioTest, public ::testing::WithParamInterface<FaultCase> {};

TEST_P(FaultTest, StopsAtOnceAndKeepsWhatCameBefore) {
    const FaultCase& c = GetParam();
    Document before;
    if (c.transfer == Transfer::WriteMemory || c.transfer == Transfer::WriteSettings) {
        FillSampleDocument(document);
        FillSampleDocument(before);
    } else
        FillSampleRadio(radio);
    radio.setModelCode(c.modelCode);
    radio.setCloneCodeA(c.cloneCodeA);
    ASSERT_NO_FATAL_FAILURE(addFault(c.fault));
    if (c.transfer == Transfer::AutoSelect) document.setModelVariant(VariantA);
    int redraws = 0;
    QObject::connect(&document, &Document::memoryRowsChanged,
                     [&](int first, int last) { redraws += first == 0 && last == kChannelCount - 1; });

    const Result result = RunTransfer(c.transfer, link, document);
    const qint64 lastExchange = clock.elapsed() - arrivals.last();
    EXPECT_EQ(result.outcome, c.outcome) << result.detail.toStdString();
    EXPECT_TRUE(c.outcome == Outcome::Done || !result.detail.isEmpty());
    const QString failing = QString::fromLatin1(c.failing), last = radio.commands().last();
    EXPECT_TRUE(last.startsWith(failing)) << last.toStdString();
    EXPECT_EQ(radio.commands().contains(QStringLiteral("KV~E")), failing == QLatin1String("KV~E"));
    const QByteArray fault(c.fault);
    EXPECT_EQ(link.isOpen(), !fault.startsWith("hangup")); // a pulled cable is opened afresh next time

    // Only silence costs the full reply wait: a block read one digit short still ends in CR LF, an "OK"
    // one character short never completes. The radio notes a command a moment after the link sent it.
    const bool silent = fault.startsWith("timeout") || fault == "silent-end" ||
                        (fault.startsWith("short") && !failing.endsWith(QLatin1Char('R')));
    EXPECT_GE(lastExchange, silent ? zq::link::kReplyTimeoutMs - 50 : 0);
    EXPECT_LT(lastExchange, (silent ? zq::link::kReplyTimeoutMs : 0) + 300);

    const int done = c.progress;
    if (c.transfer == Transfer::ReadMemory) {
        const MemoryTable expected = DecodeRadioChannels(radio, before.memory());
        const int stop = c.outcome == Outcome::Done ? kChannelCount : done;
        for (int n = 0; n < kMemoryRows; ++n)
            EXPECT_TRUE(n == stop || SameRow(document.memory(), n < stop ? expected : before.memory(), n))
                << n;
    } else if (c.transfer == Transfer::ReadSettings) {
        const SettingsBlock& kept = before.settingsBlock();
        EXPECT_EQ(document.settingsBlock(), (SettingsBlock{done >= 1 ? radio.blockHex(0xE0) : kept.halfA,
                                                           done >= 2 ? radio.blockHex(0xF0) : kept.halfB}));
        for (int row = 0; row < 2; ++row) // a record read is decoded (a garbled one only partly)
            EXPECT_TRUE(done >= 4 + 2 * row || SameRow(document.special(), before.special(), row)) << row;
        for (int k = 0; k < kDialCount; ++k)
            EXPECT_EQ(document.dialTexts()[k], k < done - 6
                                                   ? UpDateDialData(radio.blockHex(0x1F00 + 0x10 * k))
                                                   : before.dialTexts()[k]);
    } else if (c.transfer == Transfer::AutoSelect) { // once the identity is read the choice stands
        const bool detected = done != VariantA;
        EXPECT_EQ(document.ModelVariant(), done);
        EXPECT_EQ(document.CloneCodeA(), detected && c.cloneCodeA);
        EXPECT_EQ(document.DataChanged(), detected);
        EXPECT_EQ(redraws, detected ? 1 : 0);
        EXPECT_EQ(radio.commands(), QStringList({"ZQ318", "KV~F0000R", "KV~E"}).mid(0, detected ? 3 : 2));
    }
    EXPECT_TRUE(c.transfer == Transfer::ReadMemory || document.memory() == before.memory());
}

using enum Transfer;
constexpr Outcome Comm = Outcome::CommunicationError, Port = Outcome::ComPortError, Done = Outcome::Done;

// Addresses: 0200 the first channel block, 0FE0 channel 111's; 00E0/00F0 the settings, 0100..0150 the
// special records, 1F00..1F80 the dial memories. A garbled read has the right length, but decodes to an
// out-of-range tone; a garbled write answer is wrong like NG. The identity read reports even a port failure
// as a communication failure, and only there is the end command's answer checked.
const FaultCase kFaultCases[] = {
    {"ReadMemShortFirst", ReadMemory, "short@0210", Comm, "KV~F0210R", 0},
    {"ReadMemGarbleDecodeError", ReadMemory, "garble@0260", Port, "KV~F0270R", 3},
    {"ReadMemHangupMiddle", ReadMemory, "hangup@0FE0", Port, "KV~F0FE0R", 111},
    {"ReadMemSilentEnd", ReadMemory, "silent-end", Done, "KV~E", 0},
    {"WriteMemNgModel", WriteMemory, "ng@model", Comm, "ZQ318", 0},
    {"WriteMemNgFirst", WriteMemory, "ng@0200", Comm, "KV~F0200W", 0},
    {"WriteMemShortMiddle", WriteMemory, "short@1010", Comm, "KV~F1010W", 112},
    {"ReadSetTimeoutSettings", ReadSettings, "timeout@00E0", Comm, "KV~F00E0R", 0},
    {"ReadSetShortSettingsB", ReadSettings, "short@00F0", Comm, "KV~F00F0R", 1},
    {"ReadSetNgSpecial", ReadSettings, "ng@0110", Comm, "KV~F0110R", 3},
    {"ReadSetGarbleSpecial", ReadSettings, "garble@0120", Port, "KV~F0130R", 6},
    {"ReadSetHangupDial", ReadSettings, "hangup@1F40", Port, "KV~F1F40R", 10},
    {"WriteSetShortSettings", WriteSettings, "short@00E0", Comm, "KV~F00E0W", 0},
    {"WriteSetNgRpt", WriteSettings, "ng@0150", Comm, "KV~F0150W", 0},
    {"WriteSetHangupLastDial", WriteSettings, "hangup@1F80", Port, "KV~F1F80W", 0},
    {"DetectT", AutoSelect, "", Done, "KV~E", VariantT},
    {"DetectEcloneA", AutoSelect, "", Done, "KV~E", VariantE, 0x55, true},
    {"DetectTfhCloneA", AutoSelect, "", Done, "KV~E", VariantJ, 0x33, true},
    {"DetectUnknownModel", AutoSelect, "", Comm, "KV~F0000R", VariantA, 0x34, true},
    {"DetectHangupIdentity", AutoSelect, "hangup@0000", Comm, "KV~F0000R", VariantA, 0xAA, true},
    {"DetectEndNg", AutoSelect, "ng@end", Comm, "KV~E", VariantE, 0x55, true}};
INSTANTIATE_TEST_SUITE_P(Faults, FaultTest, ::testing::ValuesIn(kFaultCases), CaseName);

} // namespace
