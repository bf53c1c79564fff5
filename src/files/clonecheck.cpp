#include "clonecheck.h"

#include "csvexchange.h"
#include "model/recordcheck.h"

#include <algorithm>

namespace zq::files {

namespace {

struct Fault {
    int line; // 0-based
    QString text;
};

void addRecordFaults(QList<Fault>& out, int firstLine, const QString& record,
                     const QList<model::FieldFault>& faults) {
    for (const model::FieldFault& fault : faults)
        out.append({firstLine + fault.half, record + QStringLiteral(": ") + fault.text});
}

} // namespace

QStringList StrictCheckCloneImage(const CloneImage& image) {
    if (image.lines.size() != kCloneFileLines) return {};
    const QStringList& lines = image.lines;
    QList<Fault> faults;

    addRecordFaults(faults, kSettingsLine, QStringLiteral("settings"),
                    model::CheckSettingsBlock({lines[kSettingsLine], lines[kSettingsLine + 1]}));
    for (int row = model::kVfoRow; row <= model::kRptRow; ++row) {
        const int line = kSpecialLine + 2 * row;
        addRecordFaults(
            faults, line, SpecialRowHeading(row),
            model::CheckSpecialRecord(lines[line] + lines[line + 1], image.variant, image.cloneCodeA));
    }
    for (int dial = 0; dial < model::kDialCount; ++dial) {
        QString text = lines[kDialLine + dial];
        while (text.endsWith(QLatin1Char('Z')))
            text.chop(1);
        for (const QString& fault : model::CheckDialText(text))
            faults.append({kDialLine + dial, QStringLiteral("dial memory %1: %2").arg(dial).arg(fault)});
    }
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        const int line = kChannelLine + 2 * channel;
        addRecordFaults(
            faults, line, QStringLiteral("channel %1").arg(channel),
            model::CheckChannelRecord(lines[line] + lines[line + 1], image.variant, image.cloneCodeA));
    }
    // A record's faults come field by field; whoever reads them goes through the file line by line.
    std::stable_sort(faults.begin(), faults.end(),
                     [](const Fault& a, const Fault& b) { return a.line < b.line; });
    QStringList out;
    for (const Fault& fault : faults)
        out.append(QStringLiteral("line %1: %2").arg(fault.line + 1).arg(fault.text));
    return out;
}

} // namespace zq::files
