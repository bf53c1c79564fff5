// Channel and special records as a radio reply or a clone file's line pair carries them. Any text
// decodes without harm; what the encoder makes of the row is a 32-byte record that decodes without
// error, and a further round changes neither the bytes nor the row.
#include "fuzzcheck.h"
#include "model/channelcodec.h"
#include "model/stores.h"

#include <array>

using namespace zq::model;

namespace {

template <class Table> void CopyRow(Table& to, const Table& from, int row) {
    for (int column = 0; column < Table::columns; ++column)
        to.set(row, column, from.cell(row, column));
    if constexpr (requires { to.setChannelInUse(row, true); })
        to.setChannelInUse(row, from.ChannelInUse(row));
}

template <class Table> std::array<Cell, Table::columns> RowCells(const Table& table, int row) {
    std::array<Cell, Table::columns> cells;
    for (int column = 0; column < Table::columns; ++column)
        cells[column] = table.cell(row, column);
    return cells;
}

template <std::size_t N> QString Show(const std::array<Cell, N>& cells) {
    QString text;
    for (const Cell& cell : cells)
        text += QStringLiteral("[%1|%2]").arg(cell.text).arg(cell.number);
    return text;
}

// The record as bytes: the name code of "(" is written in lower case, the same byte as "5C".
bool SameBytes(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// `settling` rounds go before the checked one: a special record's clock is written one byte before
// the one it is read from, so it is lost on the first round by design.
template <class Table, class Decode, class Encode>
void CheckRoundTrips(Table& table, const Table& pristine, int row, const QString& record, int settling,
                     Decode decode, Encode encode) {
    CopyRow(table, pristine, row);
    decode(table, record, row);
    for (int round = 0; round < settling; ++round)
        decode(table, encode(table, row), row);
    const QString first = encode(table, row);
    fuzz::Require(first.size() == 64, "a record encodes to 64 digits", first);
    fuzz::Require(decode(table, first, row) == CodecError::None, "an encoded record decodes", first);
    const auto once = RowCells(table, row);
    const QString second = encode(table, row);
    fuzz::Require(SameBytes(first, second), "a second round keeps the record", first + " / " + second);
    fuzz::Require(decode(table, second, row) == CodecError::None, "an encoded record decodes", second);
    if (RowCells(table, row) != once)
        fuzz::Broken("a second round keeps the row", Show(once) + "\n" + Show(RowCells(table, row)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString record = fuzz::Latin1(data, size);
    static const MemoryTable pristineMemory = [] {
        MemoryTable memory;
        LoadMemoryDefaults(memory, 0);
        return memory;
    }();
    static const SpecialTable pristineSpecial = [] {
        SpecialTable special;
        LoadSpecialDefaults(special, 0);
        return special;
    }();
    static MemoryTable memory = pristineMemory;
    static SpecialTable special = pristineSpecial;
    const int channel = size ? data[0] % kChannelCount : 0;
    const int row = size ? data[0] % 3 : 0;

    CheckRoundTrips(
        memory, pristineMemory, channel, record, 0,
        [](MemoryTable& m, const QString& r, int n) { return DecodeChannelRecord(m, r, n); },
        [](MemoryTable& m, int n) { return EncodeChannelFirstHalf(m, n) + EncodeChannelSecondHalf(m, n); });
    CopyRow(special, pristineSpecial, kRptRow); // the special encoder sets its frequency
    CheckRoundTrips(
        special, pristineSpecial, row, record, 1,
        [](SpecialTable& s, const QString& r, int n) { return DecodeSpecialRecord(s, r, n); },
        [](SpecialTable& s, int n) { return EncodeSpecialFirstHalf(s, n) + EncodeSpecialSecondHalf(s, n); });
    return 0;
}
