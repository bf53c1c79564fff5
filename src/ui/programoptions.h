#pragma once
// The desktop program's command line: a clone file to open, a port for this run, and the hidden
// option that saves pictures of the pages.
#include <QString>
#include <QStringList>

namespace zq::ui {

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

} // namespace zq::ui
