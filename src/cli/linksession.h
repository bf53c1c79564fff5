#pragma once
// What the radio verbs share: the port to use, the opened link and the progress display.
#include "cliutil.h"
#include "link/seriallink.h"
#include "link/transfers.h"

#include <QString>

namespace zq::cli {

// The device of --port (a path or a number 1..14), else of the port file's number.
struct PortChoice {
    model::Result result;
    QString device;
};
PortChoice ChoosePort(const CliContext& context);

// Chooses the port and opens the link on it: "COM Port Error" when it cannot be opened.
model::Result OpenLink(const CliContext& context, link::SerialLink& link);

// The --settings and --memory options of read and write.
QCommandLineOption SettingsOnlyOption();
QCommandLineOption MemoryOnlyOption();

// A bar on standard error while a memory transfer runs, when that is a terminal and not --quiet.
class ProgressBar {
public:
    ProgressBar(const CliContext& context, const QString& caption);
    ~ProgressBar();
    link::Progress callback();

private:
    void show(int channel);
    bool enabled_;
    QString caption_;
    bool shown_ = false;
};

} // namespace zq::cli
