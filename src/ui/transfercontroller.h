#pragma once
// Binds the transfer buttons, menus, progress bar, port dialog and service panel of the main window
// to the clone transfers of the link. The transfers themselves live in the link; this class only
// disables and re-enables buttons, shows the hourglass and the progress, and shows the outcome.
#include "link/transfers.h"
#include "mainwindow.h"
#include "model/outcome.h"

#include <QObject>
#include <QPointer>
#include <functional>

class QAbstractButton;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QWidget;

namespace zq::model {
class Document;
}
namespace zq::link {
class SerialLink;
}

namespace zq::ui {

class MessageBoxes;

struct TransferControls {
    QAbstractButton* readMemory = nullptr;     // cmbRxData
    QAbstractButton* writeMemory = nullptr;    // cmbTxData
    QAbstractButton* readSettings1 = nullptr;  // cmbRxData1
    QAbstractButton* writeSettings1 = nullptr; // cmbTxData1
    QAbstractButton* readSettings2 = nullptr;  // cmbRxData2
    QAbstractButton* writeSettings2 = nullptr; // cmbTxData2
    QAbstractButton* autoSelect = nullptr;     // cmdAuto
    QProgressBar* progress = nullptr;          // ProgressBar1
    // service panel
    QLineEdit* serviceAddress = nullptr;     // Text1
    QPlainTextEdit* serviceOutput = nullptr; // Text2
    QAbstractButton* serviceRead = nullptr;  // Command1
    QAbstractButton* serviceClear = nullptr; // Command2
    QAbstractButton* serviceDump = nullptr;  // Command6
    // the tab strip: which tab (1..3) is selected, and selecting one (pages follow)
    std::function<int()> currentTab;
    std::function<void(int)> selectTab;
    // the port number 1..14 the window keeps (from the port file, written back at exit)
    std::function<int()> portNumber;
    std::function<void(int)> setPortNumber;
};

class TransferController : public QObject {
    Q_OBJECT
public:
    TransferController(model::Document& document, link::SerialLink& link, MessageBoxes& boxes,
                       TransferControls controls, QWidget* dialogParent, QObject* parent = nullptr);

    // The window's port number 1..14; a device given with --port wins when not empty.
    int portNumber() const;
    // Asks for a port number (the port dialog by default; tests answer without a person).
    void setPortChooser(std::function<int(int current)> chooser) { portChooser_ = std::move(chooser); }
    // True while a transfer or a service read runs (the window must not close then).
    bool busy() const { return busy_; }
    void setDeviceOverride(const QString& device);

public Q_SLOTS:
    // What the window's transfer buttons and menus ask for.
    void handle(zq::ui::TransferCommand command);

private:
    void readMemory();    // cmbRxData
    void writeMemory();   // cmbTxData
    void readSettings();  // cmbRxData1, cmbRxData2
    void writeSettings(); // cmbTxData1, cmbTxData2
    void autoSelect();    // cmdAuto
    void portSetup();     // mnuToolsOptions
    void serviceRead();   // Command1
    void serviceClear();  // Command2
    void serviceDump();   // Command6
    void applyDevice();
    void setEnabled(std::initializer_list<QAbstractButton*> buttons, bool enabled);
    // Runs one session unless one is running already (menus stay enabled during a transfer),
    // with the hourglass shown for the transfers.
    void runSession(bool hourglass, const std::function<void()>& session);
    void runServiceCommand(QAbstractButton* button, const std::function<model::Result()>& command);
    void reportFailure(const model::Result& result);
    // The closings: a message for a failure, then every transfer button and Auto Select enabled,
    // the default pointer back, the progress bar hidden at 0.
    void finish(const model::Result& result);
    void setSettingsButtonsEnabled(bool enabled);
    void showProgress();
    link::Progress progressCallback();
    void showMemoryPage();
    void showSettingsPage();

    model::Document& document_;
    link::SerialLink& link_;
    MessageBoxes& boxes_;
    TransferControls controls_;
    QPointer<QWidget> dialogParent_;
    QString deviceOverride_;
    bool busy_ = false;
    std::function<int(int)> portChooser_;
};

// Routes the window's transfer requests to the controller, and its busy state back to the window.
void ConnectTransfers(MainWindow& window, TransferController& transfers);

} // namespace zq::ui
