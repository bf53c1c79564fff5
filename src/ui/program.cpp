#include "program.h"

#include "files/clonefile.h"
#include "files/preferences.h"
#include "messageboxes.h"
#include "splashscreen.h"
#include "terminationsignals.h"

#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>

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
    : boxes_(boxes), transfers_(document_, link_, ports_, strings),
      files_(document_, boxes, dialogs, strings), window_(document_, transfers_, files_, boxes, strings),
      recovery_(document_, boxes, strings) {
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
    if (loaded.outcome == Outcome::Fatal || ended()) return loaded;

    window_.loadModifyDialog();
    window_.show();
    msToShown_ = clock.elapsed();
    // Over the window, so that the user sees what the recovered data would replace; after a
    // command-line file too, which is on disk and loses nothing if the recovery file is opened.
    recovery_.offer();
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
    transfers_.stop();
    // The error's own text stays as it is; where the changes went is told under it.
    MessageRequest box = FatalErrorBox(result.message());
    box.detail = recovery_.note(recovery_.keep(QStringLiteral("fatal")));
    boxes_.show(box);
    end(1);
}

void Program::endBySignal(int signalNumber) {
    if (ended()) return;
    fatal_ = true;
    transfers_.stop();
    const QString name = TerminationSignals::Name(signalNumber);
    const files::RecoveryFile kept = recovery_.keep(name.toLower());
    QString line = QStringLiteral("zq318-utility: ended by %1").arg(name);
    if (!kept.path.isEmpty() && kept.result.ok())
        line += QStringLiteral("; unsaved changes kept in %1").arg(kept.path);
    else if (!kept.result.ok())
        line += QStringLiteral("; unsaved changes could not be kept: %1").arg(kept.result.detail);
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
    std::fflush(stderr);
    end(128 + signalNumber);
}

// A signal while the fatal error box is up ends the program there; the box's own end then keeps
// the signal's status.
void Program::end(int exitStatus) {
    if (!ended()) exitStatus_ = exitStatus;
    Q_EMIT fatalError(exitStatus_);
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
    bool saveWanted = false;
    if (!files_.mayClose(&saveWanted)) return false;
    // Yes with a save that failed or was cancelled still closes: the changes go to a recovery file.
    // No gives them up, and a recovery file opened in this run with them.
    if (saveWanted)
        recovery_.keep(QStringLiteral("exit"));
    else
        recovery_.giveUp();
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
