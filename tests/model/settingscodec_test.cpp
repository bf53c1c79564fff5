#include "model/settingscodec.h"

#include <gtest/gtest.h>

using namespace zq::model;

namespace {
QString half(const char* spaced) {
    return QString::fromLatin1(spaced).remove(QLatin1Char(' ')).leftJustified(32, QLatin1Char('0'));
}
RadioSettings applied(SettingsBlock& block) {
    RadioSettings settings;
    ApplySettingsBlock(block, settings);
    return settings;
}
} // namespace

TEST(SettingsCodec, OutOfRangeBytesAreRepairedInHalfA) {
    SettingsBlock block{half("A5 00 00 01 C8 15 14 00 03 03 04 00 0F 10"), half("")};
    const RadioSettings settings = applied(block);
    EXPECT_EQ(settings.volume, 0);
    EXPECT_EQ(settings.dtmfInterval, 0);
    EXPECT_EQ(settings.penaltyTime, 0);
    EXPECT_EQ(settings.squelch, 20);
    EXPECT_EQ(settings.timeOutTimer, 15);
    EXPECT_EQ(block.halfA, half("A5 00 00 01 C8 00 14 00 03 03 00 00 0F 00"));
}

TEST(SettingsCodec, BatteryRepairLandsOnTheToneBurstByteWhichIsNeverRepaired) {
    SettingsBlock block{half("A5 00 00 01 C8 0A 01 00 00 00 00 07"),
                        half("00 00 00 00 00 00 00 00 00 00 00 05")};
    RadioSettings settings = applied(block);
    EXPECT_EQ(settings.batteryType, 0);
    EXPECT_EQ(settings.toneBurst, 7); // the control got the byte as it was
    EXPECT_EQ(block.halfA, half("A5 00 00 01 C8 0A 01 00 00 00 00 00"));
    EXPECT_EQ(block.halfB, half("00 00 00 00 00 00 00 00 00 00 00 05"));
}

TEST(SettingsCodec, FlagBytes) {
    SettingsBlock block{half(""), half("02 03 09 00 00 00 00 00 00 00 00 00 00 FF")};
    const RadioSettings settings = applied(block);
    EXPECT_FALSE(settings.beep); // only 01 sets it
    EXPECT_TRUE(settings.repeaterMode);
    BuildSettingsBlock(block, settings);
    EXPECT_EQ(block.halfB, half("00 01 01 00 00 00 00 00 00 00 00 00 00 01"));
}

// Each control's byte is checked on the settings pages.
TEST(SettingsCodec, BuildWritesBackWhatApplyRead) {
    SettingsBlock block{half("A5 00 01 01 00 0C 03 00 02 01 03 02 05 0A 01 01"),
                        half("01 01 01 00 AA AA 01 01 01 01 01 01 00 01 00 00")};
    SettingsBlock rebuilt;
    BuildSettingsBlock(rebuilt, applied(block));
    EXPECT_EQ(rebuilt, block);
    BuildSettingsBlock(rebuilt, RadioSettings{});
    EXPECT_EQ(rebuilt.halfA, half("A5 00 00 01 C8"));
}

TEST(SettingsCodec, PatchLeavesShortHalvesAlone) {
    EXPECT_EQ(PatchSettingsByte(QStringLiteral("112233"), QStringLiteral("AB"), 1), QStringLiteral("11AB33"));
    EXPECT_EQ(PatchSettingsByte(QStringLiteral("11"), QStringLiteral("AB"), 40), QStringLiteral("11"));
}
