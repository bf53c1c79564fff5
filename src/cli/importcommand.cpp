#include "chirpformat.h"
#include "commands.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"

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

    model::Document document;
    if (const model::Result started = StartFromBase(document, parser, base); !started.ok())
        return Report(started);
    if (*layout == CsvLayout::Chirp)
        return ImportChirp(document, parser.positionalArguments().first(), parser.value(output));
    if (const model::Result imported = files::ImportCsv(document, parser.positionalArguments().first());
        !imported.ok())
        return Report(imported);
    return Report(files::SaveCloneFile(document, parser.value(output)));
}

} // namespace zq::cli
