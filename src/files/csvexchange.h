#pragma once
// CSV exchange of the VFO/CALL/RPT rows and the memory channels.
#include "model/document.h"
#include "model/outcome.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace zq::files {

// The whole CSV text as export writes it (heading, three special rows, channels in use).
QByteArray CsvExportText(const model::Document& document);
// Export after the dialog: QSaveFile; sets the path to the bare file name, the caption and
// clears DataChanged. "File Open Error" on failure, the previous file intact.
model::Result ExportCsv(model::Document& document, const QString& path);
// What an import met on its way, for those who want to tell the user (the window does not). Lines
// count from 1; each list keeps the first kCsvReportedLines entries, the counts cover all.
inline constexpr int kCsvReportedLines = 1000;
struct CsvImportReport {
    bool read = false;      // the text was read (false when the file was refused or could not be opened)
    int recordsStored = 0;  // records placed into a VFO/CALL/RPT row or a channel
    int recordsDropped = 0; // records found ("ZQ-318" and a bank) but not placed
    struct Dropped {
        int line;
        QString why;
    };
    QList<Dropped> dropped;
    struct FieldCount {
        int line;
        int fields;
    };
    // Lines that start as a record or as the heading ("ZQ-318" or "MODEL") but hold other than 18
    // fields: the import reads fields, not lines, so such a line shifts the fields of what follows.
    QList<FieldCount> wrongFieldCounts;
    int wrongFieldCountLines = 0;
    bool anyRecord() const { return recordsStored + recordsDropped > 0; }
};

// Import of CSV text onto the document: records it cannot place are skipped.
void ImportCsvText(model::Document& document, const QByteArray& contents);
// The same, telling how it ended: Fatal when a record is cut short by the end of the text (the
// records before it stay stored).
model::Result ImportCsvData(model::Document& document, const QByteArray& contents,
                            CsvImportReport* report = nullptr);
// The CHANNEL field of the special rows: "VFO", "CALL", "RPT" (empty for other rows).
QString SpecialRowHeading(int row);
// A CSV file of channels is a few dozen kilobytes; a file many times that size is refused unread.
inline constexpr qint64 kCsvFileSizeLimit = 4 * 1024 * 1024;
// Import after the dialog. A file that cannot be read (missing, unreadable, a folder, a device or
// FIFO) is Fatal (the radio program has no trap); one over kCsvFileSizeLimit is a DataError and
// changes nothing.
model::Result ImportCsv(model::Document& document, const QString& path, CsvImportReport* report = nullptr);

} // namespace zq::files
