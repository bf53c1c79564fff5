#pragma once
// The rules of typing a channel by hand: which keys the boxes take, how a frequency or offset
// fraction snaps to the raster, what replaces a frequency outside the band, and how the offset text
// splits into its two boxes and joins again. Text in, text out: the modify dialog applies them.
#include <QChar>
#include <QString>
#include <optional>
#include <utility>

namespace zq::model {

// The step options the rules tick or read (indexes into StepNames()).
inline constexpr int kStep5kHz = 0;
inline constexpr int kStep12_5kHz = 2;
inline constexpr int kStep25kHz = 5;

// A fraction box holds four digits in units of 100 Hz.
inline constexpr int kFractionDigits = 4;

// The frequency and offset boxes take the digits 0..9 only (Backspace aside).
bool IsEntryDigit(QChar typed);

// What a key typed into the name box enters: the capitals A..D, the digits, the blank and
// # $ ( ) * + - / = \ _ as they are, a..z as capitals; nothing for any other key, the capitals E..Z
// among them (only their lower-case keys enter them).
std::optional<QChar> NameKeyCharacter(QChar typed);

// A fraction box's value; a short entry stands for its leading digits ("5" is 5000, .5 MHz).
int FractionValue(const QString& text);
// Four digits, zeros in front.
QString FractionText(int value);

struct SnappedFraction {
    QString text;
    int step; // kStep5kHz or kStep12_5kHz: the raster the fraction landed on
};
// The frequency fraction snapped down to the 5 kHz or the 12.5 kHz raster, whichever it meets
// first going down; the step follows the raster reached.
SnappedFraction SnapFrequencyFraction(const QString& text);
// The offset fraction snapped down to the raster of the ticked step: 12.5 kHz for the 12.5 and
// 25 kHz steps, 5 kHz for any other (or none, `step` -1).
QString SnapOffsetFraction(const QString& text, int step);
// The offset's MHz box, with zeros in front up to two digits.
QString PadOffsetMhz(const QString& text);

// Where the typed MHz are checked: the band follows the variant and the clone code; a value
// outside it is replaced by the row's own MHz, or for a memory channel not in use by 145 (155 for
// the fourth variant).
struct MhzCheck {
    int variant = 0;
    bool cloneCodeA = false;
    bool unusedMemoryChannel = false;
    QString storedFrequency; // the row's frequency text
};
QString CorrectMhz(const QString& typed, const MhzCheck& check);

// The offset as its two boxes show it: "0.6000" gives "00" and "6000"; a text without a point
// is rebuilt from the number.
std::pair<QString, QString> SplitOffset(const QString& text, double number);
// The two boxes back into the row's text, one leading zero dropped ("05" "0000" gives "5.0000").
QString JoinOffset(const QString& mhz, const QString& fraction);

} // namespace zq::model
