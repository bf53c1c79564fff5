// The grids at the user's font: the widest text every column can show fits its cells, and the grids
// grow with the window.
#include "ui/pagestrip.h"
#include "windowfixture.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QStyle>

namespace zq::ui::test {
namespace {

// The widest texts of each grid column: its heading first, then what its cells can hold.
const QStringList kColumns[] = {
    {"Frequency", "145.5000*", "888.8888*", "000.0000"},
    {"Step", "12.5KHz", "30KHz"},
    {"Tone", "None", "Tone", "TSQ", "DCS"},
    {"TxTone", "141.3Hz", "250.3Hz", "100.0Hz"},
    {"RxTone", "141.3Hz", "250.3Hz", "100.0Hz"},
    {"DCS", "754", "023"},
    {"Shift", "+Shift", "-Shift", "None"},
    {"ShiftFreq.", "0.6000", "88.8888"},
    {"PWR", "High", "Mid", "Low"},
    {"------", "------"},
    {"BSV", "On1", "on2", "Off"},
    {"Clock", "Off", "On"},
    {"BCLO", "Off", "On"},
    {"Name", "MMMMMM", "######", "BBBBBB", "______"},
};
const QStringList kRowHeadings = {"199", "VFO", "CALL", "RPT"};

class GridLegibility : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
    }
    // Every text with the margins the style keeps around a cell's and a heading's text.
    void expectEveryTextFits(ChannelGridView* grid) {
        const QFontMetrics metrics(grid->font());
        const int cell = 2 * (grid->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, grid) + 1);
        const int heading = 2 * grid->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, grid);
        for (int column = 0; column < grid->model()->columnCount(); ++column) {
            const QStringList& texts = kColumns[column];
            for (int i = 0; i < texts.size(); ++i)
                EXPECT_LE(metrics.horizontalAdvance(texts[i]) + (i == 0 ? heading : cell),
                          grid->columnWidth(column))
                    << grid->objectName().toStdString() << " column " << column << ": "
                    << texts[i].toStdString();
        }
        for (const QString& row : kRowHeadings)
            EXPECT_LE(metrics.horizontalAdvance(row) + heading, grid->verticalHeader()->width())
                << row.toStdString();
        EXPECT_GE(grid->verticalHeader()->defaultSectionSize(), metrics.height());
    }
};

TEST_F(GridLegibility, WidestTextOfEveryColumnFitsAtTheDefaultFontAndAtTwiceItsSize) {
    QFont font = QApplication::font();
    for (const double factor : {1.0, 2.0}) {
        SCOPED_TRACE(factor);
        font.setPointSizeF(QApplication::font().pointSizeF() * factor);
        window->setFont(font);
        ASSERT_EQ(memoryPage().grid()->font().pointSizeF(), font.pointSizeF());
        expectEveryTextFits(memoryPage().grid());
        expectEveryTextFits(specialGrid());
    }
}

TEST_F(GridLegibility, GridsGrowWithTheWindowUntilTheNameColumnShows) {
    window->show();
    ChannelGridView* grid = memoryPage().grid();
    const auto nameShown = [grid] {
        return grid->columnViewportPosition(model::ColName) + grid->columnWidth(model::ColName) <=
               grid->viewport()->width();
    };
    // Each grid's size on its page, before and after the window doubles.
    const auto sizes = [this] {
        QList<QSize> shown;
        for (const auto& [page, grid] : {std::pair<int, QWidget*>{PageStrip::Memory, memoryPage().grid()},
                                         {PageStrip::Settings1, specialGrid()}}) {
            window->pages().setCurrentIndex(page);
            QApplication::processEvents();
            shown << grid->size();
        }
        return shown;
    };
    const QList<QSize> designed = sizes();
    window->pages().setCurrentIndex(PageStrip::Memory);
    QApplication::processEvents();
    EXPECT_FALSE(nameShown()) << "off-screen at the designed size";
    window->resize(window->size() * 2);
    const QList<QSize> larger = sizes();
    EXPECT_GT(larger[0].width(), designed[0].width());
    EXPECT_GT(larger[0].height(), designed[0].height());
    EXPECT_GT(larger[1].width(), designed[1].width());
    window->pages().setCurrentIndex(PageStrip::Memory);
    QApplication::processEvents();
    EXPECT_TRUE(nameShown());
}

} // namespace
} // namespace zq::ui::test
