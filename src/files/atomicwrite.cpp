#include "atomicwrite.h"

#include "inputfile.h"

#include <QSaveFile>

namespace zq::files {

QString WriteFileAtomically(const QString& path, const QByteArray& bytes) {
    // The new file would be renamed over a device or FIFO of that name (with the rights to do so).
    if (const QString fault = OutputTargetFault(path); !fault.isEmpty()) return fault;
    QSaveFile file(path);
    // Unbuffered, so that a short write (a full disk, a size limit) shows in write()'s count rather
    // than being lost in a buffer flush that commit() does not check.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return file.errorString();
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 chunk = file.write(bytes.constData() + written, bytes.size() - written);
        if (chunk <= 0) break;
        written += chunk;
    }
    if (written != bytes.size()) {
        const QString why = file.error() != QFileDevice::NoError
                                ? file.errorString()
                                : QStringLiteral("the data could not all be written");
        file.cancelWriting();
        return why;
    }
    if (!file.commit()) return file.errorString();
    return QString();
}

} // namespace zq::files
