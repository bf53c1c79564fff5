#pragma once
// What the grids' double-click and Edit > Modify open: the modify dialog in the program, a
// recorder in tests (the dialog is modal).
namespace zq::ui {

class ChannelEditor {
public:
    virtual ~ChannelEditor() = default;
    virtual void openMemoryChannel(int editIndex) = 0; // MemoryTable row 0..199
    virtual void openSpecialRow(int editIndex) = 0;    // SpecialTable row 0..2
};

} // namespace zq::ui
