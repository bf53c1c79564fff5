// The port dialog, the port a session opens (the remembered adapter, a device typed for this run) and
// what the error boxes tell beside their message when a port cannot be used.
#include "radio/virtualradio.h"
#include "ui/portdialog.h"
#include "windowfixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QSerialPort>
#include <QTimer>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zq::ui::test {
namespace {

using link::PortAccess;
using link::PortProbe;
using link::SerialPortDetails;

SerialPortDetails Port(const QString& device, const QString& stableId = QString(), quint16 vendor = 0,
                       quint16 product = 0, const char* description = "") {
    SerialPortDetails port;
    port.device = device;
    port.stableId = stableId;
    port.hasUsbIds = vendor != 0;
    port.vendorId = vendor;
    port.productId = product;
    port.description = QLatin1String(description);
    return port;
}

QString Text(const QDialog& dialog, const QString& name) {
    const auto* label = dialog.findChild<QLabel*>(name);
    return label ? label->text() : QStringLiteral("<no %1>").arg(name);
}

TEST(PortDialogRows, EachNumberShowsItsPortAdapterAndStateOrThatThereIsNone) {
    QList<SerialPortDetails> sixteen;
    QStringList fourteenRows;
    for (int i = 0; i < 16; ++i) {
        sixteen << Port(QStringLiteral("/dev/ttyUSB%1").arg(i, 2, 10, QLatin1Char('0')));
        if (i < link::kLastPortNumber) fourteenRows << sixteen.last().device + QStringLiteral("|||usable");
    }
    const struct {
        const char* name;
        QList<SerialPortDetails> listed;
        // device | USB | adapter | status, for the numbers that have a port
        QStringList rows;
        QString listing; // the sentence under the rows; empty: hidden
    } cases[] = {
        {"NoPortAtAll", {}, {}, QStringLiteral("The system lists no serial port.")},
        {"BuiltInPortAndCable",
         {Port(QStringLiteral("/dev/ttyS0")),
          Port(QStringLiteral("/dev/ttyUSB0"), QStringLiteral("/dev/serial/by-id/usb-FTDI_A5-if00-port0"),
               0x0403, 0x6001, "FTDI FT232R USB UART"),
          Port(QStringLiteral("/dev/ttyUSB1"), {}, 0x1a86, 0x7523, "WCH CH340")},
         {"/dev/ttyS0|||usable",
          "/dev/ttyUSB0|0403:6001|FTDI FT232R USB UART|permission denied (group dialout)",
          "/dev/ttyUSB1|1a86:7523|WCH CH340|busy: minicom (process 77)"},
         {}},
        {"MoreThanFourteen", sixteen, fourteenRows,
         QStringLiteral("Beyond COM 14 (enter one below to use it): "
                        "/dev/ttyUSB14, /dev/ttyUSB15")},
    };
    const auto prober = [](const QString& device) {
        if (device == QLatin1String("/dev/ttyUSB0"))
            return PortProbe{PortAccess::NoPermission, "dialout", {}, {}};
        if (device == QLatin1String("/dev/ttyUSB1"))
            return PortProbe{PortAccess::Busy, {}, "minicom (process 77)", {}};
        return PortProbe{};
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        PortDialog dialog;
        dialog.showPorts(link::NumberPorts(c.listed, prober), c.listed);
        for (int i = 0; i < link::kLastPortNumber; ++i) {
            const auto cell = [&](const char* name) {
                return dialog.findChild<QLabel*>(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
            };
            const QString shown = QStringList{cell("lblComDevice")->text(), cell("lblComUsb")->text(),
                                              cell("lblComAdapter")->text(), cell("lblComStatus")->text()}
                                      .join(QLatin1Char('|'));
            EXPECT_EQ(shown, i < c.rows.size() ? c.rows[i] : QStringLiteral("-|||")) << i;
            EXPECT_EQ(cell("lblComDevice")->isEnabled(), i < c.listed.size()) << i;
        }
        const auto* listing = dialog.findChild<QLabel*>(QStringLiteral("lblPortListing"));
        EXPECT_EQ(listing->isVisibleTo(&dialog), !c.listing.isEmpty());
        EXPECT_TRUE(listing->text().startsWith(c.listing)) << listing->text().toStdString();
    }
    // What to do about a port that cannot be used is one hover away.
    PortDialog dialog;
    const QList<SerialPortDetails> cable{Port(QStringLiteral("/dev/ttyUSB0"))};
    dialog.showPorts(link::NumberPorts(cable, prober), cable);
    EXPECT_TRUE(
        Text(dialog, QStringLiteral("lblComStatus_0")).startsWith(QLatin1String("permission denied")));
    EXPECT_TRUE(dialog.findChild<QLabel*>(QStringLiteral("lblComStatus_0"))
                    ->toolTip()
                    .contains(QLatin1String("sudo usermod -aG dialout $USER")));
}

// Two plain files stand for ports; the cable's stable name is a link to the second one.
TEST(PortSettingsAdapter, RemembersTheChosenAdapterAndFollowsItWhileItIsPluggedIn) {
    QTemporaryDir dir;
    files::SaveRememberedAdapter({});
    const auto file = [&](const char* name) {
        const QString path = dir.filePath(QLatin1String(name));
        WriteFile(path, "");
        return path;
    };
    const QString builtIn = file("ttyS0"), usb0 = file("ttyUSB0"), usb1 = file("ttyUSB1");
    const QString cable = dir.filePath(QStringLiteral("usb-Korvex_Cable-if00-port0"));
    ASSERT_TRUE(QFile::link(usb1, cable));
    const QString cableName = QFileInfo(cable).fileName();

    PortSettings ports;
    ports.setFilePath(dir.filePath(QStringLiteral("ZQ-318.ini")));
    ASSERT_TRUE(ports.load().ok());
    const struct {
        const char* step;
        QList<SerialPortDetails> listed;
        PortChoice choice;
        bool unplug = false;
        QString remembered; // the stable name kept for the number after the choice
        QString device;     // what a session opens then
        QString note;       // the dialog's sentence about the adapter, before the choice
    } steps[] = {
        {"cable chosen as COM 2", {Port(builtIn), Port(usb1, cable)}, {2, {}}, false, cable, usb1, {}},
        {"another adapter came first",
         {Port(usb0), Port(builtIn), Port(usb1, cable)},
         {2, {}},
         false,
         cable,
         usb1,
         QStringLiteral("COM  2 follows its adapter %1, now at %2.").arg(cableName, usb1)},
        {"a device typed for this run", {Port(usb0), Port(usb1, cable)}, {2, usb0}, false, cable, usb0, {}},
        {"a number typed", {Port(usb0), Port(usb1, cable)}, {2, QStringLiteral("1")}, false, cable, usb0, {}},
        {"cable unplugged",
         {Port(builtIn), Port(usb0)},
         {2, {}},
         true,
         QString(),
         usb0,
         QStringLiteral(
             "The adapter chosen for COM  2 (%1) is not plugged in; COM  2 stands for %2 until it is.")
             .arg(cableName, usb0)},
        {"a number without a port", {Port(builtIn)}, {5, {}}, false, QString(), QString(), {}},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.step);
        if (s.unplug) {
            ASSERT_TRUE(QFile::remove(cable));
        }
        EXPECT_EQ(ports.adapterNote(s.listed), s.note);
        ports.choose(s.choice, s.listed);
        EXPECT_EQ(ports.number(), s.choice.number);
        EXPECT_EQ(ports.adapter().identity, s.remembered);
        EXPECT_EQ(files::LoadRememberedAdapter().identity, s.remembered);
        EXPECT_EQ(files::LoadRememberedAdapter().port, s.choice.number);
        EXPECT_EQ(ports.resolve(s.listed).device, s.device);
    }
}

class WindowPortSetup : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(radio.open().ok());
        program->ports().setPortLister([this] { return listed; });
        ASSERT_TRUE(load().ok());
    }
    // Opens Tool > COM Port Setup, lets `act` look and choose, then presses OK.
    void setUpPort(const std::function<void(PortDialog&)>& act) {
        bool shown = false;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<PortDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            shown = true;
            act(*dialog);
            dialog->findChild<QAbstractButton*>(QStringLiteral("OKButton"))->click();
        });
        find<QAction>("mnuToolsOptions")->trigger();
        EXPECT_TRUE(shown);
    }
    // Auto Select; true when the radio was asked.
    bool autoSelectReachesTheRadio() {
        const qsizetype before = radio.commands().size();
        find<QAbstractButton>("cmdAuto")->click();
        return radio.commands().size() > before;
    }
    // The one box shown since the last look.
    MessageRequest takeBox() {
        EXPECT_EQ(boxes.shown.size(), 1);
        const MessageRequest box = boxes.shown.value(0);
        boxes.shown.clear();
        return box;
    }

    radio::VirtualRadio radio;
    QList<SerialPortDetails> listed;
};

