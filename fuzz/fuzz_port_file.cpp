// The port file of any content. It gives a port from 1 to 14: the number its first line holds when
// that is a whole number in range, port 1 otherwise; only an empty file stops the start. The port
// read is saved and read back unchanged.
#include "files/preferences.h"
#include "fuzzcheck.h"
#include "model/numeric.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>

using namespace zq;

namespace {

// The number on the first line, whatever its length: what the start-up reads.
int ExpectedPort(const QByteArray& bytes) {
    const qsizetype end = bytes.indexOf('\n');
    const QByteArray line = end < 0 ? bytes : bytes.first(end);
    const double value = model::NumericValue(QString::fromLatin1(line.trimmed()));
    return value >= 1 && value <= 14 && value == int(value) ? int(value) : 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static QTemporaryDir folder;
    static const QString path = QDir(folder.path()).filePath(files::PortFileName());
    const QByteArray bytes = fuzz::Bytes(data, size);
    {
        QFile file(path);
        fuzz::Require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                          file.write(bytes) == bytes.size(),
                      "the port file is written", path);
    }

    const files::PortSetting read = files::LoadPortSetting(path);
    if (bytes.isEmpty()) {
        fuzz::Require(read.result.outcome == model::Outcome::Fatal, "an empty port file stops the start");
        return 0;
    }
    fuzz::Require(read.result.ok(), "a port file with content gives a port", read.result.detail);
    fuzz::Require(read.port == ExpectedPort(bytes), "the port is the first line's number in range",
                  QString::number(read.port));

    // Saving goes through a synced atomic write: once per port is enough.
    static std::array<bool, 15> saved{};
    if (!saved[read.port]) {
        saved[read.port] = true;
        fuzz::Require(files::SavePortSetting(read.port, path).ok(), "the port file is saved");
        const files::PortSetting back = files::LoadPortSetting(path);
        fuzz::Require(back.result.ok() && back.port == read.port, "a saved port reads back");
    }
    return 0;
}
