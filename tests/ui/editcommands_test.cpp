// The memory page's edit commands through their buttons, the row buttons, the grids' double-click,
// Edit > Modify and the tab rule.
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

enum class Command { Insert, Delete, Clear, ClearAll };

struct EditCase {
    const char* name;
    Command command;
    const char* button;
    MessageAnswer answer;
    bool asks;
    const char* title;
    const char* text;
};

const char* const kDeleteText = "Delete cannot be undone.\r\nAre you sure that you want to do the delete?";
const char* const kClearText = "Clear cannot be undone.\r\nAre you sure that you want to do the clear?";
const char* const kClearAllText =
    "Clear cannot be undone.\r\nAre you sure that you want to clear all memory?";

class EditCommand : public test::WindowFixture, public ::testing::WithParamInterface<EditCase> {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        const QString copy = path("demo.318");
        ASSERT_TRUE(QFile::copy(test::ExamplePath("demo.318"), copy));
        ASSERT_TRUE(load(copy).ok());
        find<QTabWidget>("TabStrip1")->setCurrentIndex(2);
        window->show();
        // A recognisable channel in every row, in use.
        for (int row = 0; row < model::kChannelCount; ++row) {
            doc().memory.set(row, model::ColFrequency, QStringLiteral("%1.0000").arg(140 + row % 30), row);
            doc().memory.set(row, model::ColName, QStringLiteral("CH%1").arg(row), row);
            doc().memory.set(row, model::ColSkip, QString(), row);
            doc().memory.setChannelInUse(row, true);
        }
        doc().RefreshMemoryGrid();
        doc().setDataChanged(false);
    }
    QString nameShown(int gridRow) { return memoryCell(gridRow, model::ColName + 1); }
};

TEST_P(EditCommand, AsksAndChangesTheTableAndGrid) {
    const EditCase& c = GetParam();
    boxes.answers = {c.answer};
    window->setCurrentMemoryRow(5);
    const model::MemoryTable before = doc().memory;
    QTest::mouseClick(find<QPushButton>(c.button), Qt::LeftButton);

    if (c.asks) {
        ASSERT_EQ(boxes.shown.size(), 1);
        EXPECT_EQ(boxes.shown[0],
                  (MessageRequest{QString::fromUtf8(c.text), QString::fromUtf8(c.title),
                                  MessageButtons::OkCancel, MessageIcon::Warning, MessageAnswer::Cancel}));
    } else {
        EXPECT_TRUE(boxes.shown.isEmpty());
    }
    const bool done = !c.asks || c.answer == MessageAnswer::Ok;
    EXPECT_EQ(doc().DataChanged(), done);
    if (!done) {
        EXPECT_EQ(doc().memory, before);
        EXPECT_EQ(nameShown(5), QStringLiteral("CH4"));
        return;
    }
    switch (c.command) {
    case Command::Insert:
        EXPECT_EQ(nameShown(4), QStringLiteral("CH3"));
        EXPECT_EQ(nameShown(5), QString());
        EXPECT_EQ(nameShown(6), QStringLiteral("CH4"));
        EXPECT_EQ(nameShown(200), QStringLiteral("CH198"));
        EXPECT_EQ(doc().memory.number(4, model::ColSkip), 4.0); // column 14 stays with the row
        break;
    case Command::Delete:
        EXPECT_EQ(nameShown(5), QStringLiteral("CH5"));
        EXPECT_EQ(nameShown(199), QStringLiteral("CH199"));
        EXPECT_EQ(nameShown(200), QString());
        EXPECT_FALSE(doc().memory.ChannelInUse(199));
        EXPECT_EQ(doc().memory.text(199, model::ColName), QStringLiteral("CH199")); // hidden, kept
        break;
    case Command::Clear:
        EXPECT_EQ(nameShown(5), QString());
        EXPECT_EQ(memoryCell(5, 1), QString());
        EXPECT_EQ(nameShown(6), QStringLiteral("CH5"));
        EXPECT_EQ(doc().memory.number(4, model::ColSkip), 0.0);
        break;
    case Command::ClearAll:
        for (int row : {1, 5, 200})
            EXPECT_EQ(nameShown(row), QString()) << row;
        EXPECT_EQ(doc().memory.number(4, model::ColSkip), 4.0);
        break;
    }
}

