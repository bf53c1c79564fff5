#include "cliutil.h"

#include "commands.h"
#include "files/atomicwrite.h"
#include "files/clonefile.h"

#include <cstdio>

namespace zq::cli {

using model::Outcome;

int ExitStatusFor(const model::Result& result) {
    switch (result.outcome) {
    case Outcome::Done:
    case Outcome::Cancelled:
        return ExitOk;
    case Outcome::CommunicationError:
        return ExitCommunication;
    case Outcome::ComPortError:
        return ExitComPort;
    case Outcome::DataError:
        return ExitData;
    case Outcome::FileOpenError:
    case Outcome::Fatal:
        return ExitFileOpen;
    }
    return ExitFileOpen;
}

namespace {
void printLine(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

QString usageLine(const Command& command) {
    return QStringLiteral("Usage: zq318 [--port PORT] [--quiet] [--trace FILE] %1 %2")
        .arg(QLatin1String(command.name), QLatin1String(command.synopsis));
}
} // namespace

void PrintOut(const QString& text) {
    printLine(stdout, text);
}
void PrintErr(const QString& text) {
    printLine(stderr, text);
}

namespace {
QString lastReport;
}

int Report(const model::Result& result) {
    if (result.ok()) return ExitOk;
    const QString message = result.message();
    lastReport = result.detail.isEmpty() || result.detail == message
                     ? message
                     : message + QStringLiteral(": ") + result.detail;
    PrintErr(lastReport);
    return ExitStatusFor(result);
}

QString LastReport() {
    return lastReport;
}

int UsageError(const QString& text, const Command& command) {
    PrintErr(QStringLiteral("zq318 %1: %2").arg(QLatin1String(command.name), text));
    PrintErr(usageLine(command));
    return ExitUsage;
}

std::optional<int> ParseVerbArguments(QCommandLineParser& parser, const QStringList& arguments,
                                      const Command& command, int positionalCount) {
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser.addOption(help);
    if (!parser.parse(QStringList{QStringLiteral("zq318")} + arguments))
        return UsageError(parser.errorText(), command);
    if (parser.isSet(help)) {
        PrintOut(usageLine(command));
        PrintOut(QLatin1String(command.help));
        // The verb's options as the parser describes them, without its own usage line.
        const QString options = parser.helpText().section(QStringLiteral("Options:"), 1);
        PrintOut(QString());
        PrintOut(QStringLiteral("Options:") + options.trimmed().prepend(QStringLiteral("\n  ")));
        return ExitOk;
    }
    const qsizetype given = parser.positionalArguments().size();
    if (given != positionalCount)
        return UsageError(given < positionalCount ? QStringLiteral("missing argument")
                                                  : QStringLiteral("too many arguments"),
                          command);
    return std::nullopt;
}

QCommandLineOption OutputOption() {
    return QCommandLineOption(QStringList{QStringLiteral("o"), QStringLiteral("output")},
                              QStringLiteral("The file to write."), QStringLiteral("FILE"));
}

QCommandLineOption BaseOption() {
    return QCommandLineOption(QStringList{QStringLiteral("base")},
                              QStringLiteral("Start from this clone file instead of the start-up data."),
                              QStringLiteral("FILE.318"));
}

void LoadStartupData(model::Document& document) {
    document.resetToStartup();
}

model::Result OpenAsAtStartup(model::Document& document, const QString& path) {
    LoadStartupData(document);
    return files::LoadCloneFile(document, path);
}

model::Result StartFromBase(model::Document& document, const QCommandLineParser& parser,
                            const QCommandLineOption& base) {
    if (parser.isSet(base)) return OpenAsAtStartup(document, parser.value(base));
    LoadStartupData(document);
    return model::Result::done();
}

model::Result WriteOutput(const QString& path, const QByteArray& bytes) {
    if (const QString why = files::WriteFileAtomically(path, bytes); !why.isEmpty())
        return model::Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why));
    return model::Result::done();
}

} // namespace zq::cli
