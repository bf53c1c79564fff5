#include "model/numeric.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Numeric, NumericValueTakesTheLongestLeadingNumber) {
    const std::pair<const char*, double> cases[] = {
        {"145.5MHz", 145.5}, {"  88.5Hz", 88.5}, {"023", 23}, {"", 0},   {"abc", 0}, {"-1", -1},
        {"1.2.3", 1.2},      {".5", 0.5},        {"7", 7},    {"+3", 3}, {"-", 0},   {"145.0000*", 145.0},
    };
    for (const auto& [text, value] : cases)
        EXPECT_DOUBLE_EQ(NumericValue(QString::fromLatin1(text)), value) << text;
}

TEST(Numeric, HexValueReadsLeadingDigitsOnly) {
    const std::pair<const char*, int> cases[] = {
        {"00", 0}, {"0A", 10}, {"ff", 255}, {"5c", 0x5C}, {"G1", 0}, {"1G", 1}, {"", 0}, {"A5", 0xA5},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(HexValue(QString::fromLatin1(text)), value) << text;
}

TEST(Numeric, FixedFormats) {
    const std::tuple<double, const char*, const char*, const char*> cases[] = {
        {145.0, "0145.0000", "145.0000", "145.0000"},
        {0.5, "0000.5000", ".5000", "0.5000"},
        {0.6, "0000.6000", ".6000", "0.6000"},
        {440.0, "0440.0000", "440.0000", "440.0000"},
        {145.01256, "0145.0126", "145.0126", "145.0126"},
        {0.0, "0000.0000", ".0000", "0.0000"},
        {12.34567, "0012.3457", "12.3457", "12.3457"},
    };
    for (const auto& [value, zeroPadded, noLeading, oneLeading] : cases) {
        EXPECT_EQ(FormatZeroPadded(value), QLatin1String(zeroPadded));
        EXPECT_EQ(FormatNoLeadingZero(value), QLatin1String(noLeading));
        EXPECT_EQ(FormatOneLeadingZero(value), QLatin1String(oneLeading));
    }
}

TEST(Numeric, HexByteIsAlwaysTwoDigits) {
    const std::pair<double, const char*> cases[] = {
        {5, "05"}, {200, "C8"}, {12, "0C"}, {300, "2C"}, {-1, "FF"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(HexByte(value), QLatin1String(text)) << value;
}
