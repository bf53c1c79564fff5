#pragma once
// CSV exchange of the VFO/CALL/RPT rows and the memory channels.
#include "model/document.h"
#include "model/outcome.h"

#include <QByteArray>
#include <QString>

namespace zq::files {

// The whole CSV text as export writes it (heading, three special rows, channels in use).
QByteArray CsvExportText(const model::Document& document);
// Export after the dialog: QSaveFile; sets the path to the bare file name, the caption and
// clears DataChanged. "File Open Error" on failure, the previous file intact.
model::Result ExportCsv(model::Document& document, const QString& path);
// Import of CSV text onto the document: records it cannot place are skipped.
void ImportCsvText(model::Document& document, const QByteArray& contents);
// The same, telling how it ended: Fatal when a record is cut short by the end of the text (the
// records before it stay stored).
model::Result ImportCsvData(model::Document& document, const QByteArray& contents);
// The CHANNEL field of the special rows: "VFO", "CALL", "RPT" (empty for other rows).
QString SpecialRowHeading(int row);
// Import after the dialog. A file that cannot be read is Fatal (the radio program has no trap).
model::Result ImportCsv(model::Document& document, const QString& path);

} // namespace zq::files
