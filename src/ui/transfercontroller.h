#pragma once
// Runs the clone sessions the window asks for: the transfer buttons and menus, Auto Select, the
// read-back comparison and the service panel's reads, one session at a time. What happens is
// reported through signals, which the window observes to enable its buttons, show the progress and
// the failures; the controller knows no widget. Each command leaves a serial trace, and each data
// transfer that succeeded a backup (see TransferRecords).
#include "model/outcome.h"
#include "portsettings.h"
#include "transferrecords.h"

#include <QObject>
#include <QStringList>
#include <functional>

namespace zq::model {
class Document;
}
namespace zq::link {
class SerialLink;
}

namespace zq::ui {

enum class TransferKind { ReadMemory, WriteMemory, ReadSettings, WriteSettings, AutoSelect, Service, Verify };

// The page a menu brings to the front before its transfer.
enum class TransferPage { Settings, Memory };

class TransferController : public QObject {
    Q_OBJECT
public:
    // `strings` words the notes of what a command could not keep.
    TransferController(model::Document& document, link::SerialLink& link, PortSettings& ports,
                       const StringTable& strings = StringTable(), QObject* parent = nullptr);

    // True while a session runs (the window must not close then).
    bool busy() const { return busy_; }
    const PortSettings& ports() const { return ports_; }
    // The port dialog's choice over the ports it showed: an open port is closed, and the next
    // session opens the chosen one.
    void choosePort(const PortChoice& choice, const QList<link::SerialPortDetails>& listed);
    // Runs a service read with the link to itself; any failure is the port's ("COM Port Error").
    // False, and nothing run, while another session runs. `operation` names its trace.
    bool runService(const QString& operation, const std::function<model::Result(link::SerialLink&)>& read);
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
    // Reads back every block a write of the document would send and compares; the document is
    // neither changed nor marked.
    void verifyRadio();

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
    // A comparison ran to its end: what differs, one line each ("0340 channel 10, Frequency: ...");
    // empty when the radio holds what a write would send.
    void verified(const QStringList& differences);
    // What a command could not keep (its trace, its backup), once, when the command is over.
    void noted(const QString& note);

private:
    class Command;
    // A menu's transfer: its page to the front first.
    void fromMenu(TransferPage page, void (TransferController::*transfer)());
    // Runs one session unless one runs already (the menus stay enabled during a transfer). The
    // session returns its outcome for the records.
    bool runSession(TransferKind kind, const std::function<model::Result()>& session);
    // The failure's message, if it has one; then the closing.
    void finish(const model::Result& result);
    void reportFailure(const model::Result& result);
    QString failureDetail(const model::Result& result) const;

    model::Document& document_;
    link::SerialLink& link_;
    PortSettings& ports_;
    bool busy_ = false;
    TransferRecords records_;
    int commandDepth_ = 0; // a box shown during a session runs the event loop: commands can nest
    bool stopped_ = false;
};

} // namespace zq::ui
