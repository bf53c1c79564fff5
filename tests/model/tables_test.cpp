#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Tables, LookupsStopAtTheEndOfEachTable) {
    struct Case {
        std::optional<QString> got;
        std::optional<QString> want;
    };
    const Case cases[] = {
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
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.got, c.want);
    EXPECT_EQ(ToneNames().size(), kToneCount);
    EXPECT_EQ(DcsCodes().size(), kDcsCount);
    EXPECT_EQ(StepNames().size(), kStepTableSize);
}

TEST(Tables, HeaderAndEndLinesAre32Characters) {
    for (int variant = 0; variant < kVariantCount; ++variant)
        for (bool codeA : {false, true})
            EXPECT_EQ(HeaderLine(variant, codeA).size(), 32);
    EXPECT_EQ(HeaderLine(1, true), QStringLiteral("Korvex ZQ-318E Clone A FileStart"));
    EXPECT_EQ(HeaderLine(3, false), QStringLiteral("Korvex ZQ-318A Clone 0 FileStart"));
    EXPECT_TRUE(HeaderLine(4, false).isEmpty());
    EXPECT_EQ(EndLine().size(), 32);
}

TEST(Tables, RangesFollowTheCloneCode) {
    struct Case {
        int variant;
        bool codeA;
        const char* caption;
        double lower, upper;
    };
    const Case cases[] = {
        {VariantT, false, "(136.000-173.995MHz)", 136.0, 174.0},
        {VariantE, false, "(144.000-145.995MHz)", 144.0, 146.0},
        {VariantE, true, "(136.000-173.995MHz)", 0.0, 174.0},
        {VariantA, true, "(136.000-173.995MHz)", 0.0, 174.0},
        {VariantJ, false, "(136.000-173.995MHz)", 136.0, 174.0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RangeCaption(c.variant, c.codeA), QLatin1String(c.caption)) << c.variant;
        EXPECT_EQ(LowerLimit(c.variant, c.codeA), c.lower) << c.variant;
        EXPECT_EQ(UpperLimit(c.variant, c.codeA), c.upper) << c.variant;
    }
}
