#pragma once
// The desktop program as one object: it owns the document, the link, the port settings, the
// transfer controller, the file commands and the main window (destroyed in the reverse order),
// runs the start-up and the exit, and ends the program on a fatal error.
#include "filecommands.h"
#include "link/seriallink.h"
#include "mainwindow.h"
#include "model/document.h"
#include "portsettings.h"
#include "programoptions.h"
#include "recoverykeeper.h"
#include "transfercontroller.h"

#include <QObject>

namespace zq::ui {

class FileDialogs;
class MessageBoxes;
class StringTable;

struct LoadOptions {
    QString commandLineFile;
    QString portFilePath; // empty: the program's port file
    int pauseMs = 2000;   // the start-up pause that keeps the splash on screen
};

class Program : public QObject {
    Q_OBJECT
public:
    Program(MessageBoxes& boxes, FileDialogs& dialogs, const StringTable& strings);
    ~Program() override;

    // Splash, the load sequence (with its pause), splash gone, modify dialog, window shown, then
    // the offer of the newest recovery file. A Fatal result has been shown in the fatal error box:
    // the program ends non-zero. After an end by signal meanwhile, ended() is true.
    model::Result start(const ProgramOptions& options, const LoadOptions& load);
    // The load sequence: captions, port file, start-up data, the pause, the first page, the
    // command-line file, DataChanged cleared.
    model::Result load(const LoadOptions& options);

    model::Document& document() { return document_; }
    PortSettings& ports() { return ports_; }
    link::SerialLink& link() { return link_; }
    TransferController& transfers() { return transfers_; }
    MainWindow& window() { return window_; }
    RecoveryKeeper& recovery() { return recovery_; }
    qint64 msToShownWindow() const { return msToShown_; }

    // Keeps unsaved changes in a recovery file, stops a transfer under way, shows the fatal error
    // box (naming the recovery file beside the error) and reports the end of the program.
    void reportFatal(const model::Result& result);
    // SIGTERM, SIGHUP or SIGINT: unsaved changes kept, a transfer under way stopped, a line on
    // standard error, and the end with status 128 + the signal's number.
    void endBySignal(int signalNumber);

    // The program has ended (fatalError was emitted) with this status: the first end's.
    bool ended() const { return exitStatus_ >= 0; }
    int exitStatus() const { return exitStatus_; }

Q_SIGNALS:
    // The program ends here with this status, as after a run-time error report.
    void fatalError(int exitStatus);

protected:
    // Closing the main window is the exit.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The exit: the unsaved-changes prompt, then the port file, the other windows and the
    // window's geometry. False keeps the window open.
    bool exit();
    void end(int exitStatus);

    MessageBoxes& boxes_;
    model::Document document_;
    link::SerialLink link_;
    PortSettings ports_;
    TransferController transfers_;
    FileCommands files_;
    MainWindow window_;
    RecoveryKeeper recovery_;
    bool fatal_ = false;
    int exitStatus_ = -1;
    qint64 msToShown_ = -1;
};

} // namespace zq::ui
