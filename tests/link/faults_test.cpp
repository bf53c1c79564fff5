// One exchange goes wrong: the transfer reports the failure at once, sends nothing more (no end
// command), and the stores change exactly up to the failure.
#include "linkfixture.h"

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
    const char* failing; // the command the transfer stopped at; for a Done case the last command sent
    int progress;        // memory read: channel of the failing block; settings read: blocks read before it
};

constexpr int kSlack = 300; // ms allowed beyond the reply wait

class FaultTest : public RadioTest, public ::testing::WithParamInterface<FaultCase> {};

TEST_P(FaultTest, StopsAtOnceAndKeepsWhatCameBefore) {
    const FaultCase& c = GetParam();
    Document before; // the stores as they were
    if (c.transfer == Transfer::ReadMemory || c.transfer == Transfer::ReadSettings) {
        FillSampleRadio(radio);
    } else {
        FillSampleDocument(document);
        FillSampleDocument(before);
    }
    const QByteArray radioBefore = radio.memory();
    ASSERT_NO_FATAL_FAILURE(addFault(c.fault));

    const Result result = RunTransfer(c.transfer, link, document);
    const qint64 finished = clock.elapsed();

    EXPECT_EQ(result.outcome, c.outcome) << result.detail.toStdString();
    EXPECT_TRUE(c.outcome == Outcome::Done || !result.detail.isEmpty());
    const QStringList& commands = radio.commands();
    ASSERT_FALSE(commands.isEmpty());
    const QString failing = QString::fromLatin1(c.failing);
    EXPECT_TRUE(commands.last().startsWith(failing)) << commands.last().toStdString();
    EXPECT_EQ(endSent(), failing == QLatin1String("KV~E"));
    EXPECT_TRUE(failing != QLatin1String("ZQ318") || commands.size() == 1);

    // The failing exchange took its 2000 ms only where the radio fell silent. A block read one digit
    // short still ends in CR LF and is rejected by its length; an "OK" one character short never completes.
    const QByteArray fault(c.fault);
    const bool silent = fault.startsWith("timeout") || fault == "silent-end" ||
                        (fault.startsWith("short") && !failing.endsWith(QLatin1Char('R')));
    const qint64 lastExchange = finished - arrivals.last();
    // The radio notes a command's arrival a moment after the link starts its wait.
    EXPECT_GE(lastExchange, silent ? zq::link::kReplyTimeoutMs - 50 : 0);
    EXPECT_LT(lastExchange, (silent ? zq::link::kReplyTimeoutMs : 0) + kSlack);

    switch (c.transfer) {
    case Transfer::ReadMemory: {
        const MemoryTable expected = DecodeRadioChannels(radio, before.memory);
        const int stop = c.outcome == Outcome::Done ? kChannelCount : c.progress;
        for (int n = 0; n < stop; ++n)
            EXPECT_TRUE(SameRow(document.memory, expected, n)) << n;
        for (int n = stop + 1; n < kMemoryRows; ++n)
            EXPECT_TRUE(SameRow(document.memory, before.memory, n)) << n;
        break;
    }
    case Transfer::WriteMemory:
    case Transfer::WriteSettings: {
        // Every block sent before the failing command is written; the rest of the radio is as it was,
        // the failing block aside.
        QByteArray expected = radioBefore;
        for (const QString& command : commands) {
            if (command.size() != 41) continue;
            const int address = command.mid(4, 4).toInt(nullptr, 16);
            expected.replace(address, 16,
                             &command == &commands.last() ? radio.memory().mid(address, 16)
                                                          : QByteArray::fromHex(command.mid(9).toLatin1()));
        }
        for (int address = 0; address < zq::radio::kMemorySize; address += zq::radio::kBlockSize)
            EXPECT_EQ(radio.blockHex(address), expected.mid(address, 16).toHex().toUpper()) << address;
        EXPECT_EQ(document.memory, before.memory); // a write changes nothing in the memory store
        break;
    }
    case Transfer::ReadSettings: {
        const int done = c.outcome == Outcome::Done ? 15 : c.progress;
        EXPECT_EQ(document.settingsBlock.halfA,
                  done >= 1 ? radio.blockHex(0xE0) : before.settingsBlock.halfA);
        EXPECT_EQ(document.settingsBlock.halfB,
                  done >= 2 ? radio.blockHex(0xF0) : before.settingsBlock.halfB);
        for (int row = 0; row < 2; ++row) // a record read is decoded (a garbled one only partly)
            EXPECT_TRUE(done >= 4 + 2 * row || SameRow(document.special, before.special, row)) << row;
        for (int k = 0; k < kDialCount; ++k)
            EXPECT_EQ(document.dialTexts[k],
                      k < done - 6 ? UpDateDialData(radio.blockHex(0x1F00 + 0x10 * k)) : before.dialTexts[k])
                << k;
        EXPECT_EQ(document.memory, before.memory);
        break;
    }
    default:
        break;
    }
}

