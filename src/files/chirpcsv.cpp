#include "chirpcsv.h"

#include "atomicwrite.h"
#include "csvrecords.h"
#include "model/channeloptions.h"
#include "model/numeric.h"
#include "model/steprules.h"
#include "model/tables.h"

#include <cmath>

namespace zq::files {

using model::Outcome;
using model::Result;

QString ChirpReport::text() const {
    QString where = row > 0 ? QStringLiteral("row %1").arg(row) : QString();
    if (channel >= 0)
        where += row > 0 ? QStringLiteral(" (Location %1)").arg(channel)
                         : QStringLiteral("channel %1").arg(channel);
    if (!subject.isEmpty()) where += QStringLiteral(": ") + subject;
    return where + QStringLiteral(": ") + outcome;
}

QStringList ChirpOutcome::lines() const {
    QStringList out;
    for (const ChirpReport& report : reports)
        out.append(report.text());
    return out;
}

const QStringList& ChirpColumns() {
    static const QStringList columns =
        QStringLiteral("Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,"
                       "RxDtcsCode,CrossMode,Mode,TStep,Skip,Power,Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE")
            .split(QLatin1Char(','));
    return columns;
}

namespace {

// MHz with six decimals from the four the radio keeps, without a detour through binary fractions.
QString mhzText(double mhz) {
    if (!(std::abs(mhz) < 1e6)) return QString();        // nothing a record can hold
    const long long units = std::llround(mhz * 10000.0); // 100 Hz
    const long long magnitude = std::llabs(units);
    return QStringLiteral("%1%2.%3")
        .arg(units < 0 ? QStringLiteral("-") : QString())
        .arg(magnitude / 10000)
        .arg((magnitude % 10000) * 100, 6, 10, QLatin1Char('0'));
}

// A tone of the table as "88.5"; empty for an index outside it (no file gives one).
// A cell's number as a table index; -1 for anything no record gives.
int indexOf(double number) {
    return number >= 0 && number < 256 ? int(number) : -1;
}

QString toneText(double index) {
    const auto caption = model::ToneCaption(indexOf(index));
    return caption ? QString::number(model::NumericValue(*caption), 'f', 1) : QString();
}

QString dcsText(double index) {
    return model::DcsCaption(indexOf(index)).value_or(QString());
}

QString toneModeText(const model::MemoryTable& memory, int channel) {
    switch (indexOf(memory.number(channel, model::ColTone))) {
    case 1:
        return QStringLiteral("Tone");
    case 3:
        // One tone both ways is TSQL; two different ones need the cross mode "Tone->Tone".
        return memory.number(channel, model::ColTxTone) == memory.number(channel, model::ColRxTone)
                   ? QStringLiteral("TSQL")
                   : QStringLiteral("Cross");
    case 12:
        return QStringLiteral("DTCS");
    default:
        return QString();
    }
}

QString duplexText(double code) {
    const int shift = model::Shifts().indexOfCode(code);
    return shift == model::ShiftMinus  ? QStringLiteral("-")
           : shift == model::ShiftPlus ? QStringLiteral("+")
                                       : QString();
}

QString stepText(double index) {
    const int hz = model::StepHz(indexOf(index));
    return hz > 0 ? QString::number(hz / 1000.0, 'f', 2) : QString();
}

// The codec's reading of the power byte: anything beyond Mid is High.
QString powerText(double power) {
    return model::Powers().caption(power == 0   ? model::PowerLow
                                   : power == 1 ? model::PowerMid
                                                : model::PowerHigh);
}

// Busy lock-out, clock shift and battery save have no column; say where they were set.
void reportLostFields(const model::MemoryTable& memory, int channel, QList<ChirpReport>& reports) {
    QStringList lost;
    if (memory.number(channel, model::ColBclo) != 0) lost.append(QStringLiteral("busy lock-out On"));
    if (memory.number(channel, model::ColClock) == 1) lost.append(QStringLiteral("clock shift On"));
    if (const double bsv = memory.number(channel, model::ColBsv); bsv != 0)
        lost.append(QStringLiteral("battery save %1").arg(bsv));
    if (lost.isEmpty()) return;
    reports.append(ChirpReport{0, channel, lost.join(QStringLiteral(", ")),
                               QStringLiteral("no column in the layout; not written (an import takes them "
                                              "from the channel it replaces, or from the template)"),
                               false});
}

} // namespace

QByteArray ChirpExportText(const model::Document& document, QList<ChirpReport>* reports) {
    using namespace model;
    const MemoryTable& memory = document.memory();
    QByteArray out = ChirpColumns().join(QLatin1Char(',')).toUtf8() + "\r\n";
    for (int channel = 0; channel < kChannelCount; ++channel) {
        if (!memory.ChannelInUse(channel)) continue;
        const auto number = [&](int column) { return memory.number(channel, column); };
        const QString dcs = dcsText(number(ColDcs));
        const QStringList fields{QString::number(channel),
                                 QuoteCsvField(memory.text(channel, ColName)),
                                 mhzText(number(ColFrequency)),
                                 duplexText(number(ColShift)),
                                 mhzText(number(ColOffset)),
                                 toneModeText(memory, channel),
                                 toneText(number(ColTxTone)),
                                 toneText(number(ColRxTone)),
                                 dcs,
                                 QStringLiteral("NN"),
                                 dcs,
                                 QStringLiteral("Tone->Tone"),
                                 QStringLiteral("FM"),
                                 stepText(number(ColStep)),
                                 number(ColSkip) == 1 ? QStringLiteral("S") : QString(),
                                 powerText(number(ColPower)),
                                 QString(),
                                 QString(),
                                 QString(),
                                 QString(),
                                 QString()};
        out += fields.join(QLatin1Char(',')).toUtf8() + "\r\n";
        if (reports) reportLostFields(memory, channel, *reports);
    }
    return out;
}

ChirpOutcome ExportChirpCsv(const model::Document& document, const QString& path) {
    ChirpOutcome outcome;
    const QByteArray text = ChirpExportText(document, &outcome.reports);
    if (const QString why = WriteFileAtomically(path, text); !why.isEmpty()) {
        outcome.result = Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why));
        return outcome;
    }
    for (int channel = 0; channel < model::kChannelCount; ++channel)
        outcome.channels += document.memory().ChannelInUse(channel) ? 1 : 0;
    return outcome;
}

} // namespace zq::files
