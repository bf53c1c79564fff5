#include "transfercontroller.h"

#include "link/portnumbers.h"
#include "link/seriallink.h"
#include "link/transfers.h"
#include "messageboxes.h"
#include "model/document.h"
#include "portdialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>

namespace zq::ui {

namespace {
struct BusyGuard {
    explicit BusyGuard(bool& flag) : flag_(flag) { flag_ = true; }
    ~BusyGuard() { flag_ = false; }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

private:
    bool& flag_;
};
} // namespace

using model::Outcome;
using model::Result;

TransferController::TransferController(model::Document& document, link::SerialLink& link, MessageBoxes& boxes,
                                       TransferControls controls, QWidget* dialogParent, QObject* parent)
    : QObject(parent), document_(document), link_(link), boxes_(boxes), controls_(std::move(controls)),
      dialogParent_(dialogParent) {
    // The window reports the clicks of the transfer buttons; the service panel is bound here.
    if (controls_.serviceRead)
        connect(controls_.serviceRead, &QAbstractButton::clicked, this, &TransferController::serviceRead);
    if (controls_.serviceClear)
        connect(controls_.serviceClear, &QAbstractButton::clicked, this, &TransferController::serviceClear);
    if (controls_.serviceDump)
        connect(controls_.serviceDump, &QAbstractButton::clicked, this, &TransferController::serviceDump);
    if (controls_.progress) {
        controls_.progress->setRange(0, 199);
        controls_.progress->setValue(0);
        controls_.progress->hide();
    }
}

void TransferController::handle(TransferCommand command) {
    switch (command) {
    case TransferCommand::ReadMemory: readMemory(); break;
    case TransferCommand::WriteMemory: writeMemory(); break;
    case TransferCommand::ReadSettings: readSettings(); break;
    case TransferCommand::WriteSettings: writeSettings(); break;
    case TransferCommand::AutoSelect: autoSelect(); break;
    case TransferCommand::MenuReadSettings: menuReadSettings(); break;
    case TransferCommand::MenuReadMemory: menuReadMemory(); break;
    case TransferCommand::MenuReadAll: menuReadAll(); break;
    case TransferCommand::MenuWriteSettings: menuWriteSettings(); break;
    case TransferCommand::MenuWriteMemory: menuWriteMemory(); break;
    case TransferCommand::MenuWriteAll: menuWriteAll(); break;
    case TransferCommand::PortSetup: portSetup(); break;
    }
}

void TransferController::setPortNumber(int number) {
    portNumber_ = (number >= 1 && number <= 14) ? number : 1;
}

void TransferController::setDeviceOverride(const QString& device) {
    deviceOverride_ = device;
}

// Listing the system's ports takes a while, so the device is looked up when a session starts.
void TransferController::applyDevice() {
    if (link_.isOpen()) return;
    const QString device = deviceOverride_.isEmpty() ? link::DeviceForPortNumber(portNumber_)
                                                     : link::DeviceForPortArgument(deviceOverride_);
    link_.setPortName(device);
}

void TransferController::setEnabled(std::initializer_list<QAbstractButton*> buttons, bool enabled) {
    for (QAbstractButton* button : buttons)
        if (button) button->setEnabled(enabled);
}

void TransferController::beginBusy() {
    if (!busyCursor_) QApplication::setOverrideCursor(Qt::WaitCursor);
    busyCursor_ = true;
}

void TransferController::finish(const Result& result) {
    if (result.outcome == Outcome::CommunicationError || result.outcome == Outcome::ComPortError ||
        result.outcome == Outcome::Fatal)
        boxes_.show(ErrorBox(result.outcome == Outcome::Fatal ? QStringLiteral("COM Port Error") : result.message()));
    setEnabled({controls_.readSettings1, controls_.writeSettings1, controls_.writeSettings2, controls_.readSettings2,
                controls_.readMemory, controls_.writeMemory, controls_.autoSelect},
               true);
    if (busyCursor_) QApplication::restoreOverrideCursor();
    busyCursor_ = false;
    if (controls_.progress) {
        controls_.progress->hide();
        controls_.progress->setValue(0);
    }
}

void TransferController::readMemory() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    beginBusy();
    setEnabled({controls_.readMemory, controls_.writeMemory}, false);
    if (controls_.progress) {
        controls_.progress->setValue(0);
        controls_.progress->show();
    }
    const Result result = link::ReadMemory(link_, document_, [this](int channel) {
        if (controls_.progress) controls_.progress->setValue(channel);
    });
    finish(result);
}

