#include "transfers.h"

#include "blockmap.h"
#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/document.h"
#include "model/stores.h"
#include "model/tables.h"
#include "seriallink.h"

namespace zq::link {

using zq::model::CodecError;
using zq::model::Document;
using zq::model::Outcome;
using zq::model::Result;

namespace {

constexpr int kReadReplyLength = 44;  // echo (10), 32 data digits, CR LF
constexpr int kWriteReplyLength = 46; // echo (42), "OK" CR LF
constexpr int kModelReplyLength = 10; // echo (6), "OK" CR LF
constexpr int kEndReplyLength = 9;    // echo (5), "OK" CR LF
constexpr int kPayloadStart = 10;     // the data digits follow the echoed command
constexpr int kBlockDigits = 32;
constexpr int kSpecialRecordPauseMs = 100;
// The settings halves, the VFO and CALL records and the nine dial memories; the RPT record is not read.
constexpr int kSettingsReadBlocks = 2 + 4 + zq::model::kDialCount;

const QString kModelCheck = QStringLiteral("ZQ318");
const QString kEndCommand = QStringLiteral("KV~E");
const QString kOkTail = QStringLiteral("OK\r\n");

// " on /dev/ttyUSB0": every failure names the device it happened on, so that a wrong port shows.
QString On(const SerialLink& link) {
    return link.portName().isEmpty() ? QString() : QStringLiteral(" on ") + link.portName();
}

// The outcome of a reply that failed its check: a port failure is a "COM Port Error", anything else
// (time-out, wrong length, wrong tail) a "Communication Error".
Result Mismatch(const SerialLink& link, const QString& label, const QString& reply, int expectedLength) {
    if (reply == kPortErrorMarker)
        return Result::fail(Outcome::ComPortError,
                            QStringLiteral("port error%1 during %2").arg(On(link), label));
    if (reply == kTimeoutMarker)
        return Result::fail(
            Outcome::CommunicationError,
            QStringLiteral("no reply to %1%2 within %3 ms").arg(label, On(link)).arg(link.replyTimeoutMs()));
    if (reply.size() != expectedLength)
        return Result::fail(Outcome::CommunicationError,
                            QStringLiteral("reply to %1%2 has %3 characters, not %4")
                                .arg(label, On(link))
                                .arg(reply.size())
                                .arg(expectedLength));
    return Result::fail(Outcome::CommunicationError,
                        QStringLiteral("reply to %1%2 does not end in OK").arg(label, On(link)));
}

bool Acknowledged(const QString& reply, int expectedLength) {
    return reply.size() == expectedLength && reply.endsWith(kOkTail);
}

// Reads one block; on success `payload` holds its 32 digits.
bool ReadBlock(SerialLink& link, const QString& address, QString& payload, Result& failure) {
    const QString command = QStringLiteral("KV~F") + address + QLatin1Char('R');
    const QString reply = link.SendCommand(command);
    if (reply.size() != kReadReplyLength) {
        failure = Mismatch(link, command, reply, kReadReplyLength);
        return false;
    }
    payload = reply.mid(kPayloadStart, kBlockDigits);
    return true;
}

bool WriteBlock(SerialLink& link, const QString& address, const QString& data, Result& failure) {
    const QString head = QStringLiteral("KV~F") + address + QLatin1Char('W');
    const QString command = head + data;
    const QString reply = link.SendCommand(command);
    if (!Acknowledged(reply, kWriteReplyLength)) {
        failure = Mismatch(link, head, reply, kWriteReplyLength);
        return false;
    }
    return true;
}

bool ModelCheck(SerialLink& link, Result& failure) {
    const QString reply = link.SendCommand(kModelCheck);
    if (!Acknowledged(reply, kModelReplyLength)) {
        failure = Mismatch(link, kModelCheck, reply, kModelReplyLength);
        return false;
    }
    return true;
}

Result DecodeFailure(const SerialLink& link, const QString& what, CodecError error) {
    // The read handlers catch the decoder's run-time error as a port failure.
    return Result::fail(Outcome::ComPortError,
                        QStringLiteral("%1%2: %3").arg(what, On(link), zq::model::CodecErrorText(error)));
}

Result OpenPort(SerialLink& link) {
    return link.isOpen() ? Result::done() : link.open();
}

// Where a handler has no error trap, a port that cannot be opened ends the command as a run-time error.
Result OpenPortUntrapped(SerialLink& link) {
    Result opened = OpenPort(link);
    if (!opened.ok())
        opened = Result::fail(Outcome::Fatal, QStringLiteral("Run-time error: ") + opened.detail);
    return opened;
}

} // namespace

Result ReadMemory(SerialLink& link, Document& document, const Progress& progress) {
    if (Result opened = OpenPort(link); !opened.ok()) return opened;
    Result failure;
    for (int channel = 0; channel < zq::model::kChannelCount; ++channel) {
        if (progress) progress(channel);
        QString first, second;
        if (!ReadBlock(link, zq::model::ChannelBlockAddress(channel, 0), first, failure)) return failure;
        link.Wait(kCommandPauseMs);
        if (!ReadBlock(link, zq::model::ChannelBlockAddress(channel, 1), second, failure)) return failure;
        link.Wait(kCommandPauseMs);
        CodecError error = CodecError::None;
        document.changeMemory(
            channel, channel,
            [&](zq::model::MemoryTable& memory) {
                error = zq::model::DecodeChannelRecord(memory, first + second, channel);
            },
            Document::Mark::Quiet);
        if (error != CodecError::None)
            return DecodeFailure(link, QStringLiteral("channel %1").arg(channel), error);
    }
    link.Wait(kCommandPauseMs);
    link.TxEnd();
    return Result::done();
}

Result WriteMemory(SerialLink& link, Document& document, const Progress& progress) {
    if (Result opened = OpenPortUntrapped(link); !opened.ok()) return opened;
    if (progress) progress(0);
    Result failure;
    if (!ModelCheck(link, failure)) return failure;
    link.Wait(kCommandPauseMs);
    for (const BlockSlot& slot : MemorySlots()) {
        if (slot.half == 0 && progress) progress(slot.index);
        link.Wait(kCommandPauseMs);
        if (!WriteBlock(link, slot.address, SlotData(document, slot), failure)) return failure;
    }
    link.Wait(kCommandPauseMs);
    link.TxEnd();
    return Result::done();
}

Result ReadSettings(SerialLink& link, Document& document, const StepProgress& progress) {
    if (Result opened = OpenPort(link); !opened.ok()) return opened;
    Result failure;
    int step = 0;
    const auto readNext = [&](const QString& address, QString& payload) {
        if (progress) progress(step++, kSettingsReadBlocks);
        return ReadBlock(link, address, payload, failure);
    };
    QString halfA, halfB;
    if (!readNext(QStringLiteral("00E0"), halfA)) return failure;
    document.setSettingsHalf(0, halfA);
    link.Wait(kCommandPauseMs);
    if (!readNext(QStringLiteral("00F0"), halfB)) return failure;
    document.setSettingsHalf(1, halfB);
    document.applySettingsBlock();

    for (int row = zq::model::kVfoRow; row <= zq::model::kCallRow; ++row) {
        QString first, second;
        link.Wait(kCommandPauseMs);
        if (!readNext(SpecialBlockAddress(row, 0), first)) return failure;
        link.Wait(kCommandPauseMs);
        if (!readNext(SpecialBlockAddress(row, 1), second)) return failure;
        CodecError error = CodecError::None;
        document.changeSpecial(
            row, row,
            [&](zq::model::SpecialTable& special) {
                error = zq::model::DecodeSpecialRecord(special, first + second, row);
            },
            Document::Mark::Quiet);
        if (error != CodecError::None)
            return DecodeFailure(
                link, row == zq::model::kVfoRow ? QStringLiteral("VFO") : QStringLiteral("CALL"), error);
    }
    document.changeSpecial(zq::model::kVfoRow, zq::model::kRptRow, zq::model::BlankRptTexts,
                           Document::Mark::Quiet);

    for (int memory = 0; memory < zq::model::kDialCount; ++memory) {
        link.Wait(kCommandPauseMs);
        QString record;
        if (!readNext(DialBlockAddress(memory), record)) return failure;
        document.setDialText(memory, zq::model::UpDateDialData(record), Document::Mark::Quiet);
    }
    link.Wait(kCommandPauseMs);
    link.TxEnd();
    return Result::done();
}

Result WriteSettings(SerialLink& link, Document& document, const StepProgress& progress) {
    if (Result opened = OpenPort(link); !opened.ok()) return opened;
    Result failure;
    if (!ModelCheck(link, failure)) return failure;
    link.Wait(kCommandPauseMs);
    document.buildSettingsBlock();
    const QList<BlockSlot>& slots = SettingsWriteSlots();
    for (qsizetype step = 0; step < slots.size(); ++step) {
        const BlockSlot& slot = slots[step];
        // The second half of a special record waits ten times the usual pause.
        if (step > 0)
            link.Wait(slot.owner == BlockSlot::Owner::Special && slot.half == 1 ? kSpecialRecordPauseMs
                                                                                : kCommandPauseMs);
        if (progress) progress(int(step), int(slots.size()));
        if (!WriteBlock(link, slot.address, SlotData(document, slot), failure)) return failure;
    }
    link.Wait(kCommandPauseMs);
    link.TxEnd();
    return Result::done();
}

Result AutoSelect(SerialLink& link, Document& document) {
    if (Result opened = OpenPort(link); !opened.ok()) return opened;
    Result failure;
    if (!ModelCheck(link, failure)) return failure;
    link.Wait(kCommandPauseMs);

    const QString identify = QStringLiteral("KV~F0000R");
    const QString reply = link.SendCommand(identify);
    if (reply.size() != kReadReplyLength) {
        // Here even a port failure counts as a communication failure.
        Result mismatch = Mismatch(link, identify, reply, kReadReplyLength);
        mismatch.outcome = Outcome::CommunicationError;
        return mismatch;
    }
    const QString payload = reply.mid(kPayloadStart, kBlockDigits);
    const QString modelCode = payload.mid(6, 2);
    int variant = -1;
    if (modelCode == QLatin1String("AA"))
        variant = zq::model::VariantT;
    else if (modelCode == QLatin1String("55"))
        variant = zq::model::VariantE;
    else if (modelCode == QLatin1String("33"))
        variant = zq::model::VariantJ;
    else
        return Result::fail(Outcome::CommunicationError,
                            QStringLiteral("unknown model code %1%2").arg(modelCode, On(link)));

    // The same as the user clicking the model option.
    document.chooseModelVariant(variant);
    document.setCloneCodeA(payload.mid(4, 2) == QLatin1String("AA"));

    link.Wait(kCommandPauseMs);
    const QString end = link.SendCommand(kEndCommand);
    if (!Acknowledged(end, kEndReplyLength)) return Mismatch(link, kEndCommand, end, kEndReplyLength);
    return Result::done();
}

Result ReadBlocks(SerialLink& link, const QStringList& addresses, QStringList& payloads,
                  const StepProgress& progress) {
    payloads.clear();
    if (Result opened = OpenPort(link); !opened.ok()) return opened;
    Result failure;
    for (qsizetype step = 0; step < addresses.size(); ++step) {
        if (step > 0) link.Wait(kCommandPauseMs);
        if (progress) progress(int(step), int(addresses.size()));
        QString payload;
        if (!ReadBlock(link, addresses[step], payload, failure)) return failure;
        payloads.append(payload);
    }
    link.Wait(kCommandPauseMs);
    link.TxEnd();
    return Result::done();
}

AllResult ReadAll(SerialLink& link, Document& document, const Progress& progress) {
    AllResult all;
    all.settings = ReadSettings(link, document);
    all.memory = ReadMemory(link, document, progress);
    return all;
}

AllResult WriteAll(SerialLink& link, Document& document, const Progress& progress) {
    AllResult all;
    all.settings = WriteSettings(link, document);
    all.memory = WriteMemory(link, document, progress);
    return all;
}

Result ReadServiceBlock(SerialLink& link, const QString& addressText, QString& reply,
                        const std::function<void(const QString&)>& shown) {
    reply.clear();
    if (Result opened = OpenPortUntrapped(link); !opened.ok()) return opened;
    if (shown) shown(reply);
    reply = link.Collect(
        QStringLiteral("KV~F") + addressText + QLatin1Char('R'), kServiceTimeoutMs,
        [](const QString& text) { return text.size() >= 36 && text.endsWith(QLatin1String("\r\n")); }, shown);
    return Result::done();
}

namespace {
Result dumpBlocks(SerialLink& link, QString& dump, const std::function<void(const QString&)>& shown,
                  bool stopOnSilence) {
    dump.clear();
    if (Result opened = OpenPortUntrapped(link); !opened.ok()) return opened;
    for (int block = 0; block < 256; ++block) {
        const QString digits = QStringLiteral("%1").arg(block, 2, 16, QLatin1Char('0')).toUpper();
        const QString address = QLatin1Char('0') + digits + QLatin1Char('0');
        QString reply;
        const Result read = ReadServiceBlock(link, address, reply);
        if (!read.ok()) return read;
        // The cable echoes the command whether or not a radio is there to answer it.
        const QString command = QStringLiteral("KV~F") + address + QLatin1Char('R');
        if (stopOnSilence && (command + QLatin1Char('\r')).startsWith(reply))
            return Result::fail(
                Outcome::CommunicationError,
                QStringLiteral("no answer to %1 within %2 ms").arg(command).arg(kServiceTimeoutMs));
        dump += digits + QLatin1Char('\t') + reply.right(34);
        if (shown) shown(dump);
    }
    return Result::done();
}
} // namespace

Result DumpBlocks(SerialLink& link, QString& dump, const std::function<void(const QString&)>& shown) {
    return dumpBlocks(link, dump, shown, false);
}

Result DumpAnsweredBlocks(SerialLink& link, QString& dump, const std::function<void(const QString&)>& shown) {
    return dumpBlocks(link, dump, shown, true);
}

} // namespace zq::link
