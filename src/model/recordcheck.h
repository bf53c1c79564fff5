#pragma once
// A strict look at the radio's records: every field that holds no value the radio or the program
// can use. The decoders accept nearly anything (a non-digit in a frequency reads as part of it,
// an unknown shift as None, a lower-case status digit as no bits); these checks name each such
// field so that a damaged or hand-edited file can be found out before it goes to a radio.
#include "stores.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace zq::model {

// One field at fault: which 32-digit half of the record holds it (0: bytes 0-15, 1: bytes 16-31)
// and what is wrong ("TX tone index 45 outside the tone table (0-38)").
struct FieldFault {
    int half = 0;
    QString text;
    bool operator==(const FieldFault&) const = default;
};

// A memory channel record (64 digits). Of an empty channel only the status and the tone and DCS
// indices are looked at: the rest is never read, but an index beyond its table stops any load.
// The frequency must lie in the band of the variant and clone code and fit the step.
QList<FieldFault> CheckChannelRecord(const QString& record, int variant, bool cloneCodeA);
// A VFO, CALL or RPT record (64 digits): as a channel in use, without status and name, with the
// step read as the full table and the clock shift read from byte 23.
QList<FieldFault> CheckSpecialRecord(const QString& record, int variant, bool cloneCodeA);
// The settings bytes the settings codec repairs (reads as 0) and any that are not hexadecimal;
// each fault names the byte by its address ("byte 00E5 holds 21, outside its range (read as 00)").
QList<FieldFault> CheckSettingsBlock(const SettingsBlock& block);
// A dial text as the dial box holds it: characters outside the dial alphabet, and more than a
// record's 16 characters.
QStringList CheckDialText(const QString& text);

} // namespace zq::model
