#include "recovery.h"

#include "clonefile.h"
#include "userdata.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zq::files {

using model::Outcome;
using model::Result;

namespace {

const QString kKind = QStringLiteral("recovery");

QStringList nameFilters() {
    return {QStringLiteral("*.318")};
}

} // namespace

RecoveryFile SaveRecoveryFile(model::Document& document, const QString& reason, const QDateTime& when) {
    QString why;
    const QString folder = UserDataFolder(kKind, &why);
    if (folder.isEmpty()) return {Result::fail(Outcome::FileOpenError, why), {}};
    // Two files in the same millisecond get a number rather than one replacing the other.
    QString path;
    for (int copy = 1; path.isEmpty() || QFileInfo::exists(path); ++copy)
        path = QDir(folder).filePath(TimestampedName(
            when, {reason, copy > 1 ? QString::number(copy) : QString()}, QStringLiteral(".318")));
    if (why = WritePrivateFile(path, SerializeCloneFile(document)); !why.isEmpty())
        return {Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why)), path};
    return {Result::done(), path};
}

QStringList RecoveryFiles() {
    const QString folder = UserDataFolder(kKind);
    if (folder.isEmpty()) return {};
    QStringList paths;
    for (const QString& name : NewestFirst(folder, nameFilters()))
        paths.append(QDir(folder).filePath(name));
    return paths;
}

QString NewestRecoveryFile() {
    return RecoveryFiles().value(0);
}

bool DeleteRecoveryFile(const QString& path) {
    const QString folder = UserDataFolder(kKind);
    const QFileInfo file(path);
    if (folder.isEmpty() || file.absoluteDir() != QDir(folder)) return false;
    return QFile::remove(path) || !QFileInfo::exists(path);
}

} // namespace zq::files
