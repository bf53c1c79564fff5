#include "channelgridmodels.h"

#include "files/preferences.h"

#include <array>

namespace zq::ui {

using model::kChannelCount;
using model::kMemoryColumns;

namespace {

constexpr int kMemoryGridColumns = kMemoryColumns - 1; // the skip number is never shown
constexpr int kSpecialGridRows = 3;
constexpr int kSpecialGridColumns = 13;

// Twips, indexed by grid column; entry 13 is filled but never applied.
constexpr std::array<int, 14> kColumnWidthTwips = {500, 870, 705, 450, 690, 690, 450,
                                                   495, 795, 450, 450, 450, 500, 500};

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

int GridColumnWidthPixels(int gridColumn) {
    if (gridColumn < 0 || gridColumn >= int(kColumnWidthTwips.size())) return 0;
    return kColumnWidthTwips[gridColumn] / files::kTwipsPerPixel;
}

MemoryGridModel::MemoryGridModel(model::Document& document, QObject* parent)
    : QAbstractTableModel(parent), document_(document) {
    connect(&document_, &model::Document::memoryRowsChanged, this, &MemoryGridModel::redrawRows);
    connect(&document_, &model::Document::modelVariantChanged, this,
            [this] { redrawRows(0, kChannelCount - 1); });
}

int MemoryGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kChannelCount;
}

int MemoryGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kMemoryGridColumns;
}

QVariant MemoryGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= kChannelCount || index.column() >= kMemoryGridColumns) return {};
    if (role == Qt::TextAlignmentRole) return alignment();
    if (role != Qt::DisplayRole) return {};
    if (!document_.memory.ChannelInUse(index.row())) return QString();
    return document_.memory.text(index.row(), index.column());
}

QVariant MemoryGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Horizontal)
        return section >= 0 && section < kMemoryGridColumns ? ChannelGridHeadings().at(section) : QVariant();
    return QString::number(section);
}

void MemoryGridModel::redrawRows(int first, int last) {
    first = std::max(first, 0);
    last = std::min(last, kChannelCount - 1);
    if (first > last) return;
    Q_EMIT dataChanged(index(first, 0), index(last, kMemoryGridColumns - 1), {Qt::DisplayRole});
}

SpecialGridModel::SpecialGridModel(model::Document& document, QObject* parent)
    : QAbstractTableModel(parent), document_(document) {
    connect(&document_, &model::Document::specialRowsChanged, this, &SpecialGridModel::redrawRows);
}

int SpecialGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kSpecialGridRows;
}

int SpecialGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kSpecialGridColumns;
}

QVariant SpecialGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= kSpecialGridRows || index.column() >= kSpecialGridColumns)
        return {};
    if (role == Qt::TextAlignmentRole) return alignment();
    if (role != Qt::DisplayRole) return {};
    return document_.special.text(index.row(), index.column());
}

QVariant SpecialGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Horizontal)
        return section >= 0 && section < kSpecialGridColumns ? ChannelGridHeadings().at(section) : QVariant();
    static const QStringList rows = {QStringLiteral("VFO"), QStringLiteral("CALL"), QStringLiteral("RPT")};
    return section >= 0 && section < kSpecialGridRows ? rows.at(section) : QVariant();
}

void SpecialGridModel::redrawRows(int first, int last) {
    first = std::max(first, 0);
    last = std::min(last, kSpecialGridRows - 1);
    if (first > last) return;
    Q_EMIT dataChanged(index(first, 0), index(last, kSpecialGridColumns - 1), {Qt::DisplayRole});
}

} // namespace zq::ui
