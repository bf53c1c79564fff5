// zq318: the clone utility's command-line tool. Global options, then one verb from the table.
#include "commands.h"
#include "files/userdata.h"
#include "linksession.h"

#include <QCoreApplication>
#include <QStandardPaths>

using namespace zq::cli;

namespace {
void printUsage() {
    PrintOut(QStringLiteral("Usage: zq318 [--port PORT] [--quiet] [--trace FILE] COMMAND [ARGS]"));
    PrintOut(QStringLiteral("       zq318 COMMAND --help | --help | --version"));
    PrintOut(QString());
    PrintOut(QStringLiteral("Commands:"));
    qsizetype width = 0;
    for (const Command& command : Commands())
        width = std::max(width, qsizetype(qstrlen(command.name)));
    for (const Command& command : Commands())
        PrintOut(
            QStringLiteral("  %1  %2")
                .arg(QString::fromLatin1(command.name).leftJustified(width), QLatin1String(command.help)));
    PrintOut(QString());
    PrintOut(QStringLiteral("Options:"));
    PrintOut(QStringLiteral("  --port PORT   Serial device path or port number 1..14."));
    PrintOut(QStringLiteral("  --quiet       No progress display."));
    PrintOut(QStringLiteral(
        "  --trace FILE  Write the serial trace of the radio commands into FILE instead of the"));
    PrintOut(QStringLiteral("                traces folder."));
    PrintOut(QString());
    PrintOut(
        QStringLiteral("Every command that talks to the radio keeps a serial trace in traces/ (the newest"));
    PrintOut(
        QStringLiteral("ten); read and write keep a clone file of what they transferred in backups/ (the"));
    PrintOut(QStringLiteral("newest 100), both under %1.")
                 .arg(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)));
    PrintOut(QString());
    PrintOut(
        QStringLiteral("Exit status: 0 success (diff: no difference), 1 diff: files differ, 2 usage error,"));
    PrintOut(QStringLiteral("3 Communication Error, 4 COM Port Error, 5 Data Error, 6 File Open Error."));
}
} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    zq::files::SetProgramIdentity();
    QCoreApplication::setApplicationVersion(QStringLiteral(ZQ_VERSION));

    QCommandLineParser parser;
    // Everything from the verb on belongs to the verb.
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption port(QStringList{QStringLiteral("port")},
                                  QStringLiteral("Serial device path or port number 1..14."),
                                  QStringLiteral("PORT"));
    const QCommandLineOption quiet(QStringList{QStringLiteral("q"), QStringLiteral("quiet")},
                                   QStringLiteral("No progress display."));
    const QCommandLineOption trace(QStringList{QStringLiteral("trace")},
                                   QStringLiteral("Write the serial trace into FILE."),
                                   QStringLiteral("FILE"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption version(QStringList{QStringLiteral("version")},
                                     QStringLiteral("Show the version."));
    parser.addOptions({port, quiet, trace, help, version});

    if (!parser.parse(QCoreApplication::arguments())) {
        PrintErr(QStringLiteral("zq318: %1").arg(parser.errorText()));
        PrintErr(QStringLiteral("Try zq318 --help."));
        return ExitUsage;
    }
    if (parser.isSet(help)) {
        printUsage();
        return ExitOk;
    }
    if (parser.isSet(version)) {
        PrintOut(QStringLiteral("zq318 %1").arg(QCoreApplication::applicationVersion()));
        return ExitOk;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty()) {
        PrintErr(QStringLiteral("zq318: no command given"));
        PrintErr(QStringLiteral("Try zq318 --help."));
        return ExitUsage;
    }
    const Command* command = FindCommand(positional.first());
    if (!command) {
        PrintErr(QStringLiteral("zq318: unknown command \"%1\"").arg(positional.first()));
        PrintErr(QStringLiteral("Try zq318 --help."));
        return ExitUsage;
    }
    CliContext context;
    context.port = parser.value(port);
    context.quiet = parser.isSet(quiet);
    context.tracePath = parser.value(trace);
    context.command = command;
    context.commandLine = QCoreApplication::arguments().join(QLatin1Char(' '));
    const int status = command->run(positional.mid(1), context);
    FinishTrace(context, status);
    return status;
}