TEST_F(WindowPortSetup, TheChosenCableIsFoundAgainAfterTheNumberingShifts) {
    const QString cable = temp.filePath(QStringLiteral("usb-Korvex_Cable-if00-port0"));
    ASSERT_TRUE(QFile::link(radio.devicePath(), cable));
    const QString absent = temp.filePath(QStringLiteral("ttyS0")),
                  absent2 = temp.filePath(QStringLiteral("ttyS1"));
    listed = {Port(absent), Port(radio.devicePath(), cable, 0x0403, 0x6001, "FTDI FT232R USB UART")};
    setUpPort([&](PortDialog& dialog) {
        EXPECT_EQ(Text(dialog, QStringLiteral("lblComDevice_1")), radio.devicePath());
        EXPECT_EQ(Text(dialog, QStringLiteral("lblComUsb_1")), QStringLiteral("0403:6001"));
        EXPECT_EQ(Text(dialog, QStringLiteral("lblComStatus_1")), QStringLiteral("usable"));
        EXPECT_EQ(Text(dialog, QStringLiteral("lblComStatus_0")), QStringLiteral("missing"));
        dialog.findChild<QRadioButton*>(QStringLiteral("opbCom_1"))->click();
    });
    EXPECT_EQ(files::LoadRememberedAdapter().identity, cable);
    EXPECT_TRUE(autoSelectReachesTheRadio());
    EXPECT_TRUE(boxes.shown.isEmpty());

    // Replugged after another adapter: the cable is COM 1 now, and COM 2 a port that is not there.
    listed = {Port(radio.devicePath(), cable), Port(absent), Port(absent2)};
    setUpPort([&](PortDialog& dialog) {
        EXPECT_TRUE(dialog.findChild<QRadioButton*>(QStringLiteral("opbCom_1"))->isChecked());
        EXPECT_TRUE(Text(dialog, QStringLiteral("lblAdapterNote"))
                        .contains(QStringLiteral("follows its adapter usb-Korvex_Cable-if00-port0")));
    });
    EXPECT_EQ(program->ports().number(), 2);
    EXPECT_TRUE(autoSelectReachesTheRadio());
    EXPECT_TRUE(boxes.shown.isEmpty());

    // Unplugged: COM 2 is what the numbering makes it, and the box names that device.
    ASSERT_TRUE(QFile::remove(cable));
    setUpPort([](PortDialog&) {});
    EXPECT_FALSE(autoSelectReachesTheRadio());
    const MessageRequest box = takeBox();
    EXPECT_EQ(box.text, QStringLiteral("COM Port Error"));
    EXPECT_TRUE(box.detail.startsWith(QStringLiteral("cannot open %1: no such device").arg(absent)))
        << box.detail.toStdString();
}

