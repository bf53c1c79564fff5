#pragma once
// The port file "ZQ-318.ini" and the stored window geometry.
#include "model/outcome.h"

#include <QRect>
#include <QString>

namespace zq::files {

// The folder of the program when it can write there, else the per-user configuration folder.
QString PortFilePath();
QString PortFileName(); // "ZQ-318.ini"

struct PortSetting {
    model::Result result; // Fatal for an empty port file (reading past its end)
    int port = 1;         // 1..14
};
// A missing file, one under another letter case, or a value outside 1..14 gives port 1.
PortSetting LoadPortSetting(const QString& path = PortFilePath());
// Writes the number, CR LF. Fatal when the file cannot be written.
model::Result SavePortSetting(int port, const QString& path = PortFilePath());
// "MainLeft", "MainTop", "MainWidth", "MainHeight" in twips under the application title,
// section "Settings". Nothing reads them back.
void SaveWindowGeometry(const QRect& geometry);
inline constexpr int kTwipsPerPixel = 15; // at 96 dpi

} // namespace zq::files
