#pragma once
// The nine DTMF autodial memories: 16 bytes each, one dial character a byte.
#include <QChar>
#include <QString>

namespace zq::model {

inline constexpr int kDialCount = 9;
inline constexpr int kDialMaxLength = 16;

// The text of one record: bytes outside the dial alphabet are skipped.
QString UpDateDialData(const QString& record);
// The record of one text: upper-cased, characters outside the alphabet dropped, padded with "0"
// to 32 digits but never shortened.
QString MakeDialData(const QString& text);

// What the dial boxes do with one typed key.
enum class DialKeyAction { Accept, Reject, NextBox };
struct DialKeyResult {
    DialKeyAction action;
    QChar character; // the character to insert when accepted (upper-cased); '\b' for backspace
};
DialKeyResult FilterDialKey(QChar key);
// The box that Enter moves to: k + 1, and from box 8 back to box 0.
int NextDialBox(int box);

} // namespace zq::model
