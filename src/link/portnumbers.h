#pragma once
// Port numbers 1..14 of the port dialog and the devices they stand for.
#include "portaccess.h"
#include "serialports.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace zq::link {

inline constexpr int kFirstPortNumber = 1;
inline constexpr int kLastPortNumber = 14;
inline constexpr int kDefaultPortNumber = 1;

// "COM  1".."COM  9" (two blanks so that the digits line up), "COM 10".."COM 14".
QString PortCaption(int number);

// The serial ports the system lists, sorted by device name (full device paths).
QStringList ListedPortDevices();

// Port number n: "COMn" on Windows; elsewhere the n-th of `listed` (1-based), empty when there is
// no such port or n is outside 1..14.
QString DeviceForPortNumber(int number, const QStringList& listed);
QString DeviceForPortNumber(int number);

// A --port argument: a number 1..14 names a port as above; anything else is a device path, taken
// as it is.
QString DeviceForPortArgument(const QString& argument, const QStringList& listed);
QString DeviceForPortArgument(const QString& argument);

// Numbers 1..14 with the port each stands for now and whether it can be opened.
struct NumberedPort {
    int number = 0;
    SerialPortDetails port; // device empty when the system lists no port for the number
    PortProbe probe;        // Missing when there is no port
};
using PortProber = std::function<PortProbe(const QString& device)>;
QList<NumberedPort> NumberPorts(
    const QList<SerialPortDetails>& listed,
    const PortProber& probe = [](const QString& d) { return ProbePort(d); });

// "the ports there are: COM  1 /dev/ttyS0, COM  2 /dev/ttyUSB0 (FTDI FT232R USB UART)", or "the
// system lists no serial port", for messages about a number that names none.
QString ListedPortsText(const QList<SerialPortDetails>& listed);

// The port a session uses for port number `number` when the adapter chosen for `rememberedNumber`
// is remembered by its stable name: while that adapter is plugged in, its device wherever the
// numbering now puts it; otherwise (another number, no stable name, unplugged) the number's device.
struct ResolvedPort {
    QString device;        // empty when the number names no port
    bool followed = false; // the remembered adapter was found by its stable name
};
ResolvedPort ResolvePortNumber(int number, int rememberedNumber, const QString& rememberedId,
                               const QStringList& listed);

} // namespace zq::link
