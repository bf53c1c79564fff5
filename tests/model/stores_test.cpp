#include "model/stores.h"
#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Stores, ChannelBlockAddresses) {
    const std::tuple<int, int, const char*> cases[] = {
        {0, 0, "0200"},   {0, 1, "0210"},   {10, 0, "0340"},  {111, 0, "0FE0"},
        {111, 1, "0FF0"}, {112, 0, "1000"}, {112, 1, "1010"}, {199, 1, "1AF0"},
    };
    for (const auto& [channel, half, address] : cases)
        EXPECT_EQ(ChannelBlockAddress(channel, half), QLatin1String(address)) << channel;
}

TEST(Stores, MemoryDefaultsFollowTheVariant) {
    for (int variant = 0; variant < kVariantCount; ++variant) {
        MemoryTable memory;
        LoadMemoryDefaults(memory, variant);
        const bool a = variant == VariantA;
        const std::tuple<int, const char*, double> cells[] = {
            {ColStep, "5KHz", 0}, {ColTxTone, "88.5Hz", 8}, {ColOffset, "0.6000", 0.6},
            {ColPower, "Lo", 0},  {ColBlank, "Off", 0},     {ColBsv, "On", 0}};
        for (int row : {0, 199, kTemplateRow}) {
            EXPECT_FALSE(memory.ChannelInUse(row));
            EXPECT_EQ(memory.cell(row, ColFrequency),
                      (Cell{a ? QStringLiteral("155.0000") : QStringLiteral("145.0000"), a ? 155.0 : 145.0}));
            for (const auto& [column, text, number] : cells)
                EXPECT_EQ(memory.cell(row, column), (Cell{QLatin1String(text), number})) << column;
        }
    }
}

TEST(Stores, SpecialDefaultsAndTheRepeaterRow) {
    const std::tuple<int, const char*, int> cases[] = {{VariantT, "145.0000", 0},
                                                       {VariantE, "145.0000", 2},
                                                       {VariantJ, "145.0000", 0},
                                                       {VariantA, "155.0000", 0}};
    for (const auto& [variant, frequency, step] : cases) {
        SpecialTable special;
        LoadSpecialDefaults(special, variant);
        for (int row : {kVfoRow, kCallRow}) {
            EXPECT_EQ(special.text(row, ColFrequency), QLatin1String(frequency));
            EXPECT_EQ(special.number(row, ColStep), step);
            EXPECT_EQ(special.text(row, ColStep), StepNames().at(step));
            EXPECT_EQ(special.text(row, ColBlank), QStringLiteral("------"));
        }
        EXPECT_EQ(special.cell(kRptRow, ColTone), (Cell{QStringLiteral("Tone"), 1}));
        EXPECT_EQ(special.cell(kRptRow, ColShift), (Cell{QStringLiteral("-Shift"), 1}));
        for (int column : {0, 1, 8, 9, 10, 11, 12})
            EXPECT_TRUE(special.text(kRptRow, column).isEmpty());
        // the numbers stay as copied from the VFO row
        EXPECT_EQ(special.number(kRptRow, ColFrequency), special.number(kVfoRow, ColFrequency));
        EXPECT_EQ(special.text(kRptRow, ColTxTone), QStringLiteral("88.5Hz"));
    }
}
