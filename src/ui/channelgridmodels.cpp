#include "channelgridmodels.h"

namespace zq::ui {

using model::kChannelCount;
using model::kMemoryColumns;

namespace {

constexpr int kMemoryGridColumns = kMemoryColumns - 1;          // the skip number is never shown
constexpr int kSpecialGridRows = model::kRptRow + 1;            // VFO, CALL, RPT
constexpr int kSpecialGridColumns = model::kSpecialColumns - 1; // the name is not shown

QVariant alignment() {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
}

} // namespace

const QStringList& ChannelGridHeadings() {
    static const QStringList headings =
        QStringLiteral("Frequency|Step|Tone|TxTone|RxTone|DCS|Shift|ShiftFreq.|PWR|------|"
                       "BSV|Clock|BCLO|Name")
            .split(QLatin1Char('|'));
    return headings;
}

ChannelGridModel::ChannelGridModel(model::Document& document, int rows, int columns, QObject* parent)
    : QAbstractTableModel(parent), document_(document), rows_(rows), columns_(columns) {}

int ChannelGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int ChannelGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant ChannelGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rows_ || index.column() >= columns_) return {};
    if (role == Qt::TextAlignmentRole) return alignment();
    if (role != Qt::DisplayRole) return {};
    return cellText(index.row(), index.column());
}

QVariant ChannelGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    const int count = orientation == Qt::Horizontal ? columns_ : rows_;
    if (section < 0 || section >= count) return {};
    return orientation == Qt::Horizontal ? ChannelGridHeadings().at(section) : rowLabel(section);
}

void ChannelGridModel::redrawRows(int first, int last) {
    first = std::max(first, 0);
    last = std::min(last, rows_ - 1);
    if (first > last) return;
    Q_EMIT dataChanged(index(first, 0), index(last, columns_ - 1), {Qt::DisplayRole});
}

MemoryGridModel::MemoryGridModel(model::Document& document, QObject* parent)
    : ChannelGridModel(document, kChannelCount, kMemoryGridColumns, parent) {
    connect(&document_, &model::Document::memoryRowsChanged, this, &MemoryGridModel::redrawRows);
    connect(&document_, &model::Document::modelVariantChanged, this,
            [this] { redrawRows(0, kChannelCount - 1); });
}

QString MemoryGridModel::cellText(int row, int column) const {
    return document_.memory().ChannelInUse(row) ? document_.memory().text(row, column) : QString();
}

QString MemoryGridModel::rowLabel(int row) const {
    return QString::number(row);
}

SpecialGridModel::SpecialGridModel(model::Document& document, QObject* parent)
    : ChannelGridModel(document, kSpecialGridRows, kSpecialGridColumns, parent) {
    connect(&document_, &model::Document::specialRowsChanged, this, &SpecialGridModel::redrawRows);
}

QString SpecialGridModel::cellText(int row, int column) const {
    return document_.special().text(row, column);
}

QString SpecialGridModel::rowLabel(int row) const {
    static const QStringList rows = {QStringLiteral("VFO"), QStringLiteral("CALL"), QStringLiteral("RPT")};
    return rows.at(row);
}

} // namespace zq::ui
