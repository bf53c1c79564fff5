// Any byte string as a radio's behaviour (see scriptedradio.h) through a whole transfer over the
// real link, with its reply time-out shortened and its pauses left out. Whatever the radio does:
// - the transfer sends its commands in order, each once, and stops at the first reply that fails
//   its check, with no end command after a failure;
// - it reports what the failing reply calls for ("COM Port Error" for a port failure or a record
//   that cannot be decoded, "Communication Error" otherwise);
// - the stores hold exactly the rows and blocks that arrived before the failure, decoded; the rest
//   is untouched; a write changes only what it rebuilds from the stores;
// - it never takes longer than its exchanges' time-outs allow.
#include "fuzzcheck.h"
#include "link/transfers.h"
#include "model/channelcodec.h"
#include "model/document.h"
#include "model/tables.h"
#include "scriptedradio.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <optional>

using namespace zq::model;
using zq::link::LinkEvent;
using zq::link::SerialLink;

namespace {

constexpr int kTimeoutMs = 5;
// Per exchange beyond its time-out, and once per transfer: room for the sanitizers' slowness.
constexpr int kExchangeSlackMs = 5;
constexpr int kTransferSlackMs = 500;

enum class Transfer { ReadMemory, WriteMemory, ReadSettings, WriteSettings, AutoSelect, ReadAll, WriteAll };
constexpr int kTransfers = 7;

// One command and how its exchange ended, as the link's observer saw it.
struct Exchange {
    QString command;
    QString reply; // what SendCommand returned: the reply, or a failure marker
};

void Record(QList<Exchange>& trace, const LinkEvent& event) {
    switch (event.kind) {
    case LinkEvent::Kind::Sent:
        trace.append(Exchange{event.text.chopped(1), QString()});
        break;
    case LinkEvent::Kind::Replied:
        trace.last().reply = event.text;
        break;
    case LinkEvent::Kind::TimedOut:
        trace.last().reply = zq::link::kTimeoutMarker;
        break;
    case LinkEvent::Kind::PortError:
        if (!trace.isEmpty() && trace.last().reply.isEmpty()) trace.last().reply = zq::link::kPortErrorMarker;
        break;
    default:
        break;
    }
}

// What a transfer must have done, replayed from the exchanges the link saw with the codecs and the
// rules of the clone protocol on a copy of the stores.
class Expectation {
public:
    Expectation(const QList<Exchange>& trace, const Contents& before, bool hungUp)
        : want(before), trace_(trace), hungUp_(hungUp) {}

    std::optional<Outcome> readMemory() {
        session();
        for (int channel = 0; channel < kChannelCount; ++channel) {
            QString first, second;
            if (auto failed = read(ChannelBlockAddress(channel, 0), first)) return failed;
            if (auto failed = read(ChannelBlockAddress(channel, 1), second)) return failed;
            if (DecodeChannelRecord(want.memory, first + second, channel) != CodecError::None)
                return Outcome::ComPortError;
        }
        return end();
    }

    std::optional<Outcome> writeMemory(const MemoryTable& memory) {
        session(Outcome::Fatal); // the memory write has no trap for a port that cannot be opened
        if (auto failed = acknowledged(QStringLiteral("ZQ318"), 10)) return failed;
        for (int channel = 0; channel < kChannelCount; ++channel) {
            if (auto failed = write(ChannelBlockAddress(channel, 0), EncodeChannelFirstHalf(memory, channel)))
                return failed;
            if (auto failed =
                    write(ChannelBlockAddress(channel, 1), EncodeChannelSecondHalf(memory, channel)))
                return failed;
        }
        return end();
    }

