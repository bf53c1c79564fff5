#pragma once
// The port file "ZQ-318.ini" and the stored window geometry.
#include "model/outcome.h"

#include <QRect>
#include <QString>

namespace zq::files {

// The folder of the program when it can write there, else the per-user configuration folder. An
// installed program never writes beside itself: its folder is the system's, shared by all users.
QString PortFilePath();
QString PortFileName(); // "ZQ-318.ini"
// The folder PortFilePath() chooses for a program in `programDir`, installed into `installedBinDir`.
QString PortFileFolder(const QString& programDir, const QString& installedBinDir,
                       const QString& userConfigDir);

struct PortSetting {
    model::Result result; // Fatal for an empty port file (reading past its end)
    int port = 1;         // 1..14
};
// A missing file, one under another letter case, or a value outside 1..14 gives port 1.
PortSetting LoadPortSetting(const QString& path = PortFilePath());
// Writes the number, CR LF, making the per-user folder if it is not there yet. Fatal when the file
// cannot be written.
model::Result SavePortSetting(int port, const QString& path = PortFilePath());
// "MainLeft", "MainTop", "MainWidth", "MainHeight" in twips under the application title,
// section "Settings". Nothing reads them back.
void SaveWindowGeometry(const QRect& geometry);
inline constexpr int kTwipsPerPixel = 15; // at 96 dpi

// The serial adapter chosen for a port number, by its stable name (a /dev/serial/by-id link), kept in
// the per-user settings beside the number so that the same cable is found when the numbering shifts.
struct RememberedAdapter {
    int port = 0;     // the port number it was chosen for; 0 when none is remembered
    QString identity; // empty when the port has no stable name (a built-in port)
};
RememberedAdapter LoadRememberedAdapter();
void SaveRememberedAdapter(const RememberedAdapter& adapter);

} // namespace zq::files
