#include "channeloptions.h"

namespace zq::model {

int OptionTable::indexOfCode(double code) const {
    for (int i = 0; i < count_; ++i)
        if (options_[i].code == code) return i;
    return -1;
}

int OptionTable::indexOfCaption(const QString& caption) const {
    for (int i = 0; i < count_; ++i)
        if (caption == QLatin1String(options_[i].caption)) return i;
    return -1;
}

const OptionTable& ToneModes() {
    static const OptionTable table(
        std::array<OptionTable::Option, 4>{{{0, "None"}, {1, "Tone"}, {3, "TSQ"}, {12, "DCS"}}});
    return table;
}

const OptionTable& Shifts() {
    static const OptionTable table(
        std::array<OptionTable::Option, 3>{{{0, "None"}, {1, "-Shift"}, {2, "+Shift"}}});
    return table;
}

const OptionTable& Powers() {
    static const OptionTable table(std::array<OptionTable::Option, 3>{{{0, "Low"}, {1, "Mid"}, {2, "High"}}});
    return table;
}

const OptionTable& BatterySaves() {
    static const OptionTable table(std::array<OptionTable::Option, 3>{{{0, "Off"}, {1, "On1"}, {2, "On2"}}});
    return table;
}

} // namespace zq::model
