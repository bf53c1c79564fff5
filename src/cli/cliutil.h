#pragma once
// What the verbs of zq318 share: exit statuses, messages, argument parsing, loading and writing.
#include "model/document.h"
#include "model/outcome.h"

#include <QByteArray>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace zq::link {
class TraceRecorder;
}

namespace zq::cli {

struct Command;

// What the global options say, handed to every verb.
struct CliContext {
    QString port;       // --port: a device path or a number 1..14; empty when not given
    bool quiet = false; // --quiet: no progress display
    QString tracePath;  // --trace: where the serial trace goes instead of the traces folder
    const Command* command = nullptr;
    QString commandLine;                        // for the trace's heading
    std::shared_ptr<link::TraceRecorder> trace; // made when a verb opens the link
    QString traceProblem; // why no trace is kept, told after the command's own message
};

enum ExitStatus : int {
    ExitOk = 0,
    ExitDifferent = 1, // diff: the files differ
    ExitUsage = 2,
    ExitCommunication = 3,
    ExitComPort = 4,
    ExitData = 5,
    // "File Open Error", and also the faults the desktop program does not trap (a clone file
    // named at start-up that is missing or short, a CSV file cut short): all are file faults.
    ExitFileOpen = 6,
};

int ExitStatusFor(const model::Result& result);

void PrintOut(const QString& text); // one line on standard output
void PrintErr(const QString& text); // one line on standard error

// Prints "Message: detail" (or the message alone) as the first line on standard error and gives
// the exit status; nothing is printed for success.
int Report(const model::Result& result);
// What Report printed last ("Message: detail"), empty when it printed nothing.
QString LastReport();
int UsageError(const QString& text, const Command& command);

// Parses a verb's arguments after its options were added to `parser`. Returns an exit status
// when the verb is to end at once (--help: 0 after printing the usage; a bad argument: 2).
std::optional<int> ParseVerbArguments(QCommandLineParser& parser, const QStringList& arguments,
                                      const Command& command, int positionalCount);
QCommandLineOption OutputOption();
QCommandLineOption BaseOption();

// The data the window holds right after start-up with no file.
void LoadStartupData(model::Document& document);
// The start-up open of a clone file: its header selects variant and clone code. A failure names the file.
model::Result OpenAsAtStartup(model::Document& document, const QString& path);
// The starting point of a verb with --base: that clone file when given, else the start-up data.
model::Result StartFromBase(model::Document& document, const QCommandLineParser& parser,
                            const QCommandLineOption& base);
// Refuses an output that is one of the inputs (the same file by name, through a symbolic link or a
// hard link): a usage error, before anything is read or written. Empty inputs are skipped.
std::optional<int> RefuseOutputOntoInput(const QString& output, const QStringList& inputs,
                                         const Command& command);
// Whether the output can be written once the work is done: its folder exists and takes new files, and
// it is no folder, device or FIFO. "File Open Error" when not; for checks before a long transfer.
model::Result CheckOutputPath(const QString& path);
// Replaces the output file as a whole; call it only once the command has otherwise succeeded.
// "File Open Error" when it cannot be written, the previous file then left as it was.
model::Result WriteOutput(const QString& path, const QByteArray& bytes);

} // namespace zq::cli
