#pragma once
// The blocks the writes send, in the order they go out, with what each belongs to. Write Settings
// and Write Memory walk these lists, and the read-back comparison walks the same lists, so what is
// compared is exactly what was sent.
#include <QList>
#include <QString>

namespace zq::model {
class Document;
}

namespace zq::link {

struct BlockSlot {
    enum class Owner { Settings, Special, Dial, Channel };
    QString address; // four hex digits, as in the command
    Owner owner;
    int index; // settings: 0; special: the row (VFO, CALL, RPT); dial: the memory 0..8; channel: 0..199
    int half;  // the record's first (0) or second (1) block; settings: half A (0) or B (1); dial: 0
};

// "0100" and "0110" for the VFO record (row 0), up to "0140" and "0150" for the RPT record.
QString SpecialBlockAddress(int row, int half);
// "1F00" for autodial memory 0 up to "1F80" for memory 8.
QString DialBlockAddress(int memory);

// 00E0, 00F0, the VFO, CALL and RPT records (0100..0150), the autodial memories (1F00..1F80).
const QList<BlockSlot>& SettingsWriteSlots();
// Channels 0..199, two blocks each (0200..1AF0).
const QList<BlockSlot>& MemorySlots();

// The 32 digits the write sends to `slot`, encoded from `document` as the write does it: the
// settings halves as they stand (the write rebuilds them first), the special halves through the
// document's encoder (which pins the RPT row's numeric frequency).
QString SlotData(zq::model::Document& document, const BlockSlot& slot);

// "settings", "VFO", "CALL", "RPT", "autodial memory 3", "channel 10".
QString OwnerName(const BlockSlot& slot);

} // namespace zq::link
