#include "mainwindow.h"

#include "aboutbox.h"
#include "channelgridview.h"
#include "dtmfsettingspage.h"
#include "filecommands.h"
#include "files/preferences.h"
#include "files/programfiles.h"
#include "functionsettingspage.h"
#include "guidewindow.h"
#include "localiseform.h"
#include "memorypage.h"
#include "menutable.h"
#include "messageboxes.h"
#include "model/document.h"
#include "modifydialog.h"
#include "pagestrip.h"
#include "portdialog.h"
#include "servicepanel.h"
#include "stringtable.h"
#include "transferindicators.h"

#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace zq::ui {

namespace {

constexpr int kWindowWidthTwips = 10200;
constexpr int kWindowHeightTwips = 7905;
// A note hides the "Status" panel while it shows: long enough to be read, then the panel is back.
constexpr int kNoteShownMs = 30000;

} // namespace

MainWindow::MainWindow(model::Document& document, TransferController& transfers, FileCommands& files,
                       MessageBoxes& boxes, const StringTable& strings, QWidget* parent)
    : QMainWindow(parent), document_(document), transfers_(transfers), files_(files), boxes_(boxes),
      strings_(strings) {
    setObjectName(QStringLiteral("frmMain"));
    buildMenus();
    buildToolBar();
    buildStatusBar();
    buildPages();

    // What the transfers report.
    connect(&transfers_, &TransferController::pageWanted, this, &MainWindow::bringPageToFront);
    connect(
        &transfers_, &TransferController::failed, this,
        [this](const QString& message, const QString& detail) { boxes_.show(ErrorBox(message, detail)); });
    connect(&transfers_, &TransferController::verified, this, &MainWindow::showDifferences);
    connect(&transfers_, &TransferController::noted, this,
            [this](const QString& note) { statusBar()->showMessage(note, kNoteShownMs); });
    connect(&document_, &model::Document::currentFilePathChanged, this,
            [this] { setWindowTitle(document_.windowCaption()); });
    connect(&files_, &FileCommands::imported, this, [this] { memoryPage_->setCurrentRow(1); });
}

void MainWindow::buildMenus() {
    using Kind = MenuRow::Kind;
    const auto command = [](auto run) { return [run](bool) { run(); }; };
    BuildMenus(
        menuBar(),
        {
            {Kind::Menu, nullptr, "mnuFile", 1000},
            {Kind::Entry, "mnuFile", "mnuFileNew", 1001, command([this] { files_.newFile(); })},
            {Kind::Entry, "mnuFile", "mnuFileOpen", 1002, command([this] { files_.open(); })},
            {Kind::Entry, "mnuFile", "mnuFileSave", 1003, command([this] { files_.save(); })},
            {Kind::Entry, "mnuFile", "mnuFileSaveAs", 1004, command([this] { files_.saveAs(); })},
            {Kind::Separator, "mnuFile", "mnuFileBar0"},
            {Kind::Entry, "mnuFile", "mnuImport", 1201, command([this] { files_.importCsv(); })},
            {Kind::Entry, "mnuFile", "mnuExport", 1202, command([this] { files_.exportCsv(); })},
            {Kind::Entry, "mnuFile", "mnuImportChirp", 1310, command([this] { files_.importChirpCsv(); })},
            {Kind::Entry, "mnuFile", "mnuExportChirp", 1311, command([this] { files_.exportChirpCsv(); })},
            {Kind::Separator, "mnuFile", "mnuFileBar1"},
            {Kind::Entry, "mnuFile", "mnuFilePageSetup", 1005},
            {Kind::Entry, "mnuFile", "mnuFilePrint", 1006},
            {Kind::Separator, "mnuFile", "mnuFileBar2"},
            {Kind::Entry, "mnuFile", "mnuFileExit", 1007, command([this] { close(); })},
            {Kind::Menu, nullptr, "mnuEdit", 1008},
            {Kind::Entry, "mnuEdit", "mnuEditUndo", 1009, command([this] { modifySelectedChannel(); })},
            {Kind::Menu, nullptr, "mnuView", 1010},
            {Kind::Toggle, "mnuView", "mnuViewToolbar", 1011, [this](bool on) { toolBar_->setVisible(on); }},
            {Kind::Toggle, "mnuView", "mnuStatusBar", 1100, [this](bool on) { statusBar()->setVisible(on); }},
            {Kind::Menu, nullptr, "mnuTools", 1012},
            {Kind::Menu, "mnuTools", "mnuRe", 1203},
            {Kind::Entry, "mnuRe", "mnuReSet", 1205, command([this] { transfers_.readSettingsFromMenu(); })},
            {Kind::Entry, "mnuRe", "mnuReMem", 1206, command([this] { transfers_.readMemoryFromMenu(); })},
            {Kind::Entry, "mnuRe", "mnuReAll", 1207, command([this] { transfers_.readAll(); })},
            {Kind::Menu, "mnuTools", "mnuWr", 1204},
            {Kind::Entry, "mnuWr", "mnuWrSet", 1205, command([this] { transfers_.writeSettingsFromMenu(); })},
            {Kind::Entry, "mnuWr", "mnuWrMem", 1206, command([this] { transfers_.writeMemoryFromMenu(); })},
            {Kind::Entry, "mnuWr", "mnuWrAll", 1207, command([this] { transfers_.writeAll(); })},
            {Kind::Entry, "mnuTools", "mnuToolsOptions", 1013, command([this] { setUpPort(); })},
            // The program's own entries follow the designed ones of their menu.
            {Kind::Entry, "mnuTools", "mnuToolsVerify", 1312, command([this] { transfers_.verifyRadio(); })},
            {Kind::Menu, nullptr, "mnuHelp", 1014},
            {Kind::Entry, "mnuHelp", "mnuHelpGuide", 1400, command([this] { showGuide(); })},
            {Kind::Entry, "mnuHelp", "mnuHelpAbout", 1016, command([this] { showAbout(); })},
            {Kind::Entry, "mnuHelp", "mnuHelpTraces", 1313,
             command([this] { OpenTraceFolder(boxes_, openUrl_, strings_); })},
        });
    modifyAction_ = findChild<QAction*>(QStringLiteral("mnuEditUndo"));
}

