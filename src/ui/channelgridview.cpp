#include "channelgridview.h"

#include "channelgridmodels.h"
#include "files/preferences.h"
#include "model/channelentry.h"
#include "model/channeloptions.h"
#include "model/tables.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>
#include <array>
#include <cmath>

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
// The average letter of the 8-point font the sizes were laid out for, in pixels at 96 dpi.
constexpr double kDesignAverageCharWidth = 6.0;

double twipsToPixels(int twips, double scale) {
    return twips / double(files::kTwipsPerPixel) * scale;
}

int designedTwips(int gridColumn) {
    if (gridColumn < kAppliedWidths) return kColumnWidthTwips[gridColumn];
    return gridColumn == ColName + 1 ? kNameColumnWidthTwips : kDefaultColumnWidthTwips;
}

QStringList captionsOf(const OptionTable& table) {
    QStringList captions;
    for (int i = 0; i < table.count(); ++i)
        captions << table.caption(i);
    return captions;
}

// Texts of the same shape with each digit in turn, so that the widest digit of the font counts.
QStringList everyDigit(const QString& shape) {
    QStringList texts;
    for (char digit = '0'; digit <= '9'; ++digit)
        texts << QString(shape).replace(QLatin1Char('9'), QLatin1Char(digit));
    return texts;
}

// Every text a store column can show (beyond its heading).
QStringList columnTexts(int column) {
    switch (column) {
    case ColFrequency:
        return everyDigit(QStringLiteral("999.9999*"));
    case ColStep:
        return StepNames();
    case ColTone:
        return captionsOf(ToneModes());
    case ColTxTone:
    case ColRxTone:
        return ToneNames();
    case ColDcs:
        return DcsCodes();
    case ColShift:
        return captionsOf(Shifts());
    case ColOffset:
        return everyDigit(QStringLiteral("99.9999"));
    case ColPower:
        return captionsOf(Powers());
    case ColBsv: // a memory channel read from the radio shows "on1"
        return captionsOf(BatterySaves()) << QStringLiteral("on1") << QStringLiteral("on2");
    case ColClock:
    case ColBclo:
        return {QStringLiteral("On"), QStringLiteral("Off")};
    case ColName: {
        QStringList names{QStringLiteral("??????")}; // what unknown name bytes read back as
        for (int code = 0; code <= 0xFF; ++code)
            if (const auto c = NameKeyCharacter(QChar(char16_t(code)))) names << QString(6, *c);
        return names;
    }
    default:
        return {QStringLiteral("------")};
    }
}

double widest(const QFontMetricsF& metrics, const QStringList& texts) {
    double width = 0;
    for (const QString& text : texts)
        width = std::max(width, metrics.horizontalAdvance(text));
    return width;
}

} // namespace

double LayoutScale(const QFont& font) {
    // Averaged over the letters A..Z and a..z: the average a font declares counts its widest
    // glyphs too, and a Japanese font's ideographs would double every size.
    static const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    return QFontMetricsF(font).horizontalAdvance(letters) / letters.size() / kDesignAverageCharWidth;
}

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
    const double scale = LayoutScale(font());
    const QFontMetricsF metrics(font());
    // The item delegate keeps a margin on either side of a cell's text, and a grid line follows.
    const double cellMargin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1) + 1;
    const double headerMargin = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this) + 1;
    const auto fitted = [&](int gridColumn, const QStringList& cells, const QStringList& headings) {
        const double needed =
            std::max(widest(metrics, cells) + cellMargin, widest(metrics, headings) + headerMargin);
        return int(std::ceil(std::max(twipsToPixels(designedTwips(gridColumn), scale), needed)));
    };

    QStringList rowLabels;
    for (int row = 0; row < model()->rowCount(); ++row)
        rowLabels << model()->headerData(row, Qt::Vertical).toString();
    verticalHeader()->setFixedWidth(fitted(0, {}, rowLabels));
    for (int column = 0; column < model()->columnCount(); ++column)
        setColumnWidth(column, fitted(column + 1, columnTexts(column),
                                      {model()->headerData(column, Qt::Horizontal).toString()}));
    verticalHeader()->setDefaultSectionSize(int(std::ceil(metrics.height())) + 4);
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

void ChannelGridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fitToFont();
}

} // namespace zq::ui
