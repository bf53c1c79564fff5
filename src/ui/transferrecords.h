#pragma once
// What the window keeps of its radio commands: a serial trace of each command (one session, or the
// two of an "All") in the per-user traces folder, and after a data transfer that succeeded a backup
// of the document in the backups folder. Neither ever stops or delays a transfer: the trace is
// written line by line as the link goes, the backup once the sessions are over, and whatever could
// not be kept becomes one note for the status bar.
#include "link/tracerecorder.h"
#include "model/outcome.h"
#include "stringtable.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace zq::model {
class Document;
}

namespace zq::ui {

class TransferRecords {
public:
    explicit TransferRecords(const StringTable& strings) : strings_(strings) {}

    // A command begins: `operation` names its trace file ("read", "verify", ...), `caption` heads it.
    void beginCommand(const QString& operation, const QString& caption);
    // A session of the command takes `link`: the command's trace starts with its first session.
    void sessionStarted(link::SerialLink& link);
    // A session ended. `backupOperation` ("read-memory", ...) when it moved the document's data
    // and a backup of it is wanted if it succeeded; `caption` names it in the trace's outcome.
    void sessionEnded(const QString& caption, const model::Result& result, const QString& backupOperation);
    // The command is over: the trace gets its outcome, the backup is kept. Returns the note of what
    // could not be kept, empty when everything was.
    QString endCommand(const model::Document& document);

    // The backup of "read-settings" with "read-memory" is a "read", of both writes a "write".
    static QString BackupOperation(const QStringList& sessions);

private:
    struct Session {
        QString caption;
        model::Result result;
    };
    QString outcomeText() const;

    StringTable strings_;
    link::TraceRecorder trace_;
    QString operation_;
    QString caption_;
    bool traceTried_ = false;
    QList<Session> sessions_;
    QStringList backups_; // the operations of the data sessions that succeeded
    QStringList notes_;
};

} // namespace zq::ui