INSTANTIATE_TEST_SUITE_P(Answers, EditCommand,
                         ::testing::Values(EditCase{"Insert", Command::Insert, "cmbInsert", MessageAnswer::Ok,
                                                    false, "", ""},
                                           EditCase{"DeleteOk", Command::Delete, "cmbDelete",
                                                    MessageAnswer::Ok, true, "DELETE OK", kDeleteText},
                                           EditCase{"DeleteCancel", Command::Delete, "cmbDelete",
                                                    MessageAnswer::Cancel, true, "DELETE OK", kDeleteText},
                                           EditCase{"ClearOk", Command::Clear, "cmbClear", MessageAnswer::Ok,
                                                    true, "CLEAR OK", kClearText},
                                           EditCase{"ClearCancel", Command::Clear, "cmbClear",
                                                    MessageAnswer::Cancel, true, "CLEAR OK", kClearText},
                                           EditCase{"ClearAllOk", Command::ClearAll, "cmbClAll",
                                                    MessageAnswer::Ok, true, "CLEAR OK", kClearAllText},
                                           EditCase{"ClearAllCancel", Command::ClearAll, "cmbClAll",
                                                    MessageAnswer::Cancel, true, "CLEAR OK", kClearAllText}),
                         [](const auto& info) { return std::string(info.param.name); });

class GridButtons : public EditCommand {};

TEST_F(GridButtons, InsertAtTheLastRowEmptiesOnlyThatRow) {
    window->setCurrentMemoryRow(200);
    QTest::mouseClick(find<QPushButton>("cmbInsert"), Qt::LeftButton);
    EXPECT_EQ(nameShown(200), QString());
    EXPECT_EQ(nameShown(199), QStringLiteral("CH198"));
    EXPECT_TRUE(doc().DataChanged());
}

TEST_F(GridButtons, DownStopsAt160AndUpAt1WithTheWholeRowSelectedAndInView) {
    auto* down = find<QPushButton>("Command4");
    auto* up = find<QPushButton>("Command5");
    const struct {
        int from;
        QPushButton* button;
        int to;
    } cases[] = {{1, down, 2}, {159, down, 160}, {160, down, 160}, {190, down, 190},
                 {2, up, 1},   {1, up, 1},       {200, up, 199}};
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
    auto* tabs = find<QTabWidget>("TabStrip1");
    auto* modify = find<QAction>("mnuEditUndo");
    window->setCurrentMemoryRow(13);
    window->setCurrentSpecialRow(2);
    const struct {
        int tab;
        bool enabled;
        bool opens;
        test::RecordingEditor::Opening opening;
    } cases[] = {{0, true, true, {false, 1}}, {1, false, false, {}}, {2, true, true, {true, 12}}};
    for (const auto& c : cases) {
        editor.opened.clear();
        tabs->setCurrentIndex(c.tab);
        EXPECT_EQ(modify->isEnabled(), c.enabled) << c.tab;
        for (int frame = 0; frame < 3; ++frame)
            EXPECT_EQ(window->findChild<QWidget*>(QStringLiteral("Frame1_%1").arg(frame))->isEnabled(),
                      frame == c.tab);
        window->mnuEditUndo_Click();
        if (c.opens) {
            ASSERT_EQ(editor.opened.size(), 1) << c.tab;
            EXPECT_EQ(editor.opened[0], c.opening);
        } else {
            EXPECT_TRUE(editor.opened.isEmpty()) << c.tab;
        }
    }
}

TEST_F(GridButtons, GridsHaveTheirHeadingsAndWidths) {
    QTableView* memory = window->memoryGrid();
    QTableView* special = window->specialGrid();
    ASSERT_EQ(memory->model()->columnCount(), 14);
    ASSERT_EQ(special->model()->columnCount(), 13);
    const QStringList headings = {"Frequency",  "Step", "Tone",   "TxTone", "RxTone", "DCS",  "Shift",
                                  "ShiftFreq.", "PWR",  "------", "BSV",    "Clock",  "BCLO", "Name"};
    for (int c = 0; c < 14; ++c)
        EXPECT_EQ(memory->model()->headerData(c, Qt::Horizontal).toString(), headings[c]);
    EXPECT_EQ(memory->model()->headerData(0, Qt::Vertical).toString(), QStringLiteral("0"));
    EXPECT_EQ(memory->model()->headerData(199, Qt::Vertical).toString(), QStringLiteral("199"));
    EXPECT_EQ(memory->model()->rowCount(), 200);
    const QStringList rows = {"VFO", "CALL", "RPT"};
    for (int r = 0; r < 3; ++r)
        EXPECT_EQ(special->model()->headerData(r, Qt::Vertical).toString(), rows[r]);
    const int widths[] = {870, 705, 450, 690, 690, 450, 495, 795, 450, 450, 450, 500};
    for (int c = 0; c < 12; ++c) {
        EXPECT_EQ(memory->columnWidth(c), widths[c] / 15) << c;
        EXPECT_EQ(special->columnWidth(c), widths[c] / 15) << c;
    }
    EXPECT_EQ(memory->columnWidth(13), 70);
    EXPECT_EQ(memory->verticalHeader()->width(), 500 / 15);
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

    window->tbToolBar_ButtonClick(QString::fromUtf8("印刷"));
    window->tbToolBar_ButtonClick(QStringLiteral("Help"));
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
