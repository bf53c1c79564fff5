#include "program.h"

#include "link/seriallink.h"
#include "model/tables.h"
#include "splashscreen.h"
#include "transfercontroller.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTabWidget>
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

Program::Program(MessageBoxes& boxes, FileDialogs& dialogs, const StringTable& strings)
    : window_(std::make_unique<MainWindow>(boxes, dialogs, strings)),
      link_(std::make_unique<link::SerialLink>()),
      transfers_(std::make_unique<TransferController>(window_->document(), *link_, boxes,
                                                      window_->transferControls(), window_.get())) {
    ConnectTransfers(*window_, *transfers_);
}

Program::~Program() = default;

model::Result Program::start(const ProgramOptions& options, const LoadOptions& load) {
    QElapsedTimer clock;
    clock.start();
    SplashScreen splash;
    splash.show();
    splash.repaint();
    splashShown_ = true;

    window_->setPortDevice(options.portDevice);
    LoadOptions loadOptions = load;
    loadOptions.commandLineFile = options.commandLineFile;
    const model::Result loaded = window_->load(loadOptions);
    splash.close();
    if (loaded.outcome == model::Outcome::Fatal) return loaded;
    transfers_->setDeviceOverride(options.portDevice);

    window_->loadModifyDialog();
    window_->show();
    msToShown_ = clock.elapsed();
    return model::Result::done();
}

QStringList SaveScreenshots(MainWindow& window, const QString& dir) {
    QStringList written;
    QDir().mkpath(dir);
    auto* tabs = window.findChild<QTabWidget*>(QStringLiteral("TabStrip1"));
    if (!tabs) return written;
    const QStringList names = {QStringLiteral("page1-settings1.png"), QStringLiteral("page2-settings2.png"),
                               QStringLiteral("page3-memorys.png")};
    for (int i = 0; i < tabs->count() && i < names.size(); ++i) {
        tabs->setCurrentIndex(i);
        const QString path = QDir(dir).filePath(names.at(i));
        if (window.grab().save(path)) written.append(path);
    }
    tabs->setCurrentIndex(0);
    return written;
}

} // namespace zq::ui
