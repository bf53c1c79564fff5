#include "importreport.h"

#include "cliutil.h"

namespace zq::cli {

namespace {
constexpr int kLinesShown = 20;

template <class List, class Format>
void printSome(const List& list, int total, const QString& path, Format format) {
    for (qsizetype i = 0; i < list.size() && i < kLinesShown; ++i)
        PrintErr(QStringLiteral("%1:%2").arg(path, format(list[i])));
    if (total > kLinesShown)
        PrintErr(QStringLiteral("%1: %2 more such lines").arg(path).arg(total - kLinesShown));
}
} // namespace

model::Result ImportFound(const files::CsvImportReport& report, const QString& path) {
    if (report.recordsStored > 0) return model::Result::done();
    if (!report.anyRecord())
        return model::Result::fail(model::Outcome::DataError,
                                   QStringLiteral("%1 holds no channel record: each record is 18 "
                                                  "comma-separated fields starting \"ZQ-318\",\"MEMORY\" "
                                                  "or \"ZQ-318\",\"VFO\"")
                                       .arg(path));
    return model::Result::fail(model::Outcome::DataError,
                               QStringLiteral("none of the %1 records in %2 could be imported")
                                   .arg(report.recordsDropped)
                                   .arg(path));
}

void PrintImportReport(const files::CsvImportReport& report, const QString& path) {
    using FieldCount = files::CsvImportReport::FieldCount;
    using Dropped = files::CsvImportReport::Dropped;
    printSome(report.wrongFieldCounts, report.wrongFieldCountLines, path, [](const FieldCount& f) {
        return QStringLiteral("%1: %2 instead of 18; the fields that follow are read out of place")
            .arg(f.line)
            .arg(f.fields == 1 ? QStringLiteral("1 field") : QStringLiteral("%1 fields").arg(f.fields));
    });
    printSome(report.dropped, report.recordsDropped, path, [](const Dropped& d) {
        return QStringLiteral("%1: record skipped: %2").arg(d.line).arg(d.why);
    });
}

} // namespace zq::cli
