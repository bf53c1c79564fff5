#include "mainwindow.h"

#include "aboutbox.h"
#include "channelgridmodels.h"
#include "filedialogs.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "files/preferences.h"
#include "localiseform.h"
#include "memoryedits.h"
#include "model/tables.h"
#include "modifydialog.h"
#include "settingspages.h"
#include "transfercontroller.h"

#include <QAction>
#include <QCloseEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace zq::ui {

using model::Outcome;
using model::Result;

namespace {

constexpr int kWindowWidthTwips = 10200;
constexpr int kWindowHeightTwips = 7905;
constexpr int kMemoryTab = 3;
constexpr int kSettings2Tab = 2;
constexpr int kSettings1Tab = 1;
constexpr int kDefaultColumnWidthTwips = 960; // what a grid column is wide unless told

// The modify dialog behind the grids' double-click.
class DialogEditor : public ChannelEditor {
public:
    explicit DialogEditor(ModifyDialog& dialog) : dialog_(dialog) {}
    void openMemoryChannel(int editIndex) override { dialog_.openMemoryChannel(editIndex); }
    void openSpecialRow(int editIndex) override { dialog_.openSpecialRow(editIndex); }

private:
    ModifyDialog& dialog_;
};

void markIndexed(QObject* object, const char* name, int index) {
    object->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index));
    object->setProperty("index", index);
}

QTableView* makeGrid(const char* name, QWidget* parent) {
    auto* grid = new QTableView(parent);
    grid->setObjectName(QLatin1String(name));
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::SingleSelection);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setWordWrap(false);
    // The column widths are the radio program's, made for a small grid font.
    QFont font = grid->font();
    font.setPointSizeF(8);
    grid->setFont(font);
    grid->horizontalHeader()->setFont(font);
    grid->verticalHeader()->setFont(font);
    grid->setTextElideMode(Qt::ElideNone);
    grid->verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + 4);
    grid->horizontalHeader()->setDefaultSectionSize(kDefaultColumnWidthTwips / files::kTwipsPerPixel);
    grid->horizontalHeader()->setMinimumSectionSize(8);
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid->verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    grid->horizontalHeader()->setHighlightSections(false);
    grid->verticalHeader()->setHighlightSections(false);
    return grid;
}

} // namespace

MainWindow::MainWindow(MessageBoxes& boxes, FileDialogs& dialogs, const StringTable& strings, QWidget* parent)
    : QMainWindow(parent), boxes_(boxes), dialogs_(dialogs), strings_(strings) {
    setObjectName(QStringLiteral("frmMain"));
    buildMenus();
    buildToolBar();
    buildStatusBar();
    buildPages();
    connect(&document_, &model::Document::currentFilePathChanged, this, &MainWindow::updateCaption);
}

MainWindow::~MainWindow() = default;

QAction* MainWindow::addMenuEntry(QMenu* menu, const char* name, int id) {
    // The design-time caption of a menu entry is its string id.
    QAction* action = menu->addAction(QString::number(id));
    action->setObjectName(QLatin1String(name));
    return action;
}

