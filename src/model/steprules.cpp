#include "steprules.h"

#include "tables.h"

#include <array>

namespace zq::model {

namespace {
constexpr std::array<int, kStepCount> kStepHz{5000, 10000, 12500, 15000, 20000, 25000, 30000};
} // namespace

int StepHz(int index) {
    return index >= 0 && index < kStepCount ? kStepHz[index] : 0;
}

int StepIndexOfHz(qint64 hz) {
    for (int i = 0; i < kStepCount; ++i)
        if (kStepHz[i] == hz) return i;
    return -1;
}

int StepRasterHz(int index) {
    return index == kStep12k5Hz || index == 5 ? 12500 : 5000;
}

bool FitsStep(qint64 hz, int index) {
    return hz % StepRasterHz(index) == 0;
}

int StepForFrequency(qint64 hz) {
    if (FitsStep(hz, kStep5kHz)) return kStep5kHz;
    if (FitsStep(hz, kStep12k5Hz)) return kStep12k5Hz;
    return -1;
}

bool InBand(double mhz, int variant, bool cloneCodeA) {
    return mhz >= LowerLimit(variant, cloneCodeA) && mhz < UpperLimit(variant, cloneCodeA);
}

QString BandText(int variant, bool cloneCodeA) {
    return QStringLiteral("%1 to below %2 MHz")
        .arg(LowerLimit(variant, cloneCodeA))
        .arg(UpperLimit(variant, cloneCodeA));
}

} // namespace zq::model
