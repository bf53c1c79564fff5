#include "model/settingscodec.h"

#include <gtest/gtest.h>

using namespace zq::model;

namespace {
QString half(const char* spaced) {
    return QString::fromLatin1(spaced).remove(QLatin1Char(' ')).leftJustified(32, QLatin1Char('0'));
}
QString byteOf(const QString& h, int i) {
    return h.mid(2 * i, 2);
}
} // namespace

TEST(SettingsCodec, OutOfRangeBytesAreRepairedInHalfA) {
    const std::tuple<int, const char*, int RadioSettings::*> cases[] = {
        {5, "15", &RadioSettings::volume},
        {10, "04", &RadioSettings::dtmfInterval},
        {13, "10", &RadioSettings::penaltyTime},
    };
    for (const auto& [byte, value, member] : cases) {
        SettingsBlock block;
        block.halfA = PatchSettingsByte(half(""), QLatin1String(value), byte);
        RadioSettings settings;
        settings.*member = 99;
        ApplySettingsBlock(block, settings);
        EXPECT_EQ(settings.*member, 0) << byte;
        EXPECT_EQ(byteOf(block.halfA, byte), QStringLiteral("00")) << byte;
    }
    // in range: kept
    SettingsBlock block;
    block.halfA = half("A5 00 00 01 C8 14 14 00 03 03 03 00 0F 0F");
    RadioSettings settings;
    ApplySettingsBlock(block, settings);
    EXPECT_EQ(settings.volume, 20);
    EXPECT_EQ(settings.timeOutTimer, 15);
    EXPECT_EQ(block.halfA, half("A5 00 00 01 C8 14 14 00 03 03 03 00 0F 0F"));
}

TEST(SettingsCodec, BatteryRepairLandsOnTheToneBurstByteWhichIsNeverRepaired) {
    SettingsBlock block;
    block.halfA = half("A5 00 00 01 C8 0A 01 00 00 00 00 03");
    block.halfB = half("00 00 00 00 00 00 00 00 00 00 00 05");
    RadioSettings settings;
    ApplySettingsBlock(block, settings);
    EXPECT_EQ(settings.batteryType, 0);
    EXPECT_EQ(settings.toneBurst, 3);                         // the control got the byte as it was
    EXPECT_EQ(byteOf(block.halfA, 11), QStringLiteral("00")); // but the stored byte was rewritten
    EXPECT_EQ(byteOf(block.halfB, 11), QStringLiteral("05")); // half B keeps its bad byte

    block = {half("A5 00 00 01 C8 0A 01 00 00 00 00 07"), half("")};
    ApplySettingsBlock(block, settings);
    EXPECT_EQ(settings.toneBurst, 7);
    BuildSettingsBlock(block, settings);
    EXPECT_EQ(byteOf(block.halfA, 11), QStringLiteral("07"));
}

TEST(SettingsCodec, FlagBytes) {
    const std::tuple<const char*, bool RadioSettings::*, bool> cases[] = {
        {"02", &RadioSettings::beep, false},
        {"01", &RadioSettings::beep, true},
        {"00 00 00 00 AA", &RadioSettings::scanEnable, true},
        {"00 00 00 00 00 00 00 00 00 00 00 00 00 FF", &RadioSettings::repeaterMode, true},
    };
    for (const auto& [halfB, member, expected] : cases) {
        SettingsBlock block;
        block.halfB = half(halfB);
        RadioSettings settings;
        ApplySettingsBlock(block, settings);
        EXPECT_EQ(settings.*member, expected) << halfB;
    }
    SettingsBlock block;
    block.halfB = half("00 03 09");
    RadioSettings settings;
    ApplySettingsBlock(block, settings);
    EXPECT_EQ(settings.scanType, 1);
    EXPECT_EQ(settings.lamp, 1);
    BuildSettingsBlock(block, settings);
    EXPECT_EQ(byteOf(block.halfB, 1), QStringLiteral("01"));
}

TEST(SettingsCodec, BuildLayout) {
    SettingsBlock block;
    RadioSettings settings;
    BuildSettingsBlock(block, settings);
    EXPECT_TRUE(block.halfA.startsWith(QLatin1String("A5000001C8")));
    settings.channelMode = true;
    settings.volume = 12;
    settings.squelch = 3;
    settings.scanEnable = settings.powerEnable = settings.lockEnable = settings.nameEnable = true;
    settings.batteryType = 1;
    settings.repeaterMode = true;
    BuildSettingsBlock(block, settings);
    EXPECT_EQ(block.halfA, half("A5 00 01 01 00 0C 03 00 00 00 00 00 00 00 00 00"));
    EXPECT_EQ(block.halfB, half("00 00 00 00 AA AA 01 00 00 00 01 01 00 01 00 00"));

    // a rebuilt block applies back to the same settings
    RadioSettings back;
    ApplySettingsBlock(block, back);
    EXPECT_EQ(back, settings);
}

TEST(SettingsCodec, SlidersAndBytePatches) {
    RadioSettings settings;
    ResetLevelSliders(settings);
    EXPECT_EQ(settings.volume, 10);
    EXPECT_EQ(settings.squelch, 1);
    EXPECT_EQ(PatchSettingsByte(half("11 22 33"), QStringLiteral("AB"), 1).left(6), QStringLiteral("11AB33"));
    EXPECT_EQ(PatchSettingsByte(QStringLiteral("11"), QStringLiteral("AB"), 40), QStringLiteral("11"));
}

TEST(SettingsCodec, ShortOrGarbledHalvesApplySafely) {
    for (const char* text : {"", "A", "ZZZZZZZZZZZZZZZZZZ", "A5000001C81515"}) {
        SettingsBlock block;
        block.halfA = QString::fromLatin1(text);
        block.halfB = QString::fromLatin1(text);
        RadioSettings settings;
        ApplySettingsBlock(block, settings);
        EXPECT_LE(settings.volume, 20);
    }
}
