#pragma once
// The --format option of export and import, and their CHIRP side: the channels written or read in
// CHIRP's CSV layout, with every value the radio cannot hold reported on standard error.
#include "cliutil.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <optional>

namespace zq::cli {

enum class CsvLayout { Window, Chirp };

QCommandLineOption FormatOption();
// The layout --format names (the window's when not given); nothing, after a usage error has
// been printed, for a name it does not know.
std::optional<CsvLayout> CsvLayoutOption(const QCommandLineParser& parser, const QCommandLineOption& format,
                                         const Command& command);

// Writes the document's channels to `path`; the channels whose fields the layout drops are
// reported on standard error. Gives the exit status.
int ExportChirp(const model::Document& document, const QString& path);
// Imports `csvPath` onto the document and saves it as `outputPath`; the rows skipped and the
// fields changed are reported on standard error once the file is saved. Gives the exit status.
int ImportChirp(model::Document& document, const QString& csvPath, const QString& outputPath);

} // namespace zq::cli
