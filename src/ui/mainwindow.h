#pragma once
// The main window: menus, toolbar, status bar with the progress bar, and the tab strip over the
// settings pages, the memory page and the service panel. It shows the document, passes the
// user's commands on to the transfer controller and the file commands, and observes the
// controller to enable its buttons and show progress and failures.
#include "channeleditor.h"
#include "tracefolder.h"
#include "transfercontroller.h"

#include <QMainWindow>
#include <QPointer>

class QProgressBar;
class QToolBar;

namespace zq::model {
class Document;
}

namespace zq::ui {

class DtmfSettingsPage;
class FileCommands;
class FunctionSettingsPage;
class GuideWindow;
class MemoryPage;
class MessageBoxes;
class ModifyDialog;
class PageStrip;
class StringTable;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow(model::Document& document, TransferController& transfers, FileCommands& files,
               MessageBoxes& boxes, const StringTable& strings, QWidget* parent = nullptr);

    // The first steps of loading: captions from the string table, the designed size at the
    // user's font, the first page in front.
    void prepare();
    // The caption and the first page, as loading ends.
    void showFirstPage();
    // Creates the (hidden) modify dialog that the grids open.
    void loadModifyDialog();
    // Replaces what the grids open (tests); null goes back to the modify dialog.
    void setChannelEditor(ChannelEditor* editor) { editor_ = editor; }
    // Replaces what shows a folder on the desktop (tests).
    void setUrlOpener(UrlOpener open) { openUrl_ = std::move(open); }

    MemoryPage& memoryPage() const { return *memoryPage_; }
    FunctionSettingsPage& functionPage() const { return *functionPage_; }
    QProgressBar* progressBar() const { return progress_; }
    PageStrip& pages() const { return *pages_; }

public Q_SLOTS:
    // Edit > Modify: the current row of the grid on the page in front.
    void modifySelectedChannel();

private Q_SLOTS:
    void showAbout();
    void showGuide();
    void setUpPort();
    void showDifferences(const QStringList& differences);
    void bringPageToFront(zq::ui::TransferPage page);

private:
    void buildMenus();
    void buildToolBar();
    void buildStatusBar();
    void buildPages();
    ChannelEditor& channelEditor();

    model::Document& document_;
    TransferController& transfers_;
    FileCommands& files_;
    MessageBoxes& boxes_;
    const StringTable& strings_;

    PageStrip* pages_ = nullptr;
    FunctionSettingsPage* functionPage_ = nullptr;
    DtmfSettingsPage* dtmfPage_ = nullptr;
    MemoryPage* memoryPage_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QAction* modifyAction_ = nullptr;
    ModifyDialog* modifyDialog_ = nullptr;
    ChannelEditor* editor_ = nullptr;
    QPointer<GuideWindow> guide_;
    UrlOpener openUrl_ = DesktopUrlOpener();
};

} // namespace zq::ui
