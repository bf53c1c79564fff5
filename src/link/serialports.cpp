#include "serialports.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>

namespace zq::link {

QString SerialPortDetails::usbIds() const {
    if (!hasUsbIds) return QString();
    return QStringLiteral("%1:%2")
        .arg(vendorId, 4, 16, QLatin1Char('0'))
        .arg(productId, 4, 16, QLatin1Char('0'));
}

QString KnownCableAdapter(quint16 vendorId, quint16 productId) {
    struct Adapter {
        quint16 vendor, product;
        const char* name;
    };
    // Keep in step with the udev rule installed for these adapters.
    static const Adapter adapters[] = {
        {0x0403, 0x6001, "FTDI FT232R"},
        {0x067b, 0x2303, "Prolific PL2303"},
        {0x1a86, 0x7523, "WCH CH340"},
        {0x10c4, 0xea60, "Silicon Labs CP210x"},
    };
    for (const Adapter& adapter : adapters)
        if (adapter.vendor == vendorId && adapter.product == productId)
            return QString::fromLatin1(adapter.name);
    return QString();
}

QString DescribePort(const QString& manufacturer, const QString& description, bool hasUsbIds,
                     quint16 vendorId, quint16 productId) {
    const QString maker = manufacturer.trimmed(), what = description.trimmed();
    if (what.isEmpty() && maker.isEmpty())
        return hasUsbIds ? KnownCableAdapter(vendorId, productId) : QString();
    if (maker.isEmpty() || what.contains(maker, Qt::CaseInsensitive)) return what;
    if (what.isEmpty()) return maker;
    return maker + QLatin1Char(' ') + what;
}

QString StableIdOf(const QString& device, const QString& byIdFolder) {
    const QString target = QFileInfo(device).canonicalFilePath();
    if (target.isEmpty()) return QString();
    const QDir folder(byIdFolder);
    const QStringList links = folder.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : links) {
        const QString link = folder.filePath(name);
        if (QFileInfo(link).canonicalFilePath() == target) return link;
    }
    return QString();
}

QString DeviceOfStableId(const QString& stableId) {
    if (stableId.isEmpty()) return QString();
    return QFileInfo(stableId).canonicalFilePath();
}

QList<SerialPortDetails> ListedPorts(const QString& byIdFolder) {
    QList<SerialPortDetails> ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        SerialPortDetails port;
        port.device = info.systemLocation();
        port.stableId = StableIdOf(port.device, byIdFolder);
        port.hasUsbIds = info.hasVendorIdentifier() && info.hasProductIdentifier();
        port.vendorId = info.vendorIdentifier();
        port.productId = info.productIdentifier();
        port.description = DescribePort(info.manufacturer(), info.description(), port.hasUsbIds,
                                        port.vendorId, port.productId);
        ports << port;
    }
    std::sort(ports.begin(), ports.end(),
              [](const SerialPortDetails& a, const SerialPortDetails& b) { return a.device < b.device; });
    return ports;
}

} // namespace zq::link
