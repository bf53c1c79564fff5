#pragma once
// Small text/number helpers that reproduce the radio program's conversions.
#include <QString>

namespace zq::model {

// Numeric value of a text: leading blanks skipped, the longest leading decimal number
// (optional sign, digits, one decimal point) taken, 0 when there is none ("145.5MHz" gives 145.5).
double NumericValue(const QString& text);

// Value of a hexadecimal text; characters after the last leading hex digit are ignored,
// an empty or non-hexadecimal text gives 0.
int HexValue(const QString& text);
// 0..15 for a hexadecimal digit of either case, -1 otherwise.
int HexDigitValue(QChar c);

// Two upper-case hexadecimal digits of the low byte of a rounded value (5 -> "05", 200 -> "C8").
QString HexByte(double value);

// Fixed-point formats of the program: "0000.0000" (leading zeros), "####.0000" (none before the
// point, so 0.5 gives ".5000") and "#0.0000" (at least one). Rounding is half away from zero.
QString FormatZeroPadded(double value);     // "0000.0000"
QString FormatNoLeadingZero(double value);  // "####.0000"
QString FormatOneLeadingZero(double value); // "#0.0000"

} // namespace zq::model
