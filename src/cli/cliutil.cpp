#include "cliutil.h"

#include "commands.h"
#include "files/atomicwrite.h"
#include "files/clonefile.h"
#include "files/inputfile.h"

#include <QDir>
#include <QFileInfo>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

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

// The path with its folder's symbolic links resolved, for a file that may not exist yet.
QString resolvedPath(const QString& path) {
    const QFileInfo info(path);
    if (info.exists()) return info.canonicalFilePath();
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return QDir::cleanPath((folder.isEmpty() ? info.absolutePath() : folder) + QLatin1Char('/') +
                           info.fileName());
}

bool sameFile(const QString& a, const QString& b) {
#ifdef Q_OS_UNIX
    // Hard links share the device and inode, whatever their names.
    struct stat sa {
    }, sb{};
    if (::stat(QFile::encodeName(a).constData(), &sa) == 0 &&
        ::stat(QFile::encodeName(b).constData(), &sb) == 0)
        return sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
#endif
    return resolvedPath(a) == resolvedPath(b);
}

bool writable(const QString& path, bool folder) {
#ifdef Q_OS_UNIX
    return ::access(QFile::encodeName(path).constData(), folder ? W_OK | X_OK : W_OK) == 0;
#else
    Q_UNUSED(folder);
    return QFileInfo(path).isWritable();
#endif
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
    model::Result opened = files::LoadCloneFile(document, path);
    // A verb may open two files: the message names the one at fault.
    if (!opened.ok() && !opened.detail.startsWith(path))
        opened.detail = path + QStringLiteral(": ") + opened.detail;
    return opened;
}

model::Result StartFromBase(model::Document& document, const QCommandLineParser& parser,
                            const QCommandLineOption& base) {
    if (parser.isSet(base)) return OpenAsAtStartup(document, parser.value(base));
    LoadStartupData(document);
    return model::Result::done();
}

std::optional<int> RefuseOutputOntoInput(const QString& output, const QStringList& inputs,
                                         const Command& command) {
    for (const QString& input : inputs) {
        if (!input.isEmpty() && sameFile(output, input))
            return UsageError(
                QStringLiteral("the output %1 is the input %2; write to another file").arg(output, input),
                command);
    }
    return std::nullopt;
}

model::Result CheckOutputPath(const QString& path) {
    const QFileInfo file(path);
    const QString folder = file.absolutePath();
    const auto fault = [&]() -> QString {
        if (QString why = files::OutputTargetFault(path); !why.isEmpty()) return why;
        if (!QFileInfo(folder).isDir()) return QStringLiteral("the folder %1 does not exist").arg(folder);
        if (!writable(folder, true)) return QStringLiteral("the folder %1 cannot be written to").arg(folder);
        if (file.exists() && !writable(path, false)) return QStringLiteral("the file is write-protected");
        return QString();
    };
    if (const QString why = fault(); !why.isEmpty())
        return model::Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why));
    return model::Result::done();
}

model::Result WriteOutput(const QString& path, const QByteArray& bytes) {
    if (const QString why = files::WriteFileAtomically(path, bytes); !why.isEmpty())
        return model::Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why));
    return model::Result::done();
}

} // namespace zq::cli
