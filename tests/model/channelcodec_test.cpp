#include "model/channelcodec.h"
#include "model/stores.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace zq::model;

namespace {
// A 64-digit record from "80 00 01 ..." with blanks for readability; missing bytes are "00".
QString record(const QString& spaced) {
    return QString(spaced).remove(QLatin1Char(' ')).leftJustified(64, QLatin1Char('0'));
}
} // namespace

TEST(ChannelCodec, DecodesAFullMemoryRecordAndEncodesItBack) {
    const QString typical = record("80 02 01 02 01 45 12 50 00 00 60 00 08 0C 05 05 "
                                   "3A 3B 5c 31 5C 00 01 00 02 01 01 00 00 00 00 00");
    MemoryTable memory;
    ASSERT_EQ(DecodeChannelRecord(memory, typical, 3), CodecError::None);
    EXPECT_TRUE(memory.ChannelInUse(3));
    const QStringList texts =
        QStringLiteral("145.1250|12.5KHz|Tone|88.5Hz|100.0Hz|036|+Shift|0.6000|Mid|------|on2|On|On|AB(1(|")
            .split(QLatin1Char('|'));
    const double numbers[kMemoryColumns] = {145.125, 2, 1, 8, 12, 5, 2, 0.6, 1, 0, 2, 1, 1, 1, 0};
    for (int column = 0; column < kMemoryColumns; ++column)
        EXPECT_EQ(memory.cell(3, column), (Cell{texts[column], numbers[column]})) << column;
    // the name's ")" came back as "(", which is written "5c"; everything else is equal
    EXPECT_EQ(EncodeChannelFirstHalf(memory, 3) + EncodeChannelSecondHalf(memory, 3),
              QString(typical).replace(QLatin1String("5c315C"), QLatin1String("5c315c")));
}

// One field of a record decoded as channel 0 or as the CALL row.
struct FieldCase {
    const char* record;
    int column;
    Cell channel, call;
};

const char* const kCall = "80 00 00 00 01 45 00 00 00 00 60 00 08 08 00 00 00 00 00 00 00 00 00 01 02 05";
const FieldCase kFields[] = {
    {"08 00 00 00 01 45", ColFrequency, {"145.0000*", 145}, {"145.0000", 145}}, // skip bit, no in-use bit
    {"80 00 00 00 14 40", ColFrequency, {"440.0000", 440}, {"440.0000", 440}},  // thousands digit dropped
    {"80 00 0C 05", ColTone, {"DCS", 12}, {"DCS", 12}},
    {"80 00 03 05", ColStep, {"12.5KHz", 2}, {"25KHz", 5}},
    {"80 00 03", ColTone, {"TSQ", 3}, {"TSQ", 3}},
    {"80 00 04 02", ColTone, {"None", 0}, {"None", 0}},
    {"80 00 0c", ColTone, {"None", 0}, {"None", 0}}, // a lower-case hex digit carries no bits
    {"80 00 04 06", ColStep, {"5KHz", 0}, {"30KHz", 6}},
    {kCall, ColClock, {"Off", 0}, {"On", 1}}, // the special records read it one byte later
    {kCall, ColBsv, {"on2", 2}, {"On2", 2}},
    {kCall, ColPower, {"High", 5}, {"High", 2}},
};

TEST(ChannelCodec, DecodesEachFieldOfChannelsAndSpecialRows) {
    for (const FieldCase& c : kFields) {
        MemoryTable memory;
        SpecialTable special;
        DecodeChannelRecord(memory, record(QLatin1String(c.record)), 0);
        DecodeSpecialRecord(special, record(QLatin1String(c.record)), kCallRow);
        EXPECT_EQ(memory.cell(0, c.column), c.channel) << c.record << " " << c.column;
        EXPECT_EQ(special.cell(kCallRow, c.column), c.call) << c.record << " " << c.column;
    }
}

TEST(ChannelCodec, NameCharacters) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"Z9 *#+", "533954555657", "Z9 *#+"},   {"-/\\=$_", "58595A5B5E5F", "-/\\=$_"},
        {"?:;<>@", "6A3334353739", "?34579"},   {"!a[", "000000000000", ""},
        {"ABCDEFGH", "3A3B3C3D3E3F", "ABCDEF"},
    };
    for (const auto& [name, encoded, decoded] : cases) {
        MemoryTable memory, back;
        memory.set(0, ColName, QLatin1String(name), 1);
        const QString second = EncodeChannelSecondHalf(memory, 0);
        EXPECT_TRUE(second.startsWith(QLatin1String(encoded))) << name << " " << second.toStdString();
        DecodeChannelRecord(back, EncodeChannelFirstHalf(memory, 0) + second, 0);
        EXPECT_EQ(back.text(0, ColName), QLatin1String(decoded)) << name;
    }
}

