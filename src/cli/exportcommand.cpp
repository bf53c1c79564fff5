#include "chirpformat.h"
#include "commands.h"
#include "files/csvexchange.h"

namespace zq::cli {

int exportCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption output = OutputOption();
    const QCommandLineOption format = FormatOption();
    parser.addOption(output);
    parser.addOption(format);
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;
    if (!parser.isSet(output)) return UsageError(QStringLiteral("-o FILE.csv is required"), *context.command);
    const auto layout = CsvLayoutOption(parser, format, *context.command);
    if (!layout) return ExitUsage;
    if (const auto refused =
            RefuseOutputOntoInput(parser.value(output), parser.positionalArguments(), *context.command))
        return *refused;

    model::Document document;
    if (const model::Result opened = OpenAsAtStartup(document, parser.positionalArguments().first());
        !opened.ok())
        return Report(opened);
    if (*layout == CsvLayout::Chirp) return ExportChirp(document, parser.value(output));
    return Report(files::ExportCsv(document, parser.value(output)));
}

} // namespace zq::cli
