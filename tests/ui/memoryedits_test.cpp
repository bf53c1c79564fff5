// The memory page's edit commands on the table alone.
#include "ui/memoryedits.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace zq::ui {
namespace {

using model::MemoryTable;

// Row r holds "F<r>.<c>" / r in columns 0..13 and "S<r>" / r in column 14; all rows but 10 are in use.
MemoryTable numberedTable() {
    MemoryTable table;
    for (int row = 0; row < model::kMemoryRows; ++row) {
        for (int c = 0; c < model::ColSkip; ++c)
            table.set(row, c, QStringLiteral("F%1.%2").arg(row).arg(c), row);
        table.set(row, model::ColSkip, QStringLiteral("S%1").arg(row), row);
        table.setChannelInUse(row, row != 10);
    }
    return table;
}

// "row:column" gives the cell's text ("" only for an emptied cell), "row:u" the in-use flag.
QString probe(const MemoryTable& table, const QString& where) {
    const QStringList at = where.split(QLatin1Char(':'));
    const int row = at[0].toInt();
    if (at[1] == QLatin1String("u"))
        return table.ChannelInUse(row) ? QStringLiteral("1") : QStringLiteral("0");
    const model::Cell& cell = table.cell(row, at[1].toInt());
    return cell == model::Cell{} ? QString() : cell.text.isEmpty() ? QStringLiteral("?") : cell.text;
}

TEST(MemoryEdits, OutsideTheGridChangesNothing) {
    for (auto* edit : {&InsertChannel, &DeleteChannel, &ClearChannel})
        for (int row : {0, 201, -1}) {
            MemoryTable table = numberedTable();
            EXPECT_FALSE(edit(table, row)) << row;
            EXPECT_EQ(table, numberedTable()) << row;
        }
}

struct EditCase {
    const char* name;
    bool (*edit)(MemoryTable&, int gridRow);
    int gridRow;
    const char* probes; // "where=text", blank between; column 14 and the template row never move
};

class Edits : public ::testing::TestWithParam<EditCase> {};

TEST_P(Edits, ShiftAndEmptyTheRightCells) {
    MemoryTable table = numberedTable();
    ASSERT_TRUE(GetParam().edit(table, GetParam().gridRow));
    for (const QString& expected : QString::fromUtf8(GetParam().probes).split(QLatin1Char(' '))) {
        const QStringList parts = expected.split(QLatin1Char('='));
        EXPECT_EQ(probe(table, parts[0]), parts[1]) << parts[0].toStdString();
    }
    EXPECT_EQ(probe(table, QStringLiteral("200:0")), QStringLiteral("F200.0"));
}

INSTANTIATE_TEST_SUITE_P(
    Table, Edits,
    ::testing::Values(
        EditCase{"Insert", &InsertChannel, 5,
                 "3:0=F3.0 4:0= 4:13= 4:u=0 4:14=S4 5:0=F4.0 5:13=F4.13 5:14=S5 10:u=1 11:u=0 199:0=F198.0"},
        EditCase{"DeleteKeepsColumns9To13OfTheLastRow", &DeleteChannel, 100,
                 "98:0=F98.0 99:0=F100.0 99:14=S99 198:0=F199.0 199:8= 199:9=F199.9 199:13=F199.13 199:u=0"},
        EditCase{"DeleteLast", &DeleteChannel, 200, "198:0=F198.0 199:0= 199:9=F199.9 199:14=S199 199:u=0"},
        EditCase{"ClearEmptiesColumn14Too", &ClearChannel, 8, "6:0=F6.0 7:0= 7:13= 7:14= 7:u=0 8:0=F8.0"},
        EditCase{"ClearAllKeepsColumn14",
                 [](MemoryTable& table, int) {
                     ClearAllChannels(table);
                     return true;
                 },
                 0, "0:0= 0:14=S0 0:u=0 199:13= 199:14=S199 199:u=0 200:u=1"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace zq::ui
