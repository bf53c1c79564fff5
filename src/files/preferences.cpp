#include "preferences.h"

#include "atomicwrite.h"
#include "inputfile.h"
#include "model/numeric.h"
#include "model/tables.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace zq::files {

using model::Outcome;
using model::Result;

namespace {
constexpr int kFirstPort = 1;
constexpr int kLastPort = 14;

// The name the directory really holds for the file at `path`, so that a file differing only in
// letter case (on a case-blind file system) is told apart.
QString storedName(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return QString();
    const QStringList names = info.dir().entryList({info.fileName()}, QDir::Files | QDir::Hidden);
    for (const QString& name : names)
        if (name == info.fileName()) return name;
    return names.isEmpty() ? QString() : names.first();
}

} // namespace

QString PortFileName() {
    return QStringLiteral("ZQ-318.ini");
}

QString PortFileFolder(const QString& programDir, const QString& installedBinDir,
                       const QString& userConfigDir) {
    const QFileInfo dirInfo(programDir);
    const QString installed = QFileInfo(installedBinDir).canonicalFilePath();
    const bool isInstalled = !installed.isEmpty() && dirInfo.canonicalFilePath() == installed;
    if (!programDir.isEmpty() && dirInfo.isDir() && dirInfo.isWritable() && !isInstalled) return programDir;
    return userConfigDir.isEmpty() ? QDir::homePath() : userConfigDir;
}

QString PortFilePath() {
    const QString folder =
        PortFileFolder(QCoreApplication::applicationDirPath(), QStringLiteral(ZQ_INSTALL_BINDIR),
                       QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    return QDir(folder).filePath(PortFileName());
}

PortSetting LoadPortSetting(const QString& path) {
    PortSetting out;
    if (storedName(path) != PortFileName()) return out;
    QFile file;
    if (const InputFile input = OpenInputFile(file, path, -1); !input.ok()) {
        out.result = Result::fail(Outcome::Fatal, input.why);
        return out;
    }
    // Only the first line is read; a port number never needs more than a few characters.
    const QByteArray firstLine = file.readLine(256);
    if (firstLine.isEmpty()) {
        out.result = Result::fail(Outcome::Fatal, QStringLiteral("%1: Input past end of file").arg(path));
        return out;
    }
    // Text that is no whole number from 1 to 14 (letters, "0", "15", "2.5") gives port 1.
    const double value = model::NumericValue(QString::fromLatin1(firstLine.trimmed()));
    if (value >= kFirstPort && value <= kLastPort && value == static_cast<int>(value))
        out.port = static_cast<int>(value);
    return out;
}

Result SavePortSetting(int port, const QString& path) {
    const QByteArray bytes = QByteArray::number(port) + "\r\n";
    // A new user's configuration folder does not exist until something is kept there.
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (const QString why = WriteFileAtomically(path, bytes); !why.isEmpty()) {
        return Result::fail(Outcome::Fatal, QStringLiteral("%1: %2").arg(path, why));
    }
    return Result::done();
}

void SaveWindowGeometry(const QRect& geometry) {
    QSettings store(QCoreApplication::organizationName(), model::AppTitle());
    store.beginGroup(QStringLiteral("Settings"));
    const auto twips = [](int pixels) { return QString::number(float(pixels) * kTwipsPerPixel); };
    store.setValue(QStringLiteral("MainLeft"), twips(geometry.left()));
    store.setValue(QStringLiteral("MainTop"), twips(geometry.top()));
    store.setValue(QStringLiteral("MainWidth"), twips(geometry.width()));
    store.setValue(QStringLiteral("MainHeight"), twips(geometry.height()));
    store.endGroup();
}

namespace {
const QString kAdapterGroup = QStringLiteral("Port");
const QString kAdapterPort = QStringLiteral("Number");
const QString kAdapterIdentity = QStringLiteral("Adapter");
} // namespace

RememberedAdapter LoadRememberedAdapter() {
    QSettings store;
    store.beginGroup(kAdapterGroup);
    RememberedAdapter adapter;
    bool ok = false;
    const int port = store.value(kAdapterPort).toInt(&ok);
    if (ok && port >= kFirstPort && port <= kLastPort) {
        adapter.port = port;
        adapter.identity = store.value(kAdapterIdentity).toString();
    }
    return adapter;
}

void SaveRememberedAdapter(const RememberedAdapter& adapter) {
    QSettings store;
    store.beginGroup(kAdapterGroup);
    store.setValue(kAdapterPort, adapter.port);
    store.setValue(kAdapterIdentity, adapter.identity);
}

} // namespace zq::files
