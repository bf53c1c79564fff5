#include "programoptions.h"

#include "model/tables.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace zq::ui {

QString StripCommandLineQuotes(const QString& commandLine) {
    if (commandLine.size() > 5) return commandLine.mid(1, commandLine.size() - 2);
    return commandLine;
}

ProgramOptions ParseProgramArguments(const QStringList& arguments, const QString& rawWindowsTail) {
    QCommandLineParser parser;
    parser.setApplicationDescription(model::AppTitle());
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption port(QStringLiteral("port"),
                                  QStringLiteral("Serial device (or port number 1..14) for this run."),
                                  QStringLiteral("DEVICE"));
    QCommandLineOption screenshots(QStringLiteral("screenshot-dir"), QStringLiteral("Save page pictures."),
                                   QStringLiteral("DIR"));
    screenshots.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(port);
    parser.addOption(screenshots);
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("Clone file (*.318) to open."));

    ProgramOptions options;
    QTextStream err(stderr);
    if (!parser.parse(arguments)) {
        err << parser.errorText() << '\n';
        options.ok = false;
        options.exitStatus = 2;
        return options;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << parser.helpText();
        options.ok = false;
        return options;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        QTextStream(stdout) << model::AppTitle() << ' ' << QStringLiteral(ZQ_VERSION) << '\n';
        options.ok = false;
        return options;
    }
    options.portDevice = parser.value(port);
    options.screenshotDir = parser.value(screenshots);
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) {
        err << "Only one clone file can be opened.\n";
        options.ok = false;
        options.exitStatus = 2;
        return options;
    }
    if (!rawWindowsTail.isEmpty())
        options.commandLineFile = StripCommandLineQuotes(rawWindowsTail);
    else if (!files.isEmpty())
        options.commandLineFile = files.first();
    return options;
}

} // namespace zq::ui
