#include "chirpformat.h"

#include "commands.h"
#include "files/chirpcsv.h"
#include "files/clonefile.h"

namespace zq::cli {

QCommandLineOption FormatOption() {
    return QCommandLineOption(
        QStringList{QStringLiteral("format")},
        QStringLiteral("CSV layout: zq318 (the window's Export and Import, the default) "
                       "or chirp (CHIRP's channel list)."),
        QStringLiteral("LAYOUT"), QStringLiteral("zq318"));
}

std::optional<CsvLayout> CsvLayoutOption(const QCommandLineParser& parser, const QCommandLineOption& format,
                                         const Command& command) {
    const QString name = parser.value(format);
    if (name == QLatin1String("zq318")) return CsvLayout::Window;
    if (name == QLatin1String("chirp")) return CsvLayout::Chirp;
    UsageError(QStringLiteral("unknown --format \"%1\" (zq318 or chirp)").arg(name), command);
    return std::nullopt;
}

namespace {
void printReports(const files::ChirpOutcome& outcome) {
    for (const QString& line : outcome.lines())
        PrintErr(line);
}
} // namespace

int ExportChirp(const model::Document& document, const QString& path) {
    files::ChirpOutcome outcome;
    const QByteArray text = files::ChirpExportText(document, &outcome.reports);
    if (const model::Result written = WriteOutput(path, text); !written.ok()) return Report(written);
    printReports(outcome);
    return ExitOk;
}

int ImportChirp(model::Document& document, const QString& csvPath, const QString& outputPath) {
    const files::ChirpOutcome outcome = files::ImportChirpCsv(document, csvPath);
    if (!outcome.result.ok()) return Report(outcome.result);
    // A failure's message comes first on standard error, so the reports wait for the save.
    if (const model::Result saved = files::SaveCloneFile(document, outputPath); !saved.ok())
        return Report(saved);
    printReports(outcome);
    return ExitOk;
}

} // namespace zq::cli