void TransferController::writeMemory() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    setEnabled({controls_.readMemory, controls_.writeMemory}, false);
    beginBusy();
    if (controls_.progress) {
        controls_.progress->setValue(0);
        controls_.progress->show();
    }
    const Result result = link::WriteMemory(link_, document_, [this](int channel) {
        if (controls_.progress) controls_.progress->setValue(channel);
    });
    if (result.outcome == Outcome::Fatal) {
        // Write Memory has no handler of its own for a port that cannot be opened: the message is
        // shown, and its two buttons stay disabled as the radio program leaves them.
        boxes_.show(ErrorBox(QStringLiteral("COM Port Error")));
        if (busyCursor_) QApplication::restoreOverrideCursor();
        busyCursor_ = false;
        return;
    }
    finish(result);
}

void TransferController::readSettings() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    beginBusy();
    setEnabled({controls_.readSettings1, controls_.writeSettings1, controls_.writeSettings2, controls_.readSettings2},
               false);
    finish(link::ReadSettings(link_, document_));
}

void TransferController::writeSettings() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    beginBusy();
    setEnabled({controls_.writeSettings1, controls_.readSettings1, controls_.writeSettings2, controls_.readSettings2},
               false);
    finish(link::WriteSettings(link_, document_));
}

void TransferController::autoSelect() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    setEnabled({controls_.autoSelect}, false);
    beginBusy();
    finish(link::AutoSelect(link_, document_));
}

void TransferController::showMemoryPage() {
    if (controls_.currentTab && controls_.selectTab && controls_.currentTab() != 3) controls_.selectTab(3);
}

void TransferController::showSettingsPage() {
    if (controls_.currentTab && controls_.selectTab && controls_.currentTab() == 3) controls_.selectTab(1);
}

void TransferController::menuReadMemory() {
    showMemoryPage();
    readMemory();
}
void TransferController::menuWriteMemory() {
    showMemoryPage();
    writeMemory();
}
void TransferController::menuReadSettings() {
    showSettingsPage();
    readSettings();
}
void TransferController::menuWriteSettings() {
    showSettingsPage();
    writeSettings();
}
// "All" is two complete sessions; the second runs even when the first failed.
void TransferController::menuReadAll() {
    menuReadSettings();
    menuReadMemory();
}
void TransferController::menuWriteAll() {
    menuWriteSettings();
    menuWriteMemory();
}

void TransferController::portSetup() {
    int chosen = portNumber_;
    if (portChooser_) {
        chosen = portChooser_(portNumber_);
    } else {
        PortDialog dialog(dialogParent_);
        dialog.setPortNumber(portNumber_, link::ListedPortDevices());
        dialog.exec();
        chosen = dialog.portNumber();
    }
    if (link_.isOpen()) link_.close();
    portNumber_ = (chosen >= 1 && chosen <= 14) ? chosen : 1;
    // choosing a port by hand replaces a device given on the command line
    deviceOverride_.clear();
    Q_EMIT portNumberChanged(portNumber_);
}

void TransferController::serviceRead() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    if (!controls_.serviceAddress || !controls_.serviceOutput) return;
    setEnabled({controls_.serviceRead}, false);
    controls_.serviceOutput->clear();
    QString reply;
    const Result result = link::ReadServiceBlock(link_, controls_.serviceAddress->text(), reply,
                                                 [this](const QString& text) {
                                                     controls_.serviceOutput->setPlainText(text);
                                                 });
    if (!result.ok()) boxes_.show(ErrorBox(QStringLiteral("COM Port Error")));
    setEnabled({controls_.serviceRead}, true);
}

void TransferController::serviceClear() {
    if (controls_.serviceOutput) controls_.serviceOutput->clear();
}

void TransferController::serviceDump() {
    if (busy_) return; // menus stay enabled during a transfer; one session at a time
    const BusyGuard guard(busy_);
    applyDevice();
    if (!controls_.serviceOutput) return;
    setEnabled({controls_.serviceDump}, false);
    QString dump;
    const Result result = link::DumpBlocks(link_, dump, [this](const QString& text) {
        controls_.serviceOutput->setPlainText(text);
        controls_.serviceOutput->verticalScrollBar()->setValue(controls_.serviceOutput->verticalScrollBar()->maximum());
    });
    if (!result.ok()) boxes_.show(ErrorBox(QStringLiteral("COM Port Error")));
    setEnabled({controls_.serviceDump}, true);
}

void ConnectTransfers(MainWindow& window, TransferController& transfers) {
    QObject::connect(&window, &MainWindow::transferRequested, &transfers, &TransferController::handle);
    QObject::connect(&transfers, &TransferController::portNumberChanged, &window, &MainWindow::setPortNumber);
    window.setTransferBusy([&transfers] { return transfers.busy(); });
}

} // namespace zq::ui
