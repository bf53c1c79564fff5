#include "program.h"

#include "files/clonefile.h"
#include "files/preferences.h"
#include "messageboxes.h"
#include "splashscreen.h"

#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace zq::ui {

using model::Outcome;
using model::Result;

namespace {

void waitMilliseconds(int ms) {
    if (ms <= 0) return;
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

Program::Program(MessageBoxes& boxes, FileDialogs& dialogs, const StringTable& strings)
    : boxes_(boxes), transfers_(document_, link_, ports_), files_(document_, boxes, dialogs),
      window_(document_, transfers_, files_, boxes, strings) {
    connect(&files_, &FileCommands::fatal, this, &Program::reportFatal);
    window_.installEventFilter(this);
}

Program::~Program() = default;

Result Program::start(const ProgramOptions& options, const LoadOptions& load) {
    QElapsedTimer clock;
    clock.start();
    SplashScreen splash;
    splash.show();
    splash.repaint();

    ports_.setDeviceOverride(options.portDevice);
    LoadOptions loadOptions = load;
    loadOptions.commandLineFile = options.commandLineFile;
    const Result loaded = this->load(loadOptions);
    splash.close();
    if (loaded.outcome == Outcome::Fatal) return loaded;

    window_.loadModifyDialog();
    window_.show();
    msToShown_ = clock.elapsed();
    return Result::done();
}

Result Program::load(const LoadOptions& options) {
    window_.prepare();
    ports_.setFilePath(options.portFilePath);
    if (const Result port = ports_.load(); !port.ok()) {
        reportFatal(port);
        return port;
    }
    document_.resetToStartup();
    waitMilliseconds(options.pauseMs);
    window_.showFirstPage();

    if (!options.commandLineFile.isEmpty()) {
        const Result loaded = files::LoadCloneFile(document_, options.commandLineFile);
        if (loaded.outcome == Outcome::Fatal) {
            reportFatal(loaded);
            return loaded;
        }
        ShowFailure(boxes_, loaded);
    }
    document_.setDataChanged(false);
    return Result::done();
}

void Program::reportFatal(const Result& result) {
    fatal_ = true;
    boxes_.show(FatalErrorBox(result.message()));
    Q_EMIT fatalError(1);
}

bool Program::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &window_ || event->type() != QEvent::Close) return QObject::eventFilter(watched, event);
    event->setAccepted(exit());
    return true;
}

bool Program::exit() {
    if (fatal_) return true;
    // The radio is mid-session: closing now would pull the link from under the transfer.
    if (transfers_.busy()) return false;
    if (!files_.mayClose()) return false;
    if (const Result saved = ports_.save(); !saved.ok()) {
        reportFatal(saved);
        return true;
    }
    // The other windows close first, the most recent first.
    const auto dialogs = window_.findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    for (auto it = dialogs.rbegin(); it != dialogs.rend(); ++it)
        if ((*it)->isVisible()) (*it)->close();
    if (!window_.isMinimized()) files::SaveWindowGeometry(window_.frameGeometry());
    return true;
}

} // namespace zq::ui