void MainWindow::buildMenus() {
    auto makeMenu = [this](QMenu* parentMenu, const char* name, int id) {
        QMenu* menu =
            parentMenu ? parentMenu->addMenu(QString::number(id)) : menuBar()->addMenu(QString::number(id));
        menu->setObjectName(QLatin1String(name));
        menu->menuAction()->setObjectName(QLatin1String(name));
        return menu;
    };
    auto separator = [](QMenu* menu, const char* name) {
        menu->addSeparator()->setObjectName(QLatin1String(name));
    };

    QMenu* file = makeMenu(nullptr, "mnuFile", 1000);
    connect(addMenuEntry(file, "mnuFileNew", 1001), &QAction::triggered, this, &MainWindow::mnuFileNew_Click);
    connect(addMenuEntry(file, "mnuFileOpen", 1002), &QAction::triggered, this,
            &MainWindow::mnuFileOpen_Click);
    connect(addMenuEntry(file, "mnuFileSave", 1003), &QAction::triggered, this,
            &MainWindow::mnuFileSave_Click);
    connect(addMenuEntry(file, "mnuFileSaveAs", 1004), &QAction::triggered, this,
            &MainWindow::mnuFileSaveAs_Click);
    separator(file, "mnuFileBar0");
    connect(addMenuEntry(file, "mnuImport", 1201), &QAction::triggered, this, &MainWindow::mnuImport_Click);
    connect(addMenuEntry(file, "mnuExport", 1202), &QAction::triggered, this, &MainWindow::mnuExport_Click);
    separator(file, "mnuFileBar1");
    addMenuEntry(file, "mnuFilePageSetup", 1005); // no handler
    addMenuEntry(file, "mnuFilePrint", 1006);     // no handler
    separator(file, "mnuFileBar2");
    connect(addMenuEntry(file, "mnuFileExit", 1007), &QAction::triggered, this, &QWidget::close);

    QMenu* edit = makeMenu(nullptr, "mnuEdit", 1008);
    mnuEditUndo_ = addMenuEntry(edit, "mnuEditUndo", 1009);
    connect(mnuEditUndo_, &QAction::triggered, this, &MainWindow::mnuEditUndo_Click);

    QMenu* view = makeMenu(nullptr, "mnuView", 1010);
    mnuViewToolbar_ = addMenuEntry(view, "mnuViewToolbar", 1011);
    mnuViewToolbar_->setCheckable(true);
    mnuViewToolbar_->setChecked(true);
    mnuStatusBar_ = addMenuEntry(view, "mnuStatusBar", 1100);
    mnuStatusBar_->setCheckable(true);
    mnuStatusBar_->setChecked(true);

    QMenu* tools = makeMenu(nullptr, "mnuTools", 1012);
    QMenu* read = makeMenu(tools, "mnuRe", 1203);
    QMenu* write = makeMenu(tools, "mnuWr", 1204);
    const struct {
        QMenu* menu;
        const char* name;
        int id;
        TransferCommand command;
    } transfers[] = {
        {read, "mnuReSet", 1205, TransferCommand::MenuReadSettings},
        {read, "mnuReMem", 1206, TransferCommand::MenuReadMemory},
        {read, "mnuReAll", 1207, TransferCommand::MenuReadAll},
        {write, "mnuWrSet", 1205, TransferCommand::MenuWriteSettings},
        {write, "mnuWrMem", 1206, TransferCommand::MenuWriteMemory},
        {write, "mnuWrAll", 1207, TransferCommand::MenuWriteAll},
        {tools, "mnuToolsOptions", 1013, TransferCommand::PortSetup},
    };
    for (const auto& entry : transfers) {
        const TransferCommand command = entry.command;
        connect(addMenuEntry(entry.menu, entry.name, entry.id), &QAction::triggered, this,
                [this, command] { Q_EMIT transferRequested(command); });
    }

    QMenu* help = makeMenu(nullptr, "mnuHelp", 1014);
    connect(addMenuEntry(help, "mnuHelpAbout", 1016), &QAction::triggered, this,
            &MainWindow::mnuHelpAbout_Click);
}

void MainWindow::buildToolBar() {
    tbToolBar_ = addToolBar(QStringLiteral("tbToolBar"));
    tbToolBar_->setObjectName(QStringLiteral("tbToolBar"));
    tbToolBar_->setMovable(false);
    tbToolBar_->setIconSize(QSize(16, 16));
    const struct {
        const char* key; // UTF-8
        int tooltipId;
        QStyle::StandardPixmap icon;
    } buttons[] = {
        {"新規作成", 1017, QStyle::SP_FileIcon},           {"開く", 1018, QStyle::SP_DialogOpenButton},
        {"上書き保存", 1019, QStyle::SP_DialogSaveButton}, {"印刷", 1020, QStyle::SP_FileDialogDetailedView},
        {"ﾍﾙﾌﾟ", 1021, QStyle::SP_MessageBoxQuestion},
    };
    int index = 1;
    for (const auto& button : buttons) {
        const QString key = QString::fromUtf8(button.key);
        QAction* action = tbToolBar_->addAction(style()->standardIcon(button.icon), key);
        action->setObjectName(QStringLiteral("tbToolBar_Button%1").arg(index++));
        action->setProperty("key", key);
        action->setToolTip(QString::number(button.tooltipId));
        connect(action, &QAction::triggered, this, [this, key] { tbToolBar_ButtonClick(key); });
    }
    connect(mnuViewToolbar_, &QAction::toggled, tbToolBar_, &QWidget::setVisible);
}

