// The import half of the CHIRP layout: the header read, each row checked and stored as a load
// would show it, or skipped with the reason.
#include "chirpcsv.h"

#include "chirprow.h"
#include "csvrecords.h"
#include "inputfile.h"
#include "model/channelcodec.h"
#include "model/tables.h"

#include <QFile>
#include <map>

namespace zq::files {

using model::Outcome;
using model::Result;
using namespace chirp;

namespace {

constexpr qint64 kFileLimit = 16 * 1024 * 1024; // far beyond any channel list

// Writes the channel's numbers over the previous contents (or the template's, for a channel not
// in use), so that busy lock-out, clock shift and battery save stay, then lets the codec write
// the texts a load would show.
void store(model::MemoryTable& memory, int channel, const Channel& c) {
    using namespace model;
    if (!memory.ChannelInUse(channel))
        for (int column = 0; column < kMemoryColumns; ++column)
            memory.set(channel, column, memory.cell(kTemplateRow, column));
    memory.setChannelInUse(channel, true);
    memory.setNumber(channel, ColFrequency, c.hz / 1e6);
    memory.setNumber(channel, ColTone, ToneModes().code(c.toneMode));
    memory.setNumber(channel, ColTxTone, c.tx);
    memory.setNumber(channel, ColRxTone, c.rx);
    memory.setNumber(channel, ColDcs, c.dcs);
    memory.setNumber(channel, ColShift, Shifts().code(c.shift));
    memory.setNumber(channel, ColOffset, c.offsetHz / 1e6);
    memory.setNumber(channel, ColPower, c.power);
    memory.set(channel, ColName, c.name, c.name.isEmpty() ? 0 : 1);
    memory.setNumber(channel, ColSkip, c.skip ? 1 : 0);
    DecodeChannelRecord(
        memory, EncodeChannelFirstHalf(memory, channel) + EncodeChannelSecondHalf(memory, channel), channel);
    // The record reads back only the step's raster; the row keeps the step it asked for, as the
    // modify dialog would.
    memory.set(channel, ColStep, StepNames().at(c.step), c.step);
}

// Missing columns take the template's values; say which, once.
void reportMissingColumns(const ColumnIndex& at, int headerLine, QList<ChirpReport>& reports) {
    QStringList missing;
    for (const Column column :
         {Name, Duplex, Offset, Tone, RToneFreq, CToneFreq, DtcsCode, TStep, Skip, Power})
        if (at[column] < 0) missing.append(ChirpColumns().at(column));
    if (missing.isEmpty()) return;
    reports.append(ChirpReport{headerLine, -1,
                               QStringLiteral("no column %1").arg(missing.join(QStringLiteral(", "))),
                               QStringLiteral("every channel takes the template channel's value (the step: "
                                              "the one its frequency fits)"),
                               false});
}

} // namespace

ChirpOutcome ImportChirpCsvData(model::Document& document, const QByteArray& contents) {
    ChirpOutcome outcome;
    const QList<CsvRecord> records = SplitCsvRecords(contents);
    ColumnIndex at;
    at.fill(-1);
    if (!records.isEmpty()) {
        const QStringList& header = records.first().fields;
        for (int column = 0; column < kReadColumns; ++column)
            for (qsizetype i = 0; i < header.size() && at[column] < 0; ++i)
                if (header[i].trimmed().compare(ChirpColumns().at(column), Qt::CaseInsensitive) == 0)
                    at[column] = i;
    }
    if (at[Location] < 0 || at[Frequency] < 0) {
        outcome.result = Result::fail(Outcome::DataError,
                                      QStringLiteral("no header with the columns Location and Frequency"));
        return outcome;
    }
    reportMissingColumns(at, records.first().line, outcome.reports);

    model::MemoryTable memory = document.memory();
    const Channel defaults = ChannelOf(memory, model::kTemplateRow);
    const RowContext context{at, defaults, document.ModelVariant(), document.CloneCodeA()};
    std::map<int, int> rowOf; // channel -> the row that stored it
    for (qsizetype i = 1; i < records.size(); ++i) {
        const CsvRecord& record = records[i];
        const auto read = ReadRow(record, context, outcome.reports);
        if (!read) continue;
        const auto& [channel, values] = *read;
        if (const auto earlier = rowOf.find(channel); earlier != rowOf.end())
            outcome.reports.append(
                ChirpReport{record.line, channel, QString(),
                            QStringLiteral("replaces the channel row %1 gave").arg(earlier->second), false});
        rowOf[channel] = record.line;
        store(memory, channel, values);
    }
    outcome.channels = int(rowOf.size());
    if (outcome.channels > 0)
        document.changeMemory(
            0, model::kChannelCount - 1, [&](model::MemoryTable& m) { m = memory; },
            model::Document::Mark::Edit);
    return outcome;
}

ChirpOutcome ImportChirpCsv(model::Document& document, const QString& path) {
    QFile file;
    // Checked before opening: a FIFO would wait for a writer, a huge file would be read whole.
    if (const InputFile input = OpenInputFile(file, path, kFileLimit); !input.ok()) {
        ChirpOutcome outcome;
        outcome.result = input.refusal(Outcome::FileOpenError);
        return outcome;
    }
    return ImportChirpCsvData(document, file.readAll());
}

} // namespace zq::files
