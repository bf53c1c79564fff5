#include "channelcodec.h"

#include "channeloptions.h"
#include "numeric.h"
#include "tables.h"

#include <algorithm>

namespace zq::model {

QString CodecErrorText(CodecError error) {
    switch (error) {
    case CodecError::None:
        return QString();
    case CodecError::StepIndex:
        return QStringLiteral("step index beyond the step table");
    case CodecError::ToneIndex:
        return QStringLiteral("tone index beyond the tone table");
    case CodecError::DcsIndex:
        return QStringLiteral("DCS index beyond the DCS table");
    }
    return QString();
}

QString HexDigitToBits(QChar digit) {
    const int value = HexDigitValue(digit);
    if (value < 0 || digit.isLower()) return QString();
    QString bits(4, QLatin1Char('0'));
    for (int bit = 0; bit < 4; ++bit)
        if (value & (8 >> bit)) bits[bit] = QLatin1Char('1');
    return bits;
}

QChar BitsToHexDigit(const QString& bits) {
    if (bits.size() != 4) return QChar();
    int value = 0;
    for (const QChar c : bits) {
        if (c != QLatin1Char('0') && c != QLatin1Char('1')) return QChar();
        value = value * 2 + (c == QLatin1Char('1') ? 1 : 0);
    }
    return QLatin1Char("0123456789ABCDEF"[value]);
}

QString EncodeNameChar(QChar c) {
    const int code = c.unicode();
    if (code >= '0' && code <= '9') return HexByte(code);
    if (code >= 'A' && code <= 'Z') return HexByte(code - 7);
    switch (code) {
    case ' ':
        return QStringLiteral("54");
    case '*':
        return QStringLiteral("55");
    case '#':
        return QStringLiteral("56");
    case '+':
        return QStringLiteral("57");
    case '-':
        return QStringLiteral("58");
    case '/':
        return QStringLiteral("59");
    case '\\':
        return QStringLiteral("5A");
    case '=':
        return QStringLiteral("5B");
    case '(':
        return QStringLiteral("5c"); // the same byte as ")", in lower case
    case ')':
        return QStringLiteral("5C"); // written as "(" and read back as "("
    case '$':
        return QStringLiteral("5E");
    case '_':
        return QStringLiteral("5F");
    case '?':
        return QStringLiteral("6A");
    default:
        break;
    }
    if (code < '0' || code >= 91) return QStringLiteral("00");
    return HexByte(code - 7); // : ; < > @ land among the digits
}

QString DecodeNameByte(int value) {
    if (value >= 0x30 && value <= 0x39) return QString(QChar(value));
    if (value >= 0x3A && value <= 0x53) return QString(QChar(value + 7));
    static const char* const punctuation = " *#+-/\\=()$_";
    if (value >= 0x54 && value <= 0x5F) return QString(QLatin1Char(punctuation[value - 0x54]));
    if (value >= 0x60 && value <= 0x71) return QStringLiteral("?");
    return QString();
}

namespace {

// Byte i of a record: the two characters at 2i (whatever is there) and their value.
struct RecordBytes {
    explicit RecordBytes(const QString& record) : record_(record) {}
    QString text(int i) const { return record_.mid(2 * i, 2); }
    int value(int i) const { return HexValue(text(i)); }

private:
    const QString& record_;
};

template <class Table> void decodeToneMode(Table& table, int row, const RecordBytes& bytes) {
    const QString lowDigit = bytes.text(2).mid(1, 1);
    const QString bits = lowDigit.isEmpty() ? QString() : HexDigitToBits(lowDigit.at(0));
    ToneMode mode = ToneModeNone;
    if (bits.mid(0, 1) == QLatin1String("1"))
        mode = ToneModeDcs;
    else if (bits.mid(2, 1) == QLatin1String("1"))
        mode = ToneModeTsq;
    else if (bits.mid(3, 1) == QLatin1String("1"))
        mode = ToneModeTone;
    table.set(row, ColTone, ToneModes().cell(mode));
}

// Frequency text: the hundreds-of-MHz digit of byte 4 kept, its thousands digit dropped.
QString frequencyText(const RecordBytes& bytes) {
    return bytes.text(4).right(1) + bytes.text(5) + QLatin1Char('.') + bytes.text(6) + bytes.text(7);
}

template <class Table> CodecError decodeMiddle(Table& table, int row, const RecordBytes& bytes) {
    QString offset = bytes.text(9) + QLatin1Char('.') + bytes.text(10) + bytes.text(11);
    if (offset.startsWith(QLatin1Char('0'))) offset = offset.right(6);
    table.set(row, ColOffset, offset, NumericValue(offset));

    const int tx = bytes.value(12);
    const auto txCaption = ToneCaption(tx);
    if (!txCaption) return CodecError::ToneIndex;
    table.set(row, ColTxTone, *txCaption, tx);
    const int rx = bytes.value(13);
    const auto rxCaption = ToneCaption(rx);
    if (!rxCaption) return CodecError::ToneIndex;
    table.set(row, ColRxTone, *rxCaption, rx);
    const int dcs = bytes.value(14);
    const auto dcsCaption = DcsCaption(dcs);
    if (!dcsCaption) return CodecError::DcsIndex;
    table.set(row, ColDcs, *dcsCaption, dcs);
    return CodecError::None;
}

// Any code beyond Mid reads as High.
QString powerText(int code) {
    return Powers().caption(code == 0 ? PowerLow : code == 1 ? PowerMid : PowerHigh);
}

void setShift(auto& table, int row, const RecordBytes& bytes) {
    const int shift = bytes.value(1);
    const int index = Shifts().indexOfCode(shift);
    table.set(row, ColShift, Shifts().cell(index < 0 ? ShiftNone : index));
}

QString pad2(QString byte) {
    while (byte.size() < 2)
        byte.prepend(QLatin1Char('0'));
    return byte;
}

// Bytes 1..15 of a record, shared by memory channels and special records.
template <class Table> QString encodeBytes1To15(const Table& table, int row) {
    QString out;
    out += HexByte(table.number(row, ColShift));
    out += HexByte(table.number(row, ColTone));
    out += HexByte(table.number(row, ColStep));
    for (int column : {int(ColFrequency), int(ColOffset)}) {
        // Four digit bytes hold 0 to 9999.9999; a number beyond (a foreign file's "-" among the
        // digits, a CSV field) is written as the nearer end, so that the record stays hexadecimal.
        const double value = std::clamp(table.number(row, column), 0.0, 9999.9999);
        const QString f = FormatZeroPadded(value); // "0145.0000"
        out += pad2(f.mid(0, 2)) + pad2(f.mid(2, 2)) + pad2(f.mid(5, 2)) + pad2(f.mid(7, 2));
    }
    const QString dcs = HexByte(table.number(row, ColDcs));
    out += HexByte(table.number(row, ColTxTone)) + HexByte(table.number(row, ColRxTone)) + dcs + dcs;
    return out;
}

// Bytes 22..31: clock, zero, battery save, power, lock-out, five zeros.
template <class Table> QString encodeBytes22To31(const Table& table, int row) {
    QString out = table.number(row, ColClock) == 1 ? QStringLiteral("01") : QStringLiteral("00");
    out += QStringLiteral("00");
    out += HexByte(table.number(row, ColBsv));
    out += HexByte(table.number(row, ColPower));
    out += HexByte(table.number(row, ColBclo));
    out += QStringLiteral("0000000000");
    return out;
}

} // namespace

CodecError DecodeChannelRecord(MemoryTable& memory, const QString& record, int channel) {
    if (!MemoryTable::validRow(channel)) return CodecError::None;
    const RecordBytes bytes(record);

    const QString status = bytes.text(0);
    QString bits;
    for (const QChar c : status)
        bits += HexDigitToBits(c);
    memory.setChannelInUse(channel, bits.mid(0, 1) == QLatin1String("1"));
    const int skip = bits.mid(4, 1) == QLatin1String("1") ? 1 : 0;
    memory.set(channel, ColSkip, QString(), skip);

    setShift(memory, channel, bytes);
    decodeToneMode(memory, channel, bytes);

    const int step = (bytes.value(3) == 2 || bytes.value(3) == 5) ? 2 : 0;
    memory.set(channel, ColStep, StepNames().at(step), step);

    QString frequency = frequencyText(bytes);
    const double frequencyValue = NumericValue(frequency);
    if (skip == 1) frequency += QLatin1Char('*');
    memory.set(channel, ColFrequency, frequency, frequencyValue);

    if (const CodecError error = decodeMiddle(memory, channel, bytes); error != CodecError::None)
        return error;

    QString name;
    for (int i = 16; i <= 21; ++i)
        name += DecodeNameByte(bytes.value(i));
    memory.set(channel, ColName, name, name.isEmpty() ? 0 : 1);

    const bool clock = bytes.value(22) == 1;
    memory.set(channel, ColClock, clock ? QStringLiteral("On") : QStringLiteral("Off"), clock ? 1 : 0);

    const int bsv = bytes.value(24);
    memory.set(channel, ColBsv, bsv == 0 ? QStringLiteral("Off") : QStringLiteral("on%1").arg(bsv), bsv);

    const int power = bytes.value(25);
    memory.set(channel, ColPower, powerText(power), power);

    const int bclo = bytes.value(26);
    memory.set(channel, ColBclo, bclo == 0 ? QStringLiteral("Off") : QStringLiteral("On"), bclo);

    memory.set(channel, ColBlank, QStringLiteral("------"), 0);
    return CodecError::None;
}

CodecError DecodeSpecialRecord(SpecialTable& special, const QString& record, int row) {
    if (!SpecialTable::validRow(row)) return CodecError::None;
    const RecordBytes bytes(record);

    setShift(special, row, bytes);
    decodeToneMode(special, row, bytes);

    const int step = bytes.value(3);
    const auto stepCaption = StepCaption(step);
    if (!stepCaption) return CodecError::StepIndex;
    special.set(row, ColStep, *stepCaption, step);

    const QString frequency = frequencyText(bytes);
    special.set(row, ColFrequency, frequency, NumericValue(frequency));

    if (const CodecError error = decodeMiddle(special, row, bytes); error != CodecError::None) return error;

    // The special records carry the clock shift one byte later than they are written.
    const bool clock = bytes.value(23) == 1;
    special.set(row, ColClock, clock ? QStringLiteral("On") : QStringLiteral("Off"), clock ? 1 : 0);

    const int bsv = bytes.value(24);
    special.set(row, ColBsv, bsv == 0 ? QStringLiteral("Off") : QStringLiteral("On%1").arg(bsv), bsv);

    const int power = bytes.value(25);
    special.set(row, ColPower, powerText(power), (power == 0 || power == 1) ? power : 2);

    const bool bclo = bytes.value(26) != 0;
    special.set(row, ColBclo, bclo ? QStringLiteral("On") : QStringLiteral("Off"), bclo ? 1 : 0);

    special.set(row, ColBlank, QStringLiteral("------"), 0);
    BlankRptTexts(special);
    return CodecError::None;
}

QString EncodeChannelFirstHalf(const MemoryTable& memory, int channel) {
    QString status = QStringLiteral("00");
    if (memory.ChannelInUse(channel))
        status = memory.number(channel, ColSkip) == 1 ? QStringLiteral("88") : QStringLiteral("80");
    return status + encodeBytes1To15(memory, channel);
}

QString EncodeChannelSecondHalf(const MemoryTable& memory, int channel) {
    const QString& name = memory.text(channel, ColName);
    QString out;
    for (int position = 0; position < 6; ++position)
        out += position < name.size() ? EncodeNameChar(name.at(position)) : QStringLiteral("00");
    return out + encodeBytes22To31(memory, channel);
}

QString EncodeSpecialFirstHalf(SpecialTable& special, int row) {
    special.setNumber(kRptRow, ColFrequency, 145.0);
    return QStringLiteral("80") + encodeBytes1To15(special, row);
}

QString EncodeSpecialSecondHalf(SpecialTable& special, int row) {
    special.setNumber(kRptRow, ColFrequency, 145.0);
    return QStringLiteral("000000000000") + encodeBytes22To31(special, row);
}

} // namespace zq::model
