#include "link/portnumbers.h"

#include <gtest/gtest.h>

using namespace zq::link;

namespace {

TEST(PortNumbersTest, CaptionsLineUpDigits) {
    const std::pair<int, const char*> cases[] = {
        {1, "COM  1"}, {9, "COM  9"}, {10, "COM 10"}, {14, "COM 14"}};
    for (const auto& [number, caption] : cases)
        EXPECT_EQ(PortCaption(number), QString::fromLatin1(caption)) << number;
}

TEST(PortNumbersTest, NumberPicksListedPortAndPathPassesThrough) {
    const QStringList listed{QStringLiteral("/dev/ttyS0"), QStringLiteral("/dev/ttyS1"),
                             QStringLiteral("/dev/ttyUSB0")};
    // A number beyond the listed ports or beyond 14 names none; anything else passes through.
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"1", "/dev/ttyS0"}, {"3", "/dev/ttyUSB0"}, {"4", ""}, {"14", ""}, {"15", "15"}, {"0", "0"},
        {"/dev/pts/7", "/dev/pts/7"}, {"COM3", "COM3"}, {"+2", "+2"}};
    // clang-format on
    for (const auto& [argument, device] : cases)
        EXPECT_EQ(DeviceForPortArgument(QString::fromLatin1(argument), listed), QString::fromLatin1(device))
            << argument;
}

TEST(PortNumbersTest, ListedDevicesAreSorted) {
    const QStringList devices = ListedPortDevices();
    QStringList sorted = devices;
    sorted.sort();
    EXPECT_EQ(devices, sorted);
}

} // namespace
