#pragma once
// The per-user files of the program (recovery files, backups, traces): one folder per kind under
// the per-user data location, readable by the user alone, shared by the window and zq318.
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace zq::files {

// The names the window, zq318 and zq318-radio run under, so that they share one per-user data
// folder, configuration folder and settings store ("Korvex" / "zq318").
void SetProgramIdentity();

// The folder `kind` (such as "backups") under the per-user data location, made if needed with
// owner-only permissions. Empty, with `why` told, when it cannot be made.
QString UserDataFolder(const QString& kind, QString* why = nullptr);

// Writes a whole file atomically, readable and writable by the owner alone. Empty on success,
// else the reason.
QString WritePrivateFile(const QString& path, const QByteArray& bytes);

// A file name that sorts by time: "2026-11-23_192757-123" + "_" + each non-empty part + suffix.
QString TimestampedName(const QDateTime& when, const QStringList& parts, const QString& suffix);

// The path in `folder` of the TimestampedName for `when` that names no file yet: the time moves on
// a millisecond while it does, so that names stay in time order.
QString FreshTimestampedPath(const QString& folder, QDateTime when, const QStringList& parts,
                             const QString& suffix);

// The files of `folder` matching `nameFilters`, newest name first (the names sort by time).
QStringList NewestFirst(const QString& folder, const QStringList& nameFilters);
// Deletes all but the newest `keep` of them.
void KeepNewest(const QString& folder, const QStringList& nameFilters, int keep);

} // namespace zq::files
