// One exchange goes wrong: the transfer reports the specified message at once, sends nothing more
// (no end command), and the stores change exactly up to the failure.
#include "link/transfers.h"
#include "linkfixture.h"

#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/tables.h"
#include "radio/radiofault.h"
#include <ostream>

using namespace zq::model;
using namespace zq::link;
using namespace linktest;

namespace {

enum class Transfer { ReadMemory, WriteMemory, ReadSettings, WriteSettings, AutoSelect };

struct FaultCase {
    const char* name;
    Transfer transfer;
    const char* fault;
    Outcome outcome;
    const char* failing; // the command the transfer stopped at; for a Done case the last command sent
    int progress;        // memory read: channel of the failing block; settings read: blocks read before it
};

void PrintTo(const FaultCase& c, std::ostream* os) {
    *os << c.name;
}

constexpr int kSlack = 300; // ms allowed beyond the specified wait

class FaultTest : public RadioTest, public ::testing::WithParamInterface<FaultCase> {
protected:
    Result run(Transfer transfer) {
        switch (transfer) {
        case Transfer::ReadMemory:
            return ReadMemory(link, document);
        case Transfer::WriteMemory:
            return WriteMemory(link, document);
        case Transfer::ReadSettings:
            return ReadSettings(link, document);
        case Transfer::WriteSettings:
            return WriteSettings(link, document);
        case Transfer::AutoSelect:
            return AutoSelect(link, document);
        }
        return Result::done();
    }
};

TEST_P(FaultTest, StopsAtOnceWithTheSpecifiedMessage) {
    const FaultCase& c = GetParam();
    const bool reading = c.transfer == Transfer::ReadMemory || c.transfer == Transfer::ReadSettings;
    if (reading)
        FillSampleRadio(radio);
    else
        document.memory = SampleMemory();
    const QByteArray radioBefore = radio.memory();
    const MemoryTable memoryBefore = document.memory;
    const SpecialTable specialBefore = document.special;
    const SettingsBlock settingsBefore = document.settingsBlock;
    const std::array<QString, 9> dialsBefore = document.dialTexts;
    const std::optional<zq::radio::Fault> fault = zq::radio::ParseFault(QString::fromLatin1(c.fault));
    ASSERT_TRUE(fault);
    radio.addFault(*fault);

    const Result result = run(c.transfer);
    const qint64 finished = clock.elapsed();

    EXPECT_EQ(result.outcome, c.outcome) << result.detail.toStdString();
    if (c.outcome != Outcome::Done) {
        EXPECT_FALSE(result.detail.isEmpty());
    }
    ASSERT_FALSE(radio.commands().isEmpty());
    // Nothing after the failing command: no further block, no end command.
    EXPECT_TRUE(radio.commands().last().startsWith(QString::fromLatin1(c.failing)))
        << radio.commands().last().toStdString();
    if (QByteArray(c.failing) != "KV~E") {
        EXPECT_FALSE(endSent());
    }
    // The failing exchange took its 2000 ms only where the radio fell silent.
    const qint64 lastExchange = finished - arrivals.last();
    // A block read one digit short still ends in CR LF and is rejected by its length; an "OK" one
    // character short never completes.
    const bool failingRead = QByteArray(c.failing).endsWith('R');
    const bool silent = fault->kind == zq::radio::Fault::Kind::Timeout ||
                        fault->kind == zq::radio::Fault::Kind::SilentEnd ||
                        (fault->kind == zq::radio::Fault::Kind::Short && !failingRead);
    // The radio notes a command's arrival a moment after the link starts its wait.
    if (silent) {
        EXPECT_GE(lastExchange, kReplyTimeoutMs - 50);
    }
    EXPECT_LT(lastExchange, (silent ? kReplyTimeoutMs : 0) + kSlack);

    switch (c.transfer) {
    case Transfer::ReadMemory: {
        const MemoryTable expected = DecodeRadioChannels(radio, memoryBefore);
        const int stop = c.outcome == Outcome::Done ? kChannelCount : c.progress;
        for (int n = 0; n < stop; ++n)
            EXPECT_TRUE(SameMemoryRow(document.memory, expected, n)) << n;
        for (int n = stop + 1; n < kMemoryRows; ++n)
            EXPECT_TRUE(SameMemoryRow(document.memory, memoryBefore, n)) << n;
        break;
    }
    case Transfer::WriteMemory:
    case Transfer::WriteSettings: {
        // Blocks before the failing one are written; the rest of the radio is as it was.
        const QString failing = QString::fromLatin1(c.failing);
        const int failingAddress =
            failing.startsWith(QLatin1String("KV~F")) ? failing.mid(4, 4).toInt(nullptr, 16) : -1;
        int written = 0;
        for (const QString& command : radio.commands()) {
            if (!command.startsWith(QLatin1String("KV~F")) || command.size() != 41) continue;
            const int address = command.mid(4, 4).toInt(nullptr, 16);
            if (address == failingAddress) continue;
            EXPECT_EQ(radio.blockHex(address), command.mid(9).toUpper()) << address;
            ++written;
        }
        for (int address = 0; address < zq::radio::kMemorySize; address += zq::radio::kBlockSize) {
            bool sent = false;
            for (const QString& command : radio.commands())
                sent = sent || (command.size() == 41 && command.mid(4, 4).toInt(nullptr, 16) == address);
            if (!sent) {
                EXPECT_EQ(radio.memory().mid(address, 16), radioBefore.mid(address, 16)) << address;
            }
        }
        if (QByteArray(c.failing) == "ZQ318") {
            EXPECT_EQ(written, 0);
        }
        EXPECT_EQ(document.memory, memoryBefore); // a write changes nothing in the memory store
        break;
    }
    case Transfer::ReadSettings: {
        const int done = c.outcome == Outcome::Done ? 15 : c.progress;
        EXPECT_EQ(document.settingsBlock.halfA, done >= 1 ? radio.blockHex(0xE0) : settingsBefore.halfA);
        EXPECT_EQ(document.settingsBlock.halfB, done >= 2 ? radio.blockHex(0xF0) : settingsBefore.halfB);
        for (int row = 0; row < 2; ++row) {
            if (done >= 4 + 2 * row) continue; // decoded (a garbled record only partly)
            EXPECT_TRUE(SameSpecialRow(document.special, specialBefore, row)) << row;
        }
        for (int k = 0; k < kDialCount; ++k)
            EXPECT_EQ(document.dialTexts[k],
                      k < done - 6 ? UpDateDialData(radio.blockHex(0x1F00 + 0x10 * k)) : dialsBefore[k])
                << k;
        EXPECT_EQ(document.memory, memoryBefore);
        break;
    }
    case Transfer::AutoSelect:
        break;
    }
}

// Addresses: 0200 the first channel block, 1000 a middle one (channel 112), 1AF0 the last; 00E0/00F0
// the settings, 0100..0150 the special records, 1F00..1F80 the dial memories.
INSTANTIATE_TEST_SUITE_P(
    Faults, FaultTest,
    ::testing::Values(
        // Read Memory
        FaultCase{"ReadMemTimeoutFirst", Transfer::ReadMemory, "timeout@0200", Outcome::CommunicationError,
                  "KV~F0200R", 0},
        FaultCase{"ReadMemShortFirst", Transfer::ReadMemory, "short@0210", Outcome::CommunicationError,
                  "KV~F0210R", 0},
        FaultCase{"ReadMemNgMiddle", Transfer::ReadMemory, "ng@1000", Outcome::CommunicationError,
                  "KV~F1000R", 112},
        // Right length, wrong digits: accepted, but the tone index it decodes is out of range.
        FaultCase{"ReadMemGarbleDecodeError", Transfer::ReadMemory, "garble@0260", Outcome::ComPortError,
                  "KV~F0270R", 3},
        FaultCase{"ReadMemHangupMiddle", Transfer::ReadMemory, "hangup@0FE0", Outcome::ComPortError,
                  "KV~F0FE0R", 111},
        FaultCase{"ReadMemTimeoutLast", Transfer::ReadMemory, "timeout@1AF0", Outcome::CommunicationError,
                  "KV~F1AF0R", 199},
        FaultCase{"ReadMemSilentEnd", Transfer::ReadMemory, "silent-end", Outcome::Done, "KV~E", 0},
        // Write Memory
        FaultCase{"WriteMemNgModel", Transfer::WriteMemory, "ng@model", Outcome::CommunicationError, "ZQ318",
                  0},
        FaultCase{"WriteMemTimeoutModel", Transfer::WriteMemory, "timeout@model", Outcome::CommunicationError,
                  "ZQ318", 0},
        FaultCase{"WriteMemHangupModel", Transfer::WriteMemory, "hangup@model", Outcome::ComPortError,
                  "ZQ318", 0},
        FaultCase{"WriteMemNgFirst", Transfer::WriteMemory, "ng@0200", Outcome::CommunicationError,
                  "KV~F0200W", 0},
        FaultCase{"WriteMemGarbleMiddle", Transfer::WriteMemory, "garble@1000", Outcome::CommunicationError,
                  "KV~F1000W", 112},
        FaultCase{"WriteMemShortMiddle", Transfer::WriteMemory, "short@1010", Outcome::CommunicationError,
                  "KV~F1010W", 112},
        FaultCase{"WriteMemHangupLast", Transfer::WriteMemory, "hangup@1AF0", Outcome::ComPortError,
                  "KV~F1AF0W", 199},
        FaultCase{"WriteMemSilentEnd", Transfer::WriteMemory, "silent-end", Outcome::Done, "KV~E", 0},
        // Read Settings
        FaultCase{"ReadSetTimeoutSettings", Transfer::ReadSettings, "timeout@00E0",
                  Outcome::CommunicationError, "KV~F00E0R", 0},
        FaultCase{"ReadSetShortSettingsB", Transfer::ReadSettings, "short@00F0", Outcome::CommunicationError,
                  "KV~F00F0R", 1},
        FaultCase{"ReadSetNgSpecial", Transfer::ReadSettings, "ng@0110", Outcome::CommunicationError,
                  "KV~F0110R", 3},
        FaultCase{"ReadSetGarbleSpecial", Transfer::ReadSettings, "garble@0120", Outcome::ComPortError,
                  "KV~F0130R", 6},
        FaultCase{"ReadSetHangupDial", Transfer::ReadSettings, "hangup@1F40", Outcome::ComPortError,
                  "KV~F1F40R", 10},
        FaultCase{"ReadSetTimeoutLastDial", Transfer::ReadSettings, "timeout@1F80",
                  Outcome::CommunicationError, "KV~F1F80R", 14},
        FaultCase{"ReadSetSilentEnd", Transfer::ReadSettings, "silent-end", Outcome::Done, "KV~E", 15},
        // Write Settings
        FaultCase{"WriteSetNgModel", Transfer::WriteSettings, "ng@model", Outcome::CommunicationError,
                  "ZQ318", 0},
        FaultCase{"WriteSetShortSettings", Transfer::WriteSettings, "short@00E0", Outcome::CommunicationError,
                  "KV~F00E0W", 0},
        FaultCase{"WriteSetNgRpt", Transfer::WriteSettings, "ng@0150", Outcome::CommunicationError,
                  "KV~F0150W", 0},
        FaultCase{"WriteSetGarbleDial", Transfer::WriteSettings, "garble@1F30", Outcome::CommunicationError,
                  "KV~F1F30W", 0},
        FaultCase{"WriteSetHangupLastDial", Transfer::WriteSettings, "hangup@1F80", Outcome::ComPortError,
                  "KV~F1F80W", 0},
        FaultCase{"WriteSetSilentEnd", Transfer::WriteSettings, "silent-end", Outcome::Done, "KV~E", 0},
        // Auto Select: the block read reports even a port failure as a communication failure, and only
        // here is the end command's answer checked.
        FaultCase{"AutoNgModel", Transfer::AutoSelect, "ng@model", Outcome::CommunicationError, "ZQ318", 0},
        FaultCase{"AutoHangupModel", Transfer::AutoSelect, "hangup@model", Outcome::ComPortError, "ZQ318", 0},
        FaultCase{"AutoHangupBlock", Transfer::AutoSelect, "hangup@0000", Outcome::CommunicationError,
                  "KV~F0000R", 0},
        FaultCase{"AutoShortBlock", Transfer::AutoSelect, "short@0000", Outcome::CommunicationError,
                  "KV~F0000R", 0},
        FaultCase{"AutoGarbleEnd", Transfer::AutoSelect, "garble@end", Outcome::CommunicationError, "KV~E",
                  0},
        FaultCase{"AutoSilentEnd", Transfer::AutoSelect, "silent-end", Outcome::CommunicationError, "KV~E",
                  0}),
    [](const ::testing::TestParamInfo<FaultCase>& info) { return std::string(info.param.name); });

// A failure after the identity was read keeps the variant and clone code already set.
TEST_F(RadioTest, AutoSelectEndFailureKeepsDetectedVariant) {
    radio.setModelCode(zq::radio::kModelCodeE);
    radio.setCloneCodeA(true);
    radio.addFault(*zq::radio::ParseFault(QStringLiteral("ng@end")));
    EXPECT_EQ(AutoSelect(link, document).outcome, Outcome::CommunicationError);
    EXPECT_EQ(document.ModelVariant(), VariantE);
    EXPECT_TRUE(document.CloneCodeA());
}

// A garbled identity naming no known model leaves variant and clone code alone.
TEST_F(RadioTest, AutoSelectGarbledIdentityChangesNothing) {
    radio.setModelCode(zq::radio::kModelCodeTfh); // 33 garbles to CC
    radio.setCloneCodeA(false);                   // 00 garbles to FF
    radio.addFault(*zq::radio::ParseFault(QStringLiteral("garble@0000")));
    document.setModelVariant(VariantE);
    EXPECT_EQ(AutoSelect(link, document).outcome, Outcome::CommunicationError);
    EXPECT_EQ(document.ModelVariant(), VariantE);
    EXPECT_FALSE(document.CloneCodeA());
    EXPECT_FALSE(endSent());
}

} // namespace
