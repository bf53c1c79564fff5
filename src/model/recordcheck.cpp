#include "recordcheck.h"

#include "channelcodec.h"
#include "channeloptions.h"
#include "dialcodec.h"
#include "numeric.h"
#include "settingscodec.h"
#include "steprules.h"
#include "tables.h"

#include <optional>

namespace zq::model {

namespace {

bool isHexPair(const QString& pair) {
    return pair.size() == 2 && HexDigitValue(pair[0]) >= 0 && HexDigitValue(pair[1]) >= 0;
}

bool isDigits(const QString& text) {
    for (const QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return false;
    return !text.isEmpty();
}

QString hex2(int value) {
    return QStringLiteral("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
}

class Checker {
public:
    explicit Checker(const QString& record) : record_(record) {}

    QString text(int byte) const { return record_.mid(2 * byte, 2); }
    // The byte's value, or nothing (and a fault) when it is not two hexadecimal digits.
    std::optional<int> value(int byte, const QString& field) {
        const QString pair = text(byte);
        if (!isHexPair(pair)) {
            add(byte, QStringLiteral("%1 \"%2\" is not hexadecimal").arg(field, pair));
            return std::nullopt;
        }
        return HexValue(pair);
    }
    void add(int byte, const QString& text) { faults_.append(FieldFault{byte >= 16 ? 1 : 0, text}); }
    QList<FieldFault> faults() const { return faults_; }

private:
    const QString& record_;
    QList<FieldFault> faults_;
};

// The indices that stop a decode when they lie beyond their tables.
void checkTables(Checker& c) {
    const struct {
        int byte;
        const char* field;
        int count;
        const char* table;
    } indices[] = {{12, "TX tone index", kToneCount, "the tone table (0-38)"},
                   {13, "RX tone index", kToneCount, "the tone table (0-38)"},
                   {14, "DCS index", kDcsCount, "the DCS table (0-103)"}};
    for (const auto& index : indices) {
        const QString field = QLatin1String(index.field);
        if (const auto v = c.value(index.byte, field); v && *v >= index.count)
            c.add(index.byte,
                  QStringLiteral("%1 %2 outside %3").arg(field).arg(*v).arg(QLatin1String(index.table)));
    }
}

void checkOneOf(Checker& c, int byte, const QString& field, int max, const QString& choices) {
    if (const auto v = c.value(byte, field); v && *v > max)
        c.add(byte, QStringLiteral("%1 %2 is none of %3").arg(field).arg(*v).arg(choices));
}

// Eight BCD digits of a frequency or an offset (bytes first..first+3), as 100 Hz units; nothing
// when a digit is not one. `kept` digits from the right are what the decoder reads.
std::optional<qint64> checkBcd(Checker& c, int first, const QString& field, int kept) {
    const QString digits = c.text(first) + c.text(first + 1) + c.text(first + 2) + c.text(first + 3);
    if (digits.size() != 8 || !isDigits(digits)) {
        c.add(first, QStringLiteral("%1 \"%2\" holds non-digits").arg(field, digits));
        return std::nullopt;
    }
    const qint64 units = digits.right(kept).toLongLong();
    if (digits.left(8 - kept).toLongLong() != 0)
        c.add(first, QStringLiteral("%1 \"%2\": the digits before %3 MHz are dropped on reading")
                         .arg(field, digits, QString::number(units / 10000.0, 'f', 4)));
    return units;
}

void checkFit(Checker& c, int step, qint64 units, const QString& what) {
    if (FitsStep(units * 100, step)) return;
    c.add(3, QStringLiteral("step code %1 (%2 kHz raster) does not fit %3 %4 MHz")
                 .arg(step)
                 .arg(StepRasterHz(step) / 1000.0)
                 .arg(what, QString::number(units / 10000.0, 'f', 4)));
}

// Bytes 1..15 and 24..26, shared by memory channels and special records. `step` is the step
// code when it names a step whose raster the frequency must fit.
void checkBody(Checker& c, std::optional<int> step, int variant, bool cloneCodeA) {
    // The offset matters only with a shift.
    const int shift = c.value(1, QStringLiteral("shift code")).value_or(ShiftNone);
    if (Shifts().indexOfCode(shift) < 0)
        c.add(1, QStringLiteral("shift code %1 is none of 0 (None), 1 (-Shift), 2 (+Shift)").arg(shift));
    // The decoder tests the bits of the upper-case digit, so only these four read as written.
    const QString mode = c.text(2);
    if (!QStringList{"00", "01", "03", "0C"}.contains(mode))
        c.add(
            2,
            QStringLiteral("tone mode \"%1\" is none of 00 (None), 01 (Tone), 03 (TSQ), 0C (DCS)").arg(mode));

    if (const auto frequency = checkBcd(c, 4, QStringLiteral("frequency"), 7)) {
        const QString mhz = QString::number(*frequency / 10000.0, 'f', 4);
        if (!InBand(*frequency / 10000.0, variant, cloneCodeA))
            c.add(4, QStringLiteral("frequency %1 MHz outside the band %2")
                         .arg(mhz, BandText(variant, cloneCodeA)));
        if (step) checkFit(c, *step, *frequency, QStringLiteral("frequency"));
    }
    if (const auto offset = checkBcd(c, 8, QStringLiteral("offset"), 6)) {
        if (step && (shift == ShiftMinus || shift == ShiftPlus))
            checkFit(c, *step, *offset, QStringLiteral("offset"));
    }

    checkTables(c);
    const QString dcs = c.text(14);
    if (const auto copy = c.value(15, QStringLiteral("DCS copy"));
        copy && isHexPair(dcs) && *copy != HexValue(dcs))
        c.add(15, QStringLiteral("DCS copy %1 differs from the DCS index %2").arg(*copy).arg(HexValue(dcs)));

    checkOneOf(c, 24, QStringLiteral("battery save"), BatterySaveOn2, QStringLiteral("0 (Off), 1, 2"));
    checkOneOf(c, 25, QStringLiteral("power code"), PowerHigh, QStringLiteral("0 (Low), 1 (Mid), 2 (High)"));
    c.value(26, QStringLiteral("busy lock-out"));
}

} // namespace

QList<FieldFault> CheckChannelRecord(const QString& record, int variant, bool cloneCodeA) {
    Checker c(record);
    const QString status = c.text(0);
    bool inUse = false;
    // Lower-case digits read as no bits at all: such a channel reads as empty.
    if (!isHexPair(status) || status != status.toUpper()) {
        c.add(0, QStringLiteral("status \"%1\" is not upper-case hexadecimal").arg(status));
    } else {
        const int value = HexValue(status);
        inUse = (value & 0x80) != 0;
        if (value != 0x00 && value != 0x80 && value != 0x88)
            c.add(0, QStringLiteral("status %1 is none of 00 (empty), 80 (in use), 88 (in use, skipped)")
                         .arg(hex2(value)));
    }
    if (!inUse) {
        checkTables(c);
        return c.faults();
    }

    std::optional<int> step = c.value(3, QStringLiteral("step code"));
    if (step && *step >= kStepCount)
        c.add(3, QStringLiteral("step code %1 outside the step table (0-6)").arg(*step));
    checkBody(c, step, variant, cloneCodeA);

    for (int byte = 16; byte <= 21; ++byte) {
        const auto v = c.value(byte, QStringLiteral("name byte %1").arg(byte - 15));
        if (v && *v != 0 && DecodeNameByte(*v).isEmpty())
            c.add(byte,
                  QStringLiteral("name byte %1 (%2) is no name character").arg(byte - 15).arg(hex2(*v)));
    }
    checkOneOf(c, 22, QStringLiteral("clock shift"), 1, QStringLiteral("0 (Off), 1 (On)"));
    return c.faults();
}

QList<FieldFault> CheckSpecialRecord(const QString& record, int variant, bool cloneCodeA) {
    Checker c(record);
    std::optional<int> step = c.value(3, QStringLiteral("step code"));
    if (step && *step >= kStepCount) {
        c.add(3, QStringLiteral("step code %1 outside the step table (0-6)").arg(*step));
        step.reset();
    }
    checkBody(c, step, variant, cloneCodeA);
    checkOneOf(c, 23, QStringLiteral("clock shift"), 1, QStringLiteral("0 (Off), 1 (On)"));
    return c.faults();
}

QList<FieldFault> CheckSettingsBlock(const SettingsBlock& block) {
    QList<FieldFault> faults;
    const QString halves[2] = {block.halfA, block.halfB};
    for (int half = 0; half < 2; ++half) {
        for (int byte = 0; byte < 16; ++byte) {
            const QString pair = halves[half].mid(2 * byte, 2);
            if (!isHexPair(pair))
                faults.append(
                    {half,
                     QStringLiteral("byte %1 \"%2\" is not hexadecimal")
                         .arg(hex2(0xE0 + 16 * half + byte).rightJustified(4, QLatin1Char('0')), pair)});
        }
    }
    // What the settings codec repairs reads as 0: compare the halves before and after.
    SettingsBlock repaired = block;
    RadioSettings settings;
    ApplySettingsBlock(repaired, settings);
    const auto outOfRange = [&](int half, int byte, int value) {
        faults.append({half, QStringLiteral("byte %1 holds %2, outside its range (read as 00)")
                                 .arg(hex2(0xE0 + 16 * half + byte).rightJustified(4, QLatin1Char('0')))
                                 .arg(hex2(value))});
    };
    for (int byte = 0; byte < 16; ++byte) {
        // Byte 11 of the first half only ever changes because of the battery type (below).
        if (byte != 11 && repaired.halfA.mid(2 * byte, 2) != block.halfA.mid(2 * byte, 2))
            outOfRange(0, byte, HexValue(block.halfA.mid(2 * byte, 2)));
    }
    if (const int battery = HexValue(block.halfB.mid(22, 2)); battery != settings.batteryType)
        outOfRange(1, 11, battery);
    return faults;
}

QStringList CheckDialText(const QString& text) {
    static const QString alphabet = QStringLiteral("0123456789ABCD*#-");
    QStringList faults;
    QString foreign;
    for (const QChar c : text)
        if (!alphabet.contains(c.toUpper()) && !foreign.contains(c)) foreign += c;
    for (const QChar c : foreign)
        faults.append(QStringLiteral("\"%1\" is no dial character").arg(c));
    if (text.size() > kDialMaxLength)
        faults.append(QStringLiteral("%1 characters, more than the %2 a memory holds")
                          .arg(text.size())
                          .arg(kDialMaxLength));
    return faults;
}

} // namespace zq::model