    std::optional<Outcome> readSettings() {
        session();
        if (auto failed = read(QStringLiteral("00E0"), want.settingsBlock.halfA)) return failed;
        if (auto failed = read(QStringLiteral("00F0"), want.settingsBlock.halfB)) return failed;
        ApplySettingsBlock(want.settingsBlock, want.settings);
        for (int row = kVfoRow; row <= kCallRow; ++row) {
            QString first, second;
            if (auto failed = read(specialAddress(row, 0), first)) return failed;
            if (auto failed = read(specialAddress(row, 1), second)) return failed;
            if (DecodeSpecialRecord(want.special, first + second, row) != CodecError::None)
                return Outcome::ComPortError;
        }
        BlankRptTexts(want.special);
        for (int memory = 0; memory < kDialCount; ++memory) {
            QString record;
            if (auto failed = read(dialAddress(memory), record)) return failed;
            want.dialTexts[memory] = UpDateDialData(record);
        }
        return end();
    }

    std::optional<Outcome> writeSettings() {
        session();
        if (auto failed = acknowledged(QStringLiteral("ZQ318"), 10)) return failed;
        BuildSettingsBlock(want.settingsBlock, want.settings);
        if (auto failed = write(QStringLiteral("00E0"), want.settingsBlock.halfA)) return failed;
        if (auto failed = write(QStringLiteral("00F0"), want.settingsBlock.halfB)) return failed;
        for (int row = kVfoRow; row <= kRptRow; ++row) {
            if (auto failed = write(specialAddress(row, 0), EncodeSpecialFirstHalf(want.special, row)))
                return failed;
            if (auto failed = write(specialAddress(row, 1), EncodeSpecialSecondHalf(want.special, row)))
                return failed;
        }
        for (int memory = 0; memory < kDialCount; ++memory)
            if (auto failed = write(dialAddress(memory), MakeDialData(want.dialTexts[memory]))) return failed;
        return end();
    }

    std::optional<Outcome> autoSelect() {
        session();
        if (auto failed = acknowledged(QStringLiteral("ZQ318"), 10)) return failed;
        QString payload;
        if (read(QStringLiteral("0000"), payload)) return Outcome::CommunicationError; // even a port failure
        const QString code = payload.mid(6, 2);
        const int found = code == QLatin1String("AA")   ? VariantT
                          : code == QLatin1String("55") ? VariantE
                          : code == QLatin1String("33") ? VariantJ
                                                        : -1;
        if (found < 0) return Outcome::CommunicationError;
        variant = found;
        cloneCodeA = payload.mid(4, 2) == QLatin1String("AA");
        dataChanged = true;
        return acknowledged(QStringLiteral("KV~E"), 9);
    }

    // Every exchange the link saw belongs to the transfer.
    void finish() const {
        fuzz::Require(next_ == trace_.size(), "nothing is sent after a transfer stops",
                      next_ < trace_.size() ? trace_[next_].command : QString());
    }

    Contents want;
    int variant = VariantA;
    bool cloneCodeA = true;
    bool dataChanged = false;

private:
    static QString specialAddress(int row, int half) {
        return QStringLiteral("01%1").arg(2 * row + half, 1, 16).toUpper() + QLatin1Char('0');
    }
    static QString dialAddress(int memory) {
        return QStringLiteral("1F") + QString::number(memory) + QLatin1Char('0');
    }

    void session(Outcome unopened = Outcome::ComPortError) {
        sessionStart_ = next_;
        unopened_ = unopened;
    }

    // The reply to `command`; none when the command never went out, which only a session that
    // could not open its port may show.
    std::optional<QString> exchange(const QString& command) {
        if (next_ == trace_.size()) {
            fuzz::Require(next_ == sessionStart_ && hungUp_, "a transfer stops only at a failed reply",
                          command);
            return std::nullopt;
        }
        const Exchange& seen = trace_[next_++];
        fuzz::Require(seen.command == command, "commands go out in order, each once",
                      QStringLiteral("sent %1, due %2").arg(seen.command, command));
        return seen.reply;
    }

    static Outcome mismatch(const QString& reply) {
        return reply == zq::link::kPortErrorMarker ? Outcome::ComPortError : Outcome::CommunicationError;
    }

    std::optional<Outcome> read(const QString& address, QString& payload) {
        const std::optional<QString> reply = exchange(QStringLiteral("KV~F") + address + QLatin1Char('R'));
        if (!reply) return unopened_;
        if (reply->size() != 44) return mismatch(*reply);
        payload = reply->mid(10, 32);
        return std::nullopt;
    }

