#pragma once
// The start-up sequence of the desktop program (splash, command line, main window, modify dialog)
// and the command line it takes.
#include "mainwindow.h"

#include <QElapsedTimer>
#include <QStringList>
#include <memory>

namespace zq::link {
class SerialLink;
}

namespace zq::ui {

class SplashScreen;
class TransferController;

// The rule for a raw Windows command line: longer than 5 characters, the first and last
// character (the quotes around a path) are dropped, whatever they are; shorter ones are kept.
QString StripCommandLineQuotes(const QString& commandLine);

struct ProgramOptions {
    QString commandLineFile;
    QString portDevice;    // --port DEVICE
    QString screenshotDir; // --screenshot-dir DIR: grab each page into DIR, then quit
    bool ok = true;        // false after a usage error (already reported) or --help / --version
    int exitStatus = 0;
};
// `arguments` as QCoreApplication::arguments() gives them. Elsewhere than on Windows the file is
// an argument of its own, already without quotes; `rawWindowsTail` is the command line after the
// program name, as Windows hands it over (empty elsewhere).
ProgramOptions ParseProgramArguments(const QStringList& arguments, const QString& rawWindowsTail = QString());

class Program {
public:
    Program(MessageBoxes& boxes, FileDialogs& dialogs, const StringTable& strings);
    ~Program();

    // Splash, main window load (with its pause), splash gone, modify dialog, window shown.
    // A Fatal result has been shown in the fatal error box: the program ends non-zero.
    model::Result start(const ProgramOptions& options, const LoadOptions& load);

    MainWindow& window() { return *window_; }
    TransferController& transfers() { return *transfers_; }
    bool splashWasShown() const { return splashShown_; }
    qint64 msToShownWindow() const { return msToShown_; }

private:
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<link::SerialLink> link_;
    std::unique_ptr<TransferController> transfers_;
    bool splashShown_ = false;
    qint64 msToShown_ = -1;
};

// Grabs each page of the window into DIR as page1-settings1.png, page2-settings2.png,
// page3-memorys.png. Returns the files written.
QStringList SaveScreenshots(MainWindow& window, const QString& dir);

} // namespace zq::ui
