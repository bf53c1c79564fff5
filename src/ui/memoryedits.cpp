#include "memoryedits.h"

namespace zq::ui {

using model::ColName;
using model::ColPower;
using model::kChannelCount;
using model::MemoryTable;

namespace {

constexpr int kLastChannel = kChannelCount - 1;

bool validGridRow(int gridRow) {
    return gridRow >= kFirstGridRow && gridRow <= kLastGridRow;
}

// Columns 0..13 and the in-use flag of one row into another; column 14 is not part of a move.
void moveChannel(MemoryTable& memory, int from, int to) {
    for (int c = 0; c <= ColName; ++c)
        memory.set(to, c, memory.cell(from, c));
    memory.setChannelInUse(to, memory.ChannelInUse(from));
}

} // namespace

bool InsertChannel(MemoryTable& memory, int gridRow) {
    if (!validGridRow(gridRow)) return false;
    for (int i = kLastChannel; i >= gridRow; --i)
        moveChannel(memory, i - 1, i);
    memory.clearRow(gridRow - 1, 0, ColName);
    memory.setChannelInUse(gridRow - 1, false);
    return true;
}

bool DeleteChannel(MemoryTable& memory, int gridRow) {
    if (!validGridRow(gridRow)) return false;
    for (int i = gridRow - 1; i < kLastChannel; ++i)
        moveChannel(memory, i + 1, i);
    memory.clearRow(kLastChannel, 0, ColPower);
    memory.setChannelInUse(kLastChannel, false);
    return true;
}

bool ClearChannel(MemoryTable& memory, int gridRow) {
    if (!validGridRow(gridRow)) return false;
    memory.clearRow(gridRow - 1);
    memory.setChannelInUse(gridRow - 1, false);
    return true;
}

void ClearAllChannels(MemoryTable& memory) {
    for (int row = 0; row < kChannelCount; ++row) {
        memory.clearRow(row, 0, ColName);
        memory.setChannelInUse(row, false);
    }
}

int RowAfterDown(int gridRow) {
    return gridRow < kLastRowForDown ? gridRow + 1 : gridRow;
}

int RowAfterUp(int gridRow) {
    return gridRow > kFirstGridRow ? gridRow - 1 : gridRow;
}

} // namespace zq::ui
