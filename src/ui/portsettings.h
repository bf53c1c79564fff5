#pragma once
// The port the link talks through: the number 1..14 kept in the port file and chosen in the port
// dialog, the adapter remembered for that number by its stable name, or, for this run only, a
// device named on the command line or typed in the dialog.
#include "files/preferences.h"
#include "link/portnumbers.h"
#include "model/outcome.h"

#include <QList>
#include <QString>
#include <functional>

namespace zq::ui {

// What the port dialog hands back.
struct PortChoice {
    int number = link::kDefaultPortNumber;
    QString otherDevice; // a device path for this run; empty: the number's port
    bool operator==(const PortChoice&) const = default;
};

class PortSettings {
public:
    using PortLister = std::function<QList<link::SerialPortDetails>()>;

    // Where the number is kept; empty means the program's port file.
    void setFilePath(const QString& path) { filePath_ = path; }
    QString filePath() const;
    // Reads the port file (a missing file or a number outside 1..14 gives port 1) and the adapter
    // remembered for it. Fatal for a file that cannot be read to its first value.
    model::Result load();
    // Writes the number back. Fatal when the file cannot be written.
    model::Result save() const;

    int number() const { return number_; }
    QString deviceOverride() const { return deviceOverride_; }
    files::RememberedAdapter adapter() const { return adapter_; }
    // The dialog's choice. A number other than the current one, or the current one whose adapter is
    // not plugged in elsewhere, remembers the adapter `listed` puts at that number now; the current
    // number whose adapter has moved keeps following it. The typed device replaces a device named
    // on the command line.
    void choose(const PortChoice& choice, const QList<link::SerialPortDetails>& listed);
    void setDeviceOverride(const QString& device) { deviceOverride_ = device; }

    // The system's serial ports; tests put a list of their own in its place.
    QList<link::SerialPortDetails> listPorts() const { return lister_ ? lister_() : link::ListedPorts(); }
    void setPortLister(PortLister lister) { lister_ = std::move(lister); }

    // The device a session opens: the one named for this run, else the remembered adapter of the
    // number wherever it is now, else the number's port (empty when it names none).
    link::ResolvedPort resolve(const QList<link::SerialPortDetails>& listed) const;
    // The same with the ports listed now. Listing takes a while: ask when a session starts.
    QString device() const { return resolve(listPorts()).device; }
    // A sentence for the port dialog when the number's adapter is remembered but not where the
    // numbering puts the number: found elsewhere, or not plugged in. Empty otherwise.
    QString adapterNote(const QList<link::SerialPortDetails>& listed) const;

private:
    int number_ = link::kDefaultPortNumber;
    files::RememberedAdapter adapter_;
    QString deviceOverride_;
    QString filePath_;
    PortLister lister_;
};

} // namespace zq::ui
