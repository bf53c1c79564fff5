// The memory page's edit commands, row buttons, double-click, Edit > Modify, the tab rule and the toolbar.
#include "windowfixture.h"

#include <QAction>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

namespace zq::ui {
namespace {

const char* const kDeleteText = "Delete cannot be undone.\r\nAre you sure that you want to do the delete?";
const char* const kClearText = "Clear cannot be undone.\r\nAre you sure that you want to do the clear?";
const char* const kClearAllText =
    "Clear cannot be undone.\r\nAre you sure that you want to clear all memory?";

struct EditCase {
    const char* name;
    const char* button;
    MessageAnswer answer;
    const char* question; // nullptr: none asked; title "DELETE OK" for Delete, "CLEAR OK" for the others
    std::pair<int, const char*> first, second; // grid row, name shown there
};

class EditCommand : public test::WindowFixture, public ::testing::WithParamInterface<EditCase> {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load(demoCopy("demo.318")).ok());
        find<QTabWidget>("TabStrip1")->setCurrentIndex(2);
        window->show();
        for (int row = 0; row < model::kChannelCount; ++row) {
            doc().memory.set(row, model::ColFrequency, QStringLiteral("%1.0000").arg(140 + row % 30), row);
            doc().memory.set(row, model::ColName, QStringLiteral("CH%1").arg(row), row);
            doc().memory.setChannelInUse(row, true);
        }
        doc().RefreshMemoryGrid();
        doc().setDataChanged(false);
    }
};

TEST_P(EditCommand, AsksThenEditsTheCurrentRowAndRefreshesTheGrid) {
    const EditCase& c = GetParam();
    boxes.answers = {c.answer};
    window->setCurrentMemoryRow(5);
    const model::MemoryTable before = doc().memory;
    QTest::mouseClick(find<QPushButton>(c.button), Qt::LeftButton);
    ASSERT_EQ(boxes.shown.size(), c.question ? 1 : 0);
    if (c.question) {
        const char* title = c.question == kDeleteText ? "DELETE OK" : "CLEAR OK";
        EXPECT_EQ(boxes.shown[0],
                  (MessageRequest{QString::fromUtf8(c.question), QString::fromUtf8(title),
                                  MessageButtons::OkCancel, MessageIcon::Warning, MessageAnswer::Cancel}));
    }
    const bool done = c.answer == MessageAnswer::Ok;
    EXPECT_EQ(doc().DataChanged(), done);
    if (!done) {
        EXPECT_EQ(doc().memory, before);
    }
    for (const auto& [gridRow, name] : {c.first, c.second})
        EXPECT_EQ(memoryCell(gridRow, model::ColName + 1), QString::fromUtf8(name)) << gridRow;
}

using enum MessageAnswer;
INSTANTIATE_TEST_SUITE_P(
    Answers, EditCommand,
    ::testing::Values(EditCase{"Insert", "cmbInsert", Ok, nullptr, {5, ""}, {6, "CH4"}},
                      EditCase{"DeleteOk", "cmbDelete", Ok, kDeleteText, {5, "CH5"}, {200, ""}},
                      EditCase{"DeleteCancel", "cmbDelete", Cancel, kDeleteText, {5, "CH4"}, {200, "CH199"}},
                      EditCase{"ClearOk", "cmbClear", Ok, kClearText, {5, ""}, {6, "CH5"}},
                      EditCase{"ClearCancel", "cmbClear", Cancel, kClearText, {5, "CH4"}, {6, "CH5"}},
                      EditCase{"ClearAllOk", "cmbClAll", Ok, kClearAllText, {1, ""}, {200, ""}},
                      EditCase{
                          "ClearAllCancel", "cmbClAll", Cancel, kClearAllText, {1, "CH0"}, {200, "CH199"}}),
    [](const auto& info) { return std::string(info.param.name); });

class GridButtons : public EditCommand {};

TEST_F(GridButtons, DownStopsAt160AndUpAt1WithTheWholeRowSelectedAndInView) {
    auto* down = find<QPushButton>("Command4");
    auto* up = find<QPushButton>("Command5");
    const struct {
        int from;
        QPushButton* button;
        int to;
    } cases[] = {{159, down, 160}, {160, down, 160}, {190, down, 190}, {1, up, 1}, {200, up, 199}};
    for (const auto& c : cases) {
        window->setCurrentMemoryRow(c.from);
        window->memoryGrid()->scrollToTop();
        QTest::mouseClick(c.button, Qt::LeftButton);
        EXPECT_EQ(window->currentMemoryRow(), c.to) << c.from;
        const QModelIndexList selected = window->memoryGrid()->selectionModel()->selectedRows();
        ASSERT_EQ(selected.size(), 1);
        EXPECT_EQ(selected[0].row(), c.to - 1);
        EXPECT_EQ(window->memoryGrid()->selectionModel()->selectedIndexes().size(), 14);
        if (c.to != c.from) {
            const QRect cell = window->memoryGrid()->visualRect(selected[0]);
            EXPECT_TRUE(window->memoryGrid()->viewport()->rect().intersects(cell)) << c.from;
        }
    }
    EXPECT_FALSE(doc().DataChanged());
}

