// CSV text of any shape imported onto the start-up data. Only channels and special rows change, never
// the template row; a text cut short mid-record is reported as such; a complete import leaves the
// repeater row's texts empty. What an import stored exports and imports again unchanged (names
// only up to a quotation mark, numbers to the four decimals the export writes).
#include "files/csvexchange.h"
#include "fuzzcheck.h"
#include "model/numeric.h"

using namespace zq;
using model::Document;

namespace {

// Frequencies and offsets as the export writes them and the radio gets them: to four decimals.
template <class Table> Table AsWritten(Table table) {
    for (int row = 0; row < Table::rows; ++row)
        for (int column : {model::ColFrequency, model::ColOffset})
            table.setNumber(row, column,
                            model::NumericValue(model::FormatZeroPadded(table.number(row, column))));
    return table;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const model::Contents startup = Document().contents();
    static Document imported, again;
    imported.replaceContents(startup);
    imported.setCurrentFilePath(QStringLiteral("before.318"));
    imported.setDataChanged(true);

    const model::Result result = files::ImportCsvData(imported, fuzz::Bytes(data, size));
    const model::MemoryTable& memory = imported.memory();
    fuzz::Require(result.ok() || (result.outcome == model::Outcome::Fatal && !result.detail.isEmpty()),
                  "an import ends or is cut short", result.detail);
    for (int column = 0; column < model::kMemoryColumns; ++column)
        fuzz::Require(memory.cell(model::kTemplateRow, column) ==
                          startup.memory.cell(model::kTemplateRow, column),
                      "the template row never changes");
    fuzz::Require(memory.ChannelInUse(model::kTemplateRow) ==
                      startup.memory.ChannelInUse(model::kTemplateRow),
                  "the template row never changes");
    fuzz::Require(imported.settingsBlock() == startup.settingsBlock &&
                      imported.dialTexts() == startup.dialTexts,
                  "an import touches channels only");
    if (!result.ok()) return 0;
    for (int column = 0; column <= model::ColBclo; ++column)
        fuzz::Require(imported.special().text(model::kRptRow, column).isEmpty(),
                      "the repeater row shows no texts");
    fuzz::Require(!imported.DataChanged() && imported.CurrentFilePath().isEmpty(),
                  "an import leaves the data unchanged and without a file");

    again.replaceContents(imported.contents());
    const QByteArray exported = files::CsvExportText(imported);
    fuzz::Require(files::ImportCsvData(again, exported).ok(), "an export imports completely");
    // Export writes texts as they stand, so a name with a quotation mark in it comes back cut at
    // the mark; everything after it in the record still lands in its own column.
    model::MemoryTable expected = imported.memory();
    for (int row = 0; row < model::kChannelCount; ++row) {
        const QString name = expected.text(row, model::ColName);
        if (name.contains(QLatin1Char('"'))) {
            const QString cut = name.left(name.indexOf(QLatin1Char('"')));
            expected.set(row, model::ColName, cut, cut.isEmpty() ? 0 : 1);
        }
    }
    fuzz::RequireSame(AsWritten(again.memory()), AsWritten(expected),
                      "imported channels export and import unchanged");
    fuzz::RequireSame(AsWritten(again.special()), AsWritten(imported.special()),
                      "imported special rows export and import unchanged");
    return 0;
}
