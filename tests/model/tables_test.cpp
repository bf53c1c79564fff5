#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Tables, LookupsStopAtTheEndOfEachTable) {
    // The last valid index of each table and the first beyond it are checked by the record decoder.
    const std::pair<std::optional<QString>, std::optional<QString>> cases[] = {
        {StepCaption(6), QStringLiteral("30KHz")}, {StepCaption(18), QString()},
        {StepCaption(-1), std::nullopt},           {ToneCaption(0), QStringLiteral("67.0Hz")},
        {DcsCaption(103), QStringLiteral("754")},  {HeaderLine(4, false), QString()},
    };
    for (const auto& [got, want] : cases)
        EXPECT_EQ(got, want);
}

TEST(Tables, RangesFollowTheCloneCode) {
    const std::tuple<int, bool, const char*, double, double> cases[] = {
        {VariantT, false, "(136.000-173.995MHz)", 136.0, 174.0},
        {VariantE, false, "(144.000-145.995MHz)", 144.0, 146.0},
        {VariantE, true, "(136.000-173.995MHz)", 0.0, 174.0},
    };
    for (const auto& [variant, codeA, caption, lower, upper] : cases) {
        EXPECT_EQ(RangeCaption(variant, codeA), QLatin1String(caption)) << variant;
        EXPECT_EQ(LowerLimit(variant, codeA), lower) << variant;
        EXPECT_EQ(UpperLimit(variant, codeA), upper) << variant;
    }
}
