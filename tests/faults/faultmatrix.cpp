#include "faultmatrix.h"

#include "link/blockmap.h"
#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/document.h"
#include "model/stores.h"
#include "radio/radiofault.h"
#include "radio/radioimage.h"
#include "radio/virtualradio.h"

#include <QFile>
#include <map>
#include <ostream>

namespace faultmatrix {

using zq::model::Outcome;

namespace {

constexpr Outcome Done = Outcome::Done, Comm = Outcome::CommunicationError, Port = Outcome::ComPortError;

// What the code of a step does with the answer it gets.
enum class Reply {
    Block,    // a block read: 44 characters or a failure
    Identity, // Auto Select's block read: every mismatch a communication failure, then the model code
    Ack,      // the model query, a block write, Auto Select's end command: "OK" or a failure
    QuietEnd, // a transfer's closing end command: whatever comes back is ignored
    Service,  // a dump line: collected for up to 500 ms, only silence ends the dump
};

struct StepPlace {
    Transfer transfer;
    Step step;
    const char* target; // block address, "model", "end", or "" for the port
    int readBefore;     // blocks the transfer took in (or wrote) before this one
};

// Where each step's fault goes. The middle blocks: channel 96's second half, the VFO record's second
// half (the settings read decodes a record after it), the CALL record's second half (the settings
// write pauses longer before it), a block halfway through the dump.
const StepPlace kPlaces[] = {
    {Transfer::AutoSelect, Step::Open, "", 0},
    {Transfer::AutoSelect, Step::ModelQuery, "model", 0},
    {Transfer::AutoSelect, Step::FirstBlock, "0000", 0},
    {Transfer::AutoSelect, Step::EndCommand, "end", 1},
    {Transfer::ReadMemory, Step::Open, "", 0},
    {Transfer::ReadMemory, Step::FirstBlock, "0200", 0},
    {Transfer::ReadMemory, Step::MiddleBlock, "0E10", 193},
    {Transfer::ReadMemory, Step::LastBlock, "1AF0", 399},
    {Transfer::ReadMemory, Step::EndCommand, "end", 400},
    {Transfer::WriteMemory, Step::Open, "", 0},
    {Transfer::WriteMemory, Step::ModelQuery, "model", 0},
    {Transfer::WriteMemory, Step::FirstBlock, "0200", 0},
    {Transfer::WriteMemory, Step::MiddleBlock, "0E10", 193},
    {Transfer::WriteMemory, Step::LastBlock, "1AF0", 399},
    {Transfer::WriteMemory, Step::EndCommand, "end", 400},
    {Transfer::ReadSettings, Step::Open, "", 0},
    {Transfer::ReadSettings, Step::FirstBlock, "00E0", 0},
    {Transfer::ReadSettings, Step::MiddleBlock, "0110", 3},
    {Transfer::ReadSettings, Step::LastBlock, "1F80", 14},
    {Transfer::ReadSettings, Step::EndCommand, "end", 15},
    {Transfer::WriteSettings, Step::Open, "", 0},
    {Transfer::WriteSettings, Step::ModelQuery, "model", 0},
    {Transfer::WriteSettings, Step::FirstBlock, "00E0", 0},
    {Transfer::WriteSettings, Step::MiddleBlock, "0130", 5},
    {Transfer::WriteSettings, Step::LastBlock, "1F80", 16},
    {Transfer::WriteSettings, Step::EndCommand, "end", 17},
    {Transfer::Dump, Step::Open, "", 0},
    {Transfer::Dump, Step::FirstBlock, "0000", 0},
    {Transfer::Dump, Step::MiddleBlock, "0800", 128},
    {Transfer::Dump, Step::LastBlock, "0FF0", 255},
};

Reply ReplyOf(const StepPlace& place) {
    if (place.transfer == Transfer::Dump) return Reply::Service;
    if (place.step == Step::ModelQuery) return Reply::Ack;
    if (place.step == Step::EndCommand)
        return place.transfer == Transfer::AutoSelect ? Reply::Ack : Reply::QuietEnd;
    if (place.transfer == Transfer::AutoSelect) return Reply::Identity;
    return IsWrite(place.transfer) ? Reply::Ack : Reply::Block;
}

// The command the step sends, and the text the failures quote for it (a write's without its data).
QString CommandOf(const StepPlace& place) {
    const QString target = QLatin1String(place.target);
    if (target == QLatin1String("model")) return QStringLiteral("ZQ318");
    if (target == QLatin1String("end")) return QStringLiteral("KV~E");
    return QStringLiteral("KV~F") + target + QLatin1Char(IsWrite(place.transfer) ? 'W' : 'R');
}

// A garbled block read arrives at the right length; what follows depends on what the transfer makes of
// the digits. Channel 0 of the example, in use, decodes to an index beyond its table, which stops the
// read as a port failure once its second half is in; the channels not in use, the settings halves, the
// VFO record and the dial memories take any digits.
struct Garbled {
    Transfer transfer;
    Step step;
    Outcome outcome;
    const char* detail;
    const char* stop;
};
const Garbled kGarbledReads[] = {
    {Transfer::ReadMemory, Step::FirstBlock, Port, "channel 0 on PORT: tone index beyond the tone table",
     "KV~F0210R"},
    {Transfer::ReadMemory, Step::MiddleBlock, Done, "", "KV~E"},
    {Transfer::ReadMemory, Step::LastBlock, Done, "", "KV~E"},
    {Transfer::ReadSettings, Step::FirstBlock, Done, "", "KV~E"},
    {Transfer::ReadSettings, Step::MiddleBlock, Done, "", "KV~E"},
    {Transfer::ReadSettings, Step::LastBlock, Done, "", "KV~E"},
};

bool Applies(const StepPlace& place, Fault fault) {
    switch (fault) {
    case Fault::PortGone:
        return place.step == Step::Open;
    case Fault::UnknownModel: // only the identity block carries the model code anyone looks at
        return place.transfer == Transfer::AutoSelect && place.step == Step::FirstBlock;
    case Fault::SilentEnd:
        return place.step == Step::EndCommand;
    case Fault::Drop:
        return IsWrite(place.transfer) && place.step != Step::Open && place.step != Step::ModelQuery &&
               place.step != Step::EndCommand;
    case Fault::Timeout: // at the end command this is the silent end
        return place.step != Step::Open && place.step != Step::EndCommand;
    case Fault::Short:
    case Fault::Garble:
    case Fault::Ng:
    case Fault::Hangup:
        return place.step != Step::Open;
    }
    return false;
}

QString OptionOf(const StepPlace& place, Fault fault) {
    static const std::map<Fault, const char*> names = {{Fault::Timeout, "timeout"}, {Fault::Short, "short"},
                                                       {Fault::Garble, "garble"},   {Fault::Ng, "ng"},
                                                       {Fault::Hangup, "hangup"},   {Fault::Drop, "drop"}};
    if (fault == Fault::SilentEnd) return QStringLiteral("silent-end");
    const auto name = names.find(fault);
    if (name == names.end()) return QString();
    return QLatin1String(name->second) + QLatin1Char('@') + QLatin1String(place.target);
}

Row Expect(const StepPlace& place, Fault fault) {
    Row row{place.transfer, place.step, fault, OptionOf(place, fault), Done, QString(), QString()};
    row.readBefore = place.readBefore;
    const Reply reply = ReplyOf(place);
    const QString command = CommandOf(place);
    const QString quoted = QStringLiteral("%1 on PORT").arg(command);
    const auto fail = [&](Outcome outcome, const QString& detail) {
        row.outcome = outcome;
        row.detail = detail;
        row.stop = command;
    };
    const QString silence = QStringLiteral("no reply to %1 within MS ms").arg(quoted);
    const QString notOk = QStringLiteral("reply to %1 does not end in OK").arg(quoted);
    const auto wrongLength = [&](int length) {
        return QStringLiteral("reply to %1 has %2 characters, not 44").arg(quoted).arg(length);
    };

    switch (fault) {
    case Fault::PortGone:
        // Write Memory and the dump open the port without a trap: a run-time error.
        fail(
            place.transfer == Transfer::WriteMemory || place.transfer == Transfer::Dump ? Outcome::Fatal
                                                                                        : Port,
            QStringLiteral("cannot open PORT: no such device (is the cable plugged in? \"zq318 ports\" lists "
                           "the ports there are)"));
        row.stop.clear();
        return row;
    case Fault::UnknownModel:
        fail(Comm, QStringLiteral("unknown model code 34 on PORT"));
        return row;
    case Fault::Timeout:
    case Fault::SilentEnd:
        if (reply == Reply::Service) {
            fail(Comm, QStringLiteral("no answer to %1 within 500 ms").arg(command));
            row.serviceWaits = 1;
            return row;
        }
        row.replyWaits = 1;
        if (reply != Reply::QuietEnd) fail(Comm, silence);
        break;
    case Fault::Short: // a block one digit short still ends in CR LF; an "OK" one short never completes
        if (reply == Reply::Block || reply == Reply::Identity) fail(Comm, wrongLength(43));
        if (reply == Reply::Ack || reply == Reply::QuietEnd) row.replyWaits = 1;
        if (reply == Reply::Ack) fail(Comm, silence);
        row.blockStored = true;
        break;
    case Fault::Garble:
        if (reply == Reply::Ack) fail(Comm, notOk);
        row.blockStored = true;
        if (reply == Reply::Block)
            for (const Garbled& garbled : kGarbledReads)
                if (garbled.transfer == place.transfer && garbled.step == place.step) {
                    row.outcome = garbled.outcome;
                    row.detail = QLatin1String(garbled.detail);
                    row.stop = QLatin1String(garbled.stop);
                }
        break;
    case Fault::Ng: // "NG" has the length of "OK"; a read it leaves short
        if (reply == Reply::Block || reply == Reply::Identity) fail(Comm, wrongLength(14));
        if (reply == Reply::Ack) fail(Comm, notOk);
        if (reply == Reply::Service) row.serviceWaits = 1;
        break;
    case Fault::Hangup:
        if (reply == Reply::Service) fail(Comm, QStringLiteral("no answer to %1 within 500 ms").arg(command));
        if (reply == Reply::Block || reply == Reply::Ack || reply == Reply::Identity)
            fail(reply == Reply::Identity ? Comm : Port,
                 QStringLiteral("port error on PORT during %1").arg(command));
        break;
    case Fault::Drop:
        break;
    }
    if (row.outcome == Done && row.stop.isEmpty())
        row.stop = place.transfer == Transfer::Dump ? QStringLiteral("KV~F0FF0R") : QStringLiteral("KV~E");
    row.endSent = place.transfer != Transfer::Dump && (row.outcome == Done || place.step == Step::EndCommand);
    return row;
}

} // namespace

const char* TransferName(Transfer transfer) {
    static const char* const names[] = {"AutoSelect",   "ReadMemory",    "WriteMemory",
                                        "ReadSettings", "WriteSettings", "Dump"};
    return names[int(transfer)];
}

const char* StepName(Step step) {
    static const char* const names[] = {"Open",        "ModelQuery", "FirstBlock",
                                        "MiddleBlock", "LastBlock",  "EndCommand"};
    return names[int(step)];
}

const char* FaultName(Fault fault) {
    static const char* const names[] = {"Timeout", "Short",     "Garble",       "Ng",      "Hangup",
                                        "Drop",    "SilentEnd", "UnknownModel", "PortGone"};
    return names[int(fault)];
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name();
}

std::string Row::name() const {
    return std::string(TransferName(transfer)) + '_' + StepName(step) + '_' + FaultName(fault);
}

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = [] {
        std::vector<Row> all;
        for (const StepPlace& place : kPlaces)
            for (int fault = 0; fault <= int(Fault::PortGone); ++fault)
                if (Applies(place, Fault(fault))) all.push_back(Expect(place, Fault(fault)));
        return all;
    }();
    return rows;
}

