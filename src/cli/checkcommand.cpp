#include "commands.h"
#include "files/clonecheck.h"
#include "files/clonefile.h"

namespace zq::cli {

int checkCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption strict(QStringList{QStringLiteral("strict")},
                                    QStringLiteral("Also check every field of every record."));
    parser.addOption(strict);
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;

    // Open's checks: the file's layout, then whether every record decodes.
    const files::CloneReadResult read = files::ReadCloneFile(parser.positionalArguments().first());
    if (!read.result.ok()) return Report(read.result);
    model::Document scratch;
    const model::Result applied = files::ApplyCloneImage(scratch, read.image);
    const QStringList faults =
        parser.isSet(strict) ? files::StrictCheckCloneImage(read.image) : QStringList();
    // A file Open refuses fails as Open says; one it takes fails the strict check as rejected data.
    int status = ExitOk;
    if (!applied.ok())
        status = Report(applied);
    else if (!faults.isEmpty())
        status = Report(model::Result::fail(
            model::Outcome::DataError,
            faults.size() == 1 ? QStringLiteral("1 field holds no valid value")
                               : QStringLiteral("%1 fields hold no valid value").arg(faults.size())));
    for (const QString& fault : faults)
        PrintErr(fault);
    if (status == ExitOk) PrintOut(QStringLiteral("OK"));
    return status;
}

} // namespace zq::cli
