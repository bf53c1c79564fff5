#include "tables.h"

#include <iterator>

namespace zq::model {

namespace {
QStringList makeSteps() {
    QStringList steps{QStringLiteral("5KHz"),  QStringLiteral("10KHz"), QStringLiteral("12.5KHz"),
                      QStringLiteral("15KHz"), QStringLiteral("20KHz"), QStringLiteral("25KHz"),
                      QStringLiteral("30KHz")};
    while (steps.size() < kStepTableSize)
        steps.append(QString());
    return steps;
}
} // namespace

const QStringList& StepNames() {
    static const QStringList steps = makeSteps();
    return steps;
}

const QStringList& ToneNames() {
    static const QStringList tones =
        QStringLiteral(
            "67.0Hz 69.3Hz 71.9Hz 74.4Hz 77.0Hz 79.7Hz 82.5Hz 85.4Hz 88.5Hz 91.5Hz 94.8Hz 97.4Hz 100.0Hz "
            "103.5Hz 107.2Hz 110.9Hz 114.8Hz 118.8Hz 123.0Hz 127.3Hz 131.8Hz 136.5Hz 141.3Hz 146.2Hz "
            "151.4Hz 156.7Hz 162.2Hz 167.9Hz 173.8Hz 179.9Hz 186.2Hz 192.8Hz 203.5Hz 210.7Hz 218.1Hz "
            "225.7Hz 233.6Hz 241.8Hz 250.3Hz")
            .split(QLatin1Char(' '));
    return tones;
}

const QStringList& DcsCodes() {
    static const QStringList codes =
        QStringLiteral(
            "023 025 026 031 032 036 043 047 051 053 054 065 071 072 073 074 114 115 116 122 125 131 132 "
            "134 143 145 152 155 156 162 165 172 174 205 212 223 225 226 243 244 245 246 251 252 255 261 "
            "263 265 266 271 274 306 311 315 325 331 332 343 346 351 356 364 365 371 411 412 413 423 431 "
            "432 445 446 452 454 455 462 464 465 466 503 506 516 523 526 532 546 565 606 612 624 627 631 "
            "632 654 662 664 703 712 723 731 732 734 743 754")
            .split(QLatin1Char(' '));
    return codes;
}

namespace {
std::optional<QString> lookup(const QStringList& table, int index) {
    if (index < 0 || index >= table.size()) return std::nullopt;
    return table.at(index);
}
} // namespace

std::optional<QString> StepCaption(int index) {
    return lookup(StepNames(), index);
}
std::optional<QString> ToneCaption(int index) {
    return lookup(ToneNames(), index);
}
std::optional<QString> DcsCaption(int index) {
    return lookup(DcsCodes(), index);
}

QString AppTitle() {
    return QStringLiteral("Korvex ZQ-318 Clone Utility");
}
QString EndLine() {
    return QStringLiteral("Korvex  ZQ-318  Clone  File  End");
}

QString HeaderLine(int variant, bool cloneCodeA) {
    static const char letters[kVariantCount] = {'T', 'E', 'J', 'A'};
    if (variant < 0 || variant >= kVariantCount) return QString();
    return QStringLiteral("Korvex ZQ-318%1 Clone %2 FileStart")
        .arg(QString(QLatin1Char(letters[variant])), cloneCodeA ? QStringLiteral("A") : QStringLiteral("0"));
}

const QStringList& RangeCaptions() {
    static const QStringList captions{
        QStringLiteral("(136.000-173.995MHz)"), QStringLiteral("(144.000-145.995MHz)"),
        QStringLiteral("(136.000-173.995MHz)"), QStringLiteral("(136.000-173.995MHz)"),
        QStringLiteral("(136.000-173.995MHz)"), QStringLiteral("(136.000-173.995MHz)"),
        QStringLiteral("(136.000-173.995MHz)"), QStringLiteral("(136.000-173.995MHz)")};
    return captions;
}

const std::array<double, 16>& BandLimits() {
    // Slot 1 is never filled and stays 0; slot 3 is 174.0 for every variant.
    static const std::array<double, 16> limits{136.0, 144.0, 136.0, 136.0, //
                                               0.0,   0.0,   0.0,   0.0,   //
                                               174.0, 146.0, 174.0, 174.0, //
                                               174.0, 174.0, 174.0, 174.0};
    return limits;
}

namespace {
int clampVariant(int variant) {
    return (variant < 0 || variant >= kVariantCount) ? VariantA : variant;
}
} // namespace

QString RangeCaption(int variant, bool cloneCodeA) {
    return RangeCaptions().at(clampVariant(variant) + (cloneCodeA ? 4 : 0));
}
double LowerLimit(int variant, bool cloneCodeA) {
    return BandLimits()[clampVariant(variant) + (cloneCodeA ? 4 : 0)];
}
double UpperLimit(int variant, bool cloneCodeA) {
    return BandLimits()[clampVariant(variant) + (cloneCodeA ? 12 : 8)];
}

QString ColumnHeading(int column) {
    static const char* const headings[] = {"Frequency", "Step",  "Tone",       "TxTone", "RxTone",
                                           "DCS",       "Shift", "ShiftFreq.", "PWR",    "------",
                                           "BSV",       "Clock", "BCLO",       "Name",   "Skip"};
    if (column < 0 || column >= int(std::size(headings))) return QString();
    return QLatin1String(headings[column]);
}

QString VariantCaption(int variant) {
    switch (variant) {
    case VariantT:
        return QStringLiteral("ZQ-318 T");
    case VariantE:
        return QStringLiteral("ZQ-318 E");
    case VariantJ:
        return QStringLiteral("ZQ-318 TFH");
    case VariantA:
        return QStringLiteral("ZQ-318 A");
    default:
        return QString();
    }
}

} // namespace zq::model