std::vector<Row> RowsOf(Transfer transfer, std::initializer_list<Step> steps) {
    std::vector<Row> chosen;
    for (const Row& row : Rows())
        if (row.transfer == transfer &&
            (steps.size() == 0 || std::find(steps.begin(), steps.end(), row.step) != steps.end()))
            chosen.push_back(row);
    return chosen;
}

QString StepTarget(Transfer transfer, Step step) {
    for (const StepPlace& place : kPlaces)
        if (place.transfer == transfer && place.step == step) return QLatin1String(place.target);
    return QString();
}

QString ExpectedDetail(const Row& row, const QString& device, int replyTimeoutMs) {
    QString detail = row.detail;
    detail.replace(QStringLiteral("PORT"), device);
    detail.replace(QStringLiteral("MS ms"), QStringLiteral("%1 ms").arg(replyTimeoutMs));
    if (row.outcome == Outcome::Fatal) detail.prepend(QStringLiteral("Run-time error: "));
    return detail;
}

void Inject(const Row& row, zq::radio::VirtualRadio& radio) {
    if (!row.option.isEmpty()) radio.addFault(zq::radio::ParseFault(row.option).value());
    if (row.fault == Fault::UnknownModel) radio.setModelCode(0x34);
}

QString PortFor(const Row& row, zq::radio::VirtualRadio& radio, const QString& folder) {
    const QString link = folder + QStringLiteral("/ttyZQ318");
    QFile::link(radio.devicePath(), link);
    if (row.fault == Fault::PortGone) {
        radio.hangUp();
        QFile::remove(link);
    } else if (row.fault == Fault::Hangup) {
        QObject::connect(&radio, &zq::radio::VirtualRadio::commandReceived, &radio,
                         [link] { QFile::remove(link); });
    }
    return link;
}

