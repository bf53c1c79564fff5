#include "link/portnumbers.h"

#include <gtest/gtest.h>

using namespace zq::link;

namespace {

TEST(PortNumbersTest, CaptionsAndArguments) {
    EXPECT_EQ(PortCaption(9), QStringLiteral("COM  9"));
    EXPECT_EQ(PortCaption(10), QStringLiteral("COM 10"));
    const QStringList listed = QStringLiteral("/dev/ttyS0 /dev/ttyS1 /dev/ttyUSB0").split(QLatin1Char(' '));
    // A number from 1 to 14 beyond the listed ports names none; anything else passes through.
    const std::pair<const char*, const char*> cases[] = {
        {"1", "/dev/ttyS0"}, {"3", "/dev/ttyUSB0"},        {"4", ""},   {"14", ""}, {"15", "15"},
        {"0", "0"},          {"/dev/pts/7", "/dev/pts/7"}, {"+2", "+2"}};
    for (const auto& [argument, device] : cases)
        EXPECT_EQ(DeviceForPortArgument(QString::fromLatin1(argument), listed), QString::fromLatin1(device))
            << argument;
}

} // namespace
