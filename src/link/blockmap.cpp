#include "blockmap.h"

#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/document.h"

namespace zq::link {

using Owner = BlockSlot::Owner;

QString SpecialBlockAddress(int row, int half) {
    return QStringLiteral("01") + QString::number(2 * row + half, 16).toUpper() + QLatin1Char('0');
}

QString DialBlockAddress(int memory) {
    return QStringLiteral("1F") + QString::number(memory) + QLatin1Char('0');
}

const QList<BlockSlot>& SettingsWriteSlots() {
    static const QList<BlockSlot> slots = [] {
        QList<BlockSlot> list{{QStringLiteral("00E0"), Owner::Settings, 0, 0},
                              {QStringLiteral("00F0"), Owner::Settings, 0, 1}};
        for (int row = zq::model::kVfoRow; row <= zq::model::kRptRow; ++row)
            for (int half = 0; half < 2; ++half)
                list.append({SpecialBlockAddress(row, half), Owner::Special, row, half});
        for (int memory = 0; memory < zq::model::kDialCount; ++memory)
            list.append({DialBlockAddress(memory), Owner::Dial, memory, 0});
        return list;
    }();
    return slots;
}

const QList<BlockSlot>& MemorySlots() {
    static const QList<BlockSlot> slots = [] {
        QList<BlockSlot> list;
        for (int channel = 0; channel < zq::model::kChannelCount; ++channel)
            for (int half = 0; half < 2; ++half)
                list.append({zq::model::ChannelBlockAddress(channel, half), Owner::Channel, channel, half});
        return list;
    }();
    return slots;
}

QString SlotData(zq::model::Document& document, const BlockSlot& slot) {
    switch (slot.owner) {
    case Owner::Settings:
        return slot.half == 0 ? document.settingsBlock().halfA : document.settingsBlock().halfB;
    case Owner::Special:
        return document.encodeSpecialHalf(slot.index, slot.half);
    case Owner::Dial:
        return zq::model::MakeDialData(document.dialTexts()[slot.index]);
    case Owner::Channel:
        return slot.half == 0 ? zq::model::EncodeChannelFirstHalf(document.memory(), slot.index)
                              : zq::model::EncodeChannelSecondHalf(document.memory(), slot.index);
    }
    return QString();
}

QString OwnerName(const BlockSlot& slot) {
    switch (slot.owner) {
    case Owner::Settings:
        return QStringLiteral("settings");
    case Owner::Special: {
        static const char* const rows[] = {"VFO", "CALL", "RPT"};
        return QLatin1String(rows[slot.index]);
    }
    case Owner::Dial:
        return QStringLiteral("autodial memory %1").arg(slot.index);
    case Owner::Channel:
        return QStringLiteral("channel %1").arg(slot.index);
    }
    return QString();
}

} // namespace zq::link
