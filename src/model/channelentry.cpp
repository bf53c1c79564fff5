#include "channelentry.h"

#include "numeric.h"
#include "tables.h"

namespace zq::model {

bool IsEntryDigit(QChar typed) {
    return typed >= QLatin1Char('0') && typed <= QLatin1Char('9');
}

std::optional<QChar> NameKeyCharacter(QChar typed) {
    const char16_t u = typed.unicode();
    if (u >= u'a' && u <= u'z') return QChar(char16_t(u - u'a' + u'A'));
    static const QString kept = QStringLiteral(" #$()*+-/0123456789=ABCD\\_");
    if (kept.contains(typed)) return typed;
    return std::nullopt;
}

int FractionValue(const QString& text) {
    QString digits = text;
    while (digits.size() < kFractionDigits)
        digits.append(QLatin1Char('0'));
    return static_cast<int>(NumericValue(digits));
}

QString FractionText(int value) {
    return QStringLiteral("%1").arg(value, kFractionDigits, 10, QLatin1Char('0'));
}

SnappedFraction SnapFrequencyFraction(const QString& text) {
    int value = FractionValue(text);
    value -= value % 5;
    // Going down in 500 Hz steps, the 5 kHz raster is tried before the 12.5 kHz one.
    for (;;) {
        if (value % 50 == 0) return {FractionText(value), kStep5kHz};
        if (value % 125 == 0) return {FractionText(value), kStep12_5kHz};
        value -= 5;
    }
}

QString SnapOffsetFraction(const QString& text, int step) {
    const int raster = (step == kStep12_5kHz || step == kStep25kHz) ? 125 : 50;
    int value = FractionValue(text);
    value -= value % 5;
    while (value % raster != 0)
        value -= 5;
    return FractionText(value);
}

QString PadOffsetMhz(const QString& text) {
    QString padded = text;
    while (padded.size() < 2)
        padded.prepend(QLatin1Char('0'));
    return padded;
}

QString CorrectMhz(const QString& typed, const MhzCheck& check) {
    const double value = NumericValue(typed);
    if (LowerLimit(check.variant, check.cloneCodeA) <= value &&
        value < UpperLimit(check.variant, check.cloneCodeA))
        return typed;
    if (check.unusedMemoryChannel)
        return check.variant == VariantA ? QStringLiteral("155") : QStringLiteral("145");
    return check.storedFrequency.left(3);
}

std::pair<QString, QString> SplitOffset(const QString& text, double number) {
    const QString offset = text.contains(QLatin1Char('.')) ? text : FormatOneLeadingZero(number);
    const qsizetype point = offset.indexOf(QLatin1Char('.'));
    return {PadOffsetMhz(offset.left(point)), offset.mid(point + 1)};
}

QString JoinOffset(const QString& mhz, const QString& fraction) {
    QString text = mhz + QLatin1Char('.') + fraction;
    if (text.startsWith(QLatin1Char('0'))) text.remove(0, 1);
    return text;
}

} // namespace zq::model
