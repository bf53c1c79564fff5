#include "model/channelentry.h"
#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

// Every character 0x00..0xFF typed into the name box and into a numeric box; what enters, in code order.
TEST(ChannelEntry, EveryKeyByteIntoTheNameAndTheNumericBoxes) {
    QString name, numeric;
    for (int code = 0; code <= 0xFF; ++code) {
        const QChar typed{char16_t(code)};
        if (const auto entered = NameKeyCharacter(typed)) name += *entered;
        if (IsEntryDigit(typed)) numeric += typed;
    }
    // The capitals E..Z come only from their lower-case keys; hex letters are no digits.
    EXPECT_EQ(name, QStringLiteral(" #$()*+-/0123456789=ABCD\\_ABCDEFGHIJKLMNOPQRSTUVWXYZ"));
    EXPECT_EQ(numeric, QStringLiteral("0123456789"));
}

// Every fraction 0000..9999: the frequency fraction lands on the highest 5 kHz or 12.5 kHz raster point at
// or below it and ticks that raster's step; the offset fraction lands on the ticked step's raster.
TEST(ChannelEntry, EveryFractionSnapsDownToItsRasterForEveryStep) {
    for (int value = 0; value <= 9999; ++value) {
        const QString typed = FractionText(value);
        const int on5kHz = value / 50 * 50, on12_5kHz = value / 125 * 125;
        const SnappedFraction snapped = SnapFrequencyFraction(typed);
        const int expected = std::max(on5kHz, on12_5kHz);
        ASSERT_EQ(snapped.text, FractionText(expected)) << value;
        ASSERT_EQ(snapped.step, expected == on5kHz ? kStep5kHz : kStep12_5kHz) << value;
        for (int step = -1; step < kStepCount; ++step) {
            const bool wide = step == kStep12_5kHz || step == kStep25kHz;
            ASSERT_EQ(SnapOffsetFraction(typed, step), FractionText(wide ? on12_5kHz : on5kHz))
                << value << " step " << step;
        }
    }
}

TEST(ChannelEntry, ShortEntriesStandForTheirLeadingDigits) {
    const std::pair<const char*, const char*> cases[] = {{"5", "5000"}, {"01", "0100"},   {"013", "0125"},
                                                         {"", "0000"},  {"0007", "0000"}, {"0124", "0100"}};
    for (const auto& [typed, snapped] : cases)
        EXPECT_EQ(SnapFrequencyFraction(QLatin1String(typed)).text, QLatin1String(snapped)) << typed;
    EXPECT_EQ(SnapOffsetFraction(QStringLiteral("6"), kStep5kHz), QStringLiteral("6000"));
    for (const auto& [typed, padded] : {std::pair{"5", "05"}, {"", "00"}, {"12", "12"}})
        EXPECT_EQ(PadOffsetMhz(QLatin1String(typed)), QLatin1String(padded)) << typed;
}

TEST(ChannelEntry, MhzOutsideTheBandAreReplacedByTheRowsOwnOrTheDefault) {
    const struct {
        const char* typed;
        int variant;
        bool codeA, unused;
        const char* stored;
        const char* kept;
    } cases[] = {
        {"136", VariantT, false, true, "", "136"},
        {"173", VariantT, false, true, "", "173"},
        {"135", VariantT, false, true, "", "145"},
        {"174", VariantT, false, true, "", "145"},
        {"143", VariantE, false, true, "", "145"},
        {"146", VariantE, false, true, "", "145"},
        {"099", VariantA, false, true, "", "155"},
        {"180", VariantT, false, false, "150.0000*", "150"},
        {"150", VariantE, false, false, "146.5000", "146"},
        {"099", VariantE, true, true, "", "099"},
        {"174", VariantJ, true, false, "160.0000", "160"},
        {"", VariantT, false, true, "", "145"},
    };
    for (const auto& c : cases) {
        const MhzCheck check{c.variant, c.codeA, c.unused, QLatin1String(c.stored)};
        EXPECT_EQ(CorrectMhz(QLatin1String(c.typed), check), QLatin1String(c.kept))
            << c.typed << " variant " << c.variant;
    }
}

TEST(ChannelEntry, OffsetSplitsIntoItsBoxesAndJoinsBackAsTheRowWritesIt) {
    const struct {
        const char* text;
        double number;
        const char *mhz, *fraction, *joined;
    } cases[] = {
        {"0.6000", 0.6, "00", "6000", "0.6000"}, {"12.3450", 12.345, "12", "3450", "12.3450"},
        {"5.0000", 5.0, "05", "0000", "5.0000"}, {"", 7.25, "07", "2500", "7.2500"},
        {"odd", 10.5, "10", "5000", "10.5000"},  {".5000", 0.5, "00", "5000", "0.5000"},
    };
    for (const auto& c : cases) {
        const auto [mhz, fraction] = SplitOffset(QLatin1String(c.text), c.number);
        EXPECT_EQ(mhz + QLatin1Char('|') + fraction,
                  QLatin1String(c.mhz) + QLatin1Char('|') + QLatin1String(c.fraction))
            << c.text;
        EXPECT_EQ(JoinOffset(mhz, fraction), QLatin1String(c.joined)) << c.text;
    }
}
