#include "commands.h"
#include "files/clonefile.h"
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
    return Report(WriteOutput(parser.value(output), files::SerializeCloneFile(document)));
}

} // namespace zq::cli
