// The port list a user picks from, why a port cannot be opened, and the cable found again by its
// adapter's stable name.
#include "linkfixture.h"

#include "link/portnumbers.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cerrno>
#include <unistd.h>

using namespace zq::link;

namespace {

bool WriteText(const QString& path, const QByteArray& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

TEST(PortAccessTest, OpenFailuresExplained) {
    PortProbe missing;
    missing.access = PortAccess::Missing;
    struct Case {
        const char* name;
        PortProbe seen;
        QSerialPort::SerialPortError error;
        int savedErrno;
        PortAccess access;
    };
    const Case cases[] = {
        {"ProbeWins", missing, QSerialPort::PermissionError, EACCES, PortAccess::Missing},
        {"NotFound", {}, QSerialPort::DeviceNotFoundError, ENOENT, PortAccess::Missing},
        {"Denied", {}, QSerialPort::PermissionError, EACCES, PortAccess::NoPermission},
        {"LockedElsewhere", {}, QSerialPort::PermissionError, 0, PortAccess::Busy},
        {"HeldExclusively", {}, QSerialPort::PermissionError, EBUSY, PortAccess::Busy},
        {"BusyAsOpenError", {}, QSerialPort::OpenError, EBUSY, PortAccess::Busy},
        {"InputOutput", {}, QSerialPort::ResourceError, EIO, PortAccess::Unusable},
    };
    for (const Case& c : cases) {
        const PortProbe probe =
            ExplainOpenFailure(c.seen, c.error, c.savedErrno, QStringLiteral("the words"));
        EXPECT_EQ(probe.access, c.access) << c.name;
        EXPECT_FALSE(AccessAdvice(probe).isEmpty()) << c.name;
    }
}

TEST(PortAccessTest, AdviceSaysWhatToDo) {
    struct Case {
        PortAccess access;
        const char* group;
        const char* holder;
        const char* advice; // a piece of the advice
        const char* summary;
    };
    const Case cases[] = {
        {PortAccess::NoPermission, "dialout", "",
         "\"sudo usermod -aG dialout $USER\", then log out and back in", "permission denied (group dialout)"},
        {PortAccess::NoPermission, "root", "", "only the administrator", "permission denied (group root)"},
        {PortAccess::Busy, "", "zq318-utility (process 412)", "zq318-utility (process 412) has it open",
         "busy: zq318-utility (process 412)"},
        {PortAccess::Busy, "", "", "another program has it open", "busy"},
        {PortAccess::Missing, "", "", "zq318 ports", "missing"},
    };
    for (const Case& c : cases) {
        PortProbe probe;
        probe.access = c.access;
        probe.group = QString::fromLatin1(c.group);
        probe.holder = QString::fromLatin1(c.holder);
        EXPECT_TRUE(AccessAdvice(probe).contains(QLatin1String(c.advice)))
            << AccessAdvice(probe).toStdString();
        EXPECT_EQ(AccessSummary(probe), QLatin1String(c.summary));
    }
}

// A live process's lock file makes a port busy, a dead one's does not; the lock may be named after
// the device a stable name leads to.
TEST(PortAccessTest, ProbeSeesMissingDevicesAndLiveLocks) {
    QTemporaryDir dir;
    const QString device = dir.filePath(QStringLiteral("ttyUSB7"));
    ASSERT_TRUE(WriteText(device, ""));
    const QString byId = dir.filePath(QStringLiteral("usb-FTDI_FT232R_USB_UART_A1-if00-port0"));
    ASSERT_TRUE(QFile::link(device, byId));
    const QString locks = dir.filePath(QStringLiteral("locks"));
    ASSERT_TRUE(QDir().mkpath(locks));
    const QByteArray me = QByteArray::number(QCoreApplication::applicationPid());
    // Serial programs name the lock after the path below /dev, slashes made underscores; this device is not
    // below /dev.
    const QString lockName =
        QStringLiteral("LCK..") + QString(device).replace(QLatin1Char('/'), QLatin1Char('_'));

    struct Case {
        const char* name;
        QString device;
        QByteArray lock; // contents of the device's lock file; none when empty
        PortAccess access;
        QString holder;
    };
    const Case cases[] = {
        {"Missing", dir.filePath(QStringLiteral("ttyUSB9")), "", PortAccess::Missing, {}},
        {"Free", device, "", PortAccess::Usable, {}},
        {"QtLock", device, me + "\nzq318-utility\nhost\n", PortAccess::Busy,
         QStringLiteral("zq318-utility (process %1)").arg(QLatin1String(me))},
        {"PaddedPidLock", device, "     " + me + "\n", PortAccess::Busy,
         QStringLiteral("process %1").arg(QLatin1String(me))},
        {"StaleLock", device, "2147483646\nzq318\n", PortAccess::Usable, {}},
        {"LockOfTheTarget", byId, me + "\nzq318\n", PortAccess::Busy,
         QStringLiteral("zq318 (process %1)").arg(QLatin1String(me))},
    };
    for (const Case& c : cases) {
        QFile::remove(QDir(locks).filePath(lockName));
        if (!c.lock.isEmpty()) {
            ASSERT_TRUE(WriteText(QDir(locks).filePath(lockName), c.lock));
        }
        const PortProbe probe = ProbePort(c.device, locks);
        EXPECT_EQ(probe.access, c.access) << c.name;
        EXPECT_EQ(probe.holder, c.holder) << c.name;
    }

    if (geteuid() != 0) { // the superuser may open anything; the command-line test covers it as nobody
        ASSERT_TRUE(QFile::setPermissions(device, {}));
        const PortProbe probe = ProbePort(device, locks);
        EXPECT_EQ(probe.access, PortAccess::NoPermission);
        EXPECT_FALSE(probe.group.isEmpty());
    }
}

// Stable names and the adapters the udev rule lets users open: the rule and the table agree.
TEST(SerialPortsTest, AdaptersAndStableNames) {
    QTemporaryDir dir;
    const QString usb0 = dir.filePath(QStringLiteral("ttyUSB0")),
                  usb1 = dir.filePath(QStringLiteral("ttyUSB1"));
    ASSERT_TRUE(WriteText(usb0, "") && WriteText(usb1, ""));
    const QString byId = dir.filePath(QStringLiteral("by-id"));
    ASSERT_TRUE(QDir().mkpath(byId));
    const QString cable = QDir(byId).filePath(QStringLiteral("usb-Prolific_PL2303-if00-port0"));
    ASSERT_TRUE(QFile::link(usb1, cable));

    EXPECT_EQ(StableIdOf(usb1, byId), cable);
    EXPECT_EQ(StableIdOf(usb0, byId), QString());
    EXPECT_EQ(DeviceOfStableId(cable), QFileInfo(usb1).canonicalFilePath());
    EXPECT_EQ(DeviceOfStableId(QDir(byId).filePath(QStringLiteral("usb-gone"))), QString());

    QFile rule(QStringLiteral(ZQ_SOURCE_DIR "/data/60-zq318-cables.rules"));
    ASSERT_TRUE(rule.open(QIODevice::ReadOnly));
    const QRegularExpression ids(QStringLiteral("idVendor}==\"(\\w{4})\", ATTRS{idProduct}==\"(\\w{4})\""));
    int adapters = 0;
    for (auto match = ids.globalMatch(QString::fromLatin1(rule.readAll())); match.hasNext(); ++adapters) {
        const auto found = match.next();
        EXPECT_FALSE(KnownCableAdapter(found.captured(1).toUShort(nullptr, 16),
                                       found.captured(2).toUShort(nullptr, 16))
                         .isEmpty())
            << found.captured(0).toStdString();
    }
    EXPECT_EQ(adapters, 4);

    const std::tuple<const char*, const char*, bool, const char*> descriptions[] = {
        {"FTDI", "FT232R USB UART", true, "FTDI FT232R USB UART"},
        {"Prolific", "USB-Serial Controller (Prolific)", true, "USB-Serial Controller (Prolific)"},
        {"", "", true, "WCH CH340"}, // 1a86:7523 named from its ids
        {"", "", false, ""},
        {"Acme", "", false, "Acme"},
    };
    for (const auto& [maker, what, usb, expected] : descriptions)
        EXPECT_EQ(DescribePort(QLatin1String(maker), QLatin1String(what), usb, 0x1a86, 0x7523),
                  QLatin1String(expected))
            << expected;
}

TEST(PortNumbersTest, NumbersOneToFourteenWithTheirPorts) {
    QList<SerialPortDetails> listed;
    for (int i = 0; i < 16; ++i) {
        SerialPortDetails port;
        port.device = QStringLiteral("/dev/ttyS%1").arg(i, 2, 10, QLatin1Char('0'));
        listed << port;
    }
    listed[1].hasUsbIds = true;
    listed[1].vendorId = 0x0403;
    listed[1].productId = 0x6001;
    listed[1].description = QStringLiteral("FTDI FT232R USB UART");
    QStringList probed;
    const auto prober = [&probed](const QString& device) {
        probed << device;
        PortProbe probe;
        if (device.endsWith(QLatin1String("03"))) probe.access = PortAccess::NoPermission;
        return probe;
    };

    const QList<NumberedPort> numbered = NumberPorts(listed, prober);
    ASSERT_EQ(numbered.size(), 14);
    EXPECT_EQ(probed.size(), 14); // ports beyond COM 14 are not looked at
    EXPECT_EQ(numbered[1].number, 2);
    EXPECT_EQ(numbered[1].port.usbIds(), QStringLiteral("0403:6001"));
    EXPECT_EQ(numbered[3].probe.access, PortAccess::NoPermission);
    EXPECT_EQ(numbered[13].port.device, QStringLiteral("/dev/ttyS13"));

    probed.clear();
    for (const NumberedPort& entry : NumberPorts({}, prober))
        EXPECT_EQ(entry.probe.access, PortAccess::Missing) << entry.number;
    EXPECT_TRUE(probed.isEmpty());

    EXPECT_EQ(ListedPortsText({}), QStringLiteral("the system lists no serial port"));
    EXPECT_EQ(
        ListedPortsText(listed.mid(0, 2)),
        QStringLiteral("the ports there are: COM  1 /dev/ttyS00, COM  2 /dev/ttyS01 (FTDI FT232R USB UART)"));
}

// The cable chosen for COM 2 was /dev/ttyUSB0; another adapter plugged in first moved it to ttyUSB1.
TEST(PortNumbersTest, RememberedAdapterFoundWhereverItIsNumbered) {
    QTemporaryDir dir;
    const QString usb0 = dir.filePath(QStringLiteral("ttyUSB0")),
                  usb1 = dir.filePath(QStringLiteral("ttyUSB1"));
    ASSERT_TRUE(WriteText(usb0, "") && WriteText(usb1, ""));
    const QString cable = dir.filePath(QStringLiteral("usb-FTDI_FT232R_USB_UART_A1-if00-port0"));
    ASSERT_TRUE(QFile::link(usb1, cable));
    const QString unplugged = dir.filePath(QStringLiteral("usb-FTDI_FT232R_USB_UART_B2-if00-port0"));
    const QStringList listed{QStringLiteral("/dev/ttyS0"), usb0, usb1};
    const QString moved = QFileInfo(usb1).canonicalFilePath();

    struct Case {
        const char* name;
        int number, rememberedNumber;
        QString identity;
        QString device;
        bool followed;
    };
    const Case cases[] = {
        {"Followed", 2, 2, cable, moved, true},
        {"Unplugged", 2, 2, unplugged, usb0, false},
        {"OtherNumber", 3, 2, cable, usb1, false},
        {"NoStableName", 1, 1, QString(), QStringLiteral("/dev/ttyS0"), false},
        {"NoSuchNumber", 5, 2, cable, QString(), false},
    };
    for (const Case& c : cases) {
        const ResolvedPort resolved = ResolvePortNumber(c.number, c.rememberedNumber, c.identity, listed);
        EXPECT_EQ(resolved.device, c.device) << c.name;
        EXPECT_EQ(resolved.followed, c.followed) << c.name;
    }
}

// A second opener is told who holds the port, and every failure names its device.
using BusyPortTest = linktest::RadioTest;

TEST_F(BusyPortTest, SecondOpenerIsToldWhoHoldsThePort) {
    ASSERT_TRUE(link.open().ok());
    zq::link::SerialLink second;
    second.setPortName(radio.devicePath());
    const zq::model::Result opened = second.open();
    EXPECT_EQ(opened.outcome, zq::model::Outcome::ComPortError);
    EXPECT_TRUE(
        opened.detail.startsWith(QStringLiteral("cannot open %1: the port is busy").arg(radio.devicePath())))
        << opened.detail.toStdString();
    EXPECT_TRUE(opened.detail.contains(QStringLiteral("process %1").arg(QCoreApplication::applicationPid())))
        << opened.detail.toStdString();
}

} // namespace
