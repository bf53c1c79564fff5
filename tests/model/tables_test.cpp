#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Tables, LookupsStopAtTheEndOfEachTable) {
    const std::pair<std::optional<QString>, std::optional<QString>> cases[] = {
        {StepCaption(0), QStringLiteral("5KHz")},
        {StepCaption(2), QStringLiteral("12.5KHz")},
        {StepCaption(6), QStringLiteral("30KHz")},
        {StepCaption(7), QString()},
        {StepCaption(18), QString()},
        {StepCaption(19), std::nullopt},
        {StepCaption(-1), std::nullopt},
        {ToneCaption(0), QStringLiteral("67.0Hz")},
        {ToneCaption(8), QStringLiteral("88.5Hz")},
        {ToneCaption(38), QStringLiteral("250.3Hz")},
        {ToneCaption(39), std::nullopt},
        {DcsCaption(0), QStringLiteral("023")},
        {DcsCaption(103), QStringLiteral("754")},
        {DcsCaption(104), std::nullopt},
        {HeaderLine(4, false), QString()},
    };
    for (const auto& [got, want] : cases)
        EXPECT_EQ(got, want);
    EXPECT_EQ(ToneNames().size(), kToneCount);
    EXPECT_EQ(DcsCodes().size(), kDcsCount);
    EXPECT_EQ(StepNames().size(), kStepTableSize);
}

TEST(Tables, RangesFollowTheCloneCode) {
    const std::tuple<int, bool, const char*, double, double> cases[] = {
        {VariantT, false, "(136.000-173.995MHz)", 136.0, 174.0},
        {VariantE, false, "(144.000-145.995MHz)", 144.0, 146.0},
        {VariantE, true, "(136.000-173.995MHz)", 0.0, 174.0},
        {VariantA, true, "(136.000-173.995MHz)", 0.0, 174.0},
        {VariantJ, false, "(136.000-173.995MHz)", 136.0, 174.0},
    };
    for (const auto& [variant, codeA, caption, lower, upper] : cases) {
        EXPECT_EQ(RangeCaption(variant, codeA), QLatin1String(caption)) << variant;
        EXPECT_EQ(LowerLimit(variant, codeA), lower) << variant;
        EXPECT_EQ(UpperLimit(variant, codeA), upper) << variant;
    }
}
