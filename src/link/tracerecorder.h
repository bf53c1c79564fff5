#pragma once
// A text record of one run of transfers: every opening, command, arrival, reply, time-out, port
// failure and pause on the link, each line with a millisecond timestamp, ending with the outcome.
// It is what a user attaches to a report of a radio that "does not respond". Writing it never
// stops a transfer: a line that cannot be written is dropped and finish() says so.
#include "model/outcome.h"
#include "seriallink.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QString>

namespace zq::link {

struct LinkEvent;

inline constexpr int kTracesKept = 10;

class TraceRecorder {
public:
    TraceRecorder() = default;
    ~TraceRecorder();
    TraceRecorder(const TraceRecorder&) = delete;
    TraceRecorder& operator=(const TraceRecorder&) = delete;

    // Starts the trace in `path`, replacing it; `heading` (such as the command line) goes first.
    zq::model::Result start(const QString& path, const QString& heading);
    // Starts it in a new file of the per-user "traces" folder named by the time and `operation`,
    // and deletes all but the newest ten traces there.
    zq::model::Result startInTraceFolder(const QString& operation, const QString& heading);
    QString path() const { return file_.fileName(); }
    bool isRecording() const { return file_.isOpen(); }

    // Records what happens on `link` from now on; one link at a time.
    void attach(SerialLink& link);
    void detach();

    // The last line, "outcome: ...", then the file is closed. "File Open Error" when a line could
    // not be written.
    zq::model::Result finish(const QString& outcome);
    // "done", or the message and its detail as the command-line tool prints them.
    static QString OutcomeText(const zq::model::Result& result);

private:
    void record(const LinkEvent& event);
    void write(const QString& what, const QString& text);

    QFile file_;
    QPointer<SerialLink> link_; // a link may go before its recorder
    QString lastCommand_;       // for the time-out line, which names it
    QElapsedTimer sinceSent_;
    bool lost_ = false;
};

} // namespace zq::link
