// The memory page's edit commands and their table effects, row buttons, Modify, tabs, toolbar, View menu.
#include "windowfixture.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>

namespace zq::ui {
namespace {

// Row r holds "F<r>.<c>" / r in columns 0..13 and "S<r>" / r in column 14; all rows but 10 are in use.
model::MemoryTable numberedTable() {
    model::MemoryTable table;
    for (int row = 0; row < model::kMemoryRows; ++row) {
        for (int c = 0; c < model::ColSkip; ++c)
            table.set(row, c, QStringLiteral("F%1.%2").arg(row).arg(c), row);
        table.set(row, model::ColSkip, QStringLiteral("S%1").arg(row), row);
        table.setChannelInUse(row, row != 10);
    }
    return table;
}

// "row:column" gives the cell's text ("" only for an emptied cell), "row:u" the in-use flag.
QString probe(const model::MemoryTable& table, const QString& where) {
    const QStringList at = where.split(QLatin1Char(':'));
    const int row = at[0].toInt();
    if (at[1] == QLatin1String("u"))
        return table.ChannelInUse(row) ? QStringLiteral("1") : QStringLiteral("0");
    const model::Cell& cell = table.cell(row, at[1].toInt());
    return cell == model::Cell{} ? QString() : cell.text.isEmpty() ? QStringLiteral("?") : cell.text;
}

struct EditCase {
    const char* name;
    const char* button;
    MessageAnswer answer;
    const char* question; // nullptr: none asked
    const char* title;
    int gridRow;
    const char* probes; // "where=text", blank between; the template row never moves
};

class EditCommand : public test::WindowFixture, public ::testing::WithParamInterface<EditCase> {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
        find<QTabWidget>("TabStrip1")->setCurrentIndex(2);
        window->show();
        doc().changeMemory(
            0, model::kChannelCount - 1, [](model::MemoryTable& m) { m = numberedTable(); },
            model::Document::Mark::Quiet);
    }
};

TEST_P(EditCommand, AsksThenEditsTheCurrentRow) {
    const EditCase& c = GetParam();
    boxes.answers = {c.answer};
    memoryPage().setCurrentRow(c.gridRow);
    QTest::mouseClick(find<QPushButton>(c.button), Qt::LeftButton);
    ASSERT_EQ(boxes.shown.size(), c.question ? 1 : 0);
    if (c.question) {
        EXPECT_EQ(boxes.shown[0],
                  (MessageRequest{QString::fromUtf8(c.question), QString::fromUtf8(c.title),
                                  MessageButtons::OkCancel, MessageIcon::Warning, MessageAnswer::Cancel}));
    }
    EXPECT_EQ(doc().DataChanged(), c.answer == MessageAnswer::Ok);
    EXPECT_EQ(doc().memory() == numberedTable(), c.answer == MessageAnswer::Cancel);
    for (const QString& expected : QString::fromUtf8(c.probes).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList parts = expected.split(QLatin1Char('='));
        EXPECT_EQ(probe(doc().memory(), parts[0]), parts[1]) << parts[0].toStdString();
    }
    EXPECT_EQ(probe(doc().memory(), QStringLiteral("200:0")), QStringLiteral("F200.0"));
}

const char* const kDelete = "Delete cannot be undone.\r\nAre you sure that you want to do the delete?";
const char* const kClear = "Clear cannot be undone.\r\nAre you sure that you want to do the clear?";
const char* const kClearAll = "Clear cannot be undone.\r\nAre you sure that you want to clear all memory?";
using enum MessageAnswer;
INSTANTIATE_TEST_SUITE_P(
    Answers, EditCommand,
    ::testing::Values(
        EditCase{"InsertFlagsTravel", "cmbInsert", Ok, nullptr, "", 5,
                 "3:0=F3.0 4:0= 4:13= 4:u=0 4:14=S4 5:0=F4.0 5:13=F4.13 5:14=S5 10:u=1 11:u=0 199:0=F198.0"},
        EditCase{"DeleteKeepsColumns9To13OfTheLastRow", "cmbDelete", Ok, kDelete, "DELETE OK", 5,
                 "3:0=F3.0 4:0=F5.0 4:14=S4 198:0=F199.0 199:8= 199:9=F199.9 199:13=F199.13 199:u=0"},
        EditCase{"DeleteLast", "cmbDelete", Ok, kDelete, "DELETE OK", 200,
                 "198:0=F198.0 199:0= 199:9=F199.9 199:14=S199 199:u=0"},
        EditCase{"DeleteCancel", "cmbDelete", Cancel, kDelete, "DELETE OK", 5, ""},
        EditCase{"ClearEmptiesColumn14Too", "cmbClear", Ok, kClear, "CLEAR OK", 5,
                 "3:0=F3.0 4:0= 4:13= 4:14= 4:u=0 5:0=F5.0"},
        EditCase{"ClearCancel", "cmbClear", Cancel, kClear, "CLEAR OK", 5, ""},
        EditCase{"ClearAllKeepsColumn14", "cmbClAll", Ok, kClearAll, "CLEAR OK", 5,
                 "0:0= 0:14=S0 0:u=0 199:13= 199:14=S199 199:u=0 200:u=1"},
        EditCase{"ClearAllCancel", "cmbClAll", Cancel, kClearAll, "CLEAR OK", 5, ""}),
    [](const auto& info) { return std::string(info.param.name); });

class GridButtons : public EditCommand {};

TEST_F(GridButtons, DownStopsAt160AndUpAt1WithTheWholeRowSelectedAndInView) {
    // From, Down (Command4) or Up (Command5), to.
    const std::tuple<int, const char*, int> cases[] = {
        {159, "Command4", 160}, {160, "Command4", 160}, {1, "Command5", 1}, {200, "Command5", 199}};
    for (const auto& [from, button, to] : cases) {
        memoryPage().setCurrentRow(from);
        memoryPage().grid()->scrollToTop();
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
        EXPECT_EQ(memoryPage().currentRow(), to) << from;
        const QModelIndexList selected = memoryPage().grid()->selectionModel()->selectedRows();
        ASSERT_EQ(selected.size(), 1);
        EXPECT_EQ(selected[0].row(), to - 1);
        EXPECT_EQ(memoryPage().grid()->selectionModel()->selectedIndexes().size(), 14);
        const QRect cell = memoryPage().grid()->visualRect(selected[0]);
        EXPECT_TRUE(to == from || memoryPage().grid()->viewport()->rect().intersects(cell)) << from;
    }
}

TEST_F(GridButtons, EditModifyOpensTheRowOfTheTabInFrontAndDoubleClickEnterOrF2TheRowOfTheGrid) {
    memoryPage().setCurrentRow(13);
    specialGrid()->selectGridRow(2);
    const QList<std::pair<bool, int>> opens[] = {{{false, 1}}, {}, {{true, 12}}}; // per tab; none: disabled
    for (int tab = 0; tab < 3; ++tab) {
        editor.opened.clear();
        find<QTabWidget>("TabStrip1")->setCurrentIndex(tab);
        EXPECT_EQ(find<QAction>("mnuEditUndo")->isEnabled(), !opens[tab].isEmpty()) << tab;
        for (int frame = 0; frame < 3; ++frame)
            EXPECT_EQ(window->findChild<QWidget*>(QStringLiteral("Frame1_%1").arg(frame))->isEnabled(),
                      frame == tab);
        window->modifySelectedChannel(); // also where the menu entry is greyed
        EXPECT_EQ(editor.opened, opens[tab]) << tab;
    }
    QTableView* grid = memoryPage().grid();
    const QRect cell = grid->visualRect(grid->model()->index(3, 2));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(memoryPage().currentRow(), 4);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2})
        QTest::keyClick(grid, key);
    find<QTabWidget>("TabStrip1")->setCurrentIndex(0);
    QTest::keyClick(specialGrid(), Qt::Key_F2);
    EXPECT_EQ(editor.opened, (QList<std::pair<bool, int>>{
                                 {true, 12}, {true, 3}, {true, 3}, {true, 3}, {true, 3}, {false, 1}}));
}

