#include "transfercontroller.h"

#include "link/seriallink.h"
#include "link/transfers.h"

namespace zq::ui {

using model::Outcome;
using model::Result;

TransferController::TransferController(model::Document& document, link::SerialLink& link, PortSettings& ports,
                                       QObject* parent)
    : QObject(parent), document_(document), link_(link), ports_(ports) {}

void TransferController::choosePort(const PortChoice& choice, const QList<link::SerialPortDetails>& listed) {
    if (link_.isOpen()) link_.close();
    ports_.choose(choice, listed);
}

void TransferController::stop() {
    stopped_ = true;
    link_.abort();
}

bool TransferController::runSession(TransferKind kind, const std::function<void()>& session) {
    if (busy_ || stopped_) return false;
    busy_ = true;
    Q_EMIT started(kind);
    // Listing the system's ports takes a while: it happens under the hourglass.
    if (!link_.isOpen()) link_.setPortName(ports_.device());
    session();
    busy_ = false;
    Q_EMIT ended(kind);
    return true;
}

// A port that cannot be opened (a failure outside any exchange) shows "COM Port Error" too.
void TransferController::reportFailure(const Result& result) {
    if (stopped_) return; // the failure is the stop itself
    if (result.outcome == Outcome::Fatal)
        Q_EMIT failed(Result::fail(Outcome::ComPortError).message(), failureDetail(result));
    else if (result.outcome == Outcome::CommunicationError || result.outcome == Outcome::ComPortError)
        Q_EMIT failed(result.message(), failureDetail(result));
}

QString TransferController::failureDetail(const Result& result) const {
    if (!link_.isOpen() && link_.portName().isEmpty()) {
        const QString named =
            ports_.deviceOverride().isEmpty() ? link::PortCaption(ports_.number()) : ports_.deviceOverride();
        return QStringLiteral("no serial port %1; %2").arg(named, link::ListedPortsText(ports_.listPorts()));
    }
    return result.detail;
}

void TransferController::finish(const Result& result) {
    reportFailure(result);
    Q_EMIT closed();
}

void TransferController::readMemory() {
    runSession(TransferKind::ReadMemory, [this] {
        finish(link::ReadMemory(link_, document_, [this](int channel) { Q_EMIT progressed(channel); }));
    });
}

void TransferController::writeMemory() {
    runSession(TransferKind::WriteMemory, [this] {
        const Result result =
            link::WriteMemory(link_, document_, [this](int channel) { Q_EMIT progressed(channel); });
        // Write Memory has no handler of its own for a port that cannot be opened: the message is
        // shown, and its two buttons stay disabled.
        if (result.outcome == Outcome::Fatal)
            reportFailure(result);
        else
            finish(result);
    });
}

void TransferController::readSettings() {
    runSession(TransferKind::ReadSettings, [this] { finish(link::ReadSettings(link_, document_)); });
}

void TransferController::writeSettings() {
    runSession(TransferKind::WriteSettings, [this] { finish(link::WriteSettings(link_, document_)); });
}

void TransferController::autoSelect() {
    runSession(TransferKind::AutoSelect, [this] { finish(link::AutoSelect(link_, document_)); });
}

void TransferController::fromMenu(TransferPage page, void (TransferController::*transfer)()) {
    Q_EMIT pageWanted(page);
    (this->*transfer)();
}

void TransferController::readSettingsFromMenu() {
    fromMenu(TransferPage::Settings, &TransferController::readSettings);
}

void TransferController::readMemoryFromMenu() {
    fromMenu(TransferPage::Memory, &TransferController::readMemory);
}

void TransferController::readAll() {
    readSettingsFromMenu();
    readMemoryFromMenu();
}

void TransferController::writeSettingsFromMenu() {
    fromMenu(TransferPage::Settings, &TransferController::writeSettings);
}

void TransferController::writeMemoryFromMenu() {
    fromMenu(TransferPage::Memory, &TransferController::writeMemory);
}

void TransferController::writeAll() {
    writeSettingsFromMenu();
    writeMemoryFromMenu();
}

bool TransferController::runService(const std::function<Result(link::SerialLink&)>& read) {
    return runSession(TransferKind::Service, [&] {
        if (const Result result = read(link_); !result.ok() && !stopped_)
            Q_EMIT failed(Result::fail(Outcome::ComPortError).message(), failureDetail(result));
    });
}

} // namespace zq::ui
