#pragma once
// The table effects of the memory page's edit commands and row buttons. Rows are grid rows:
// grid row r (1..200) shows table row r - 1.
#include "model/stores.h"

namespace zq::ui {

inline constexpr int kFirstGridRow = 1;
inline constexpr int kLastGridRow = 200;
inline constexpr int kLastRowForDown = 160; // "Down" stops here although the grid goes on

// Moves the channels from grid row r on one row down (the channel in grid row 200 is lost) and
// empties grid row r. Column 14 stays with the row index. Rows outside 1..200 change nothing.
bool InsertChannel(model::MemoryTable& memory, int gridRow);
// Moves the channels below grid row r one row up; the last channel is emptied in columns 0..8
// only and taken out of use.
bool DeleteChannel(model::MemoryTable& memory, int gridRow);
// Empties the channel of grid row r in every column, 14 included, and takes it out of use.
bool ClearChannel(model::MemoryTable& memory, int gridRow);
// Empties columns 0..13 of all 200 channels (column 14 is left) and takes them out of use.
void ClearAllChannels(model::MemoryTable& memory);

// The row that "Down" and "Up" move to from grid row r.
int RowAfterDown(int gridRow);
int RowAfterUp(int gridRow);

} // namespace zq::ui
