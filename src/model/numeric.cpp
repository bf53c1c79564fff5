#include "numeric.h"

#include <cmath>

namespace zq::model {

double NumericValue(const QString& text) {
    int i = 0;
    const int n = int(text.size());
    while (i < n && (text[i] == QLatin1Char(' ') || text[i] == QLatin1Char('\t')))
        ++i;
    QString number;
    if (i < n && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+'))) number += text[i++];
    bool point = false;
    bool digits = false;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            number += c;
            digits = true;
        } else if (c == QLatin1Char('.') && !point) {
            number += c;
            point = true;
        } else {
            break;
        }
    }
    if (!digits) return 0.0;
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

int HexDigitValue(QChar c) {
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9') return u - u'0';
    if (u >= u'A' && u <= u'F') return u - u'A' + 10;
    if (u >= u'a' && u <= u'f') return u - u'a' + 10;
    return -1;
}

int HexValue(const QString& text) {
    int value = 0;
    for (const QChar c : text) {
        const int digit = HexDigitValue(c);
        if (digit < 0 || value > 0xFFFFFF) break; // nothing the radio sends is that long
        value = (value << 4) | digit;
    }
    return value;
}

namespace {
long long roundHalfAway(double value) {
    if (!std::isfinite(value)) return 0;
    const double r = std::round(value); // std::round rounds halves away from zero
    if (r > 9.0e15) return 9000000000000000LL;
    if (r < -9.0e15) return -9000000000000000LL;
    return static_cast<long long>(r);
}

// Fixed four decimals with at least `intDigits` digits before the point (0 for "####").
QString formatFixed(double value, int intDigits) {
    const long long scaled = roundHalfAway(value * 10000.0);
    const bool negative = scaled < 0;
    const unsigned long long magnitude =
        negative ? 0ULL - static_cast<unsigned long long>(scaled) : static_cast<unsigned long long>(scaled);
    QString whole = magnitude / 10000 == 0 ? QString() : QString::number(magnitude / 10000);
    while (whole.size() < intDigits)
        whole.prepend(QLatin1Char('0'));
    const QString fraction = QStringLiteral("%1").arg(magnitude % 10000, 4, 10, QLatin1Char('0'));
    return (negative ? QStringLiteral("-") : QString()) + whole + QLatin1Char('.') + fraction;
}
} // namespace

QString HexByte(double value) {
    const long long n = roundHalfAway(value);
    return QStringLiteral("%1").arg(static_cast<unsigned>(n) & 0xFFu, 2, 16, QLatin1Char('0')).toUpper();
}

QString FormatZeroPadded(double value) {
    return formatFixed(value, 4);
}
QString FormatNoLeadingZero(double value) {
    return formatFixed(value, 0);
}
QString FormatOneLeadingZero(double value) {
    return formatFixed(value, 1);
}

} // namespace zq::model
