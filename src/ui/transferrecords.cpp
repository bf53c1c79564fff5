#include "transferrecords.h"

#include "files/backups.h"
#include "files/userdata.h"
#include "model/tables.h"

namespace zq::ui {

using model::Result;

void TransferRecords::beginCommand(const QString& operation, const QString& caption) {
    operation_ = operation;
    caption_ = caption;
    traceTried_ = false;
    sessions_.clear();
    backups_.clear();
    notes_.clear();
}

void TransferRecords::sessionStarted(link::SerialLink& link) {
    if (!traceTried_) {
        traceTried_ = true;
        const QString heading = QStringLiteral("%1: %2").arg(model::AppTitle(), caption_);
        const Result started = files::StartUserFile(
            QStringLiteral("traces"), {operation_}, QStringLiteral(".txt"), link::kTracesKept,
            [&](const QString& path) { return trace_.start(path, heading); });
        if (!started.ok()) notes_.append(strings_.string(text::kNoTraceKept).arg(started.detail));
    }
    if (trace_.isRecording()) trace_.attach(link);
}

void TransferRecords::sessionEnded(const QString& caption, const Result& result,
                                   const QString& backupOperation) {
    sessions_.append({caption, result});
    if (result.ok() && !backupOperation.isEmpty()) backups_.append(backupOperation);
}

QString TransferRecords::outcomeText() const {
    if (sessions_.size() == 1) return link::TraceRecorder::OutcomeText(sessions_.first().result);
    QStringList parts;
    for (const Session& session : sessions_)
        parts.append(session.caption + QStringLiteral(": ") +
                     link::TraceRecorder::OutcomeText(session.result));
    return parts.join(QStringLiteral("; "));
}

QString TransferRecords::endCommand(const model::Document& document) {
    if (trace_.isRecording()) {
        if (const Result finished = trace_.finish(outcomeText()); !finished.ok())
            notes_.append(strings_.string(text::kTraceIncomplete).arg(finished.detail));
    }
    if (!backups_.isEmpty()) {
        if (const Result kept = files::KeepBackup(document, BackupOperation(backups_)); !kept.ok())
            notes_.append(strings_.string(text::kNoBackupKept).arg(kept.detail));
    }
    const QString note = notes_.join(QStringLiteral("  "));
    beginCommand(QString(), QString());
    return note;
}

QString TransferRecords::BackupOperation(const QStringList& sessions) {
    if (sessions.size() == 1) return sessions.first();
    const QString direction = sessions.first().section(QLatin1Char('-'), 0, 0);
    for (const QString& session : sessions)
        if (session.section(QLatin1Char('-'), 0, 0) != direction) return sessions.join(QLatin1Char('+'));
    return direction;
}

} // namespace zq::ui
