#include "commands.h"
#include "linksession.h"

namespace zq::cli {

int verifyCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption settingsOnly = SettingsOnlyOption();
    const QCommandLineOption memoryOnly = MemoryOnlyOption();
    parser.addOptions({settingsOnly, memoryOnly});
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;
    if (parser.isSet(settingsOnly) && parser.isSet(memoryOnly))
        return UsageError(QStringLiteral("--settings and --memory exclude each other"), *context.command);

    const QString file = parser.positionalArguments().first();
    model::Document document;
    if (const model::Result opened = OpenAsAtStartup(document, file); !opened.ok()) return Report(opened);
    link::SerialLink serial;
    if (const model::Result opened = OpenLink(context, serial); !opened.ok()) return Report(opened);
    return VerifyAgainst(context, serial, document, file, ScopeOf(parser, settingsOnly, memoryOnly));
}

} // namespace zq::cli