using enum Transfer;
constexpr Outcome Comm = Outcome::CommunicationError, Port = Outcome::ComPortError, Done = Outcome::Done;

// Addresses: 0200 the first channel block, 1000 a middle one (channel 112), 1AF0 the last; 00E0/00F0
// the settings, 0100..0150 the special records, 1F00..1F80 the dial memories.
INSTANTIATE_TEST_SUITE_P(
    Faults, FaultTest,
    ::testing::Values(FaultCase{"ReadMemTimeoutFirst", ReadMemory, "timeout@0200", Comm, "KV~F0200R", 0},
                      FaultCase{"ReadMemShortFirst", ReadMemory, "short@0210", Comm, "KV~F0210R", 0},
                      FaultCase{"ReadMemNgMiddle", ReadMemory, "ng@1000", Comm, "KV~F1000R", 112},
                      // Right length, wrong digits: accepted, but the tone index it decodes is out of range.
                      FaultCase{"ReadMemGarbleDecodeError", ReadMemory, "garble@0260", Port, "KV~F0270R", 3},
                      FaultCase{"ReadMemHangupMiddle", ReadMemory, "hangup@0FE0", Port, "KV~F0FE0R", 111},
                      FaultCase{"ReadMemTimeoutLast", ReadMemory, "timeout@1AF0", Comm, "KV~F1AF0R", 199},
                      FaultCase{"ReadMemSilentEnd", ReadMemory, "silent-end", Done, "KV~E", 0},
                      FaultCase{"WriteMemNgModel", WriteMemory, "ng@model", Comm, "ZQ318", 0},
                      FaultCase{"WriteMemTimeoutModel", WriteMemory, "timeout@model", Comm, "ZQ318", 0},
                      FaultCase{"WriteMemHangupModel", WriteMemory, "hangup@model", Port, "ZQ318", 0},
                      FaultCase{"WriteMemNgFirst", WriteMemory, "ng@0200", Comm, "KV~F0200W", 0},
                      FaultCase{"WriteMemGarbleMiddle", WriteMemory, "garble@1000", Comm, "KV~F1000W", 112},
                      FaultCase{"WriteMemShortMiddle", WriteMemory, "short@1010", Comm, "KV~F1010W", 112},
                      FaultCase{"WriteMemHangupLast", WriteMemory, "hangup@1AF0", Port, "KV~F1AF0W", 199},
                      FaultCase{"WriteMemSilentEnd", WriteMemory, "silent-end", Done, "KV~E", 0},
                      FaultCase{"ReadSetTimeoutSettings", ReadSettings, "timeout@00E0", Comm, "KV~F00E0R", 0},
                      FaultCase{"ReadSetShortSettingsB", ReadSettings, "short@00F0", Comm, "KV~F00F0R", 1},
                      FaultCase{"ReadSetNgSpecial", ReadSettings, "ng@0110", Comm, "KV~F0110R", 3},
                      FaultCase{"ReadSetGarbleSpecial", ReadSettings, "garble@0120", Port, "KV~F0130R", 6},
                      FaultCase{"ReadSetHangupDial", ReadSettings, "hangup@1F40", Port, "KV~F1F40R", 10},
                      FaultCase{"ReadSetTimeoutLastDial", ReadSettings, "timeout@1F80", Comm, "KV~F1F80R",
                                14},
                      FaultCase{"ReadSetSilentEnd", ReadSettings, "silent-end", Done, "KV~E", 15},
                      FaultCase{"WriteSetNgModel", WriteSettings, "ng@model", Comm, "ZQ318", 0},
                      FaultCase{"WriteSetShortSettings", WriteSettings, "short@00E0", Comm, "KV~F00E0W", 0},
                      FaultCase{"WriteSetNgRpt", WriteSettings, "ng@0150", Comm, "KV~F0150W", 0},
                      FaultCase{"WriteSetGarbleDial", WriteSettings, "garble@1F30", Comm, "KV~F1F30W", 0},
                      FaultCase{"WriteSetHangupLastDial", WriteSettings, "hangup@1F80", Port, "KV~F1F80W", 0},
                      FaultCase{"WriteSetSilentEnd", WriteSettings, "silent-end", Done, "KV~E", 0},
                      // The identity read reports even a port failure as a communication failure, and only
                      // here is the end command's answer checked.
                      FaultCase{"AutoNgModel", AutoSelect, "ng@model", Comm, "ZQ318", 0},
                      FaultCase{"AutoHangupModel", AutoSelect, "hangup@model", Port, "ZQ318", 0},
                      FaultCase{"AutoHangupBlock", AutoSelect, "hangup@0000", Comm, "KV~F0000R", 0},
                      FaultCase{"AutoShortBlock", AutoSelect, "short@0000", Comm, "KV~F0000R", 0},
                      FaultCase{"AutoGarbleEnd", AutoSelect, "garble@end", Comm, "KV~E", 0},
                      FaultCase{"AutoSilentEnd", AutoSelect, "silent-end", Comm, "KV~E", 0}),
    CaseName<FaultCase>);

} // namespace
