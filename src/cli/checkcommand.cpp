#include "commands.h"
#include "files/clonefile.h"

namespace zq::cli {

int checkCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;

    // Open's checks: the file's layout, then whether every record decodes.
    const files::CloneReadResult read = files::ReadCloneFile(parser.positionalArguments().first());
    if (!read.result.ok()) return Report(read.result);
    model::Document scratch;
    if (const model::Result applied = files::ApplyCloneImage(scratch, read.image); !applied.ok())
        return Report(applied);
    PrintOut(QStringLiteral("OK"));
    return ExitOk;
}

} // namespace zq::cli
