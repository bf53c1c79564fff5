#pragma once
// What the radio verbs share: the port to use, the opened link and the progress display.
#include "cliutil.h"
#include "link/seriallink.h"
#include "link/transfers.h"
#include "link/verify.h"

#include <QString>

namespace zq::cli {

// The device of --port (a path or a number 1..14), else of the port file's number.
struct PortChoice {
    model::Result result;
    QString device;
};
PortChoice ChoosePort(const CliContext& context);

// Chooses the port, starts the serial trace (into --trace FILE, else the traces folder) and opens
// the link: "COM Port Error" when it cannot be opened, "File Open Error" when --trace FILE cannot
// be written. A trace folder that cannot be written is reported once and the link opened all the same.
model::Result OpenLink(CliContext& context, link::SerialLink& link);
// Ends the trace, if one was started, with the verb's outcome.
void FinishTrace(CliContext& context, int status);

// Keeps a backup of what was read from or written to the radio; one that cannot be written is
// reported on standard error and the verb goes on.
void KeepBackup(const model::Document& document, const QString& operation);

// The --settings and --memory options of read and write.
QCommandLineOption SettingsOnlyOption();
QCommandLineOption MemoryOnlyOption();
// What --settings or --memory leaves of a comparison.
link::VerifyScope ScopeOf(const QCommandLineParser& parser, const QCommandLineOption& settingsOnly,
                          const QCommandLineOption& memoryOnly);

// Reads back what a write of `document` sends and prints the differences, or "No differences":
// exit status 3 ("Communication Error") when there are any.
int VerifyAgainst(const CliContext& context, link::SerialLink& link, const model::Document& document,
                  const QString& file, link::VerifyScope scope);

// A bar on standard error while a transfer runs, when that is a terminal and not --quiet.
class ProgressBar {
public:
    ProgressBar(const CliContext& context, const QString& caption);
    ~ProgressBar();
    link::Progress callback();  // memory transfers: the channel 0..199
    link::StepProgress steps(); // any other: the block of how many

private:
    void show(int value, int last);
    bool enabled_;
    QString caption_;
    bool shown_ = false;
};

} // namespace zq::cli
