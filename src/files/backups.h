#pragma once
// Copies of what came from and went to a radio, kept as clone files in the per-user "backups"
// folder, so that an overwritten radio or a lost file can be restored. Keeping one never stops a
// transfer: the front ends report a failure once and go on.
#include "model/document.h"
#include "model/outcome.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace zq::files {

inline constexpr int kBackupsKept = 100;

// Saves the document as a clone file named by the time, its model variant and `operation` ("read",
// "write-settings", ...), then deletes all but the newest 100. The file is made from a copy: the
// document is neither changed nor marked. "File Open Error" with the reason when it cannot be
// written; `path` is told where it went.
model::Result KeepBackup(const model::Document& document, const QString& operation, QString* path = nullptr);

struct BackupEntry {
    QString path;
    QDateTime when; // from the name
    QString operation;
    qint64 size = 0;
    bool valid = false; // a clone file that opens; the fields below only then
    int variant = 0;
    bool cloneCodeA = false;
    int channels = 0; // memory channels in use
};

// The kept backups, newest first. Empty, with `why` told, when the folder cannot be made.
QList<BackupEntry> ListBackups(QString* why = nullptr);

} // namespace zq::files