void MainWindow::buildStatusBar() {
    sbStatusBar_ = new QStatusBar(this);
    sbStatusBar_->setObjectName(QStringLiteral("sbStatusBar"));
    setStatusBar(sbStatusBar_);
    auto* panel = new QLabel(QStringLiteral("1200"), sbStatusBar_);
    panel->setObjectName(QStringLiteral("sbStatusBar_Panel1"));
    panel->setProperty("tag", QStringLiteral("1200"));
    sbStatusBar_->addWidget(panel, 1);
    ProgressBar1_ = new QProgressBar(sbStatusBar_);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setRange(0, model::kChannelCount);
    ProgressBar1_->setValue(0);
    ProgressBar1_->setMaximumWidth(240);
    ProgressBar1_->setVisible(false);
    sbStatusBar_->addPermanentWidget(ProgressBar1_);
    connect(mnuStatusBar_, &QAction::toggled, sbStatusBar_, &QWidget::setVisible);
}

void MainWindow::addTransferButton(QPushButton* button, TransferCommand command) {
    connect(button, &QPushButton::clicked, this, [this, command] { Q_EMIT transferRequested(command); });
}

QWidget* MainWindow::buildMemoryPage() {
    auto* page = new QWidget;
    auto* layout = new QHBoxLayout(page);
    layout->setContentsMargins(4, 4, 4, 4);

    MSFlexGrid1_ = makeGrid("MSFlexGrid1", page);
    memoryModel_ = new MemoryGridModel(document_, this);
    MSFlexGrid1_->setModel(memoryModel_);
    layout->addWidget(MSFlexGrid1_, 1);

    auto* side = new QVBoxLayout;
    auto button = [page, side](const char* name, const char* caption) {
        auto* b = new QPushButton(QString::fromUtf8(caption), page);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        side->addWidget(b);
        return b;
    };
    cmbRxData_ = button("cmbRxData", "Read Memory");
    cmbTxData_ = button("cmbTxData", "Write Memory");
    addTransferButton(cmbRxData_, TransferCommand::ReadMemory);
    addTransferButton(cmbTxData_, TransferCommand::WriteMemory);
    side->addSpacing(16);
    connect(button("cmbInsert", "Insert"), &QPushButton::clicked, this, &MainWindow::cmbInsert_Click);
    connect(button("cmbDelete", "Delete"), &QPushButton::clicked, this, &MainWindow::cmbDelete_Click);
    connect(button("cmbClear", "Clear"), &QPushButton::clicked, this, &MainWindow::cmbClear_Click);
    connect(button("cmbClAll", "Clear All"), &QPushButton::clicked, this, &MainWindow::cmbClAll_Click);
    side->addStretch(1);
    connect(button("Command5", "Up"), &QPushButton::clicked, this, &MainWindow::Command5_Click);
    connect(button("Command4", "Down"), &QPushButton::clicked, this, &MainWindow::Command4_Click);
    layout->addLayout(side);

    // Whole-row selection: the current row follows the end of any selection.
    connect(MSFlexGrid1_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList rows = MSFlexGrid1_->selectionModel()->selectedRows();
        if (rows.isEmpty()) return;
        const int end = rows.last().row() + 1;
        if (end != currentMemoryRow()) setCurrentMemoryRow(end);
    });
    connect(MSFlexGrid1_, &QTableView::doubleClicked, this, &MainWindow::MSFlexGrid1_DblClick);
    return page;
}