QString ExampleFile() {
    return QStringLiteral(ZQ_EXAMPLES_DIR "/demo.318");
}

void LoadExample(zq::radio::VirtualRadio& radio) {
    const zq::model::Result loaded = zq::radio::LoadCloneImage(ExampleFile(), radio.memory());
    Q_ASSERT(loaded.ok());
    Q_UNUSED(loaded);
}

QStringList WrittenImageProblems(const Row& row, zq::model::Document& document,
                                 const zq::radio::VirtualRadio& radio) {
    using zq::link::BlockSlot;
    const QList<BlockSlot>& slots =
        row.transfer == Transfer::WriteMemory ? zq::link::MemorySlots() : zq::link::SettingsWriteSlots();
    const QString target = StepTarget(row.transfer, row.step);
    qsizetype faulty = slots.size(); // the end command: every block went
    if (row.step == Step::Open || row.step == Step::ModelQuery) faulty = -1;
    for (qsizetype i = 0; i < slots.size(); ++i)
        if (slots[i].address == target) faulty = i;
    const QString blank(32, QLatin1Char('0')); // the radio starts with nothing stored
    QStringList problems;
    for (qsizetype i = 0; i < slots.size(); ++i) {
        const bool stored = row.outcome == Outcome::Done ? !(row.fault == Fault::Drop && i == faulty)
                                                         : i < faulty || (i == faulty && row.blockStored);
        const QString expected = stored ? zq::link::SlotData(document, slots[i]) : blank;
        const QString held = radio.blockHex(slots[i].address.toInt(nullptr, 16));
        if (held != expected.toUpper())
            problems << QStringLiteral("%1: %2 instead of %3").arg(slots[i].address, held, expected);
    }
    return problems;
}

