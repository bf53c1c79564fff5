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
    const std::tuple<int, const char*, int RadioSettings::*> cases[] = {
        {5, "15", &RadioSettings::volume},
        {10, "04", &RadioSettings::dtmfInterval},
        {13, "10", &RadioSettings::penaltyTime},
    };
    for (const auto& [byte, value, member] : cases) {
        SettingsBlock block{PatchSettingsByte(half("11"), QLatin1String(value), byte), half("")};
        EXPECT_EQ(applied(block).*member, 0) << byte;
        EXPECT_EQ(block.halfA, half("11")) << byte;
    }
    SettingsBlock inRange{half("A5 00 00 01 C8 14 14 00 03 03 03 00 0F 0F"), half("")};
    EXPECT_EQ(applied(inRange).volume, 20);
    EXPECT_EQ(inRange.halfA, half("A5 00 00 01 C8 14 14 00 03 03 03 00 0F 0F"));
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
    const std::tuple<const char*, bool RadioSettings::*, bool> cases[] = {
        {"02", &RadioSettings::beep, false},
        {"01", &RadioSettings::beep, true},
        {"00 00 00 00 00 00 00 00 00 00 00 00 00 FF", &RadioSettings::repeaterMode, true},
    };
    for (const auto& [halfB, member, expected] : cases) {
        SettingsBlock block{half(""), half(halfB)};
        EXPECT_EQ(applied(block).*member, expected) << halfB;
    }
    SettingsBlock block{half(""), half("00 03 09")};
    BuildSettingsBlock(block, applied(block));
    EXPECT_TRUE(block.halfB.startsWith(QLatin1String("000101")));
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

TEST(SettingsCodec, ShortOrGarbledHalvesApplySafely) {
    for (const char* text : {"", "A", "ZZZZZZZZZZZZZZZZZZ", "A5000001C81515"}) {
        SettingsBlock block{QString::fromLatin1(text), QString::fromLatin1(text)};
        EXPECT_LE(applied(block).volume, 20);
    }
    EXPECT_EQ(PatchSettingsByte(QStringLiteral("112233"), QStringLiteral("AB"), 1), QStringLiteral("11AB33"));
    EXPECT_EQ(PatchSettingsByte(QStringLiteral("11"), QStringLiteral("AB"), 40), QStringLiteral("11"));
}