void MainWindow::buildPages() {
    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(2, 2, 2, 2);
    TabStrip1_ = new QTabWidget(central);
    TabStrip1_->setObjectName(QStringLiteral("TabStrip1"));
    layout->addWidget(TabStrip1_);
    setCentralWidget(central);

    MSFlexGrid2_ = makeGrid("MSFlexGrid2", nullptr);
    specialModel_ = new SpecialGridModel(document_, this);
    MSFlexGrid2_->setModel(specialModel_);
    MSFlexGrid2_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    MSFlexGrid2_->setFixedHeight(MSFlexGrid2_->horizontalHeader()->sizeHint().height() +
                                 3 * MSFlexGrid2_->verticalHeader()->defaultSectionSize() +
                                 2 * MSFlexGrid2_->frameWidth() + 18);
    connect(MSFlexGrid2_, &QTableView::doubleClicked, this, &MainWindow::MSFlexGrid2_DblClick);

    page1_ = new SettingsPage1(document_);
    page1_->setSpecialGrid(MSFlexGrid2_);
    page2_ = new SettingsPage2(document_);
    connect(page1_, &SettingsPage1::readSettingsRequested, this,
            [this] { Q_EMIT transferRequested(TransferCommand::ReadSettings); });
    connect(page1_, &SettingsPage1::writeSettingsRequested, this,
            [this] { Q_EMIT transferRequested(TransferCommand::WriteSettings); });
    connect(page1_, &SettingsPage1::autoSelectRequested, this,
            [this] { Q_EMIT transferRequested(TransferCommand::AutoSelect); });
    connect(page2_, &SettingsPage2::readSettingsRequested, this,
            [this] { Q_EMIT transferRequested(TransferCommand::ReadSettings); });
    connect(page2_, &SettingsPage2::writeSettingsRequested, this,
            [this] { Q_EMIT transferRequested(TransferCommand::WriteSettings); });

    const std::array<QWidget*, 3> contents = {page1_, page2_, buildMemoryPage()};
    const std::array<const char*, 3> captions = {"Settings 1", "Settings2", "Memorys"};
    for (int i = 0; i < 4; ++i) {
        Frame1_[i] = new QWidget;
        markIndexed(Frame1_[i], "Frame1", i);
        if (i < 3) {
            auto* frameLayout = new QVBoxLayout(Frame1_[i]);
            frameLayout->setContentsMargins(0, 0, 0, 0);
            frameLayout->addWidget(contents[i]);
            TabStrip1_->addTab(Frame1_[i], QLatin1String(captions[i]));
        } else {
            // The fourth frame, the service panel, has no tab of its own; Ctrl+Shift+S shows it.
            buildServicePanel(Frame1_[i]);
            Frame1_[i]->setParent(central);
            Frame1_[i]->hide();
        }
    }
    connect(TabStrip1_, &QTabWidget::currentChanged, this, &MainWindow::TabStrip1_Click);
    auto* service = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+S")), this);
    connect(service, &QShortcut::activated, this,
            [this] { showServicePanel(TabStrip1_->indexOf(Frame1_[3]) < 0); });

    applyColumnWidths(MSFlexGrid1_, true);
    applyColumnWidths(MSFlexGrid2_, false);
    setCurrentMemoryRow(1);
    setCurrentSpecialRow(1);
}

void MainWindow::buildServicePanel(QWidget* frame) {
    auto* layout = new QVBoxLayout(frame);
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("KV~F"), frame);
    Text1_ = new QLineEdit(QStringLiteral("0000"), frame);
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setMaximumWidth(80);
    const auto button = [frame, row](const char* name, const char* caption) {
        auto* b = new QPushButton(QLatin1String(caption), frame);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        row->addWidget(b);
        return b;
    };
    row->addWidget(label);
    row->addWidget(Text1_);
    Command1_ = button("Command1", "Read");
    Command2_ = button("Command2", "Clear");
    Command6_ = button("Command6", "Dump");
    row->addStretch(1);
    Text2_ = new QPlainTextEdit(frame);
    Text2_->setObjectName(QStringLiteral("Text2"));
    Text2_->setReadOnly(true);
    QFont mono = Text2_->font();
    mono.setFamily(QStringLiteral("monospace"));
    mono.setStyleHint(QFont::Monospace);
    Text2_->setFont(mono);
    layout->addLayout(row);
    layout->addWidget(Text2_, 1);
}

void MainWindow::showServicePanel(bool show) {
    const int index = TabStrip1_->indexOf(Frame1_[3]);
    if (show && index < 0) {
        TabStrip1_->addTab(Frame1_[3], QStringLiteral("Service"));
        Frame1_[3]->setEnabled(true);
        TabStrip1_->setCurrentWidget(Frame1_[3]);
    } else if (!show && index >= 0) {
        TabStrip1_->removeTab(index);
        Frame1_[3]->setParent(centralWidget());
        Frame1_[3]->hide();
    }
}

