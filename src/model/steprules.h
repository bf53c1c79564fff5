#pragma once
// Which frequencies a tuning step can hold. The radio tunes on two rasters: the 12.5 kHz and
// 25 kHz steps on a 12.5 kHz raster, every other step on a 5 kHz raster. A memory channel keeps
// only the raster (its step byte reads back as 12.5 kHz for the 12.5 and 25 kHz codes and as
// 5 kHz for the rest), and the modify dialog snaps a typed fraction down to a multiple of 5 kHz
// or of 12.5 kHz, ticking the step that fits, and snaps the offset to the raster of the step.
// So a frequency (or an offset) fits a step when it is a whole multiple of that step's raster.
#include <QString>
#include <QtGlobal>

namespace zq::model {

inline constexpr int kStep5kHz = 0;   // index of "5KHz" in the step table
inline constexpr int kStep12k5Hz = 2; // index of "12.5KHz"

// The size of a step in Hz (5000 .. 30000); 0 for an index outside the seven steps.
int StepHz(int index);
// The index of a step size in Hz; -1 when the radio has no such step.
int StepIndexOfHz(qint64 hz);
// 12500 for the 12.5 and 25 kHz steps (codes 2 and 5), 5000 for any other code.
int StepRasterHz(int index);
// Whether a frequency or offset in Hz is a whole multiple of the step's raster.
bool FitsStep(qint64 hz, int index);
// The step the modify dialog ticks for a frequency: 5 kHz when it is on that raster, else
// 12.5 kHz when it is on that one; -1 when it is on neither.
int StepForFrequency(qint64 hz);

// Whether a frequency in MHz is one the variant accepts: the lower limit up to, not including,
// the upper limit of its range (the wide range under clone code A).
bool InBand(double mhz, int variant, bool cloneCodeA);
// The accepted range for messages: "136 to below 174 MHz".
QString BandText(int variant, bool cloneCodeA);

} // namespace zq::model
