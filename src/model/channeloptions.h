#pragma once
// The option groups of a channel row (tone mode, shift, power, battery save): for each option, in
// the order of the modify dialog's buttons, the code a cell's number holds and the caption its
// text shows. The channel codec, the CSV exchange and the modify dialog all read them here.
#include "stores.h"

#include <QString>
#include <array>

namespace zq::model {

class OptionTable {
public:
    struct Option {
        int code;
        const char* caption;
    };
    template <std::size_t N>
    constexpr explicit OptionTable(const std::array<Option, N>& options) : count_(N) {
        for (std::size_t i = 0; i < N; ++i)
            options_[i] = options[i];
    }

    int count() const { return count_; }
    int code(int index) const { return options_[index].code; }
    QString caption(int index) const { return QLatin1String(options_[index].caption); }
    // The cell an option stores: its caption and its code.
    Cell cell(int index) const { return Cell{caption(index), double(code(index))}; }
    // The option with this code or caption; -1 when there is none.
    int indexOfCode(double code) const;
    int indexOfCaption(const QString& caption) const;

private:
    std::array<Option, 4> options_{};
    int count_;
};

// Tone mode: the radio's codes, not the button indexes.
enum ToneMode : int { ToneModeNone = 0, ToneModeTone = 1, ToneModeTsq = 2, ToneModeDcs = 3 };
enum Shift : int { ShiftNone = 0, ShiftMinus = 1, ShiftPlus = 2 };
enum Power : int { PowerLow = 0, PowerMid = 1, PowerHigh = 2 };
enum BatterySave : int { BatterySaveOff = 0, BatterySaveOn1 = 1, BatterySaveOn2 = 2 };

const OptionTable& ToneModes();    // None 0, Tone 1, TSQ 3, DCS 12
const OptionTable& Shifts();       // None 0, -Shift 1, +Shift 2
const OptionTable& Powers();       // Low 0, Mid 1, High 2
const OptionTable& BatterySaves(); // Off 0, On1 1, On2 2

} // namespace zq::model