TEST_F(WindowPortSetup, AnotherDeviceWinsForThisRunAndTheNumberStaysWhatIsKept) {
    listed = {Port(temp.filePath(QStringLiteral("ttyS0")))};
    setUpPort([&](PortDialog& dialog) {
        dialog.findChild<QRadioButton*>(QStringLiteral("opbCom_13"))->click();
        dialog.findChild<QLineEdit*>(QStringLiteral("txtOtherDevice"))->setText(radio.devicePath());
    });
    EXPECT_EQ(program->ports().number(), 14);
    EXPECT_TRUE(autoSelectReachesTheRadio());
    EXPECT_TRUE(boxes.shown.isEmpty());
    ASSERT_TRUE(program->ports().save().ok());
    EXPECT_EQ(ReadFile(portFile()), QByteArray("14\r\n"));

    // The entry shows the device until a number is ticked; then COM 14 counts, which names no port here.
    setUpPort([&](PortDialog& dialog) {
        auto* other = dialog.findChild<QLineEdit*>(QStringLiteral("txtOtherDevice"));
        EXPECT_EQ(other->text(), radio.devicePath());
        dialog.findChild<QRadioButton*>(QStringLiteral("opbCom_13"))->click();
        EXPECT_TRUE(other->text().isEmpty());
    });
    EXPECT_FALSE(autoSelectReachesTheRadio());
    const MessageRequest box = takeBox();
    EXPECT_EQ(box.text, QStringLiteral("COM Port Error"));
    EXPECT_EQ(box.detail, QStringLiteral("no serial port COM 14; the ports there are: COM  1 %1")
                              .arg(temp.filePath(QStringLiteral("ttyS0"))));
}

