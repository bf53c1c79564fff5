#include "model/stores.h"
#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

// The variant T defaults of the VFO, CALL and RPT rows show in the CSV export tests.
TEST(Stores, DefaultsFollowTheVariant) {
    const std::tuple<int, const char*, int> cases[] = {{VariantE, "145.0000", 2}, {VariantA, "155.0000", 0}};
    for (const auto& [variant, frequency, step] : cases) {
        MemoryTable memory;
        SpecialTable special;
        LoadMemoryDefaults(memory, variant);
        LoadSpecialDefaults(special, variant);
        EXPECT_EQ(memory.text(kTemplateRow, ColFrequency), QLatin1String(frequency));
        EXPECT_EQ(memory.cell(kTemplateRow, ColTxTone), (Cell{QStringLiteral("88.5Hz"), 8}));
        EXPECT_EQ(memory.cell(kTemplateRow, ColBlank), (Cell{QStringLiteral("Off"), 0}));
        EXPECT_EQ(memory.cell(kTemplateRow, ColBsv), (Cell{QStringLiteral("On"), 0}));
        EXPECT_EQ(special.text(kCallRow, ColFrequency), QLatin1String(frequency));
        EXPECT_EQ(special.cell(kCallRow, ColStep), (Cell{StepNames().at(step), double(step)}));
        // the repeater row keeps the numbers copied from the VFO row under its blank texts
        EXPECT_EQ(special.cell(kRptRow, ColFrequency),
                  (Cell{QString(), special.number(kVfoRow, ColFrequency)}));
    }
}
