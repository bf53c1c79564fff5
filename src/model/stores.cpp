#include "stores.h"

#include "tables.h"

namespace zq::model {

void ClearStores(MemoryTable& memory, SpecialTable& special) {
    for (int row = 0; row < kChannelCount; ++row) {
        memory.clearRow(row);
        memory.setChannelInUse(row, false);
    }
    for (int row = kVfoRow; row <= kRptRow; ++row)
        special.clearRow(row);
}

namespace {
QString defaultFrequencyText(int variant) {
    return variant == VariantA ? QStringLiteral("155.0000") : QStringLiteral("145.0000");
}
double defaultFrequency(int variant) {
    return variant == VariantA ? 155.0 : 145.0;
}
} // namespace

void LoadMemoryDefaults(MemoryTable& memory, int variant) {
    for (int row = 0; row < kMemoryRows; ++row) {
        memory.setChannelInUse(row, false);
        memory.set(row, ColFrequency, defaultFrequencyText(variant), defaultFrequency(variant));
        memory.set(row, ColStep, StepNames().at(0), 0);
        memory.set(row, ColTone, QStringLiteral("None"), 0);
        memory.set(row, ColTxTone, ToneNames().at(8), 8);
        memory.set(row, ColRxTone, ToneNames().at(8), 8);
        memory.set(row, ColDcs, DcsCodes().at(0), 0);
        memory.set(row, ColShift, QStringLiteral("None"), 0);
        memory.set(row, ColOffset, QStringLiteral("0.6000"), 0.6);
        memory.set(row, ColPower, QStringLiteral("Lo"), 0);
        memory.set(row, ColBlank, QStringLiteral("Off"), 0);
        memory.set(row, ColBsv, QStringLiteral("On"), 0);
        memory.set(row, ColClock, QStringLiteral("Off"), 0);
        memory.set(row, ColBclo, QStringLiteral("Off"), 0);
        memory.set(row, ColName, QString(), 0);
        memory.set(row, ColSkip, QString(), 0);
    }
}

void BlankRptTexts(SpecialTable& special) {
    for (int column : {int(ColFrequency), int(ColStep), 8, 9, 10, 11, 12})
        special.setText(kRptRow, column, QString());
}

void LoadSpecialDefaults(SpecialTable& special, int variant) {
    const int step = variant == VariantE ? 2 : 0;
    special.set(kVfoRow, ColFrequency, defaultFrequencyText(variant), defaultFrequency(variant));
    special.set(kVfoRow, ColStep, StepNames().at(step), step);
    special.set(kVfoRow, ColTone, QStringLiteral("None"), 0);
    special.set(kVfoRow, ColTxTone, ToneNames().at(8), 8);
    special.set(kVfoRow, ColRxTone, ToneNames().at(8), 8);
    special.set(kVfoRow, ColDcs, DcsCodes().at(0), 0);
    special.set(kVfoRow, ColShift, QStringLiteral("None"), 0);
    special.set(kVfoRow, ColOffset, QStringLiteral("0.6000"), 0.6);
    special.set(kVfoRow, ColPower, QStringLiteral("Lo"), 0);
    special.set(kVfoRow, ColBlank, QStringLiteral("------"), 0);
    special.set(kVfoRow, ColBsv, QStringLiteral("On"), 0);
    special.set(kVfoRow, ColClock, QStringLiteral("Off"), 0);
    special.set(kVfoRow, ColBclo, QStringLiteral("Off"), 0);
    for (int column = 0; column < kSpecialColumns; ++column) {
        special.set(kCallRow, column, special.cell(kVfoRow, column));
        special.set(kRptRow, column, special.cell(kVfoRow, column));
    }
    special.set(kRptRow, ColTone, QStringLiteral("Tone"), 1);
    special.set(kRptRow, ColShift, QStringLiteral("-Shift"), 1);
    BlankRptTexts(special);
}

QString ChannelBlockAddress(int channel, int half) {
    const int block = 32 + 2 * channel + (half ? 1 : 0);
    QString digits = QString::number(block, 16).toUpper();
    if (digits.size() == 2) digits.prepend(QLatin1Char('0'));
    return digits + QLatin1Char('0');
}

} // namespace zq::model