// Each failure's box keeps its message and tells beside it the device and what to do.
TEST_F(WindowPortSetup, FailureBoxesNameTheDeviceAndWhatToDo) {
    const struct {
        const char* name;
        std::function<QString()> arrange; // the device for this run; empty: the port number's
        const char* message;
        QString detailStart;
    } cases[] = {
        {"Missing", [&] { return temp.filePath(QStringLiteral("ttyUSB7")); }, "COM Port Error",
         QStringLiteral("cannot open %1: no such device (is the cable plugged in?")
             .arg(temp.filePath(QStringLiteral("ttyUSB7")))},
        {"NoPortListed", [] { return QString(); }, "COM Port Error",
         QStringLiteral("no serial port COM  1; the system lists no serial port")},
        {"Silent",
         [&] {
             radio.addFault(radio::ParseFault(QStringLiteral("timeout@model")).value());
             return radio.devicePath();
         },
         "Communication Error",
         QStringLiteral("no reply to ZQ318 on %1 within 2000 ms").arg(radio.devicePath())},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        program->ports().setDeviceOverride(c.arrange());
        find<QAbstractButton>("cmdAuto")->click();
        const MessageRequest box = takeBox();
        EXPECT_EQ(box.text, QLatin1String(c.message));
        EXPECT_EQ(box.title, QStringLiteral("ERROR"));
        EXPECT_EQ(box.icon, MessageIcon::Critical);
        EXPECT_TRUE(box.detail.startsWith(c.detailStart)) << box.detail.toStdString();
    }

    // A terminal program has the cable open: the box says which. The dialog's OK closes the link first.
    program->transfers().choosePort({1, {}}, listed);
    QSerialPort terminal(radio.devicePath());
    ASSERT_TRUE(terminal.open(QIODevice::ReadWrite));
    program->ports().setDeviceOverride(radio.devicePath());
    find<QAbstractButton>("cmdAuto")->click();
    const MessageRequest box = takeBox();
    EXPECT_EQ(box.text, QStringLiteral("COM Port Error"));
    EXPECT_TRUE(
        box.detail.startsWith(QStringLiteral("cannot open %1: the port is busy: ").arg(radio.devicePath())))
        << box.detail.toStdString();
    EXPECT_TRUE(box.detail.contains(QStringLiteral("(process %1)").arg(QCoreApplication::applicationPid())))
        << box.detail.toStdString();
}

// A device this user may not open: the box names its group and the command that joins it. The
// superuser may open anything, so then the check runs again as nobody on a device of the group
// dialout, as udev makes them (below).
TEST_F(WindowPortSetup, PermissionDeniedNamesTheGroupAndTheCommand) {
    const QByteArray path = QFile::encodeName(radio.devicePath());
    if (geteuid() != 0) {
        ASSERT_EQ(chmod(path.constData(), 0), 0);
        program->ports().setDeviceOverride(radio.devicePath());
        find<QAbstractButton>("cmdAuto")->click();
        const MessageRequest box = takeBox();
        const QString group = QFileInfo(radio.devicePath()).group();
        EXPECT_EQ(box.text, QStringLiteral("COM Port Error"));
        EXPECT_TRUE(box.detail.startsWith(
            QStringLiteral("cannot open %1: permission denied").arg(radio.devicePath())));
        EXPECT_TRUE(box.detail.contains(QStringLiteral("sudo usermod -aG %1 $USER").arg(group)))
            << box.detail.toStdString();
        return;
    }
    const group* dialout = getgrnam("dialout");
    ASSERT_TRUE(dialout);
    ASSERT_EQ(chown(path.constData(), 0, dialout->gr_gid), 0);
    ASSERT_EQ(chmod(path.constData(), 0660), 0);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ZQ_DENIED_DEVICE"), radio.devicePath());
    child.setProcessEnvironment(environment);
    child.start(QStringLiteral("setpriv"),
                {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                 QStringLiteral("--clear-groups"), QCoreApplication::applicationFilePath(),
                 QStringLiteral("--gtest_filter=WindowPortSetup.DeniedDeviceAsAnotherUser")});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QString output =
        QString::fromLocal8Bit(child.readAllStandardOutput() + child.readAllStandardError());
    EXPECT_EQ(child.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains(QLatin1String("[  PASSED  ] 1 test"))) << output.toStdString();
}

// Run by the test above as nobody.
TEST_F(WindowPortSetup, DeniedDeviceAsAnotherUser) {
    const QString device = qEnvironmentVariable("ZQ_DENIED_DEVICE");
    if (device.isEmpty()) GTEST_SKIP() << "run as nobody by PermissionDeniedNamesTheGroupAndTheCommand";
    program->ports().setDeviceOverride(device);
    find<QAbstractButton>("cmdAuto")->click();
    const MessageRequest box = takeBox();
    EXPECT_EQ(box.text, QStringLiteral("COM Port Error"));
    EXPECT_EQ(box.detail,
              QStringLiteral("cannot open %1: permission denied: the device belongs to group dialout; "
                             "join it with \"sudo usermod -aG dialout $USER\", then log out and back in")
                  .arg(device))
        << box.detail.toStdString();
}

} // namespace
} // namespace zq::ui::test
