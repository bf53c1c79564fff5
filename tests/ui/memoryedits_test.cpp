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

struct MoveCase {
    const char* name;
    bool insert;
    int gridRow;
    std::array<std::pair<int, int>, 3> probes; // row, the channel it now holds (-1: emptied)
};

class MoveTest : public ::testing::TestWithParam<MoveCase> {};

TEST_P(MoveTest, ChannelsShiftAndColumn14StaysWithTheRow) {
    const MoveCase& c = GetParam();
    MemoryTable table = numberedTable();
    const MemoryTable before = table;
    ASSERT_TRUE(c.insert ? InsertChannel(table, c.gridRow) : DeleteChannel(table, c.gridRow));
    for (const auto& [row, channel] : c.probes)
        EXPECT_EQ(channelIn(table, row), channel) << "row " << row;
    for (int row = 0; row < c.gridRow - 1; ++row)
        EXPECT_EQ(channelIn(table, row), row);
    for (int row = 0; row < model::kChannelCount; ++row)
        EXPECT_EQ(table.cell(row, model::ColSkip), before.cell(row, model::ColSkip)) << row;
    EXPECT_EQ(table.cell(model::kTemplateRow, 0), before.cell(model::kTemplateRow, 0));
}

INSTANTIATE_TEST_SUITE_P(
    Edits, MoveTest,
    ::testing::Values(MoveCase{"InsertFirst", true, 1, {{{0, -1}, {1, 0}, {199, 198}}}},
                      MoveCase{"InsertLastEmptiesOnlyIt", true, 200, {{{199, -1}, {198, 198}, {0, 0}}}},
                      MoveCase{"DeleteMiddle", false, 100, {{{99, 100}, {100, 101}, {198, 199}}}},
                      MoveCase{"DeleteLast", false, 200, {{{198, 198}, {199, -1}, {0, 0}}}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(MemoryEdits, OutsideTheGridChangesNothing) {
    for (auto* edit : {&InsertChannel, &DeleteChannel, &ClearChannel})
        for (int row : {0, 201, -1}) {
            MemoryTable table = numberedTable();
            EXPECT_FALSE(edit(table, row)) << row;
            EXPECT_EQ(table, numberedTable()) << row;
        }
}

TEST(MemoryEdits, InsertEmptiesTheRowOutOfUseAndFlagsTravelWithTheirChannels) {
    MemoryTable table = numberedTable();
    table.setChannelInUse(10, false);
    ASSERT_TRUE(InsertChannel(table, 5));
    EXPECT_FALSE(table.ChannelInUse(4));
    EXPECT_EQ(table.number(4, model::ColName), 0.0);
    EXPECT_FALSE(table.ChannelInUse(11));
    EXPECT_TRUE(table.ChannelInUse(10));
}

TEST(MemoryEdits, DeleteLeavesColumns9To13OfTheLastRowBehind) {
    for (int gridRow : {1, 200}) {
        MemoryTable table = numberedTable();
        ASSERT_TRUE(DeleteChannel(table, gridRow));
        for (int c = 0; c < model::ColSkip; ++c)
            EXPECT_EQ(table.cell(199, c), c <= model::ColPower ? model::Cell{} : numberedTable().cell(199, c))
                << gridRow << " column " << c;
        EXPECT_FALSE(table.ChannelInUse(199)) << gridRow;
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
        EXPECT_EQ(table.text(row, model::ColSkip), QStringLiteral("S%1").arg(row));
    }
    EXPECT_TRUE(table.ChannelInUse(model::kTemplateRow));
    EXPECT_EQ(channelIn(table, model::kTemplateRow), model::kTemplateRow);
}

} // namespace
} // namespace zq::ui
