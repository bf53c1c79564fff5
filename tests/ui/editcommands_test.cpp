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

struct EditCase {
    const char* name;
    const char* button;
    MessageAnswer answer;
    const char* question; // nullptr: none asked
    const char* title;
    std::pair<int, const char*> first, second; // grid row, name shown there
};

class EditCommand : public test::WindowFixture, public ::testing::WithParamInterface<EditCase> {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
        find<QTabWidget>("TabStrip1")->setCurrentIndex(2);
        window->show();
        for (int row = 0; row < model::kChannelCount; ++row) {
            doc().memory.set(row, model::ColName, QStringLiteral("CH%1").arg(row), row);
            doc().memory.setChannelInUse(row, true);
        }
        doc().RefreshMemoryGrid();
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
        EXPECT_EQ(boxes.shown[0],
                  (MessageRequest{QString::fromUtf8(c.question), QString::fromUtf8(c.title),
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

const char* const kDelete = "Delete cannot be undone.\r\nAre you sure that you want to do the delete?";
const char* const kClear = "Clear cannot be undone.\r\nAre you sure that you want to do the clear?";
const char* const kClearAll = "Clear cannot be undone.\r\nAre you sure that you want to clear all memory?";
using enum MessageAnswer;
INSTANTIATE_TEST_SUITE_P(
    Answers, EditCommand,
    ::testing::Values(
        EditCase{"Insert", "cmbInsert", Ok, nullptr, "", {5, ""}, {6, "CH4"}},
        EditCase{"DeleteOk", "cmbDelete", Ok, kDelete, "DELETE OK", {5, "CH5"}, {200, ""}},
        EditCase{"DeleteCancel", "cmbDelete", Cancel, kDelete, "DELETE OK", {5, "CH4"}, {200, "CH199"}},
        EditCase{"ClearOk", "cmbClear", Ok, kClear, "CLEAR OK", {5, ""}, {6, "CH5"}},
        EditCase{"ClearCancel", "cmbClear", Cancel, kClear, "CLEAR OK", {5, "CH4"}, {6, "CH5"}},
        EditCase{"ClearAllOk", "cmbClAll", Ok, kClearAll, "CLEAR OK", {1, ""}, {200, ""}},
        EditCase{"ClearAllCancel", "cmbClAll", Cancel, kClearAll, "CLEAR OK", {1, "CH0"}, {200, "CH199"}}),
    [](const auto& info) { return std::string(info.param.name); });

class GridButtons : public EditCommand {};

TEST_F(GridButtons, DownStopsAt160AndUpAt1WithTheWholeRowSelectedAndInView) {
    const struct {
        int from;
        const char* button; // Command4 is Down, Command5 Up
        int to;
    } cases[] = {{159, "Command4", 160}, {160, "Command4", 160}, {1, "Command5", 1}, {200, "Command5", 199}};
    for (const auto& c : cases) {
        window->setCurrentMemoryRow(c.from);
        window->memoryGrid()->scrollToTop();
        QTest::mouseClick(find<QPushButton>(c.button), Qt::LeftButton);
        EXPECT_EQ(window->currentMemoryRow(), c.to) << c.from;
        const QModelIndexList selected = window->memoryGrid()->selectionModel()->selectedRows();
        ASSERT_EQ(selected.size(), 1);
        EXPECT_EQ(selected[0].row(), c.to - 1);
        EXPECT_EQ(window->memoryGrid()->selectionModel()->selectedIndexes().size(), 14);
        const QRect cell = window->memoryGrid()->visualRect(selected[0]);
        EXPECT_TRUE(c.to == c.from || window->memoryGrid()->viewport()->rect().intersects(cell)) << c.from;
    }
}

TEST_F(GridButtons, DoubleClickOpensTheRowUnderTheMouse) {
    QTableView* grid = window->memoryGrid();
    const QRect cell = grid->visualRect(grid->model()->index(3, 2));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(window->currentMemoryRow(), 4);
    ASSERT_FALSE(editor.opened.isEmpty());
    EXPECT_EQ(editor.opened.last(), std::pair(true, 3));
}

TEST_F(GridButtons, TabRuleAndEditModify) {
    window->setCurrentMemoryRow(13);
    window->setCurrentSpecialRow(2);
    const QList<std::pair<bool, int>> opens[] = {{{false, 1}}, {}, {{true, 12}}}; // per tab; none: disabled
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

// Buttons 1..5: New, Open, Save, Print (does nothing), Help.
TEST_F(GridButtons, ToolbarButtonsDispatch) {
    doc().setDataChanged(true);
    boxes.answers = {MessageAnswer::Cancel};
    find<QAction>("tbToolBar_Button1")->trigger();
    EXPECT_EQ(boxes.shown, QVector<MessageRequest>{SaveChangesBox()}); // New asked, cancelled
    EXPECT_TRUE(doc().DataChanged());
    doc().setDataChanged(false);
    for (const char* name : {"tbToolBar_Button2", "tbToolBar_Button3", "tbToolBar_Button4"})
        find<QAction>(name)->trigger();
    EXPECT_EQ(dialogs.asked, QList<FileRequest>({{FileRequest::Kind::Open, CloneFileFilter()},
                                                 {FileRequest::Kind::Save, CloneFileFilter()}}));
    EXPECT_EQ(window->findChild<QDialog*>(QStringLiteral("frmAbout")), nullptr);

    find<QAction>("tbToolBar_Button5")->trigger();
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