TEST_F(GridButtons, DoubleClickOpensTheRowUnderTheMouse) {
    QTableView* grid = window->memoryGrid();
    const QRect cell = grid->visualRect(grid->model()->index(3, 2));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(window->currentMemoryRow(), 4);
    ASSERT_FALSE(editor.opened.isEmpty());
    EXPECT_EQ(editor.opened.last(), (test::RecordingEditor::Opening{true, 3}));
}

TEST_F(GridButtons, TabRuleAndEditModify) {
    using Opening = test::RecordingEditor::Opening;
    window->setCurrentMemoryRow(13);
    window->setCurrentSpecialRow(2);
    const QList<Opening> opens[] = {{{false, 1}}, {}, {{true, 12}}}; // per tab; none: Modify disabled
    for (int tab = 0; tab < 3; ++tab) {
        editor.opened.clear();
        find<QTabWidget>("TabStrip1")->setCurrentIndex(tab);
        EXPECT_EQ(find<QAction>("mnuEditUndo")->isEnabled(), !opens[tab].isEmpty()) << tab;
        for (int frame = 0; frame < 3; ++frame)
            EXPECT_EQ(window->findChild<QWidget*>(QStringLiteral("Frame1_%1").arg(frame))->isEnabled(),
                      frame == tab);
        window->mnuEditUndo_Click();
        EXPECT_EQ(editor.opened, opens[tab]) << tab;
    }
}

TEST_F(GridButtons, GridsHaveTheirHeadingsAndWidths) {
    const QAbstractItemModel* memory = window->memoryGrid()->model();
    const QAbstractItemModel* special = window->specialGrid()->model();
    ASSERT_EQ(memory->columnCount(), 14);
    ASSERT_EQ(special->columnCount(), 13);
    EXPECT_EQ(memory->rowCount(), 200);
    QStringList shown; // column headings, then row headings
    for (int c = 0; c < 14; ++c)
        shown << memory->headerData(c, Qt::Horizontal).toString();
    for (const auto& [grid, row] :
         {std::pair{memory, 0}, {memory, 199}, {special, 0}, {special, 1}, {special, 2}})
        shown << grid->headerData(row, Qt::Vertical).toString();
    EXPECT_EQ(shown, QStringList({"Frequency", "Step", "Tone", "TxTone", "RxTone", "DCS", "Shift",
                                  "ShiftFreq.", "PWR", "------", "BSV", "Clock", "BCLO", "Name", "0", "199",
                                  "VFO", "CALL", "RPT"}));
    const int twips[] = {870, 705, 450, 690, 690, 450, 495, 795, 450, 450, 450, 500};
    for (int c = 0; c < 12; ++c) {
        EXPECT_EQ(window->memoryGrid()->columnWidth(c), twips[c] / 15) << c;
        EXPECT_EQ(window->specialGrid()->columnWidth(c), twips[c] / 15) << c;
    }
    EXPECT_EQ(window->memoryGrid()->columnWidth(13), 70);
    EXPECT_EQ(window->memoryGrid()->verticalHeader()->width(), 500 / 15);
}

TEST_F(GridButtons, ToolbarKeysDispatch) {
    doc().setDataChanged(true);
    boxes.answers = {MessageAnswer::Cancel};
    window->tbToolBar_ButtonClick(QString::fromUtf8("新規作成"));
    ASSERT_EQ(boxes.shown.size(), 1); // New asked about the changes
    EXPECT_EQ(boxes.shown[0], SaveChangesBox());

    doc().setDataChanged(false);
    window->tbToolBar_ButtonClick(QString::fromUtf8("開く"));
    ASSERT_EQ(dialogs.asked.size(), 1);
    EXPECT_EQ(dialogs.asked[0], (FileRequest{FileRequest::Kind::Open, CloneFileFilter()}));

    window->tbToolBar_ButtonClick(QString::fromUtf8("上書き保存")); // the demo file has a path: no dialog
    EXPECT_EQ(dialogs.asked.size(), 1);

    for (const char* key : {"印刷", "Help"}) // no print; only the Japanese help key opens the box
        window->tbToolBar_ButtonClick(QString::fromUtf8(key));
    EXPECT_EQ(window->findChild<QDialog*>(QStringLiteral("frmAbout")), nullptr);

    window->tbToolBar_ButtonClick(QString::fromUtf8("ﾍﾙﾌﾟ"));
    auto* about = window->findChild<QDialog*>(QStringLiteral("frmAbout"));
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_TRUE(
        about->findChild<QLabel*>(QStringLiteral("lblVersion"))->text().contains(QStringLiteral(ZQ_VERSION)));
    QTest::mouseClick(about->findChild<QPushButton*>(QStringLiteral("cmdSysInfo")), Qt::LeftButton);
    ASSERT_EQ(boxes.shown.size(), 2); // no system-information tool here: the box says so
    EXPECT_EQ(boxes.shown[1].icon, MessageIcon::Information);
    about->close();
}

} // namespace
} // namespace zq::ui
