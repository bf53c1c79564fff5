#include "writeguard.h"

#include "model/document.h"
#include "model/tables.h"
#include "transfers.h"

namespace zq::link {

using zq::model::Result;

namespace {
QString Megahertz(double frequency) {
    return QString::number(frequency, 'f', 4);
}
} // namespace

Result IdentifyRadio(SerialLink& link, RadioIdentity& identity) {
    zq::model::Document scratch;
    const Result detected = AutoSelect(link, scratch);
    if (detected.ok()) identity = {scratch.ModelVariant(), scratch.CloneCodeA()};
    return detected;
}

QString ModelText(int variant, bool cloneCodeA) {
    return QStringLiteral("%1, clone code %2")
        .arg(zq::model::VariantCaption(variant), cloneCodeA ? QStringLiteral("A") : QStringLiteral("0"));
}

WriteCheck CheckWrite(const zq::model::Document& document, const RadioIdentity& radio) {
    WriteCheck check;
    check.matches = document.ModelVariant() == radio.variant && document.CloneCodeA() == radio.cloneCodeA;
    check.fileModel = ModelText(document.ModelVariant(), document.CloneCodeA());
    check.radioModel = ModelText(radio.variant, radio.cloneCodeA);
    check.radioBand = zq::model::RangeCaption(radio.variant, radio.cloneCodeA);
    // The modify dialog's rule: lower <= frequency < upper.
    const double lower = zq::model::LowerLimit(radio.variant, radio.cloneCodeA);
    const double upper = zq::model::UpperLimit(radio.variant, radio.cloneCodeA);
    const auto outside = [&](double frequency) { return frequency < lower || frequency >= upper; };
    const zq::model::SpecialTable& special = document.special();
    static const char* const rows[] = {"VFO", "CALL"};
    for (int row = zq::model::kVfoRow; row <= zq::model::kCallRow; ++row)
        if (outside(special.number(row, zq::model::ColFrequency)))
            check.outsideBand.append(QStringLiteral("%1 (%2)").arg(
                QLatin1String(rows[row]), Megahertz(special.number(row, zq::model::ColFrequency))));
    const zq::model::MemoryTable& memory = document.memory();
    for (int channel = 0; channel < zq::model::kChannelCount; ++channel)
        if (memory.ChannelInUse(channel) && outside(memory.number(channel, zq::model::ColFrequency)))
            check.outsideBand.append(QStringLiteral("channel %1 (%2)")
                                         .arg(channel)
                                         .arg(Megahertz(memory.number(channel, zq::model::ColFrequency))));
    return check;
}

} // namespace zq::link
