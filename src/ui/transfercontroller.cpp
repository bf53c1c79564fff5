#include "transfercontroller.h"

#include "link/seriallink.h"
#include "link/transfers.h"
#include "link/verify.h"
#include "model/document.h"

#include <optional>

namespace zq::ui {

using model::Outcome;
using model::Result;

namespace {

// The session's name in a trace's outcome line.
QString SessionCaption(TransferKind kind) {
    switch (kind) {
    case TransferKind::ReadMemory:
        return QStringLiteral("Read Memory");
    case TransferKind::WriteMemory:
        return QStringLiteral("Write Memory");
    case TransferKind::ReadSettings:
        return QStringLiteral("Read Settings");
    case TransferKind::WriteSettings:
        return QStringLiteral("Write Settings");
    case TransferKind::AutoSelect:
        return QStringLiteral("Auto Select");
    case TransferKind::Service:
        return QStringLiteral("Service");
    case TransferKind::Verify:
        return QStringLiteral("Verify Radio");
    }
    return QString();
}

// The sessions that move the document's data leave a backup, named as zq318 names its own.
QString BackupOperation(TransferKind kind) {
    switch (kind) {
    case TransferKind::ReadMemory:
        return QStringLiteral("read-memory");
    case TransferKind::WriteMemory:
        return QStringLiteral("write-memory");
    case TransferKind::ReadSettings:
        return QStringLiteral("read-settings");
    case TransferKind::WriteSettings:
        return QStringLiteral("write-settings");
    default:
        return QString();
    }
}

// The progress bar counts channels; a comparison's blocks are spread over the same bar.
int OnChannelScale(int step, int total) {
    const int last = model::kChannelCount - 1;
    return total > 1 ? step * last / (total - 1) : last;
}

// The outcome of a comparison that found differences, in the trace (the box lists them).
QString DifferencesSummary(qsizetype count) {
    return QStringLiteral("%1 %2 between the radio and the window's data")
        .arg(count)
        .arg(count == 1 ? QStringLiteral("difference") : QStringLiteral("differences"));
}

} // namespace

// One command of the user's: a button's session, or the two sessions of an "All". The outermost
// one brackets the records. A command started from a box shown during a session is refused
// session by session and leaves nothing.
class TransferController::Command {
public:
    Command(TransferController& controller, const QString& operation, const QString& caption)
        : controller_(controller) {
        if (controller_.commandDepth_++ == 0) controller_.records_.beginCommand(operation, caption);
    }
    ~Command() {
        if (--controller_.commandDepth_ != 0) return;
        const QString note = controller_.records_.endCommand(controller_.document_);
        if (!note.isEmpty()) Q_EMIT controller_.noted(note);
    }
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

private:
    TransferController& controller_;
};

TransferController::TransferController(model::Document& document, link::SerialLink& link, PortSettings& ports,
                                       const StringTable& strings, QObject* parent)
    : QObject(parent), document_(document), link_(link), ports_(ports), records_(strings) {}

void TransferController::choosePort(const PortChoice& choice, const QList<link::SerialPortDetails>& listed) {
    if (link_.isOpen()) link_.close();
    ports_.choose(choice, listed);
}

void TransferController::stop() {
    stopped_ = true;
    link_.abort();
}

bool TransferController::runSession(TransferKind kind, const std::function<Result()>& session) {
    if (busy_ || stopped_) return false;
    busy_ = true;
    Q_EMIT started(kind);
    // Listing the system's ports takes a while: it happens under the hourglass.
    if (!link_.isOpen()) link_.setPortName(ports_.device());
    records_.sessionStarted(link_);
    const Result result = session();
    records_.sessionEnded(SessionCaption(kind), result, BackupOperation(kind));
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
    const Command command(*this, QStringLiteral("read-memory"), QStringLiteral("Read Memory"));
    runSession(TransferKind::ReadMemory, [this] {
        const Result result =
            link::ReadMemory(link_, document_, [this](int channel) { Q_EMIT progressed(channel); });
        finish(result);
        return result;
    });
}

void TransferController::writeMemory() {
    const Command command(*this, QStringLiteral("write-memory"), QStringLiteral("Write Memory"));
    runSession(TransferKind::WriteMemory, [this] {
        const Result result =
            link::WriteMemory(link_, document_, [this](int channel) { Q_EMIT progressed(channel); });
        // Write Memory has no handler of its own for a port that cannot be opened: the message is
        // shown, and its two buttons stay disabled.
        if (result.outcome == Outcome::Fatal)
            reportFailure(result);
        else
            finish(result);
        return result;
    });
}

void TransferController::readSettings() {
    const Command command(*this, QStringLiteral("read-settings"), QStringLiteral("Read Settings"));
    runSession(TransferKind::ReadSettings, [this] {
        const Result result = link::ReadSettings(link_, document_);
        finish(result);
        return result;
    });
}

void TransferController::writeSettings() {
    const Command command(*this, QStringLiteral("write-settings"), QStringLiteral("Write Settings"));
    runSession(TransferKind::WriteSettings, [this] {
        const Result result = link::WriteSettings(link_, document_);
        finish(result);
        return result;
    });
}

void TransferController::autoSelect() {
    const Command command(*this, QStringLiteral("auto-select"), QStringLiteral("Auto Select"));
    runSession(TransferKind::AutoSelect, [this] {
        const Result result = link::AutoSelect(link_, document_);
        finish(result);
        return result;
    });
}

void TransferController::verifyRadio() {
    std::optional<QStringList> differences;
    {
        const Command command(*this, QStringLiteral("verify"), QStringLiteral("Verify Radio"));
        runSession(TransferKind::Verify, [&] {
            const link::VerifyReport report =
                link::VerifyRadio(link_, document_, link::VerifyScope::All, [this](int step, int total) {
                    Q_EMIT progressed(OnChannelScale(step, total));
                });
            // A comparison cut short by a failure would list only part of what differs.
            if (!report.result.ok()) {
                finish(report.result);
                return report.result;
            }
            differences.emplace();
            for (const link::Difference& difference : report.differences)
                differences->append(link::DifferenceText(difference));
            Q_EMIT closed();
            if (differences->isEmpty()) return Result::done();
            return Result::fail(Outcome::CommunicationError, DifferencesSummary(differences->size()));
        });
    }
    // Read at leisure: the link is given back, the hourglass gone and the trace complete.
    if (differences) Q_EMIT verified(*differences);
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
    const Command command(*this, QStringLiteral("read"), QStringLiteral("Read All"));
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
    const Command command(*this, QStringLiteral("write"), QStringLiteral("Write All"));
    writeSettingsFromMenu();
    writeMemoryFromMenu();
}

bool TransferController::runService(const QString& operation,
                                    const std::function<Result(link::SerialLink&)>& read) {
    const Command command(*this, operation, QStringLiteral("service panel, ") + operation);
    return runSession(TransferKind::Service, [&] {
        const Result result = read(link_);
        if (!result.ok() && !stopped_)
            Q_EMIT failed(Result::fail(Outcome::ComPortError).message(), failureDetail(result));
        return result;
    });
}

} // namespace zq::ui
