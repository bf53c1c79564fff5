#include "commands.h"
#include "linksession.h"

namespace zq::cli {

int writeCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption settingsOnly = SettingsOnlyOption();
    const QCommandLineOption memoryOnly = MemoryOnlyOption();
    parser.addOptions({settingsOnly, memoryOnly});
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;
    if (parser.isSet(settingsOnly) && parser.isSet(memoryOnly))
        return UsageError(QStringLiteral("--settings and --memory exclude each other"), *context.command);

    model::Document document;
    if (const model::Result opened = OpenAsAtStartup(document, parser.positionalArguments().first());
        !opened.ok())
        return Report(opened);

    link::SerialLink serial;
    if (const model::Result opened = OpenLink(context, serial); !opened.ok()) return Report(opened);
    if (!parser.isSet(memoryOnly)) {
        if (const model::Result written = link::WriteSettings(serial, document); !written.ok())
            return Report(written);
    }
    if (!parser.isSet(settingsOnly)) {
        ProgressBar progress(context, QStringLiteral("Write Memory"));
        if (const model::Result written = link::WriteMemory(serial, document, progress.callback());
            !written.ok())
            return Report(written);
    }
    return ExitOk;
}

} // namespace zq::cli
