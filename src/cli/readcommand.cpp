#include "commands.h"
#include "files/clonefile.h"
#include "files/recovery.h"
#include "linksession.h"

namespace zq::cli {
int readCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption output = OutputOption();
    const QCommandLineOption base = BaseOption();
    const QCommandLineOption settingsOnly = SettingsOnlyOption();
    const QCommandLineOption memoryOnly = MemoryOnlyOption();
    parser.addOptions({output, base, settingsOnly, memoryOnly});
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 0)) return *status;
    if (!parser.isSet(output)) return UsageError(QStringLiteral("-o FILE.318 is required"), *context.command);
    if (parser.isSet(settingsOnly) && parser.isSet(memoryOnly))
        return UsageError(QStringLiteral("--settings and --memory exclude each other"), *context.command);
    const QString path = parser.value(output);
    if (const auto refused = RefuseOutputOntoInput(path, {parser.value(base)}, *context.command))
        return *refused;
    // A file that cannot be written is found now, not after the whole transfer.
    if (const model::Result writable = CheckOutputPath(path); !writable.ok()) return Report(writable);

    model::Document document;
    if (const model::Result started = StartFromBase(document, parser, base); !started.ok())
        return Report(started);

    link::SerialLink serial;
    if (const model::Result opened = OpenLink(context, serial); !opened.ok()) return Report(opened);
    // Each transfer is a session of its own; the file is written only when all of them succeeded.
    if (const model::Result detected = link::AutoSelect(serial, document); !detected.ok())
        return Report(detected);
    if (!parser.isSet(memoryOnly)) {
        ProgressBar progress(context, QStringLiteral("Read Settings"));
        if (const model::Result read = link::ReadSettings(serial, document, progress.steps()); !read.ok())
            return Report(read);
    }
    if (!parser.isSet(settingsOnly)) {
        ProgressBar progress(context, QStringLiteral("Read Memory"));
        if (const model::Result read = link::ReadMemory(serial, document, progress.callback()); !read.ok())
            return Report(read);
    }
    KeepBackup(document, parser.isSet(settingsOnly) ? QStringLiteral("read-settings")
                         : parser.isSet(memoryOnly) ? QStringLiteral("read-memory")
                                                    : QStringLiteral("read"));
    const model::Result saved = WriteOutput(path, files::SerializeCloneFile(document));
    if (saved.ok()) return ExitOk;
    // What was read is not lost with the file that could not be written.
    const int status = Report(saved);
    const files::RecoveryFile recovery = files::SaveRecoveryFile(document, QStringLiteral("read"));
    if (recovery.result.ok())
        PrintErr(QStringLiteral("The data read are saved in %1").arg(recovery.path));
    else
        PrintErr(QStringLiteral("The data read could not be saved anywhere: %1").arg(recovery.result.detail));
    return status;
}

} // namespace zq::cli