TransferControls MainWindow::transferControls() {
    TransferControls controls;
    controls.readMemory = cmbRxData_;
    controls.writeMemory = cmbTxData_;
    controls.readSettings1 = page1_->readSettingsButton();
    controls.writeSettings1 = page1_->writeSettingsButton();
    controls.readSettings2 = page2_->readSettingsButton();
    controls.writeSettings2 = page2_->writeSettingsButton();
    controls.autoSelect = page1_->autoSelectButton();
    controls.progress = ProgressBar1_;
    controls.serviceAddress = Text1_;
    controls.serviceOutput = Text2_;
    controls.serviceRead = Command1_;
    controls.serviceClear = Command2_;
    controls.serviceDump = Command6_;
    controls.currentTab = [this] { return TabStrip1_->currentIndex() + 1; };
    controls.selectTab = [this](int tab) { TabStrip1_->setCurrentIndex(tab - 1); };
    controls.portNumber = [this] { return portNumber_; };
    controls.setPortNumber = [this](int number) { portNumber_ = number; };
    return controls;
}

void MainWindow::applyColumnWidths(QTableView* grid, bool memoryGrid) {
    grid->verticalHeader()->setFixedWidth(GridColumnWidthPixels(0));
    for (int column = 1; column < kGridColumnsWithWidth; ++column)
        grid->setColumnWidth(column - 1, GridColumnWidthPixels(column));
    if (memoryGrid) grid->setColumnWidth(model::ColName, kNameColumnWidthTwips / files::kTwipsPerPixel);
}

QString MainWindow::portFilePath() const {
    return portFilePath_.isEmpty() ? files::PortFilePath() : portFilePath_;
}

Result MainWindow::load(const LoadOptions& options) {
    LocaliseForm(this, strings_);
    resize(kWindowWidthTwips / files::kTwipsPerPixel, kWindowHeightTwips / files::kTwipsPerPixel);
    TabStrip1_->setCurrentIndex(0);

    portFilePath_ = options.portFilePath;
    const files::PortSetting port = files::LoadPortSetting(portFilePath());
    if (port.result.outcome == Outcome::Fatal) {
        reportFatal(port.result);
        return port.result;
    }
    portNumber_ = port.port;

    document_.resetToStartup();

    waitMilliseconds(options.pauseMs);

    setWindowTitle(model::AppTitle());
    TabStrip1_->setCurrentIndex(0);
    TabStrip1_Click();

    if (!options.commandLineFile.isEmpty()) {
        const Result loaded = files::LoadCloneFile(document_, options.commandLineFile);
        if (loaded.outcome == Outcome::Fatal) {
            reportFatal(loaded);
            return loaded;
        }
        if (!loaded.ok()) showError(loaded);
        updateCaption();
    }
    document_.setDataChanged(false);
    return Result::done();
}

void MainWindow::waitMilliseconds(int ms) {
    if (ms <= 0) return;
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void MainWindow::loadModifyDialog() {
    if (dlgModify_) return;
    dlgModify_ = new ModifyDialog(document_, this);
    dlgModify_->hide();
    dialogEditor_ = std::make_unique<DialogEditor>(*dlgModify_);
}

ChannelEditor* MainWindow::channelEditor() {
    if (editor_) return editor_;
    loadModifyDialog();
    return dialogEditor_.get();
}

void MainWindow::reportFatal(const Result& result) {
    fatal_ = true;
    boxes_.show(FatalErrorBox(result.message()));
    Q_EMIT fatalError(1);
}

void MainWindow::showError(const Result& result) {
    if (result.outcome == Outcome::Cancelled || result.ok()) return;
    boxes_.show(ErrorBox(result.message()));
}

void MainWindow::updateCaption() {
    setWindowTitle(document_.windowCaption());
}

// --- grids and edit commands -------------------------------------------------------------

int MainWindow::currentMemoryRow() const {
    const QModelIndex current = MSFlexGrid1_->currentIndex();
    return current.isValid() ? current.row() + 1 : kFirstGridRow;
}

void MainWindow::setCurrentMemoryRow(int gridRow) {
    if (gridRow < kFirstGridRow || gridRow > kLastGridRow) return;
    const QModelIndex index = memoryModel_->index(gridRow - 1, 0);
    MSFlexGrid1_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                               QItemSelectionModel::Rows);
    MSFlexGrid1_->scrollTo(index);
}

