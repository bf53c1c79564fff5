#pragma once
// Whether a serial device can be opened now, and if not, why in words a user can act on: a missing
// device, a group to join, a port another program holds.
#include <QSerialPort>
#include <QString>

namespace zq::link {

enum class PortAccess {
    Usable,
    Missing,      // no such device (an adapter unplugged, a mistyped path)
    NoPermission, // the device exists but this user may not open it
    Busy,         // another program has it open
    Unusable,     // anything else the system reports
};

struct PortProbe {
    PortAccess access = PortAccess::Usable;
    QString group;  // NoPermission: the group that owns the device
    QString holder; // Busy: the program holding it, when its lock file tells ("zq318-utility (process 412)")
    QString why;    // the system's own words
};

// Looks at the device without changing it: exists, may be opened by this user, not locked or held
// exclusively by another program. The lock files are sought in `lockFolder` (empty: where serial
// programs keep them on this system).
PortProbe ProbePort(const QString& device, const QString& lockFolder = QString());

// What an errno from opening a device means for the user.
PortAccess AccessForErrno(int error);

// Why an open failed: what the probe saw from outside, else what the open itself met (the serial
// port's error and the errno it left, `why` in the system's words).
PortProbe ExplainOpenFailure(const PortProbe& seen, QSerialPort::SerialPortError error, int savedErrno,
                             const QString& why);

// A few words for the port dialog and `zq318 ports`: "usable", "permission denied (group dialout)",
// "busy: zq318-utility (process 412)", "missing", or the system's words.
QString AccessSummary(const PortProbe& probe);

// The sentence that follows "cannot open DEVICE: " when a session cannot start, with what to do:
// the group to join and the command for it, the program to close.
QString AccessAdvice(const PortProbe& probe);

// The folder of serial lock files ("LCK..ttyUSB0"): the first of the usual ones this user can use.
QString SerialLockFolder();

} // namespace zq::link