TEST(ChannelCodec, EncodingQuirks) {
    MemoryTable memory;
    memory.set(0, ColSkip, QString(), 1);
    memory.set(0, ColFrequency, QStringLiteral("440.0000"), 440.0);
    EXPECT_EQ(EncodeChannelFirstHalf(memory, 0).left(16), QStringLiteral("0000000004400000")); // not in use
    SpecialTable special;
    special.set(kVfoRow, ColClock, QStringLiteral("On"), 1);
    special.set(kRptRow, ColFrequency, QStringLiteral("150.0000"), 150.0);
    EXPECT_TRUE(EncodeSpecialFirstHalf(special, kVfoRow).startsWith(QLatin1String("80")));
    EXPECT_EQ(special.number(kRptRow, ColFrequency), 145.0); // forced by every special encode
    EXPECT_EQ(EncodeSpecialSecondHalf(special, kVfoRow).left(16),
              QStringLiteral("0000000000000100")); // no name
}

TEST(ChannelCodec, IndicesBeyondTheTablesStopTheDecode) {
    const std::tuple<const char*, CodecError, CodecError> cases[] = {
        {"80 00 00 00 01 45 00 00 00 00 60 00 27 26 67", CodecError::ToneIndex, CodecError::ToneIndex},
        {"80 00 00 00 01 45 00 00 00 00 60 00 26 27 67", CodecError::ToneIndex, CodecError::ToneIndex},
        {"80 00 00 00 01 45 00 00 00 00 60 00 26 26 68", CodecError::DcsIndex, CodecError::DcsIndex},
        {"80 00 00 00 01 45 00 00 00 00 60 00 26 26 67", CodecError::None, CodecError::None},
        {"80 00 00 13 01 45 00 00 00 00 60 00 00 00 00", CodecError::None, CodecError::StepIndex},
        {"80 00 00 12 01 45 00 00 00 00 60 00 00 00 00", CodecError::None, CodecError::None},
    };
    for (const auto& [rec, memoryError, specialError] : cases) {
        MemoryTable memory;
        SpecialTable special;
        EXPECT_EQ(DecodeChannelRecord(memory, record(rec), 1), memoryError) << rec;
        EXPECT_EQ(DecodeSpecialRecord(special, record(rec), 1), specialError) << rec;
    }
    // A tone error leaves the row partly written: the frequency is new, the name untouched.
    MemoryTable memory;
    memory.set(1, ColName, QStringLiteral("OLD"), 1);
    DecodeChannelRecord(memory, record(std::get<0>(cases[0])), 1);
    EXPECT_EQ(memory.text(1, ColFrequency), QStringLiteral("145.0000"));
    EXPECT_EQ(memory.text(1, ColName), QStringLiteral("OLD"));
}

TEST(ChannelCodec, NumbersBeyondFourDigitBytesAreWrittenAsTheNearerEnd) {
    // frequency and offset, then the eight digits each is written as
    const std::tuple<double, const char*> cases[] = {
        {145.5, "01455000"},   {0.6, "00006000"},        {-14.694, "00000000"},
        {10000.0, "99999999"}, {9999.99996, "99999999"}, {1e300, "99999999"},
    };
    for (const auto& [number, digits] : cases) {
        MemoryTable memory;
        memory.set(0, ColFrequency, QString(), number);
        memory.set(0, ColOffset, QString(), number);
        const QString first = EncodeChannelFirstHalf(memory, 0);
        EXPECT_EQ(first.mid(8, 8), QLatin1String(digits)) << number;
        EXPECT_EQ(first.mid(16, 8), QLatin1String(digits)) << number;
    }
    // A "-" among a record's frequency digits reads as a negative number; written back, the record is
    // hexadecimal again and keeps its bytes from then on.
    MemoryTable memory;
    DecodeChannelRecord(memory, record("80 01 01 00 0- 14 69 40 00 06 00 00 08"), 0);
    EXPECT_LT(memory.number(0, ColFrequency), 0);
    const QString written = EncodeChannelFirstHalf(memory, 0);
    EXPECT_EQ(written.mid(8, 8), QLatin1String("00000000"));
    DecodeChannelRecord(memory, written + EncodeChannelSecondHalf(memory, 0), 0);
    EXPECT_EQ(EncodeChannelFirstHalf(memory, 0), written);
}
