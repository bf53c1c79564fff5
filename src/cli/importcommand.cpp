#include "chirpformat.h"
#include "commands.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "importreport.h"

namespace zq::cli {

int importCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption output = OutputOption();
    const QCommandLineOption base = BaseOption();
    const QCommandLineOption format = FormatOption();
    parser.addOption(output);
    parser.addOption(base);
    parser.addOption(format);
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;
    if (!parser.isSet(output)) return UsageError(QStringLiteral("-o FILE.318 is required"), *context.command);
    const auto layout = CsvLayoutOption(parser, format, *context.command);
    if (!layout) return ExitUsage;
    const QString csv = parser.positionalArguments().first();
    if (const auto refused =
            RefuseOutputOntoInput(parser.value(output), {csv, parser.value(base)}, *context.command))
        return *refused;

    model::Document document;
    if (const model::Result started = StartFromBase(document, parser, base); !started.ok())
        return Report(started);
    if (*layout == CsvLayout::Chirp) return ImportChirp(document, csv, parser.value(output));
    files::CsvImportReport report;
    model::Result imported = files::ImportCsv(document, csv, &report);
    // A file that held no record at all is told as such, even when it also ended inside one.
    if (report.read && report.recordsStored == 0) imported = ImportFound(report, csv);
    // The failure comes first on standard error, the lines at fault after it.
    const int status = Report(imported);
    PrintImportReport(report, csv);
    if (status != ExitOk) return status;
    return Report(files::SaveCloneFile(document, parser.value(output)));
}

} // namespace zq::cli
