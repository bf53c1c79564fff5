#include "userdata.h"

#include "atomicwrite.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace zq::files {

void SetProgramIdentity() {
    QCoreApplication::setOrganizationName(QStringLiteral("Korvex"));
    QCoreApplication::setApplicationName(QStringLiteral("zq318"));
}

QString UserDataFolder(const QString& kind, QString* why) {
    const QString base = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    if (base.isEmpty()) {
        if (why) *why = QStringLiteral("no per-user data location");
        return QString();
    }
    const QString folder = QDir(base).filePath(kind);
    if (!QDir().mkpath(folder)) {
        if (why) *why = QStringLiteral("cannot make %1").arg(folder);
        return QString();
    }
    // Traces and backups show what is in the radio: nobody else needs to read them.
    const QFileDevice::Permissions ownerOnly =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    if (!QFile::setPermissions(folder, ownerOnly) && why)
        *why = QStringLiteral("cannot restrict %1").arg(folder);
    return folder;
}

QString WritePrivateFile(const QString& path, const QByteArray& bytes) {
    if (QString why = WriteFileAtomically(path, bytes); !why.isEmpty()) return why;
    if (!QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return QStringLiteral("cannot restrict %1").arg(path);
    return QString();
}

QString TimestampedName(const QDateTime& when, const QStringList& parts, const QString& suffix) {
    QString name = when.toString(QStringLiteral("yyyy-MM-dd_HHmmss-zzz"));
    for (const QString& part : parts)
        if (!part.isEmpty()) name += QLatin1Char('_') + part;
    return name + suffix;
}

QString FreshTimestampedPath(const QString& folder, QDateTime when, const QStringList& parts,
                             const QString& suffix) {
    const QDir dir(folder);
    QString path = dir.filePath(TimestampedName(when, parts, suffix));
    while (QFileInfo::exists(path)) {
        when = when.addMSecs(1);
        path = dir.filePath(TimestampedName(when, parts, suffix));
    }
    return path;
}

QStringList NewestFirst(const QString& folder, const QStringList& nameFilters) {
    QStringList names = QDir(folder).entryList(nameFilters, QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    std::reverse(names.begin(), names.end());
    return names;
}

void KeepNewest(const QString& folder, const QStringList& nameFilters, int keep) {
    const QStringList names = NewestFirst(folder, nameFilters);
    for (qsizetype i = std::max(keep, 0); i < names.size(); ++i)
        QFile::remove(QDir(folder).filePath(names.at(i)));
}

} // namespace zq::files
