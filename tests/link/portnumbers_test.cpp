#include "link/portnumbers.h"

#include <gtest/gtest.h>
#include <ostream>

using namespace zq::link;

namespace {

struct CaptionCase {
    int number;
    const char* caption;
};

void PrintTo(const CaptionCase& c, std::ostream* os) {
    *os << c.number;
}

class PortCaptionTest : public ::testing::TestWithParam<CaptionCase> {};

TEST_P(PortCaptionTest, LinesUpDigits) {
    EXPECT_EQ(PortCaption(GetParam().number), QString::fromLatin1(GetParam().caption));
}

INSTANTIATE_TEST_SUITE_P(Captions, PortCaptionTest,
                         ::testing::Values(CaptionCase{1, "COM  1"}, CaptionCase{9, "COM  9"},
                                           CaptionCase{10, "COM 10"}, CaptionCase{14, "COM 14"}));

struct ArgumentCase {
    const char* argument;
    const char* device; // with the listed ports below
};

void PrintTo(const ArgumentCase& c, std::ostream* os) {
    *os << c.argument;
}

class PortArgumentTest : public ::testing::TestWithParam<ArgumentCase> {};

TEST_P(PortArgumentTest, NumberPicksListedPortAndPathPassesThrough) {
    const QStringList listed{QStringLiteral("/dev/ttyS0"), QStringLiteral("/dev/ttyS1"),
                             QStringLiteral("/dev/ttyUSB0")};
    EXPECT_EQ(DeviceForPortArgument(QString::fromLatin1(GetParam().argument), listed),
              QString::fromLatin1(GetParam().device));
}

INSTANTIATE_TEST_SUITE_P(Arguments, PortArgumentTest,
                         ::testing::Values(ArgumentCase{"1", "/dev/ttyS0"}, ArgumentCase{"3", "/dev/ttyUSB0"},
                                           ArgumentCase{"4", ""},  // fewer ports than the number
                                           ArgumentCase{"14", ""}, // valid number, no such port
                                           ArgumentCase{"15", "15"}, ArgumentCase{"0", "0"},
                                           ArgumentCase{"/dev/pts/7", "/dev/pts/7"},
                                           ArgumentCase{"COM3", "COM3"}, ArgumentCase{"+2", "+2"}));

TEST(PortNumbersTest, ListedDevicesAreSorted) {
    const QStringList devices = ListedPortDevices();
    QStringList sorted = devices;
    sorted.sort();
    EXPECT_EQ(devices, sorted);
}

} // namespace