    std::optional<Outcome> acknowledged(const QString& command, int length) {
        const std::optional<QString> reply = exchange(command);
        if (!reply) return unopened_;
        if (reply->size() != length || !reply->endsWith(QLatin1String("OK\r\n"))) return mismatch(*reply);
        return std::nullopt;
    }

    std::optional<Outcome> write(const QString& address, const QString& data) {
        return acknowledged(QStringLiteral("KV~F") + address + QLatin1Char('W') + data, 46);
    }

    // The end command's reply is not checked.
    std::optional<Outcome> end() {
        exchange(QStringLiteral("KV~E"));
        return std::nullopt;
    }

    const QList<Exchange>& trace_;
    const bool hungUp_;
    int next_ = 0;
    int sessionStart_ = 0;
    Outcome unopened_ = Outcome::ComPortError; // what the session ends with when its port is closed
};

Outcome OutcomeOf(const std::optional<Outcome>& failure) {
    return failure.value_or(Outcome::Done);
}

// Stores unlike anything a radio is likely to send, so that a row a transfer should not touch shows.
const Contents& Before() {
    static const Contents before = [] {
        Document document;
        Contents contents = document.contents();
        for (int row = 0; row < kMemoryRows; ++row) {
            contents.memory.setChannelInUse(row, row % 3 != 0);
            for (int column = 0; column < kMemoryColumns; ++column)
                contents.memory.set(row, column, QStringLiteral("m%1.%2").arg(row).arg(column),
                                    (row + column) % 7);
            contents.memory.set(row, ColFrequency, QStringLiteral("14%1.0000").arg(row % 10), 140 + row % 10);
        }
        for (int row = 0; row < kSpecialRows; ++row)
            for (int column = 0; column < kSpecialColumns; ++column)
                contents.special.set(row, column, QStringLiteral("s%1.%2").arg(row).arg(column), column % 3);
        contents.settingsBlock = {QString(32, QLatin1Char('1')), QString(32, QLatin1Char('2'))};
        contents.settings = RadioSettings{.volume = 14,
                                          .squelch = 3,
                                          .dtmfWait = 2,
                                          .timeOutTimer = 9,
                                          .keyLock = true,
                                          .beep = true,
                                          .lamp = 1,
                                          .batteryType = 1};
        contents.dialTexts = {"123#", "*0A", "", "555-1212", "D", "0123456789ABCD*#", "", "9", "ABCD"};
        return contents;
    }();
    return before;
}

// How long this thread has waited for a processor, in ms. A shared machine can keep a transfer from
// running for a long while; that time is not the transfer waiting.
qint64 WaitedForProcessorMs() {
    QFile stats(QStringLiteral("/proc/thread-self/schedstat"));
    if (!stats.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = stats.readAll().split(' ');
    return fields.size() >= 2 ? fields[1].toLongLong() / 1000000 : 0;
}

QCoreApplication& Application() {
    static int argc = 1;
    static char name[] = "fuzz_link_replies";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    return application;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Application();
    if (size == 0) return 0;
    const Transfer transfer = Transfer(data[0] % kTransfers);
    fuzz::ScriptedRadio radio(fuzz::Bytes(data + 1, size - 1));
    radio.open(QIODevice::ReadWrite | QIODevice::Unbuffered);

    static SerialLink link;
    QList<Exchange> trace;
    link.setTransport(&radio);
    link.setReplyTimeoutMs(kTimeoutMs);
    link.setPauseLimitMs(0);
    link.setObserver([&](const LinkEvent& event) {
        Record(trace, event);
        radio.observe(event);
    });
    static Document document;
    document.replaceContents(Before());
    document.setModelVariant(VariantA);
    document.setCloneCodeA(true);
    document.setDataChanged(false);

    QElapsedTimer clock;
    clock.start();
    const qint64 waitedBefore = WaitedForProcessorMs();
    std::optional<Outcome> first, second;
    switch (transfer) {
    case Transfer::ReadMemory:
        first = zq::link::ReadMemory(link, document).outcome;
        break;
    case Transfer::WriteMemory:
        first = zq::link::WriteMemory(link, document).outcome;
        break;
    case Transfer::ReadSettings:
        first = zq::link::ReadSettings(link, document).outcome;
        break;
    case Transfer::WriteSettings:
        first = zq::link::WriteSettings(link, document).outcome;
        break;
    case Transfer::AutoSelect:
        first = zq::link::AutoSelect(link, document).outcome;
        break;
    case Transfer::ReadAll: {
        const zq::link::AllResult all = zq::link::ReadAll(link, document);
        first = all.settings.outcome;
        second = all.memory.outcome;
        break;
    }
    case Transfer::WriteAll: {
        const zq::link::AllResult all = zq::link::WriteAll(link, document);
        first = all.settings.outcome;
        second = all.memory.outcome;
        break;
    }
    }
    const qint64 elapsed = clock.elapsed() - (WaitedForProcessorMs() - waitedBefore);
    link.setObserver({});
    link.setTransport(nullptr);

    fuzz::Require(elapsed <= trace.size() * (kTimeoutMs + kExchangeSlackMs) + kTransferSlackMs,
                  "a transfer never runs past its time-outs",
                  QStringLiteral("%1 ms running or waiting on the link for %2 exchanges")
                      .arg(elapsed)
                      .arg(trace.size()));
    QStringList sent;
    for (const Exchange& exchange : trace)
        sent.append(exchange.command);
    fuzz::Require(radio.commands() == sent, "each command reaches the radio once, as sent");

    Expectation expected(trace, Before(), radio.hungUp());
    std::optional<Outcome> dueFirst, dueSecond;
    switch (transfer) {
    case Transfer::ReadMemory:
        dueFirst = OutcomeOf(expected.readMemory());
        break;
    case Transfer::WriteMemory:
        dueFirst = OutcomeOf(expected.writeMemory(Before().memory));
        break;
    case Transfer::ReadSettings:
        dueFirst = OutcomeOf(expected.readSettings());
        break;
    case Transfer::WriteSettings:
        dueFirst = OutcomeOf(expected.writeSettings());
        break;
    case Transfer::AutoSelect:
        dueFirst = OutcomeOf(expected.autoSelect());
        break;
    case Transfer::ReadAll:
        dueFirst = OutcomeOf(expected.readSettings());
        dueSecond = OutcomeOf(expected.readMemory());
        break;
    case Transfer::WriteAll:
        dueFirst = OutcomeOf(expected.writeSettings());
        dueSecond = OutcomeOf(expected.writeMemory(Before().memory));
        break;
    }
    expected.finish();
    const auto name = [](const std::optional<Outcome>& outcome) {
        return outcome
                   ? Result::fail(*outcome).message() + QStringLiteral("/") + QString::number(int(*outcome))
                   : QStringLiteral("-");
    };
    fuzz::Require(first == dueFirst && second == dueSecond, "a transfer reports what its replies call for",
                  name(first) + QLatin1Char(' ') + name(second) + QStringLiteral(", due ") + name(dueFirst) +
                      QLatin1Char(' ') + name(dueSecond));
    const Contents& got = document.contents();
    fuzz::RequireSame(got.memory, expected.want.memory, "memory rows change exactly as the replies say");
    fuzz::RequireSame(got.special, expected.want.special, "special rows change exactly as the replies say");
    fuzz::Require(got.settingsBlock == expected.want.settingsBlock && got.settings == expected.want.settings,
                  "the settings change exactly as the replies say",
                  got.settingsBlock.halfA + QLatin1Char(' ') + got.settingsBlock.halfB);
    fuzz::Require(got.dialTexts == expected.want.dialTexts, "dial texts change exactly as the replies say");
    fuzz::Require(document.ModelVariant() == expected.variant &&
                      document.CloneCodeA() == expected.cloneCodeA &&
                      document.DataChanged() == expected.dataChanged,
                  "only detection chooses the variant and clone code");
    return 0;
}
