#pragma once
// Replacing a file as a whole: the data go to a temporary file beside it, which takes the file's
// place only when every byte was written, so a failed write leaves the previous file as it was.
#include <QByteArray>
#include <QString>

namespace zq::files {

// Empty on success, else the reason. A folder, device or FIFO at `path` is refused, never replaced.
QString WriteFileAtomically(const QString& path, const QByteArray& bytes);

} // namespace zq::files
