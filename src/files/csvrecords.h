#pragma once
// Comma-separated text as spreadsheets and other programs write it, split into records of fields.
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace zq::files {

struct CsvRecord {
    int line = 0; // 1-based line on which the record starts
    QStringList fields;
};

// Splits UTF-8 text (a byte-order mark in front is dropped) into records. Records end in CR LF,
// LF or CR; fields are separated by commas; a field in double quotes may hold commas, line ends
// and doubled quotation marks. Blank lines, lines of empty fields only and lines that start with
// "#" are left out.
QList<CsvRecord> SplitCsvRecords(const QByteArray& bytes);

// A field as it is written: in double quotes, with inner ones doubled, when it holds a comma, a
// quotation mark or a line end; else as it stands.
QString QuoteCsvField(const QString& value);

} // namespace zq::files
