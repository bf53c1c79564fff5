#include "verify.h"

#include "blockmap.h"
#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/document.h"
#include "model/settingscodec.h"
#include "model/tables.h"

#include <memory>

namespace zq::link {

using zq::model::Document;
using Owner = BlockSlot::Owner;

namespace {

constexpr int kRecordColumns = 13; // Frequency .. BCLO: what the VFO/CALL/RPT grid shows

QString ByteAt(const QString& digits, int position) {
    return digits.mid(2 * position, 2);
}

QString YesNo(bool value) {
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

// What a record shows once decoded: the grid texts by column, or nothing when it cannot be decoded.
struct Shown {
    bool decoded = false;
    bool inUse = true;
    QStringList texts;
};

class Comparer {
public:
    explicit Comparer(QList<Difference>& out)
        : out_(out), memory_(std::make_unique<zq::model::MemoryTable>()) {}

    // `sent` and `held` are one block each; `sentOther` is what the write sends to the record's
    // other block, so that a field differs only because of this block.
    void compare(const BlockSlot& slot, const QString& sent, const QString& held, const QString& sentOther) {
        const qsizetype before = out_.size();
        switch (slot.owner) {
        case Owner::Settings:
            for (int position = 0; position < 16; ++position)
                if (ByteAt(sent, position) != ByteAt(held, position))
                    add(slot,
                        QStringLiteral("%1 (byte %2)")
                            .arg(zq::model::SettingsByteName(slot.half, position))
                            .arg(position),
                        ByteAt(sent, position), ByteAt(held, position));
            break;
        case Owner::Dial: {
            const QString inFile = zq::model::UpDateDialData(sent);
            const QString inRadio = zq::model::UpDateDialData(held);
            if (inFile != inRadio) add(slot, QStringLiteral("text"), inFile, inRadio);
            break;
        }
        case Owner::Special:
        case Owner::Channel: {
            const auto record = [&](const QString& block) {
                return slot.half == 0 ? block + sentOther : sentOther + block;
            };
            compareRecords(slot, decode(slot, record(sent)), decode(slot, record(held)));
            break;
        }
        }
        if (out_.size() == before) compareBytes(slot, sent, held);
    }

private:
    void add(const BlockSlot& slot, const QString& field, const QString& inFile, const QString& inRadio) {
        out_.append({slot.address, OwnerName(slot), field, inFile, inRadio});
    }

    void compareBytes(const BlockSlot& slot, const QString& sent, const QString& held) {
        const int positions = int(std::max(sent.size(), held.size()) + 1) / 2;
        for (int position = 0; position < positions; ++position)
            if (ByteAt(sent, position) != ByteAt(held, position))
                add(slot, QStringLiteral("byte %1").arg(position), ByteAt(sent, position),
                    ByteAt(held, position));
    }

    // An empty channel's other fields mean nothing, so only its being empty is told.
    void compareRecords(const BlockSlot& slot, const Shown& inFile, const Shown& inRadio) {
        if (!inFile.decoded || !inRadio.decoded) return;
        if (inFile.inUse != inRadio.inUse) {
            add(slot, QStringLiteral("in use"), YesNo(inFile.inUse), YesNo(inRadio.inUse));
            return;
        }
        if (!inFile.inUse) return;
        for (qsizetype column = 0; column < inFile.texts.size(); ++column)
            if (inFile.texts[column] != inRadio.texts[column])
                add(slot, zq::model::ColumnHeading(int(column)), inFile.texts[column], inRadio.texts[column]);
    }

    Shown decode(const BlockSlot& slot, const QString& record) {
        Shown shown;
        if (slot.owner == Owner::Special) {
            zq::model::SpecialTable special;
            if (zq::model::DecodeSpecialRecord(special, record, slot.index) != zq::model::CodecError::None)
                return shown;
            for (int column = 0; column < kRecordColumns; ++column)
                shown.texts.append(special.text(slot.index, column));
        } else {
            zq::model::MemoryTable& memory = *memory_;
            memory.clearRow(0);
            if (zq::model::DecodeChannelRecord(memory, record, 0) != zq::model::CodecError::None)
                return shown;
            shown.inUse = memory.ChannelInUse(0);
            for (int column = 0; column < zq::model::ColSkip; ++column)
                shown.texts.append(memory.text(0, column));
            shown.texts.append(memory.number(0, zq::model::ColSkip) == 1 ? QStringLiteral("On")
                                                                         : QStringLiteral("Off"));
        }
        shown.decoded = true;
        return shown;
    }

    QList<Difference>& out_;
    std::unique_ptr<zq::model::MemoryTable> memory_; // large: one scratch row, kept off the stack
};

} // namespace

VerifyReport VerifyRadio(SerialLink& link, const Document& document, VerifyScope scope,
                         const StepProgress& progress) {
    // The write's own encoders, run on a copy: rebuilding the settings bytes and encoding a special
    // row change the store they work on.
    Document expected;
    expected.replaceContents(document.contents());
    expected.buildSettingsBlock();

    QList<BlockSlot> slots;
    if (scope != VerifyScope::Memory) slots += SettingsWriteSlots();
    if (scope != VerifyScope::Settings) slots += MemorySlots();
    QStringList addresses, sent;
    for (const BlockSlot& slot : slots) {
        addresses.append(slot.address);
        sent.append(SlotData(expected, slot).toUpper());
    }

    VerifyReport report;
    QStringList held;
    report.result = ReadBlocks(link, addresses, held, progress);
    for (QString& block : held)
        block = block.toUpper();
    report.blocksCompared = int(held.size());
    Comparer comparer(report.differences);
    for (qsizetype i = 0; i < held.size(); ++i) {
        if (sent[i] == held[i]) continue;
        const BlockSlot& slot = slots[i];
        const bool paired = slot.owner == Owner::Special || slot.owner == Owner::Channel;
        const QString other = paired ? sent[slot.half == 0 ? i + 1 : i - 1] : QString();
        comparer.compare(slot, sent[i], held[i], other);
    }
    return report;
}

QString DifferenceText(const Difference& difference) {
    return QStringLiteral("%1 %2, %3: file \"%4\", radio \"%5\"")
        .arg(difference.address, difference.owner, difference.field, difference.inFile, difference.inRadio);
}

} // namespace zq::link
