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

using model::Outcome;
using model::Result;

namespace {
const QString kComPortError = QStringLiteral("COM Port Error");
}

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
    case TransferCommand::ReadMemory:
        readMemory();
        break;
    case TransferCommand::WriteMemory:
        writeMemory();
        break;
    case TransferCommand::ReadSettings:
        readSettings();
        break;
    case TransferCommand::WriteSettings:
        writeSettings();
        break;
    case TransferCommand::AutoSelect:
        autoSelect();
        break;
    // The menus bring the page of what they transfer to the front first. "All" is two complete
    // sessions; the second runs even when the first failed.
    case TransferCommand::MenuReadSettings:
        showSettingsPage();
        readSettings();
        break;
    case TransferCommand::MenuReadMemory:
        showMemoryPage();
        readMemory();
        break;
    case TransferCommand::MenuReadAll:
        showSettingsPage();
        readSettings();
        showMemoryPage();
        readMemory();
        break;
    case TransferCommand::MenuWriteSettings:
        showSettingsPage();
        writeSettings();
        break;
    case TransferCommand::MenuWriteMemory:
        showMemoryPage();
        writeMemory();
        break;
    case TransferCommand::MenuWriteAll:
        showSettingsPage();
        writeSettings();
        showMemoryPage();
        writeMemory();
        break;
    case TransferCommand::PortSetup:
        portSetup();
        break;
    }
}

// The window's number is always 1..14: the port file and the port dialog give nothing else.
int TransferController::portNumber() const {
    return controls_.portNumber ? controls_.portNumber() : link::kDefaultPortNumber;
}

void TransferController::setDeviceOverride(const QString& device) {
    deviceOverride_ = device;
}

// Listing the system's ports takes a while, so the device is looked up when a session starts.
void TransferController::applyDevice() {
    if (link_.isOpen()) return;
    const QString device = deviceOverride_.isEmpty() ? link::DeviceForPortNumber(portNumber())
                                                     : link::DeviceForPortArgument(deviceOverride_);
    link_.setPortName(device);
}

void TransferController::setEnabled(std::initializer_list<QAbstractButton*> buttons, bool enabled) {
    for (QAbstractButton* button : buttons)
        if (button) button->setEnabled(enabled);
}

void TransferController::runSession(bool hourglass, const std::function<void()>& session) {
    if (busy_) return;
    busy_ = true;
    if (hourglass) QApplication::setOverrideCursor(Qt::WaitCursor);
    applyDevice();
    session();
    if (hourglass) QApplication::restoreOverrideCursor();
    busy_ = false;
}

// A port that cannot be opened (a failure outside any exchange) shows "COM Port Error" too.
void TransferController::reportFailure(const Result& result) {
    if (result.outcome == Outcome::Fatal)
        boxes_.show(ErrorBox(kComPortError));
    else if (result.outcome == Outcome::CommunicationError || result.outcome == Outcome::ComPortError)
        boxes_.show(ErrorBox(result.message()));
}

void TransferController::finish(const Result& result) {
    reportFailure(result);
    setSettingsButtonsEnabled(true);
    setEnabled({controls_.readMemory, controls_.writeMemory, controls_.autoSelect}, true);
    if (controls_.progress) {
        controls_.progress->hide();
        controls_.progress->setValue(0);
    }
}

void TransferController::readMemory() {
    runSession(true, [this] {
        setEnabled({controls_.readMemory, controls_.writeMemory}, false);
        showProgress();
        finish(link::ReadMemory(link_, document_, progressCallback()));
    });
}

void TransferController::writeMemory() {
    runSession(true, [this] {
        setEnabled({controls_.readMemory, controls_.writeMemory}, false);
        showProgress();
        const Result result = link::WriteMemory(link_, document_, progressCallback());
        // Write Memory has no handler of its own for a port that cannot be opened: the message is
        // shown, and its two buttons stay disabled.
        if (result.outcome == Outcome::Fatal)
            reportFailure(result);
        else
            finish(result);
    });
}

void TransferController::readSettings() {
    runSession(true, [this] {
        setSettingsButtonsEnabled(false);
        finish(link::ReadSettings(link_, document_));
    });
}

void TransferController::writeSettings() {
    runSession(true, [this] {
        setSettingsButtonsEnabled(false);
        finish(link::WriteSettings(link_, document_));
    });
}

void TransferController::autoSelect() {
    runSession(true, [this] {
        setEnabled({controls_.autoSelect}, false);
        finish(link::AutoSelect(link_, document_));
    });
}

void TransferController::setSettingsButtonsEnabled(bool enabled) {
    setEnabled({controls_.readSettings1, controls_.writeSettings1, controls_.writeSettings2,
                controls_.readSettings2},
               enabled);
}

void TransferController::showProgress() {
    if (!controls_.progress) return;
    controls_.progress->setValue(0);
    controls_.progress->show();
}

link::Progress TransferController::progressCallback() {
    return [this](int channel) {
        if (controls_.progress) controls_.progress->setValue(channel);
    };
}

void TransferController::showMemoryPage() {
    if (controls_.currentTab && controls_.selectTab && controls_.currentTab() != 3) controls_.selectTab(3);
}

void TransferController::showSettingsPage() {
    if (controls_.currentTab && controls_.selectTab && controls_.currentTab() == 3) controls_.selectTab(1);
}

void TransferController::portSetup() {
    int chosen = portNumber();
    if (portChooser_) {
        chosen = portChooser_(chosen);
    } else {
        PortDialog dialog(dialogParent_);
        dialog.setPortNumber(chosen, link::ListedPortDevices());
        dialog.exec();
        chosen = dialog.portNumber();
    }
    if (link_.isOpen()) link_.close();
    if (controls_.setPortNumber) controls_.setPortNumber(chosen);
    // choosing a port by hand replaces a device given on the command line
    deviceOverride_.clear();
}

// The service reads check nothing; any failure is the port's.
void TransferController::runServiceCommand(QAbstractButton* button, const std::function<Result()>& command) {
    runSession(false, [&] {
        setEnabled({button}, false);
        if (!command().ok()) boxes_.show(ErrorBox(kComPortError));
        setEnabled({button}, true);
    });
}

void TransferController::serviceRead() {
    if (!controls_.serviceAddress || !controls_.serviceOutput) return;
    runServiceCommand(controls_.serviceRead, [this] {
        controls_.serviceOutput->clear();
        QString reply;
        return link::ReadServiceBlock(
            link_, controls_.serviceAddress->text(), reply,
            [this](const QString& text) { controls_.serviceOutput->setPlainText(text); });
    });
}

void TransferController::serviceClear() {
    if (controls_.serviceOutput) controls_.serviceOutput->clear();
}

void TransferController::serviceDump() {
    if (!controls_.serviceOutput) return;
    runServiceCommand(controls_.serviceDump, [this] {
        QString dump;
        return link::DumpBlocks(link_, dump, [this](const QString& text) {
            controls_.serviceOutput->setPlainText(text);
            controls_.serviceOutput->verticalScrollBar()->setValue(
                controls_.serviceOutput->verticalScrollBar()->maximum());
        });
    });
}

void ConnectTransfers(MainWindow& window, TransferController& transfers) {
    QObject::connect(&window, &MainWindow::transferRequested, &transfers, &TransferController::handle);
    window.setTransferBusy([&transfers] { return transfers.busy(); });
}

} // namespace zq::ui
