#pragma once
// The serial ports the system lists, with what a user recognises them by: the adapter's stable name,
// its USB vendor and product, its description.
#include <QList>
#include <QString>

namespace zq::link {

// Where udev keeps one link per USB serial adapter, named after its maker, model and serial number;
// the name stays the same whichever device number the adapter gets.
inline const QString kSerialByIdFolder = QStringLiteral("/dev/serial/by-id");

struct SerialPortDetails {
    QString device;   // "/dev/ttyUSB0"
    QString stableId; // "/dev/serial/by-id/usb-FTDI_FT232R_USB_UART_A50285BI-if00-port0", or empty
    bool hasUsbIds = false;
    quint16 vendorId = 0;
    quint16 productId = 0;
    QString description; // "FTDI FT232R USB UART"; empty when the system tells nothing

    QString usbIds() const; // "0403:6001", or empty
};

// The system's serial ports, sorted by device, each with the link in `byIdFolder` that leads to it.
QList<SerialPortDetails> ListedPorts(const QString& byIdFolder = kSerialByIdFolder);

// The link in `byIdFolder` that leads to `device`; empty when there is none (a built-in port, a
// pseudo-terminal).
QString StableIdOf(const QString& device, const QString& byIdFolder = kSerialByIdFolder);

// The device a stable name leads to now; empty when that adapter is not plugged in.
QString DeviceOfStableId(const QString& stableId);

// The maker and chip of the USB serial adapters that clone cables are built on; empty for others.
QString KnownCableAdapter(quint16 vendorId, quint16 productId);

// The system's description of a port: the maker first unless the description already names it,
// else the known adapter's name.
QString DescribePort(const QString& manufacturer, const QString& description, bool hasUsbIds,
                     quint16 vendorId, quint16 productId);

} // namespace zq::link
