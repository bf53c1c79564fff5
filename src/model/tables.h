#pragma once
// Fixed reference tables shared by the codecs, the grids, the dialogs and the files.
#include <QString>
#include <QStringList>
#include <optional>

namespace zq::model {

// The radio variants in the order of the model option buttons.
enum Variant : int { VariantT = 0, VariantE = 1, VariantJ = 2, VariantA = 3 };
inline constexpr int kVariantCount = 4;

inline constexpr int kStepTableSize = 19; // indices 7..18 hold empty captions
inline constexpr int kStepCount = 7;      // the seven real steps
inline constexpr int kToneCount = 39;
inline constexpr int kDcsCount = 104;

const QStringList& StepNames(); // 19 entries
const QStringList& ToneNames(); // 39 entries
const QStringList& DcsCodes();  // 104 entries

// Lookups by index; an index outside the table gives no value (the caller reports it).
std::optional<QString> StepCaption(int index);
std::optional<QString> ToneCaption(int index);
std::optional<QString> DcsCaption(int index);

QString AppTitle(); // "Korvex ZQ-318 Clone Utility"
QString EndLine();  // "Korvex  ZQ-318  Clone  File  End"
// Header line of a clone file; a variant outside 0..3 has no header (empty string).
QString HeaderLine(int variant, bool cloneCodeA);

// The eight range captions: variant k at k (first range) and k + 4 (second range).
const QStringList& RangeCaptions();
// The 16 band limits: variant k at k, k + 4, k + 8, k + 12 (slots 0..3).
const std::array<double, 16>& BandLimits();

QString RangeCaption(int variant, bool cloneCodeA);
double LowerLimit(int variant, bool cloneCodeA);
double UpperLimit(int variant, bool cloneCodeA);

// The grids' heading of a store column 0..13 ("Frequency" .. "Name"); "Skip" for column 14, which
// the Frequency text shows as a "*".
QString ColumnHeading(int column);

// Captions of the model option buttons, as detection and the command-line tool print them.
QString VariantCaption(int variant);

} // namespace zq::model
