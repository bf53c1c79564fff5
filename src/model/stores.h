#pragma once
// The stores of the radio's contents: memory channels, special channels and the settings bytes.
#include <QString>
#include <array>

namespace zq::model {

// Every table cell exists twice: what the grid shows and the code the encoder writes.
struct Cell {
    QString text;
    double number = 0.0;
    bool operator==(const Cell&) const = default;
};

enum Column : int {
    ColFrequency = 0,
    ColStep = 1,
    ColTone = 2,
    ColTxTone = 3,
    ColRxTone = 4,
    ColDcs = 5,
    ColShift = 6,
    ColOffset = 7,
    ColPower = 8,
    ColBlank = 9,
    ColBsv = 10,
    ColClock = 11,
    ColBclo = 12,
    ColName = 13,
    ColSkip = 14,
};

inline constexpr int kChannelCount = 200; // channels 0..199 live on the radio
inline constexpr int kMemoryRows = 201;   // plus the template row
inline constexpr int kTemplateRow = 200;
inline constexpr int kMemoryColumns = 15;
inline constexpr int kSpecialRows = 8; // rows 3..7 are never used
inline constexpr int kSpecialColumns = 14;
inline constexpr int kVfoRow = 0, kCallRow = 1, kRptRow = 2;

template <int Rows, int Cols> class CellTable {
public:
    static constexpr int rows = Rows;
    static constexpr int columns = Cols;

    const Cell& cell(int row, int column) const { return cells_[row][column]; }
    const QString& text(int row, int column) const { return cells_[row][column].text; }
    double number(int row, int column) const { return cells_[row][column].number; }

    // Writers always set both halves of a cell.
    void set(int row, int column, const QString& text, double number) {
        cells_[row][column] = Cell{text, number};
    }
    void set(int row, int column, const Cell& cell) { cells_[row][column] = cell; }
    void setText(int row, int column, const QString& text) { cells_[row][column].text = text; }
    void setNumber(int row, int column, double number) { cells_[row][column].number = number; }

    // Empties columns first..last of a row: text "" and number 0.
    void clearRow(int row, int first = 0, int last = Cols - 1) {
        for (int c = first; c <= last; ++c)
            cells_[row][c] = Cell{};
    }
    static bool validRow(int row) { return row >= 0 && row < Rows; }
    static bool validColumn(int column) { return column >= 0 && column < Cols; }

    bool operator==(const CellTable&) const = default;

private:
    std::array<std::array<Cell, Cols>, Rows> cells_{};
};

class MemoryTable : public CellTable<kMemoryRows, kMemoryColumns> {
public:
    bool ChannelInUse(int row) const { return inUse_[row]; }
    void setChannelInUse(int row, bool inUse) { inUse_[row] = inUse; }
    bool operator==(const MemoryTable&) const = default;

private:
    std::array<bool, kMemoryRows> inUse_{};
};

class SpecialTable : public CellTable<kSpecialRows, kSpecialColumns> {
public:
    bool operator==(const SpecialTable&) const = default;
};

// The 32 function-settings bytes as two 32-digit halves: A at 00E0, B at 00F0.
struct SettingsBlock {
    QString halfA = QString(32, QLatin1Char('0'));
    QString halfB = QString(32, QLatin1Char('0'));
    bool operator==(const SettingsBlock&) const = default;
};

// Blanks rows 0..199 of the memory store (row 200 is kept) and rows 0..2 of the special store.
void ClearStores(MemoryTable& memory, SpecialTable& special);
// The default channel in every row 0..200, not in use.
void LoadMemoryDefaults(MemoryTable& memory, int variant);
// VFO and CALL defaults for the variant, and the RPT row derived from them.
void LoadSpecialDefaults(SpecialTable& special, int variant);
// Empties the RPT row's text cells that the repeater row never shows (columns 0, 1, 8..12).
void BlankRptTexts(SpecialTable& special);

// Block address of a channel half: "0200" and "0210" for channel 0, "1AE0" and "1AF0" for 199.
QString ChannelBlockAddress(int channel, int half);

} // namespace zq::model
