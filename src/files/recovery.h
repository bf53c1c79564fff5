#pragma once
// Recovery files: a document that could not go where it belonged (a save that failed, a program that
// must end with changes unsaved) is kept as a clone file in the per-user "recovery" folder, named by
// the time it was written, until the user opens or discards it. Nothing here deletes a file on its own.
#include "model/document.h"
#include "model/outcome.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace zq::files {

struct RecoveryFile {
    model::Result result; // Done, or FileOpenError with the reason
    QString path;         // the file written
};

// Writes the document as Save writes a clone file, readable by the owner alone, named by `when` and
// `reason` (a word such as "read"). The document's file path and change mark stay as they are: the
// data are still unsaved where the user wanted them.
RecoveryFile SaveRecoveryFile(model::Document& document, const QString& reason,
                              const QDateTime& when = QDateTime::currentDateTime());

// The recovery files (full paths), newest first.
QStringList RecoveryFiles();
QString NewestRecoveryFile(); // empty when there is none

// Deletes one recovery file; a path outside the recovery folder is left alone. True when it is gone.
bool DeleteRecoveryFile(const QString& path);

} // namespace zq::files