// A click runs the command of the button's key; the print key has none.
void MainWindow::buildToolBar() {
    toolBar_ = addToolBar(QStringLiteral("tbToolBar"));
    toolBar_->setObjectName(QStringLiteral("tbToolBar"));
    toolBar_->setMovable(false);
    toolBar_->setIconSize(QSize(16, 16));
    const struct {
        const char* key; // UTF-8
        int tooltipId;
        QStyle::StandardPixmap icon;
        std::function<void()> run;
    } buttons[] = {
        {"新規作成", 1017, QStyle::SP_FileIcon, [this] { files_.newFile(); }},
        {"開く", 1018, QStyle::SP_DialogOpenButton, [this] { files_.open(); }},
        {"上書き保存", 1019, QStyle::SP_DialogSaveButton, [this] { files_.save(); }},
        {"印刷", 1020, QStyle::SP_FileDialogDetailedView, {}},
        {"ﾍﾙﾌﾟ", 1021, QStyle::SP_MessageBoxQuestion, [this] { showAbout(); }},
    };
    int index = 1;
    for (const auto& button : buttons) {
        const QString key = QString::fromUtf8(button.key);
        QAction* action = toolBar_->addAction(style()->standardIcon(button.icon), key);
        action->setObjectName(QStringLiteral("tbToolBar_Button%1").arg(index++));
        action->setProperty("key", key);
        action->setToolTip(QString::number(button.tooltipId));
        if (button.run) connect(action, &QAction::triggered, this, button.run);
    }
}

void MainWindow::buildStatusBar() {
    auto* bar = new QStatusBar(this);
    bar->setObjectName(QStringLiteral("sbStatusBar"));
    setStatusBar(bar);
    auto* panel = new QLabel(QStringLiteral("1200"), bar);
    panel->setObjectName(QStringLiteral("sbStatusBar_Panel1"));
    panel->setProperty("tag", QStringLiteral("1200"));
    bar->addWidget(panel, 1);
    progress_ = new QProgressBar(bar);
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    // The progress is the channel just transferred: the last one fills the bar.
    progress_->setRange(0, model::kChannelCount - 1);
    progress_->setValue(0);
    progress_->setMaximumWidth(240);
    progress_->setVisible(false);
    bar->addPermanentWidget(progress_);
}

