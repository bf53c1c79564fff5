#include "inputfile.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zq::files {

namespace {

using Fault = InputFile::Fault;

InputFile refuse(const QString& path, Fault fault, const QString& reason) {
    return {fault, QStringLiteral("%1: %2").arg(path, reason)};
}

QString sizeText(qint64 bytes) {
    if (bytes >= 1024 * 1024) return QStringLiteral("%1 MB").arg(bytes / (1024 * 1024));
    if (bytes >= 1024) return QStringLiteral("%1 KB").arg(bytes / 1024);
    return QStringLiteral("%1 bytes").arg(bytes);
}

InputFile tooLarge(const QString& path, qint64 size, qint64 maxBytes) {
    return refuse(path, Fault::TooLarge,
                  QStringLiteral("the file holds %1, more than the %2 such a file can take")
                      .arg(sizeText(size), sizeText(maxBytes)));
}

#ifdef Q_OS_UNIX
QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

// Empty for a regular file, else what it is.
QString notRegular(mode_t mode) {
    if (S_ISREG(mode)) return QString();
    if (S_ISDIR(mode)) return QStringLiteral("is a folder, not a file");
    return QStringLiteral("is not a regular file (a device, FIFO or socket)");
}
#endif

} // namespace

InputFile OpenInputFile(QFile& file, const QString& path, qint64 maxBytes) {
#ifdef Q_OS_UNIX
    const QByteArray native = QFile::encodeName(path);
    struct stat before {};
    if (::stat(native.constData(), &before) != 0) return refuse(path, Fault::CannotRead, systemError());
    if (const QString what = notRegular(before.st_mode); !what.isEmpty())
        return refuse(path, Fault::CannotRead, what);
    // Non-blocking, so that a path swapped for a FIFO after the check still opens at once; the
    // descriptor's own type is checked again below.
    const int fd = ::open(native.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) return refuse(path, Fault::CannotRead, systemError());
    struct stat opened {};
    QString what;
    if (::fstat(fd, &opened) != 0)
        what = systemError();
    else
        what = notRegular(opened.st_mode);
    if (what.isEmpty() && maxBytes >= 0 && opened.st_size > maxBytes) {
        ::close(fd);
        return tooLarge(path, opened.st_size, maxBytes);
    }
    if (what.isEmpty() && ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK) != 0) what = systemError();
    if (!what.isEmpty()) {
        ::close(fd);
        return refuse(path, Fault::CannotRead, what);
    }
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return refuse(path, Fault::CannotRead, file.errorString());
    }
    return {};
#else
    const QFileInfo info(path);
    if (!info.exists()) return refuse(path, Fault::CannotRead, QStringLiteral("no such file"));
    if (!info.isFile()) return refuse(path, Fault::CannotRead, QStringLiteral("is not a regular file"));
    if (maxBytes >= 0 && info.size() > maxBytes) return tooLarge(path, info.size(), maxBytes);
    file.setFileName(path);
    if (!file.open(QIODevice::ReadOnly)) return refuse(path, Fault::CannotRead, file.errorString());
    return {};
#endif
}

QString OutputTargetFault(const QString& path) {
    const QFileInfo info(path); // follows symbolic links, as the write does
    if (!info.exists() || info.isFile()) return QString();
    if (info.isDir()) return QStringLiteral("is a folder, not a file");
    return QStringLiteral("is not a regular file (a device, FIFO or socket)");
}

} // namespace zq::files
