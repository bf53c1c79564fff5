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

QList<NumberedPort> NumberPorts(const QList<SerialPortDetails>& listed, const PortProber& probe) {
    QList<NumberedPort> numbered;
    for (int number = kFirstPortNumber; number <= kLastPortNumber; ++number) {
        NumberedPort entry;
        entry.number = number;
#ifdef Q_OS_WIN
        entry.port.device = QStringLiteral("COM%1").arg(number);
        for (const SerialPortDetails& port : listed)
            if (port.device.endsWith(entry.port.device)) entry.port = port;
#else
        if (number <= listed.size()) entry.port = listed.at(number - 1);
#endif
        if (entry.port.device.isEmpty())
            entry.probe.access = PortAccess::Missing;
        else
            entry.probe = probe(entry.port.device);
        numbered << entry;
    }
    return numbered;
}

QString ListedPortsText(const QList<SerialPortDetails>& listed) {
    if (listed.isEmpty()) return QStringLiteral("the system lists no serial port");
    QStringList ports;
    for (qsizetype i = 0; i < listed.size(); ++i) {
        const SerialPortDetails& port = listed.at(i);
#ifdef Q_OS_WIN
        QString text = port.device;
#else
        QString text =
            i < kLastPortNumber ? PortCaption(int(i) + 1) + QLatin1Char(' ') + port.device : port.device;
#endif
        if (!port.description.isEmpty()) text += QStringLiteral(" (%1)").arg(port.description);
        ports << text;
    }
    return QStringLiteral("the ports there are: ") + ports.join(QStringLiteral(", "));
}

ResolvedPort ResolvePortNumber(int number, int rememberedNumber, const QString& rememberedId,
                               const QStringList& listed) {
    if (number == rememberedNumber && !rememberedId.isEmpty()) {
        const QString device = DeviceOfStableId(rememberedId);
        if (!device.isEmpty()) return {device, true};
    }
    return {DeviceForPortNumber(number, listed), false};
}

} // namespace zq::link