void MainWindow::buildPages() {
    functionPage_ = new FunctionSettingsPage(document_);
    connect(functionPage_, &FunctionSettingsPage::specialRowOpened, this,
            [this](int editIndex) { channelEditor().openSpecialRow(editIndex); });
    dtmfPage_ = new DtmfSettingsPage(document_);
    memoryPage_ = new MemoryPage(document_, boxes_);
    connect(memoryPage_, &MemoryPage::channelOpened, this,
            [this](int editIndex) { channelEditor().openMemoryChannel(editIndex); });
    for (SettingsPage* page : std::initializer_list<SettingsPage*>{functionPage_, dtmfPage_}) {
        connect(page, &SettingsPage::readSettingsRequested, &transfers_, &TransferController::readSettings);
        connect(page, &SettingsPage::writeSettingsRequested, &transfers_, &TransferController::writeSettings);
    }
    connect(functionPage_, &FunctionSettingsPage::autoSelectRequested, &transfers_,
            &TransferController::autoSelect);
    connect(memoryPage_, &MemoryPage::readMemoryRequested, &transfers_, &TransferController::readMemory);
    connect(memoryPage_, &MemoryPage::writeMemoryRequested, &transfers_, &TransferController::writeMemory);
    new TransferIndicators(transfers_, *functionPage_, *dtmfPage_, *memoryPage_, *progress_, this);

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(2, 2, 2, 2);
    pages_ = new PageStrip({functionPage_, dtmfPage_, memoryPage_, new ServicePanel(transfers_)}, central);
    layout->addWidget(pages_);
    setCentralWidget(central);
    // Settings2 has no grid to modify.
    connect(pages_, &PageStrip::pageSwitched, this,
            [this](int page) { modifyAction_->setEnabled(page != PageStrip::Settings2); });
    auto* service = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+S")), this);
    connect(service, &QShortcut::activated, this,
            [this] { pages_->showServicePanel(!pages_->servicePanelShown()); });
}

void MainWindow::prepare() {
    LocaliseForm(this, strings_);
    // The designed size follows the user's font as the grids' columns do, within the screen.
    const double scale = LayoutScale(font()) / files::kTwipsPerPixel;
    QSize size(qRound(kWindowWidthTwips * scale), qRound(kWindowHeightTwips * scale));
    if (QScreen* shown = screen()) size = size.boundedTo(shown->availableSize());
    resize(size);
    pages_->setCurrentIndex(PageStrip::Settings1);
}

void MainWindow::showFirstPage() {
    setWindowTitle(document_.windowCaption());
    pages_->selectPage(PageStrip::Settings1);
}

void MainWindow::modifySelectedChannel() {
    const int page = pages_->currentIndex();
    if (page == PageStrip::Settings1)
        channelEditor().openSpecialRow(functionPage_->specialGrid()->currentGridRow() - 1);
    else if (page == PageStrip::Memory)
        channelEditor().openMemoryChannel(memoryPage_->currentRow() - 1);
}

void MainWindow::loadModifyDialog() {
    if (!modifyDialog_) modifyDialog_ = new ModifyDialog(document_, this);
}

ChannelEditor& MainWindow::channelEditor() {
    if (editor_) return *editor_;
    loadModifyDialog();
    return *modifyDialog_;
}

void MainWindow::setUpPort() {
    const QList<link::SerialPortDetails> listed = transfers_.ports().listPorts();
    transfers_.choosePort(PortDialog::ask(this, transfers_.ports(), listed), listed);
}

void MainWindow::showGuide() {
    if (!guide_) guide_ = GuideWindow::open(files::UserGuidePath(), boxes_, strings_, this);
    if (!guide_) return;
    guide_->show();
    guide_->raise();
    guide_->activateWindow();
}

void MainWindow::showAbout() {
    auto* about = new AboutBox(boxes_, this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->open();
}

void MainWindow::showDifferences(const QStringList& differences) {
    const QString title = strings_.string(text::kVerifyTitle);
    if (differences.isEmpty()) {
        boxes_.show({strings_.string(text::kNoDifferences), title, MessageButtons::Ok,
                     MessageIcon::Information, MessageAnswer::Ok});
        return;
    }
    const QString summary = differences.size() == 1
                                ? strings_.string(text::kOneDifference)
                                : strings_.string(text::kDifferences).arg(differences.size());
    boxes_.show(ListBox(strings_, title, summary, differences, MessageIcon::Warning));
}

void MainWindow::bringPageToFront(TransferPage page) {
    const int front = pages_->currentIndex();
    if (page == TransferPage::Memory && front != PageStrip::Memory) pages_->selectPage(PageStrip::Memory);
    if (page == TransferPage::Settings && front == PageStrip::Memory)
        pages_->selectPage(PageStrip::Settings1);
}

} // namespace zq::ui