TEST_F(GridButtons, GridsHaveTheirHeadings) {
    const QAbstractItemModel* memory = memoryPage().grid()->model();
    const QAbstractItemModel* special = specialGrid()->model();
    ASSERT_EQ(memory->columnCount(), 14);
    ASSERT_EQ(special->columnCount(), 13);
    QStringList shown; // column headings, then row headings
    for (int c = 0; c < 14; ++c)
        shown << memory->headerData(c, Qt::Horizontal).toString();
    for (const auto& [grid, row] :
         {std::pair{memory, 0}, {memory, 199}, {special, 0}, {special, 1}, {special, 2}})
        shown << grid->headerData(row, Qt::Vertical).toString();
    EXPECT_EQ(shown, QStringList({"Frequency", "Step", "Tone", "TxTone", "RxTone", "DCS", "Shift",
                                  "ShiftFreq.", "PWR", "------", "BSV", "Clock", "BCLO", "Name", "0", "199",
                                  "VFO", "CALL", "RPT"}));
}

// Buttons 1..5: New, Open, Save, Print (does nothing), Help.
TEST_F(GridButtons, ToolbarButtonsDispatchAndTheViewMenuHidesToolbarAndStatusBar) {
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

    const std::pair<const char*, QWidget*> toggles[] = {{"mnuViewToolbar", find<QToolBar>("tbToolBar")},
                                                        {"mnuStatusBar", find<QStatusBar>("sbStatusBar")}};
    for (const auto& [name, bar] : toggles) {
        auto* toggle = find<QAction>(name);
        ASSERT_TRUE(bar->isVisible()) << name;
        toggle->trigger();
        EXPECT_FALSE(toggle->isChecked() || bar->isVisible()) << name;
        toggle->trigger();
        EXPECT_TRUE(toggle->isChecked() && bar->isVisible()) << name;
    }
}

} // namespace
} // namespace zq::ui
