#pragma once
// The main window frmMain: menus, toolbar, status bar, the tab strip over the settings pages and
// the memory page, the two channel grids and the file and edit commands.
#include "channeleditor.h"
#include "messageboxes.h"
#include "model/document.h"
#include "model/outcome.h"
#include "stringtable.h"

#include <QMainWindow>
#include <array>
#include <functional>
#include <memory>

class QAction;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QTableView;
class QToolBar;

namespace zq::ui {

class FileDialogs;
class MemoryGridModel;
class ModifyDialog;
class SettingsPage1;
class SettingsPage2;
class SpecialGridModel;
struct TransferControls;

// The transfer buttons and menus; the window only reports the click.
enum class TransferCommand {
    ReadMemory,    // cmbRxData
    WriteMemory,   // cmbTxData
    ReadSettings,  // cmbRxData1, cmbRxData2
    WriteSettings, // cmbTxData1, cmbTxData2
    AutoSelect,    // cmdAuto
    MenuReadSettings,
    MenuReadMemory,
    MenuReadAll,
    MenuWriteSettings,
    MenuWriteMemory,
    MenuWriteAll,
    PortSetup, // mnuToolsOptions
};

struct LoadOptions {
    QString commandLineFile;
    QString portFilePath; // empty: the program's port file
    int pauseMs = 2000;   // the start-up pause that keeps the splash on screen
};

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(MessageBoxes& boxes, FileDialogs& dialogs, const StringTable& strings,
               QWidget* parent = nullptr);
    ~MainWindow() override;

    model::Document& document() { return document_; }

    // The load sequence: localise, lay out, port file, default data, the pause, caption, first
    // page, the command-line file, DataChanged cleared. A Fatal result has already been shown in
    // the fatal error box; the program then ends with a non-zero status.
    model::Result load(const LoadOptions& options);
    // Creates the (hidden) modify dialog that the grids open.
    void loadModifyDialog();
    // Replaces what the grids open (tests); null goes back to the modify dialog.
    void setChannelEditor(ChannelEditor* editor) { editor_ = editor; }

    int portNumber() const { return portNumber_; }
    void setPortNumber(int port) { portNumber_ = port; }
    // The device named by --port, which wins over the port number for this run.
    QString portDevice() const { return portDevice_; }
    void setPortDevice(const QString& device) { portDevice_ = device; }
    QString portFilePath() const;

    // The grids' current rows, as grid rows (memory 1..200, VFO/CALL/RPT 1..3).
    int currentMemoryRow() const;
    void setCurrentMemoryRow(int gridRow);
    int currentSpecialRow() const;
    void setCurrentSpecialRow(int gridRow);

    QTableView* memoryGrid() const { return MSFlexGrid1_; }
    QTableView* specialGrid() const { return MSFlexGrid2_; }
    QProgressBar* progressBar() const { return ProgressBar1_; }
    SettingsPage1* settingsPage1() const { return page1_; }
    SettingsPage2* settingsPage2() const { return page2_; }
    bool fatalErrorShown() const { return fatal_; }
    // The widgets the transfers enable, disable and fill.
    TransferControls transferControls();
    // While this says so, a transfer runs and the window does not close.
    void setTransferBusy(std::function<bool()> busy) { transferBusy_ = std::move(busy); }
    // The service panel (the fourth frame) as a page of its own, or hidden again.
    void showServicePanel(bool show);

    // Shows the fatal error box and reports the end of the program.
    void reportFatal(const model::Result& result);

public Q_SLOTS:
    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuImport_Click();
    void mnuExport_Click();
    void mnuEditUndo_Click();
    void mnuHelpAbout_Click();
    void tbToolBar_ButtonClick(const QString& key);
    void TabStrip1_Click();
    void cmbInsert_Click();
    void cmbDelete_Click();
    void cmbClear_Click();
    void cmbClAll_Click();
    void Command4_Click(); // Down
    void Command5_Click(); // Up
    void MSFlexGrid1_DblClick();
    void MSFlexGrid2_DblClick();

Q_SIGNALS:
    void transferRequested(zq::ui::TransferCommand command);
    // The program ends here with this status, as after a run-time error report.
    void fatalError(int exitStatus);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void buildToolBar();
    void buildStatusBar();
    void buildPages();
    QWidget* buildMemoryPage();
    void buildServicePanel(QWidget* frame);
    void applyColumnWidths(QTableView* grid, bool memoryGrid);
    QAction* addMenuEntry(QMenu* menu, const char* name, int id);
    void addTransferButton(QPushButton* button, TransferCommand command);
    bool promptUnsavedChanges();
    bool confirm(const QString& title, const QString& warning, const QString& question);
    void writeCloneFile(const QString& path);
    void showError(const model::Result& result);
    void updateCaption();
    void waitMilliseconds(int ms);
    ChannelEditor* channelEditor();

    model::Document document_;
    MessageBoxes& boxes_;
    FileDialogs& dialogs_;
    const StringTable& strings_;
    int portNumber_ = 1;
    QString portDevice_;
    QString portFilePath_;
    bool fatal_ = false;

    QTabWidget* TabStrip1_ = nullptr;
    std::array<QWidget*, 4> Frame1_{};
    QTableView* MSFlexGrid1_ = nullptr;
    QTableView* MSFlexGrid2_ = nullptr;
    MemoryGridModel* memoryModel_ = nullptr;
    SpecialGridModel* specialModel_ = nullptr;
    SettingsPage1* page1_ = nullptr;
    SettingsPage2* page2_ = nullptr;
    QToolBar* tbToolBar_ = nullptr;
    QStatusBar* sbStatusBar_ = nullptr;
    QProgressBar* ProgressBar1_ = nullptr;
    QPushButton* cmbRxData_ = nullptr;
    QPushButton* cmbTxData_ = nullptr;
    QLineEdit* Text1_ = nullptr;
    QPlainTextEdit* Text2_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    QPushButton* Command6_ = nullptr;
    std::function<bool()> transferBusy_;
    QAction* mnuEditUndo_ = nullptr;
    QAction* mnuViewToolbar_ = nullptr;
    QAction* mnuStatusBar_ = nullptr;
    ModifyDialog* dlgModify_ = nullptr;
    std::unique_ptr<ChannelEditor> dialogEditor_;
    ChannelEditor* editor_ = nullptr;
};

} // namespace zq::ui
