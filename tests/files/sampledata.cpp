#include "sampledata.h"

#include "model/channelcodec.h"
#include "model/tables.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace zq::testdata {

using namespace model;

void SetChannel(Document& document, int channel, const std::array<double, 15>& numbers, const char* name) {
    document.changeMemory(
        channel, channel,
        [&](MemoryTable& memory) {
            memory.setChannelInUse(channel, true);
            for (int column = 0; column < kMemoryColumns; ++column)
                if (column != ColBlank) memory.set(channel, column, QString(), numbers[column]);
            memory.set(channel, ColName, QString::fromLatin1(name), 0);
            // Round through the codec so that the text cells read as after a load.
            DecodeChannelRecord(
                memory, EncodeChannelFirstHalf(memory, channel) + EncodeChannelSecondHalf(memory, channel),
                channel);
        },
        Document::Mark::Quiet);
}

void FillAllChannels(Document& document) {
    for (int c = 0; c < kChannelCount; ++c)
        SetChannel(document, c,
                   {144.0 + 0.0125 * c, c % 3 == 0 ? 2.0 : 0.0, double(std::array{0, 1, 3, 12}[c % 4]),
                    double(c % kToneCount), double((c * 7) % kToneCount), double(c % kDcsCount),
                    double(c % 3), 0.6 + 0.1 * (c % 5), double(c % 3), 0, double(c % 3), double(c % 5 == 0),
                    double(c % 7 == 0), 0, double(c % 6 == 0)},
                   c % 2 ? "CH" : "RPT-1");
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool MakeHostile(Hostile kind, const QString& path, const QByteArray& valid) {
    const QByteArray native = QFile::encodeName(path);
    switch (kind) {
    case Hostile::Empty:
        return WriteFile(path, QByteArray());
    case Hostile::Folder:
        return QDir().mkpath(path);
    case Hostile::Fifo:
        return ::mkfifo(native.constData(), 0644) == 0;
    case Hostile::LinkToFifo:
        return MakeHostile(Hostile::Fifo, path + QStringLiteral(".fifo"), valid) &&
               QFile::link(QFileInfo(path).fileName() + QStringLiteral(".fifo"), path);
    case Hostile::Huge:
        return WriteFile(path, valid) && QFile::resize(path, 100 * 1024 * 1024);
    case Hostile::Garbage: {
        QByteArray bytes(4096, '\0');
        quint32 state = 12345;
        for (char& byte : bytes) {
            state = state * 1103515245u + 12345u;
            byte = char(state >> 24);
        }
        return WriteFile(path, bytes);
    }
    case Hostile::BadUtf8: {
        const QByteArray line =
            QByteArray("\xC3\x28\xA0\xA1\xE2\x28\xA1\xF0\x28\x8C\xBC\xFE\xFF\xC0\xAF\xED").repeated(2);
        return WriteFile(path, (line + "\r\n").repeated(419));
    }
    case Hostile::Missing:
        return !QFileInfo::exists(path);
    case Hostile::Unreadable:
        return WriteFile(path, valid) && QFile::setPermissions(path, {});
    }
    return false;
}

std::map<QString, QString> Snapshot(const QString& folder) {
    std::map<QString, QString> entries;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QString& entry = entries[QDir(folder).relativeFilePath(path)];
        struct stat info {};
        // lstat: a FIFO must not be opened, a link is told by its target
        if (::lstat(QFile::encodeName(path).constData(), &info) != 0) {
            entry = QStringLiteral("vanished");
        } else if (S_ISLNK(info.st_mode)) {
            entry = QStringLiteral("link to ") + QFile::symLinkTarget(path);
        } else if (S_ISDIR(info.st_mode)) {
            entry = QStringLiteral("folder");
        } else if (S_ISFIFO(info.st_mode)) {
            entry = QStringLiteral("fifo");
        } else if (!S_ISREG(info.st_mode)) {
            entry = QStringLiteral("device");
        } else {
            QFile file(path);
            QCryptographicHash hash(QCryptographicHash::Sha256);
            entry = file.open(QIODevice::ReadOnly) && hash.addData(&file)
                        ? QString::fromLatin1(hash.result().toHex())
                        : QStringLiteral("unreadable, %1 bytes").arg(info.st_size);
        }
    }
    return entries;
}

} // namespace zq::testdata
