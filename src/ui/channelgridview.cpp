#include "channelgridview.h"

#include "channelgridmodels.h"
#include "files/preferences.h"
#include "model/stores.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>

#include <array>

namespace zq::ui {

using namespace zq::model;

namespace {

// Twips, indexed by grid column (0 is the row headings). Entry 13 is filled but never applied:
// that column keeps the grid's default width, as the Name column keeps its own.
constexpr std::array<int, 14> kColumnWidthTwips = {500, 870, 705, 450, 690, 690, 450,
                                                   495, 795, 450, 450, 450, 500, 500};
constexpr int kAppliedWidths = 13;
constexpr int kDefaultColumnWidthTwips = 960;
constexpr int kNameColumnWidthTwips = 1050;

int designedPixels(int gridColumn) {
    if (gridColumn < kAppliedWidths) return kColumnWidthTwips[gridColumn] / files::kTwipsPerPixel;
    return (gridColumn == ColName + 1 ? kNameColumnWidthTwips : kDefaultColumnWidthTwips) /
           files::kTwipsPerPixel;
}

} // namespace

ChannelGridView::ChannelGridView(const QString& objectName, ChannelGridModel* model, QWidget* parent)
    : QTableView(parent) {
    setObjectName(objectName);
    setModel(model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    setTextElideMode(Qt::ElideNone);
    horizontalHeader()->setMinimumSectionSize(8);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setHighlightSections(false);
    connect(this, &QTableView::doubleClicked, this, &ChannelGridView::rowOpened);
    fitToFont();
}

void ChannelGridView::fitToFont() {
    // The column widths are the radio program's, made for a small grid font.
    QFont small = font();
    small.setPointSizeF(8);
    setFont(small);
    horizontalHeader()->setFont(small);
    verticalHeader()->setFont(small);
    verticalHeader()->setFixedWidth(designedPixels(0));
    for (int column = 0; column < model()->columnCount(); ++column)
        setColumnWidth(column, designedPixels(column + 1));
    verticalHeader()->setDefaultSectionSize(QFontMetrics(small).height() + 4);
    if (allRows_) {
        // The rows, the headings and room for the horizontal scroll bar.
        setFixedHeight(horizontalHeader()->sizeHint().height() +
                       model()->rowCount() * verticalHeader()->defaultSectionSize() + 2 * frameWidth() +
                       style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
    }
}

void ChannelGridView::showAllRows() {
    allRows_ = true;
    fitToFont();
}

int ChannelGridView::currentGridRow() const {
    const QModelIndex current = currentIndex();
    return current.isValid() ? current.row() + 1 : 1;
}

void ChannelGridView::selectGridRow(int gridRow) {
    if (gridRow < 1 || gridRow > model()->rowCount()) return;
    const QModelIndex index = model()->index(gridRow - 1, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void ChannelGridView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        if (event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier) {
            Q_EMIT rowOpened();
            return;
        }
        break;
    default:
        break;
    }
    QTableView::keyPressEvent(event);
}

} // namespace zq::ui
