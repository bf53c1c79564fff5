#pragma once
// Port numbers 1..14 of the port dialog and the devices they stand for.
#include <QString>
#include <QStringList>

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

} // namespace zq::link