int MainWindow::currentSpecialRow() const {
    const QModelIndex current = MSFlexGrid2_->currentIndex();
    return current.isValid() ? current.row() + 1 : 1;
}

void MainWindow::setCurrentSpecialRow(int gridRow) {
    if (gridRow < 1 || gridRow > specialModel_->rowCount()) return;
    MSFlexGrid2_->selectionModel()->setCurrentIndex(specialModel_->index(gridRow - 1, 0),
                                                    QItemSelectionModel::ClearAndSelect |
                                                        QItemSelectionModel::Rows);
}

bool MainWindow::confirm(const QString& title, const QString& warning, const QString& question) {
    return boxes_.show(ConfirmBox(title, warning, question)) == MessageAnswer::Ok;
}

void MainWindow::cmbInsert_Click() {
    // Insert marks the data as changed even when it moves nothing.
    const int row = currentMemoryRow();
    document_.changeMemory(
        row - 1, model::kChannelCount - 1, [row](model::MemoryTable& memory) { InsertChannel(memory, row); },
        model::Document::Mark::Edit);
}

void MainWindow::cmbDelete_Click() {
    const int row = currentMemoryRow();
    if (!confirm(QStringLiteral("DELETE OK"), QStringLiteral("Delete cannot be undone."),
                 QStringLiteral("Are you sure that you want to do the delete?")))
        return;
    document_.changeMemory(
        row - 1, model::kChannelCount - 1, [row](model::MemoryTable& memory) { DeleteChannel(memory, row); },
        model::Document::Mark::Edit);
}

void MainWindow::cmbClear_Click() {
    if (!confirm(QStringLiteral("CLEAR OK"), QStringLiteral("Clear cannot be undone."),
                 QStringLiteral("Are you sure that you want to do the clear?")))
        return;
    const int row = currentMemoryRow();
    document_.changeMemory(
        row - 1, row - 1, [row](model::MemoryTable& memory) { ClearChannel(memory, row); },
        model::Document::Mark::Edit);
}

void MainWindow::cmbClAll_Click() {
    if (!confirm(QStringLiteral("CLEAR OK"), QStringLiteral("Clear cannot be undone."),
                 QStringLiteral("Are you sure that you want to clear all memory?")))
        return;
    document_.changeMemory(0, model::kChannelCount - 1, ClearAllChannels, model::Document::Mark::Edit);
}

void MainWindow::Command4_Click() {
    const int row = currentMemoryRow();
    const int next = RowAfterDown(row);
    if (next != row) setCurrentMemoryRow(next);
}

void MainWindow::Command5_Click() {
    const int row = currentMemoryRow();
    const int next = RowAfterUp(row);
    if (next != row) setCurrentMemoryRow(next);
}

void MainWindow::MSFlexGrid1_DblClick() {
    channelEditor()->openMemoryChannel(currentMemoryRow() - 1);
}

void MainWindow::MSFlexGrid2_DblClick() {
    channelEditor()->openSpecialRow(currentSpecialRow() - 1);
}

void MainWindow::mnuEditUndo_Click() {
    const int tab = TabStrip1_->currentIndex() + 1;
    if (tab == kSettings1Tab)
        MSFlexGrid2_DblClick();
    else if (tab == kMemoryTab)
        MSFlexGrid1_DblClick();
}

void MainWindow::TabStrip1_Click() {
    const int tab = TabStrip1_->currentIndex() + 1;
    if (tab < 1) return;
    // The frames lie on top of each other: only the front one is enabled.
    for (int j = 0; j <= 3; ++j)
        Frame1_[j]->setEnabled(TabStrip1_->indexOf(Frame1_[j]) == tab - 1);
    mnuEditUndo_->setEnabled(tab != kSettings2Tab);
}

// --- file commands -------------------------------------------------------------------------

bool MainWindow::promptUnsavedChanges() {
    if (!files::NeedsSavePrompt(document_)) return true;
    switch (boxes_.show(SaveChangesBox())) {
    case MessageAnswer::Cancel:
        return false;
    case MessageAnswer::Yes:
        // Whatever the save does, even a cancelled dialog, the command goes on.
        mnuFileSave_Click();
        return true;
    default:
        return true;
    }
}

