#include "programfiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace zq::files {

QString UserGuidePathFrom(const QString& programDir, const QString& installedRelative,
                          const QString& sourceGuide) {
    const QString installed = QDir::cleanPath(QDir(programDir).filePath(installedRelative));
    if (!programDir.isEmpty() && QFileInfo(installed).isFile()) return installed;
    if (QFileInfo(sourceGuide).isFile()) return sourceGuide;
    return QString();
}

QString UserGuidePath() {
    return UserGuidePathFrom(QCoreApplication::applicationDirPath(), QStringLiteral(ZQ_GUIDE_FROM_BINDIR),
                             QStringLiteral(ZQ_SOURCE_GUIDE));
}

} // namespace zq::files
