#pragma once
// Files named by the user are opened for reading only when they are regular files of a sane size: a
// folder, a FIFO or a device is refused before it is opened (opening a FIFO waits for a writer, opening
// a serial device toggles its lines), and a file far larger than anything the program writes is
// refused without being read.
#include "model/outcome.h"

#include <QFile>
#include <QString>

namespace zq::files {

struct InputFile {
    enum class Fault { None, CannotRead, TooLarge };
    Fault fault = Fault::None;
    QString why; // "PATH: reason" when refused
    bool ok() const { return fault == Fault::None; }
    // The refusal as a result: a file that big is at fault in its contents ("Data Error"); one that
    // cannot be read gives `unreadable`, the reader's own outcome for that.
    zq::model::Result refusal(zq::model::Outcome unreadable) const {
        return zq::model::Result::fail(fault == Fault::TooLarge ? zq::model::Outcome::DataError : unreadable,
                                       why);
    }
};

// Opens `path` read-only into `file`. `maxBytes` < 0 sets no size limit.
InputFile OpenInputFile(QFile& file, const QString& path, qint64 maxBytes);

// Why no file can be written in place of `path` (empty when one can): it names a folder, a device, a
// FIFO or a socket. Replacing such a thing would destroy it, not write into it. The reason does not
// name the path.
QString OutputTargetFault(const QString& path);

} // namespace zq::files
