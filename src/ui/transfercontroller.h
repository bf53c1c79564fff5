#pragma once
// Runs the clone sessions the window asks for: the transfer buttons and menus, Auto Select and the
// service panel's reads, one session at a time. What happens is reported through signals, which
// the window observes to enable its buttons, show the progress and the failures; the controller
// knows no widget.
#include "model/outcome.h"
#include "portsettings.h"

#include <QObject>
#include <functional>

namespace zq::model {
class Document;
}
namespace zq::link {
class SerialLink;
}

namespace zq::ui {

enum class TransferKind { ReadMemory, WriteMemory, ReadSettings, WriteSettings, AutoSelect, Service };
// The page a menu brings to the front before its transfer.
enum class TransferPage { Settings, Memory };

class TransferController : public QObject {
    Q_OBJECT
public:
    TransferController(model::Document& document, link::SerialLink& link, PortSettings& ports,
                       QObject* parent = nullptr);

    // True while a session runs (the window must not close then).
    bool busy() const { return busy_; }
    const PortSettings& ports() const { return ports_; }
    // The port dialog's choice over the ports it showed: an open port is closed, and the next
    // session opens the chosen one.
    void choosePort(const PortChoice& choice, const QList<link::SerialPortDetails>& listed);
    // Runs a service read with the link to itself; any failure is the port's ("COM Port Error").
    // False, and nothing run, while another session runs.
    bool runService(const std::function<model::Result(link::SerialLink&)>& read);
    // The program is ending: the session under way stops at once without a failure box, and no
    // session starts any more.
    void stop();
    bool stopped() const { return stopped_; }

public Q_SLOTS:
    void readMemory();    // "Read Memory"
    void writeMemory();   // "Write Memory"
    void readSettings();  // either "Read Settings"
    void writeSettings(); // either "Write Settings"
    void autoSelect();    // "Auto Select"
    // The Tool menu: each entry brings the page of what it transfers to the front first. "All" is
    // two complete sessions, settings then memory; the second runs even when the first failed.
    void readSettingsFromMenu();
    void readMemoryFromMenu();
    void readAll();
    void writeSettingsFromMenu();
    void writeMemoryFromMenu();
    void writeAll();

Q_SIGNALS:
    // A session took the link: its buttons go disabled, a memory transfer shows its progress.
    void started(zq::ui::TransferKind kind);
    void progressed(int channel);
    void pageWanted(zq::ui::TransferPage page);
    // The message of the box, and what the user can act on: the device, the group to join, the
    // program holding the port, the command that went unanswered.
    void failed(const QString& message, const QString& detail = QString());
    // The closing routine: every transfer button and Auto Select enabled, the progress hidden at 0.
    void closed();
    // The session gave the link back.
    void ended(zq::ui::TransferKind kind);

private:
    // A menu's transfer: its page to the front first.
    void fromMenu(TransferPage page, void (TransferController::*transfer)());
    // Runs one session unless one runs already (the menus stay enabled during a transfer).
    bool runSession(TransferKind kind, const std::function<void()>& session);
    // The failure's message, if it has one; then the closing.
    void finish(const model::Result& result);
    void reportFailure(const model::Result& result);
    QString failureDetail(const model::Result& result) const;

    model::Document& document_;
    link::SerialLink& link_;
    PortSettings& ports_;
    bool busy_ = false;
    bool stopped_ = false;
};

} // namespace zq::ui
