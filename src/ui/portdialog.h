#pragma once
// "COM Port Setup": fourteen port choices, each with the port it stands for now, an entry for any
// other device, and an OK button; there is no cancel.
#include "link/portnumbers.h"
#include "portsettings.h"

#include <QDialog>
#include <array>

class QLabel;
class QLineEdit;
class QRadioButton;

namespace zq::ui {

class PortDialog : public QDialog {
    Q_OBJECT
public:
    explicit PortDialog(QWidget* parent = nullptr);
    // Shows the dialog modally over the ports listed now, with the settings' choice ticked and
    // typed; what the dialog holds when OK closes it.
    static PortChoice ask(QWidget* parent, const PortSettings& settings,
                          const QList<link::SerialPortDetails>& listed);

    // Beside each caption: the device, the adapter's USB ids and description, and whether it can be
    // opened now; a plain sentence when the system lists no port, and the ports beyond COM 14.
    void showPorts(const QList<link::NumberedPort>& numbered, const QList<link::SerialPortDetails>& listed);
    // A sentence about the remembered adapter; hidden when empty.
    void setAdapterNote(const QString& note);
    // Ticks the option of the choice's number (1..14) and puts its device in the entry.
    void setChoice(const PortChoice& choice);
    // The first ticked option in index order, plus one, and the typed device.
    PortChoice choice() const;

private:
    struct Row {
        QRadioButton* option = nullptr;
        QLabel* device = nullptr;
        QLabel* usb = nullptr;
        QLabel* adapter = nullptr;
        QLabel* status = nullptr;
    };
    std::array<Row, link::kLastPortNumber> rows_{};
    QLabel* listing_ = nullptr;
    QLabel* adapterNote_ = nullptr;
    QLineEdit* otherDevice_ = nullptr;
};

} // namespace zq::ui
