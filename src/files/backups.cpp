#include "backups.h"

#include "clonefile.h"
#include "model/tables.h"
#include "userdata.h"

#include <QDir>
#include <QFileInfo>

namespace zq::files {

using model::Outcome;
using model::Result;

namespace {

const QString kFolder = QStringLiteral("backups");
const QString kSuffix = QStringLiteral(".318");
const QString kTimeFormat = QStringLiteral("yyyy-MM-dd_HHmmss-zzz");

// The letter of the variant in the clone-file header; with none selected the file says A.
QString VariantLetter(int variant) {
    static const char* const letters[model::kVariantCount] = {"T", "E", "J", "A"};
    return QLatin1String(letters[variant >= 0 && variant < model::kVariantCount ? variant : model::VariantA]);
}

} // namespace

Result KeepBackup(const model::Document& document, const QString& operation, QString* path) {
    QString why;
    const QString folder = UserDataFolder(kFolder, &why);
    if (folder.isEmpty()) return Result::fail(Outcome::FileOpenError, why);

    // Saving rebuilds the settings bytes and encodes the special rows, which touches the store.
    model::Document copy;
    copy.replaceContents(document.contents());
    copy.setModelVariant(document.ModelVariant());
    copy.setCloneCodeA(document.CloneCodeA());
    const QByteArray bytes = SerializeCloneFile(copy);

    const QString target = FreshTimestampedPath(folder, QDateTime::currentDateTime(),
                                                {VariantLetter(document.ModelVariant()), operation}, kSuffix);
    if (const QString failed = WritePrivateFile(target, bytes); !failed.isEmpty())
        return Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(target, failed));
    KeepNewest(folder, {QLatin1Char('*') + kSuffix}, kBackupsKept);
    if (path) *path = target;
    return Result::done();
}

QList<BackupEntry> ListBackups(QString* why) {
    QList<BackupEntry> entries;
    const QString folder = UserDataFolder(kFolder, why);
    if (folder.isEmpty()) return entries;
    for (const QString& name : NewestFirst(folder, {QLatin1Char('*') + kSuffix})) {
        BackupEntry entry;
        entry.path = QDir(folder).filePath(name);
        entry.size = QFileInfo(entry.path).size();
        const QStringList parts = QFileInfo(name).completeBaseName().split(QLatin1Char('_'));
        if (parts.size() >= 2)
            entry.when = QDateTime::fromString(parts[0] + QLatin1Char('_') + parts[1], kTimeFormat);
        entry.operation = parts.size() >= 4 ? parts.mid(3).join(QLatin1Char('_')) : QString();

        const CloneReadResult read = ReadCloneFile(entry.path);
        model::Document loaded;
        if (read.result.ok() && ApplyCloneImage(loaded, read.image).ok()) {
            entry.valid = true;
            entry.variant = read.image.variant;
            entry.cloneCodeA = read.image.cloneCodeA;
            for (int channel = 0; channel < model::kChannelCount; ++channel)
                entry.channels += loaded.memory().ChannelInUse(channel) ? 1 : 0;
        }
        entries.append(entry);
    }
    return entries;
}

} // namespace zq::files