void MainWindow::writeCloneFile(const QString& path) {
    const Result saved = files::SaveCloneFile(document_, path);
    if (!saved.ok()) {
        showError(saved);
        return;
    }
    updateCaption();
}

void MainWindow::mnuFileNew_Click() {
    if (!promptUnsavedChanges()) return;
    files::NewDocument(document_);
    setWindowTitle(model::AppTitle());
    document_.setDataChanged(false);
}

void MainWindow::mnuFileOpen_Click() {
    if (!promptUnsavedChanges()) return;
    const QString path = dialogs_.choose({FileRequest::Kind::Open, CloneFileFilter()});
    if (path.isEmpty()) return;
    const Result opened = files::OpenCloneFile(document_, path);
    if (!opened.ok()) {
        showError(opened);
        return;
    }
    updateCaption();
}

void MainWindow::mnuFileSave_Click() {
    QString path = document_.CurrentFilePath();
    if (path.isEmpty()) {
        path = dialogs_.choose({FileRequest::Kind::Save, CloneFileFilter()});
        if (path.isEmpty()) return;
    }
    writeCloneFile(path);
}

void MainWindow::mnuFileSaveAs_Click() {
    const QString path = dialogs_.choose({FileRequest::Kind::Save, CloneFileFilter()});
    if (path.isEmpty()) return;
    writeCloneFile(path);
}

void MainWindow::mnuImport_Click() {
    const QString path = dialogs_.choose({FileRequest::Kind::Open, CsvFileFilter()});
    if (path.isEmpty()) {
        // The import has no trap: a cancelled dialog ends the program.
        reportFatal(Result::fail(Outcome::Fatal, QStringLiteral("Cancel was selected.")));
        return;
    }
    const Result imported = files::ImportCsv(document_, path);
    if (imported.outcome == Outcome::Fatal) {
        reportFatal(imported);
        return;
    }
    if (!imported.ok()) {
        reportFatal(Result::fail(Outcome::Fatal, imported.message()));
        return;
    }
    setCurrentMemoryRow(1);
    updateCaption();
}

void MainWindow::mnuExport_Click() {
    const QString path = dialogs_.choose({FileRequest::Kind::Save, CsvFileFilter()});
    if (path.isEmpty()) return;
    const Result exported = files::ExportCsv(document_, path);
    if (!exported.ok()) {
        showError(exported);
        return;
    }
    updateCaption();
}

void MainWindow::mnuHelpAbout_Click() {
    auto* about = new AboutBox(boxes_, this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->open();
}

void MainWindow::tbToolBar_ButtonClick(const QString& key) {
    if (key == QString::fromUtf8("新規作成"))
        mnuFileNew_Click();
    else if (key == QString::fromUtf8("開く"))
        mnuFileOpen_Click();
    else if (key == QString::fromUtf8("上書き保存"))
        mnuFileSave_Click();
    else if (key == QString::fromUtf8("ﾍﾙﾌﾟ"))
        mnuHelpAbout_Click();
}

// --- exit ---------------------------------------------------------------------------------

void MainWindow::closeEvent(QCloseEvent* event) {
    if (fatal_) {
        event->accept();
        return;
    }
    if (transferBusy_ && transferBusy_()) {
        // The radio is mid-session: closing now would pull the link from under the transfer.
        event->ignore();
        return;
    }
    if (!promptUnsavedChanges()) {
        event->ignore();
        return;
    }
    const Result saved = files::SavePortSetting(portNumber_, portFilePath());
    if (!saved.ok()) {
        reportFatal(saved.outcome == Outcome::Fatal ? saved : Result::fail(Outcome::Fatal, saved.message()));
        event->accept();
        return;
    }
    // The other windows close first, the most recent first.
    const auto dialogs = findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly);
    for (auto it = dialogs.rbegin(); it != dialogs.rend(); ++it)
        if ((*it)->isVisible()) (*it)->close();
    if (!isMinimized()) files::SaveWindowGeometry(frameGeometry());
    event->accept();
}

} // namespace zq::ui
