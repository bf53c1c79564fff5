#include "model/recordcheck.h"
#include "model/steprules.h"
#include "model/tables.h"

#include <gtest/gtest.h>

using namespace zq::model;

namespace {

// A 64-digit record from "80 00 01 ..." with blanks for readability; missing bytes are "00".
QString record(const char* spaced) {
    return QString::fromLatin1(spaced).remove(QLatin1Char(' ')).leftJustified(64, QLatin1Char('0'));
}

// A channel in use on 145.0000 MHz, 5 kHz step, no shift, tones 88.5 Hz, DCS 023, name "AB".
#define GOOD "80 00 00 00 01 45 00 00 00 00 60 00 08 08 00 00 3A 3B"

struct RecordCase {
    const char* name;
    bool special;
    const char* record;
    int variant;
    bool cloneCodeA;
    std::vector<FieldFault> faults;
};

const RecordCase kRecords[] = {
    {"ValidChannel", false, GOOD, VariantT, false, {}},
    {"EmptyChannelIsNotRead",
     false,
     "00 07 FF 09 AB CD EF 00 99 99 99 99 08 08 00 05 FF",
     VariantT,
     false,
     {}},
    {"EmptyChannelWithAToneBeyondTheTable",
     false,
     "00 00 00 00 00 00 00 00 00 00 00 00 2D 08 68",
     VariantT,
     false,
     {{0, "TX tone index 45 outside the tone table (0-38)"},
      {0, "DCS index 104 outside the DCS table (0-103)"}}},
    {"SkipWithoutInUse",
     false,
     "08 00 00 00 01 45",
     VariantT,
     false,
     {{0, "status 08 is none of 00 (empty), 80 (in use), 88 (in use, skipped)"}}},
    {"LowerCaseStatusReadsAsEmpty",
     false,
     "8a 00 00 00 01 45",
     VariantT,
     false,
     {{0, "status \"8a\" is not upper-case hexadecimal"}}},
    {"FrequencyWithNonDigits",
     false,
     "80 00 00 00 01 4A 00 00 00 00 60 00 08 08",
     VariantT,
     false,
     {{0, "frequency \"014A0000\" holds non-digits"}}},
    {"ThousandsDigitOfTheFrequency",
     false,
     "80 00 00 00 11 45 00 00 00 00 60 00 08 08",
     VariantT,
     false,
     {{0, "frequency \"11450000\": the digits before 145.0000 MHz are dropped on reading"}}},
    {"OutsideTheBand",
     false,
     "80 00 00 00 01 80 00 00 00 00 60 00 08 08",
     VariantT,
     false,
     {{0, "frequency 180.0000 MHz outside the band 136 to below 174 MHz"}}},
    {"OutsideTheNarrowBandOfE",
     false,
     "80 00 00 00 01 47 00 00 00 00 60 00 08 08",
     VariantE,
     false,
     {{0, "frequency 147.0000 MHz outside the band 144 to below 146 MHz"}}},
    {"CloneCodeAWidensIt", false, "80 00 00 00 01 47 00 00 00 00 60 00 08 08", VariantE, true, {}},
    {"FiveKilohertzStepOffItsRaster",
     false,
     "80 00 00 00 01 45 01 25 00 00 60 00 08 08",
     VariantT,
     false,
     {{0, "step code 0 (5 kHz raster) does not fit frequency 145.0125 MHz"}}},
    {"TwelveAndAHalfOffItsRaster",
     false,
     "80 00 00 02 01 45 01 00 00 00 60 00 08 08",
     VariantT,
     false,
     {{0, "step code 2 (12.5 kHz raster) does not fit frequency 145.0100 MHz"}}},
    {"TwentyFiveOnTheTwelveAndAHalfRaster",
     false,
     "80 00 00 05 01 45 01 25 00 00 60 00 08 08",
     VariantT,
     false,
     {}},
    {"OffsetOffTheRasterWithoutAShift",
     false,
     "80 00 00 00 01 45 00 00 00 00 60 10 08 08",
     VariantT,
     false,
     {}},
    {"OffsetOffTheRasterWithAShift",
     false,
     "80 02 00 00 01 45 00 00 00 00 60 10 08 08",
     VariantT,
     false,
     {{0, "step code 0 (5 kHz raster) does not fit offset 0.6010 MHz"}}},
    {"CodesOutsideTheirOptions",
     false,
     "80 03 0c 07 01 45 00 00 00 00 60 00 08 08 00 01 7F 5c 00 00 00 00 02 00 03 04",
     VariantT,
     false,
     {{0, "step code 7 outside the step table (0-6)"},
      {0, "shift code 3 is none of 0 (None), 1 (-Shift), 2 (+Shift)"},
      {0, "tone mode \"0c\" is none of 00 (None), 01 (Tone), 03 (TSQ), 0C (DCS)"},
      {0, "DCS copy 1 differs from the DCS index 0"},
      {1, "battery save 3 is none of 0 (Off), 1, 2"},
      {1, "power code 4 is none of 0 (Low), 1 (Mid), 2 (High)"},
      {1, "name byte 1 (7F) is no name character"},
      {1, "clock shift 2 is none of 0 (Off), 1 (On)"}}},
    {"NotHexadecimal",
     false,
     "80 00 00 00 01 45 00 00 00 00 60 00 G8 08",
     VariantT,
     false,
     {{0, "TX tone index \"G8\" is not hexadecimal"}}},
    {"ValidCallRowWithAThirtyKilohertzStep",
     true,
     "80 00 00 06 01 45 00 00 00 00 60 00 08 08 00 00 00 00 00 00 00 00 05 01",
     VariantT,
     false,
     {}},
    {"SpecialStepBeyondTheSteps",
     true,
     "80 00 00 09 01 45 01 25 00 00 60 00 08 08 00 00 00 00 00 00 00 00 00 02",
     VariantT,
     false,
     {{0, "step code 9 outside the step table (0-6)"}, {1, "clock shift 2 is none of 0 (Off), 1 (On)"}}},
};

class RecordCheck : public ::testing::TestWithParam<RecordCase> {};

TEST_P(RecordCheck, NamesEachFieldAtFault) {
    const RecordCase& c = GetParam();
    const QString text = record(c.record);
    const QList<FieldFault> faults = c.special ? CheckSpecialRecord(text, c.variant, c.cloneCodeA)
                                               : CheckChannelRecord(text, c.variant, c.cloneCodeA);
    QList<FieldFault> expected(c.faults.begin(), c.faults.end());
    // Sorted by half, then text, so that the table need not follow the checker's order.
    const auto order = [](const FieldFault& a, const FieldFault& b) {
        return a.half != b.half ? a.half < b.half : a.text < b.text;
    };
    QList<FieldFault> got = faults;
    std::sort(got.begin(), got.end(), order);
    std::sort(expected.begin(), expected.end(), order);
    EXPECT_EQ(got, expected) << [&] {
        std::string all;
        for (const FieldFault& f : got)
            all += std::to_string(f.half) + " " + f.text.toStdString() + "\n";
        return all;
    }();
}

INSTANTIATE_TEST_SUITE_P(Cases, RecordCheck, ::testing::ValuesIn(kRecords),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(RecordCheck, SettingsBytesTheCodecRepairs) {
    SettingsBlock block;
    EXPECT_TRUE(CheckSettingsBlock(block).isEmpty());
    block.halfA.replace(10, 2, QStringLiteral("21")); // volume
    block.halfA.replace(6, 2, QStringLiteral("G0"));
    block.halfB.replace(22, 2, QStringLiteral("02")); // battery type, repaired in the other half
    EXPECT_EQ(CheckSettingsBlock(block),
              (QList<FieldFault>{{0, "byte 00E3 \"G0\" is not hexadecimal"},
                                 {0, "byte 00E5 holds 21, outside its range (read as 00)"},
                                 {1, "byte 00FB holds 02, outside its range (read as 00)"}}));
}

TEST(RecordCheck, DialTexts) {
    EXPECT_TRUE(CheckDialText(QStringLiteral("0123456789ABCDabcd*#-")).size() == 1); // 21 characters
    EXPECT_EQ(CheckDialText(QStringLiteral("12X4X")), QStringList{"\"X\" is no dial character"});
    EXPECT_TRUE(CheckDialText(QString()).isEmpty());
}

TEST(StepRules, RasterOfEachStepAndTheDialogsChoice) {
    const struct {
        qint64 hz;
        int chosen;          // what the dialog ticks
        const char* fitting; // which of the seven steps fit
    } cases[] = {
        {145000000, kStep5kHz, "1111111"},   {145005000, kStep5kHz, "1101101"},
        {145012500, kStep12k5Hz, "0010010"}, {145006250, -1, "0000000"},
        {145000100, -1, "0000000"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(StepForFrequency(c.hz), c.chosen) << c.hz;
        QString fitting;
        for (int step = 0; step < kStepCount; ++step)
            fitting += FitsStep(c.hz, step) ? QLatin1Char('1') : QLatin1Char('0');
        EXPECT_EQ(fitting, QLatin1String(c.fitting)) << c.hz;
    }
    EXPECT_EQ(StepIndexOfHz(12500), kStep12k5Hz);
    EXPECT_EQ(StepIndexOfHz(6250), -1);
    EXPECT_TRUE(InBand(173.995, VariantT, false));
    EXPECT_FALSE(InBand(174.0, VariantT, false));
    EXPECT_FALSE(InBand(143.995, VariantE, false));
    EXPECT_TRUE(InBand(50.0, VariantE, true));
}

} // namespace