namespace {
template <class Table> bool SameRow(const Table& a, const Table& b, int row) {
    for (int c = 0; c < Table::columns; ++c)
        if (!(a.cell(row, c) == b.cell(row, c))) return false;
    if constexpr (requires { a.ChannelInUse(row); }) return a.ChannelInUse(row) == b.ChannelInUse(row);
    return true;
}
} // namespace

QStringList ReadStoreProblems(const Row& row, const zq::model::Document& document,
                              const zq::model::Document& before, const zq::radio::VirtualRadio& radio) {
    using namespace zq::model;
    QStringList problems;
    const bool done = row.outcome == Outcome::Done;
    const bool partial = row.fault == Fault::Garble; // a garbled record is decoded as far as it goes
    if (row.transfer == Transfer::ReadMemory) {
        const int faulty = row.step == Step::EndCommand ? kChannelCount : row.readBefore / 2;
        MemoryTable expected = before.memory();
        for (int n = 0; n < kChannelCount; ++n)
            DecodeChannelRecord(expected, radio.blockHex(0x200 + 0x20 * n) + radio.blockHex(0x210 + 0x20 * n),
                                n);
        for (int n = 0; n < kMemoryRows; ++n) {
            if (n == faulty && partial) continue;
            const bool read = n < kChannelCount && (done || n < faulty);
            if (!SameRow(document.memory(), read ? expected : before.memory(), n))
                problems << QStringLiteral("channel %1 %2").arg(n).arg(read ? "not read" : "changed");
        }
    } else if (row.transfer == Transfer::ReadSettings) {
        const int reached = done ? 15 : row.readBefore; // blocks taken in before the fault
        const auto skip = [&](int first, int last) {
            return partial && row.readBefore >= first && row.readBefore <= last;
        };
        const SettingsBlock& kept = before.settingsBlock();
        if (!skip(0, 1) &&
            document.settingsBlock() != SettingsBlock{reached >= 1 ? radio.blockHex(0xE0) : kept.halfA,
                                                      reached >= 2 ? radio.blockHex(0xF0) : kept.halfB})
            problems << QStringLiteral("settings halves");
        for (int record = kVfoRow; record <= kCallRow; ++record) {
            if (skip(2 + 2 * record, 3 + 2 * record)) continue;
            SpecialTable expected = before.special();
            const bool read = reached >= 4 + 2 * record;
            if (read)
                DecodeSpecialRecord(
                    expected, radio.blockHex(0x100 + 0x20 * record) + radio.blockHex(0x110 + 0x20 * record),
                    record);
            if (!SameRow(document.special(), expected, record))
                problems
                    << QStringLiteral("special row %1 %2").arg(record).arg(read ? "not read" : "changed");
        }
        for (int k = 0; k < kDialCount; ++k) {
            if (skip(6 + k, 6 + k)) continue;
            const bool read = k < reached - 6;
            const QString expected =
                read ? UpDateDialData(radio.blockHex(0x1F00 + 0x10 * k)) : before.dialTexts()[k];
            if (document.dialTexts()[k] != expected)
                problems << QStringLiteral("dial memory %1: \"%2\" instead of \"%3\"")
                                .arg(k)
                                .arg(document.dialTexts()[k], expected);
        }
        if (!(document.memory() == before.memory())) problems << QStringLiteral("memory changed");
    }
    return problems;
}

int EndCommands(const zq::radio::VirtualRadio& radio) {
    return int(radio.commands().count(QStringLiteral("KV~E")));
}

qint64 TimeBoundMs(const Row& row, qsizetype commands, int replyTimeoutMs, int startMs) {
    // A command takes a 10 ms pause and an exchange of a few ms; the settings write pauses 100 ms three
    // times. 60 ms a command leaves room for a loaded machine or a sanitizer build.
    return startMs + 60 * commands + 300 + row.replyWaits * qint64(replyTimeoutMs + 500) +
           row.serviceWaits * 1000;
}

} // namespace faultmatrix
