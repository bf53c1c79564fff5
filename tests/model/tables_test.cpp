#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

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
