#include "link/transfers.h"
#include "linkfixture.h"

#include "model/dialcodec.h"
#include "model/tables.h"

#include <numeric>

using namespace zq::model;
using namespace zq::link;
using namespace linktest;

namespace {

// The block commands from `first` to `last`, cut to their address and operation: "KV~F0200W".
QStringList Blocks(int first, int last, char operation) {
    QStringList blocks;
    for (int address = first; address <= last; address += 0x10)
        blocks << QStringLiteral("KV~F%1%2").arg(address, 4, 16, QLatin1Char('0')).toUpper().arg(operation);
    return blocks;
}

// Settings, the special records (the repeater's only when writing) and the dial memories; then the channels.
QStringList Sessions(char operation, const QStringList& opening) {
    return opening + Blocks(0xE0, operation == 'W' ? 0x150 : 0x130, operation) +
               Blocks(0x1F00, 0x1F80, operation)
           << QStringLiteral("KV~E") << (opening + Blocks(0x200, 0x1AF0, operation))
           << QStringLiteral("KV~E");
}

using TransferTest = RadioTest;

TEST_F(TransferTest, WriteAllThenReadAllCarriesEverything) {
    FillSampleDocument(document);
    QList<int> progress, notified, all(kChannelCount);
    std::iota(all.begin(), all.end(), 0);
    const auto report = [&](int channel) { progress << channel; };
    const AllResult written = WriteAll(link, document, report);
    EXPECT_TRUE(written.settings.ok() && written.memory.ok() && written.first().ok());
    Document copy;
    copy.changeSpecial(
        kRptRow, kRptRow,
        [](SpecialTable& s) {
            s.set(kRptRow, ColFrequency, QStringLiteral("145.0000"), 145.0);
            s.set(kRptRow, ColPower, QStringLiteral("High"), 2);
        },
        Document::Mark::Quiet);
    const SpecialTable before = copy.special();
    QObject::connect(&copy, &Document::dialTextsChanged, [&] { notified << -1; });
    QObject::connect(&copy, &Document::memoryRowsChanged,
                     [&](int first, int last) { notified << (first == last ? first : -2); });
    clock.restart();
    const AllResult read = ReadAll(link, copy, report);
    const qint64 elapsed = clock.elapsed();
    EXPECT_TRUE(read.settings.ok() && read.memory.ok());
    // The write shows its bar before the model check; each dial memory and channel shows as it arrives.
    EXPECT_EQ(progress, QList<int>{0} + all + all);
    EXPECT_EQ(notified, QList<int>(kDialCount, -1) + all);
    // A pause after every command (one more before each end command): 16 in the settings, 402 in the memory.
    EXPECT_GE(elapsed, 418 * kCommandPauseMs);
    EXPECT_LT(elapsed, 418 * kCommandPauseMs * 2); // loose: a loaded machine wakes late

    zq::radio::VirtualRadio expected; // every block as the sample clone file has it, empty channels included
    FillSampleRadio(expected);
    EXPECT_EQ(radio.memory(), expected.memory());
    QStringList commands = radio.commands();
    for (QString& command : commands)
        command.truncate(9);
    EXPECT_EQ(commands, Sessions('W', {"ZQ318"}) + Sessions('R', {}));
    // The second half of each special record follows its first half after 100 ms, not 10.
    ASSERT_EQ(arrivals.size(), commands.size());
    for (int i : {3, 5, 7})
        EXPECT_GE(arrivals.at(i + 1) - arrivals.at(i), 100) << i;
    EXPECT_LT(arrivals.at(2) - arrivals.at(1), 100);
    // What the read brings in is checked block by block through zq318's copy between two radios. The repeater
    // record is not read: its numbers stay, its texts are blanked but for columns 2 to 7.
    for (int c = 0; c < SpecialTable::columns; ++c)
        EXPECT_EQ(copy.special().cell(kRptRow, c),
                  (Cell{c >= 2 && c <= 7 ? before.text(kRptRow, c) : QString(), before.number(kRptRow, c)}));
}

TEST_F(TransferTest, ReadAllRunsMemoryEvenAfterSettingsFailed) {
    FillSampleRadio(radio);
    addFault("ng@00F0");
    const AllResult all = ReadAll(link, document);
    EXPECT_TRUE(all.memory.ok());
    EXPECT_EQ(all.first().outcome, Outcome::CommunicationError);
    EXPECT_EQ(radio.commands().count(QStringLiteral("KV~E")), 1); // only the memory session ended
    EXPECT_EQ(radio.commands().at(2), QStringLiteral("KV~F0200R"));
}

TEST_F(TransferTest, ServiceReadShowsRawReply) {
    FillSampleRadio(radio);
    QString reply;
    QStringList shown;
    ASSERT_TRUE(
        ReadServiceBlock(link, QStringLiteral("0200"), reply, [&](const QString& s) { shown << s; }).ok());
    EXPECT_EQ(reply, QStringLiteral("KV~F0200R\r") + radio.blockHex(0x200) + QStringLiteral("\r\n"));
    EXPECT_EQ(shown.last(), reply);
    // A typed address goes out exactly as typed; the panel waits half a second for a block's worth of reply
    // and shows whatever came, here the radio's refusal.
    clock.restart();
    ASSERT_TRUE(ReadServiceBlock(link, QStringLiteral("zz"), reply).ok());
    EXPECT_GE(clock.elapsed(), kServiceTimeoutMs);
    EXPECT_LT(clock.elapsed(), kServiceTimeoutMs + 200);
    EXPECT_EQ(reply, QStringLiteral("KV~FzzR\rNG\r\n"));
}

// The memory write and the service panel have no error trap of their own.
TEST_F(TransferTest, PortThatDoesNotExist) {
    link.setPortName(QStringLiteral("/dev/zq318-no-such-port"));
    const MemoryTable memory = document.memory();
    const std::pair<Transfer, Outcome> cases[] = {
        {Transfer::ReadMemory, Outcome::ComPortError},    {Transfer::ReadSettings, Outcome::ComPortError},
        {Transfer::WriteSettings, Outcome::ComPortError}, {Transfer::AutoSelect, Outcome::ComPortError},
        {Transfer::WriteMemory, Outcome::Fatal},          {Transfer::Dump, Outcome::Fatal}};
    for (const auto& [transfer, outcome] : cases) {
        const Result result = RunTransfer(transfer, link, document);
        EXPECT_EQ(result.outcome, outcome) << int(transfer);
        EXPECT_TRUE(result.detail.contains(QStringLiteral("zq318-no-such-port")))
            << result.detail.toStdString();
        EXPECT_EQ(document.memory(), memory);
    }
}

TEST_F(TransferTest, WaitIsNeverShorterThanAsked) {
    for (const qint64 ms : {1, 1, 1, 1, 1, 10, 10, 10, 10, 10, 100, 100, 100}) {
        const qint64 start = clock.nsecsElapsed();
        link.Wait(int(ms));
        const qint64 ns = clock.nsecsElapsed() - start;
        EXPECT_GE(ns, ms * 1000000) << ms;
        EXPECT_LT(ns, (ms + 50) * 1000000) << ms;
    }
}

} // namespace
