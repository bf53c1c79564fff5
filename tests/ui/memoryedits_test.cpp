// The memory page's edit commands on the table alone.
#include "ui/memoryedits.h"

#include <gtest/gtest.h>

namespace zq::ui {
namespace {

using model::MemoryTable;

// Every channel r holds text "F<r>" / number r in columns 0..13, "S<r>" / r in column 14, and is
// in use; the template row differs.
MemoryTable numberedTable() {
    MemoryTable table;
    for (int row = 0; row < model::kMemoryRows; ++row) {
        for (int c = 0; c < model::kMemoryColumns - 1; ++c)
            table.set(row, c, QStringLiteral("F%1.%2").arg(row).arg(c), row);
        table.set(row, model::ColSkip, QStringLiteral("S%1").arg(row), row);
        table.setChannelInUse(row, true);
    }
    return table;
}

// Whose channel (original row) a row now holds in columns 0..13; -1 when empty.
int channelIn(const MemoryTable& table, int row) {
    if (table.text(row, model::ColFrequency).isEmpty()) return -1;
    return int(table.number(row, model::ColFrequency));
}

struct MoveCase {
    const char* name;
    bool insert;
    int gridRow;
    // original channel expected in table rows 0, r-2, r-1, r, 198, 199 (-1 = emptied)
    std::array<int, 2> probeRows;
    std::array<int, 2> probeChannels;
};

class MoveTest : public ::testing::TestWithParam<MoveCase> {};

TEST_P(MoveTest, ChannelsShiftAndColumn14StaysWithTheRow) {
    const MoveCase& c = GetParam();
    MemoryTable table = numberedTable();
    const MemoryTable before = table;
    ASSERT_TRUE(c.insert ? InsertChannel(table, c.gridRow) : DeleteChannel(table, c.gridRow));
    for (size_t i = 0; i < c.probeRows.size(); ++i)
        EXPECT_EQ(channelIn(table, c.probeRows[i]), c.probeChannels[i]) << "row " << c.probeRows[i];
    // Rows above the selected one are untouched.
    for (int row = 0; row < c.gridRow - 1; ++row)
        EXPECT_EQ(channelIn(table, row), row);
    // Column 14 never moves, except Delete's last row which keeps it too.
    for (int row = 0; row < model::kChannelCount; ++row)
        EXPECT_EQ(table.cell(row, model::ColSkip), before.cell(row, model::ColSkip)) << row;
    EXPECT_EQ(table.cell(model::kTemplateRow, 0), before.cell(model::kTemplateRow, 0));
}

INSTANTIATE_TEST_SUITE_P(
    Edits, MoveTest,
    ::testing::Values(MoveCase{"InsertFirst", true, 1, {0, 1}, {-1, 0}},
                      MoveCase{"InsertMiddle", true, 50, {49, 50}, {-1, 49}},
                      MoveCase{"InsertLastEmptiesOnlyIt", true, 200, {199, 198}, {-1, 198}},
                      MoveCase{"InsertDropsLastChannel", true, 1, {199, 198}, {198, 197}},
                      MoveCase{"DeleteFirst", false, 1, {0, 198}, {1, 199}},
                      MoveCase{"DeleteMiddle", false, 100, {99, 100}, {100, 101}},
                      MoveCase{"DeleteLast", false, 200, {198, 199}, {198, -1}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(InsertChannel, EmptiedRowIsOutOfUseAndTheRestKeepTheirFlags) {
    MemoryTable table = numberedTable();
    table.setChannelInUse(10, false);
    ASSERT_TRUE(InsertChannel(table, 5));
    EXPECT_FALSE(table.ChannelInUse(4));
    EXPECT_FALSE(table.ChannelInUse(11)); // the flag travelled with channel 10
    EXPECT_TRUE(table.ChannelInUse(10));
    EXPECT_EQ(table.number(4, model::ColName), 0.0);
}

TEST(InsertChannel, OutsideTheGridChangesNothing) {
    for (int row : {0, 201, 300, -1}) {
        MemoryTable table = numberedTable();
        EXPECT_FALSE(InsertChannel(table, row));
        EXPECT_EQ(table, numberedTable()) << row;
    }
}

TEST(DeleteChannel, LastRowIsClearedOnlyInColumns0To8) {
    MemoryTable table = numberedTable();
    ASSERT_TRUE(DeleteChannel(table, 200));
    for (int c = 0; c <= model::ColPower; ++c)
        EXPECT_EQ(table.cell(199, c), model::Cell{}) << c;
    for (int c = model::ColBlank; c <= model::ColSkip; ++c)
        EXPECT_FALSE(table.text(199, c).isEmpty()) << c;
    EXPECT_FALSE(table.ChannelInUse(199));
}

TEST(DeleteChannel, LastRowAfterAMoveKeepsColumns9To13OfTheChannelMovedUp) {
    MemoryTable table = numberedTable();
    ASSERT_TRUE(DeleteChannel(table, 1));
    EXPECT_EQ(table.text(198, model::ColFrequency), QStringLiteral("F199.0"));
    EXPECT_EQ(table.text(199, model::ColBsv), QStringLiteral("F199.10")); // not cleared by Delete
    EXPECT_FALSE(table.ChannelInUse(199));
}

TEST(ClearChannel, EmptiesEveryColumnIncluding14) {
    MemoryTable table = numberedTable();
    ASSERT_TRUE(ClearChannel(table, 8));
    for (int c = 0; c < model::kMemoryColumns; ++c)
        EXPECT_EQ(table.cell(7, c), model::Cell{}) << c;
    EXPECT_FALSE(table.ChannelInUse(7));
    EXPECT_EQ(channelIn(table, 6), 6);
    EXPECT_EQ(channelIn(table, 8), 8);
}

TEST(ClearAllChannels, KeepsColumn14AndTheTemplateRow) {
    MemoryTable table = numberedTable();
    ClearAllChannels(table);
    for (int row = 0; row < model::kChannelCount; ++row) {
        EXPECT_FALSE(table.ChannelInUse(row));
        EXPECT_EQ(table.cell(row, model::ColName), model::Cell{});
        EXPECT_EQ(table.text(row, model::ColSkip), QStringLiteral("S%1").arg(row));
    }
    EXPECT_TRUE(table.ChannelInUse(model::kTemplateRow));
    EXPECT_EQ(channelIn(table, model::kTemplateRow), model::kTemplateRow);
}

TEST(RowButtons, DownStopsAt160AndUpAt1) {
    const struct {
        int from, down, up;
    } cases[] = {{1, 2, 1}, {2, 3, 1}, {159, 160, 158}, {160, 160, 159}, {161, 161, 160}, {200, 200, 199}};
    for (const auto& c : cases) {
        EXPECT_EQ(RowAfterDown(c.from), c.down) << c.from;
        EXPECT_EQ(RowAfterUp(c.from), c.up) << c.from;
    }
}

} // namespace
} // namespace zq::ui
