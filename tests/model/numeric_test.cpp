#include "model/numeric.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(Numeric, TextToNumbers) {
    const std::pair<const char*, double> numbers[] = {{"  88.5Hz", 88.5}, {"-1", -1},  {"+3", 3},
                                                      {"1.2.3", 1.2},     {".5", 0.5}, {"-", 0}};
    for (const auto& [text, value] : numbers)
        EXPECT_DOUBLE_EQ(NumericValue(QString::fromLatin1(text)), value) << text;
    const std::pair<const char*, int> hex[] = {{"0A", 10}, {"ff", 255}, {"G1", 0}, {"1G", 1}, {"", 0}};
    for (const auto& [text, value] : hex)
        EXPECT_EQ(HexValue(QString::fromLatin1(text)), value) << text;
}

TEST(Numeric, NumbersToText) {
    EXPECT_EQ(FormatZeroPadded(145.01256), QStringLiteral("0145.0126"));
    const std::pair<double, const char*> bytes[] = {{12, "0C"}, {200, "C8"}, {300, "2C"}, {-1, "FF"}};
    for (const auto& [value, text] : bytes)
        EXPECT_EQ(HexByte(value), QLatin1String(text)) << value;
}
