#include "portnumbers.h"

#include <QSerialPortInfo>
#include <algorithm>

namespace zq::link {

QString PortCaption(int number) {
    return QStringLiteral("COM %1").arg(number, 2);
}

QStringList ListedPortDevices() {
    QStringList devices;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        devices << info.systemLocation();
    std::sort(devices.begin(), devices.end());
    return devices;
}

QString DeviceForPortNumber(int number, const QStringList& listed) {
    if (number < kFirstPortNumber || number > kLastPortNumber) return QString();
#ifdef Q_OS_WIN
    Q_UNUSED(listed);
    return QStringLiteral("COM%1").arg(number);
#else
    return number <= listed.size() ? listed.at(number - 1) : QString();
#endif
}

QString DeviceForPortNumber(int number) {
#ifdef Q_OS_WIN
    return DeviceForPortNumber(number, QStringList());
#else
    return DeviceForPortNumber(number, ListedPortDevices());
#endif
}

namespace {
bool IsPortNumber(const QString& argument, int& number) {
    bool ok = false;
    number = argument.toInt(&ok);
    return ok && !argument.isEmpty() && argument.at(0).isDigit() && number >= kFirstPortNumber &&
           number <= kLastPortNumber;
}
} // namespace

QString DeviceForPortArgument(const QString& argument, const QStringList& listed) {
    int number = 0;
    return IsPortNumber(argument, number) ? DeviceForPortNumber(number, listed) : argument;
}

QString DeviceForPortArgument(const QString& argument) {
    int number = 0;
    return IsPortNumber(argument, number) ? DeviceForPortNumber(number) : argument;
}

} // namespace zq::link
