// The memory page's edit commands on the table alone.
#include "ui/memoryedits.h"

#include <gtest/gtest.h>

namespace zq::ui {
namespace {

using model::MemoryTable;

// Row r holds "F<r>.<c>" / r in columns 0..13 and "S<r>" / r in column 14, and is in use.
MemoryTable numberedTable() {
    MemoryTable table;
    for (int row = 0; row < model::kMemoryRows; ++row) {
        for (int c = 0; c < model::ColSkip; ++c)
            table.set(row, c, QStringLiteral("F%1.%2").arg(row).arg(c), row);
        table.set(row, model::ColSkip, QStringLiteral("S%1").arg(row), row);
        table.setChannelInUse(row, true);
    }
    return table;
}

// The original row whose channel a row now holds; -1 when emptied.
int channelIn(const MemoryTable& table, int row) {
    return table.text(row, model::ColFrequency).isEmpty() ? -1 : int(table.number(row, model::ColFrequency));
}

// Column 14 and the template row never move.
void expectUnmoved(const MemoryTable& table) {
    for (int row = 0; row < model::kChannelCount; ++row)
        EXPECT_EQ(table.text(row, model::ColSkip), QStringLiteral("S%1").arg(row)) << row;
    EXPECT_EQ(channelIn(table, model::kTemplateRow), model::kTemplateRow);
}

TEST(MemoryEdits, OutsideTheGridChangesNothing) {
    for (auto* edit : {&InsertChannel, &DeleteChannel, &ClearChannel})
        for (int row : {0, 201, -1}) {
            MemoryTable table = numberedTable();
            EXPECT_FALSE(edit(table, row)) << row;
            EXPECT_EQ(table, numberedTable()) << row;
        }
}

TEST(MemoryEdits, InsertShiftsDownAndTheFlagsTravelWithTheirChannels) {
    MemoryTable table = numberedTable();
    table.setChannelInUse(10, false);
    ASSERT_TRUE(InsertChannel(table, 5));
    const std::pair<int, int> probes[] = {{3, 3}, {4, -1}, {5, 4}, {199, 198}}; // row, channel now there
    for (const auto& [row, channel] : probes)
        EXPECT_EQ(channelIn(table, row), channel) << row;
    EXPECT_FALSE(table.ChannelInUse(4));
    EXPECT_EQ(table.number(4, model::ColName), 0.0);
    EXPECT_FALSE(table.ChannelInUse(11));
    EXPECT_TRUE(table.ChannelInUse(10));
    expectUnmoved(table);
}

TEST(MemoryEdits, DeleteShiftsUpAndLeavesColumns9To13OfTheLastRowBehind) {
    for (int gridRow : {100, 200}) {
        MemoryTable table = numberedTable();
        ASSERT_TRUE(DeleteChannel(table, gridRow));
        EXPECT_EQ(channelIn(table, 98), 98) << gridRow;
        EXPECT_EQ(channelIn(table, 99), gridRow == 100 ? 100 : 99);
        EXPECT_EQ(channelIn(table, 198), gridRow == 100 ? 199 : 198);
        for (int c = 0; c < model::ColSkip; ++c)
            EXPECT_EQ(table.cell(199, c), c <= model::ColPower ? model::Cell{} : numberedTable().cell(199, c))
                << gridRow << " column " << c;
        EXPECT_FALSE(table.ChannelInUse(199)) << gridRow;
        expectUnmoved(table);
    }
}

TEST(MemoryEdits, ClearEmptiesColumn14TooButClearAllKeepsIt) {
    MemoryTable table = numberedTable();
    ASSERT_TRUE(ClearChannel(table, 8));
    for (int c = 0; c < model::kMemoryColumns; ++c)
        EXPECT_EQ(table.cell(7, c), model::Cell{}) << c;
    EXPECT_FALSE(table.ChannelInUse(7));
    EXPECT_EQ(channelIn(table, 6), 6);
    EXPECT_EQ(channelIn(table, 8), 8);

    table = numberedTable();
    ClearAllChannels(table);
    for (int row = 0; row < model::kChannelCount; ++row) {
        EXPECT_FALSE(table.ChannelInUse(row));
        EXPECT_EQ(table.cell(row, model::ColName), model::Cell{});
    }
    EXPECT_TRUE(table.ChannelInUse(model::kTemplateRow));
    expectUnmoved(table);
}

} // namespace
} // namespace zq::ui
