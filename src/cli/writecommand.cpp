#include "commands.h"
#include "link/writeguard.h"
#include "linksession.h"

namespace zq::cli {

namespace {

// Auto Select tells what the radio is; a file made for another variant or clone code is refused.
int GuardWrite(link::SerialLink& serial, const model::Document& document, const QString& file) {
    link::RadioIdentity radio;
    if (const model::Result identified = link::IdentifyRadio(serial, radio); !identified.ok()) {
        const int status = Report(identified);
        PrintErr(
            QStringLiteral("zq318 write: the radio did not say what it is; --force writes without asking"));
        return status;
    }
    const link::WriteCheck check = link::CheckWrite(document, radio);
    if (check.matches) return ExitOk;
    const int status = Report(
        model::Result::fail(model::Outcome::DataError,
                            QStringLiteral("%1 was made for %2, the radio is %3; --force writes it anyway")
                                .arg(file, check.fileModel, check.radioModel)));
    if (!check.outsideBand.isEmpty())
        PrintErr(QStringLiteral("Outside the radio's band %1: %2")
                     .arg(check.radioBand, check.outsideBand.join(QStringLiteral(", "))));
    return status;
}

} // namespace

int writeCommand(const QStringList& arguments, CliContext& context) {
    QCommandLineParser parser;
    const QCommandLineOption settingsOnly = SettingsOnlyOption();
    const QCommandLineOption memoryOnly = MemoryOnlyOption();
    const QCommandLineOption verify(QStringList{QStringLiteral("verify")},
                                    QStringLiteral("Read back every block written and compare."));
    const QCommandLineOption force(
        QStringList{QStringLiteral("force")},
        QStringLiteral("Write even when the file was made for another model variant or clone code."));
    parser.addOptions({settingsOnly, memoryOnly, verify, force});
    if (const auto status = ParseVerbArguments(parser, arguments, *context.command, 1)) return *status;
    if (parser.isSet(settingsOnly) && parser.isSet(memoryOnly))
        return UsageError(QStringLiteral("--settings and --memory exclude each other"), *context.command);

    const QString file = parser.positionalArguments().first();
    model::Document document;
    if (const model::Result opened = OpenAsAtStartup(document, file); !opened.ok()) return Report(opened);

    link::SerialLink serial;
    if (const model::Result opened = OpenLink(context, serial); !opened.ok()) return Report(opened);
    if (!parser.isSet(force)) {
        if (const int status = GuardWrite(serial, document, file); status != ExitOk) return status;
    }
    if (!parser.isSet(memoryOnly)) {
        ProgressBar progress(context, QStringLiteral("Write Settings"));
        if (const model::Result written = link::WriteSettings(serial, document, progress.steps());
            !written.ok())
            return Report(written);
    }
    if (!parser.isSet(settingsOnly)) {
        ProgressBar progress(context, QStringLiteral("Write Memory"));
        if (const model::Result written = link::WriteMemory(serial, document, progress.callback());
            !written.ok())
            return Report(written);
    }
    const link::VerifyScope scope = ScopeOf(parser, settingsOnly, memoryOnly);
    KeepBackup(document, scope == link::VerifyScope::Settings ? QStringLiteral("write-settings")
                         : scope == link::VerifyScope::Memory ? QStringLiteral("write-memory")
                                                              : QStringLiteral("write"));
    if (parser.isSet(verify)) return VerifyAgainst(context, serial, document, file, scope);
    return ExitOk;
}

} // namespace zq::cli
