#include "model/stores.h"
#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Stores, ChannelBlockAddresses) {
    const std::tuple<int, int, const char*> cases[] = {
        {0, 0, "0200"}, {0, 1, "0210"}, {111, 1, "0FF0"}, {112, 0, "1000"}, {199, 1, "1AF0"}};
    for (const auto& [channel, half, address] : cases)
        EXPECT_EQ(ChannelBlockAddress(channel, half), QLatin1String(address)) << channel;
}

// The variant T defaults of the VFO, CALL and RPT rows show in the CSV export tests.
TEST(Stores, DefaultsFollowTheVariant) {
    const std::tuple<int, const char*, int> cases[] = {{VariantE, "145.0000", 2}, {VariantA, "155.0000", 0}};
    for (const auto& [variant, frequency, step] : cases) {
        MemoryTable memory;
        SpecialTable special;
        LoadMemoryDefaults(memory, variant);
        LoadSpecialDefaults(special, variant);
        for (int row : {0, kTemplateRow}) {
            EXPECT_FALSE(memory.ChannelInUse(row));
            EXPECT_EQ(memory.text(row, ColFrequency), QLatin1String(frequency));
            EXPECT_EQ(memory.cell(row, ColTxTone), (Cell{QStringLiteral("88.5Hz"), 8}));
            EXPECT_EQ(memory.cell(row, ColBlank), (Cell{QStringLiteral("Off"), 0}));
            EXPECT_EQ(memory.cell(row, ColBsv), (Cell{QStringLiteral("On"), 0}));
        }
        EXPECT_EQ(special.text(kCallRow, ColFrequency), QLatin1String(frequency));
        EXPECT_EQ(special.cell(kCallRow, ColStep), (Cell{StepNames().at(step), double(step)}));
        // the repeater row keeps the numbers copied from the VFO row under its blank texts
        EXPECT_EQ(special.cell(kRptRow, ColFrequency),
                  (Cell{QString(), special.number(kVfoRow, ColFrequency)}));
    }
}
