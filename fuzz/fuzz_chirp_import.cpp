// A channel list in the other radios' CSV layout, of any shape, imported onto the start-up data.
// Without a header naming Location and Frequency nothing changes; otherwise only memory channels
// change, at most as many as the import says it stored, and the edit is marked exactly when it
// stored any. Every channel in use holds only values the radio can: its record passes the strict
// checks and reads back as the row shows it (the step aside, which the row keeps as asked). What
// the import stored exports and imports again unchanged. Each report names a row of the text.
#include "files/chirpcsv.h"
#include "fuzzcheck.h"
#include "model/channelcodec.h"
#include "model/document.h"
#include "model/recordcheck.h"

using namespace zq;
using model::Document;

namespace {

QString ChannelRecord(const model::MemoryTable& memory, int channel) {
    return model::EncodeChannelFirstHalf(memory, channel) + model::EncodeChannelSecondHalf(memory, channel);
}

bool SameChannel(const model::MemoryTable& a, const model::MemoryTable& b, int channel) {
    if (a.ChannelInUse(channel) != b.ChannelInUse(channel)) return false;
    for (int column = 0; column < model::kMemoryColumns; ++column)
        if (!(a.cell(channel, column) == b.cell(channel, column))) return false;
    return true;
}

void CheckStoredChannels(const Document& document) {
    const model::MemoryTable& memory = document.memory();
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        if (!memory.ChannelInUse(channel)) continue;
        const QString record = ChannelRecord(memory, channel);
        const QList<model::FieldFault> faults =
            model::CheckChannelRecord(record, document.ModelVariant(), document.CloneCodeA());
        if (!faults.isEmpty())
            fuzz::Broken("a stored channel holds only what the radio can",
                         QStringLiteral("channel %1: %2: %3").arg(channel).arg(record, faults.first().text));
        model::MemoryTable loaded = memory;
        model::DecodeChannelRecord(loaded, record, channel);
        loaded.set(channel, model::ColStep, memory.cell(channel, model::ColStep));
        if (!SameChannel(loaded, memory, channel))
            fuzz::Broken("a stored channel reads back as it shows",
                         QStringLiteral("channel %1: %2").arg(channel).arg(record));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const model::Contents startup = Document().contents();
    static Document imported, again;
    imported.replaceContents(startup);
    imported.setDataChanged(false);

    const QByteArray text = fuzz::Bytes(data, size);
    const files::ChirpOutcome outcome = files::ImportChirpCsvData(imported, text);
    if (!outcome.result.ok()) {
        fuzz::Require(outcome.result.outcome == model::Outcome::DataError && outcome.channels == 0,
                      "an import without a header is a data error", outcome.result.detail);
        fuzz::Require(imported.contents() == startup && !imported.DataChanged(),
                      "an import without a header changes nothing");
        return 0;
    }

    const model::Contents& after = imported.contents();
    fuzz::Require(after.special == startup.special && after.settingsBlock == startup.settingsBlock &&
                      after.settings == startup.settings && after.dialTexts == startup.dialTexts,
                  "an import touches memory channels only");
    fuzz::Require(SameChannel(after.memory, startup.memory, model::kTemplateRow),
                  "the template row never changes");
    int changed = 0;
    for (int channel = 0; channel < model::kChannelCount; ++channel)
        changed += SameChannel(after.memory, startup.memory, channel) ? 0 : 1;
    fuzz::Require(changed <= outcome.channels && outcome.channels <= model::kChannelCount,
                  "an import changes no more channels than it stored",
                  QStringLiteral("%1 changed, %2 stored").arg(changed).arg(outcome.channels));
    fuzz::Require(imported.DataChanged() == (outcome.channels > 0), "an import that stored is an edit");

    // Records end in CR LF, LF or CR: at most one line per line-end character.
    const qsizetype lines = text.count('\n') + text.count('\r') + 1;
    for (const files::ChirpReport& report : outcome.reports)
        fuzz::Require(report.row >= 1 && report.row <= lines && !report.text().isEmpty(),
                      "a report names a row of the text", report.text());

    CheckStoredChannels(imported);

    again.replaceContents(after);
    const files::ChirpOutcome back = files::ImportChirpCsvData(again, files::ChirpExportText(imported));
    fuzz::Require(back.result.ok(), "an export has a header", back.result.detail);
    fuzz::RequireSame(again.memory(), after.memory, "imported channels export and import unchanged");
    return 0;
}
