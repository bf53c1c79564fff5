#pragma once
// The two channel grids as views of the document's stores: the memory grid (one row per
// channel, headed 0..199) and the VFO/CALL/RPT grid. Model column c is grid column c + 1; the
// grid's heading column is the vertical header.
#include "model/document.h"

#include <QAbstractTableModel>

namespace zq::ui {

// The grids' column headings, grid columns 1..14 (the VFO/CALL/RPT grid stops before "Name").
const QStringList& ChannelGridHeadings();
// Width in pixels of grid column 0..13 at 96 dpi; the memory grid's Name column is wider.
int GridColumnWidthPixels(int gridColumn);
inline constexpr int kNameColumnWidthTwips = 1050;
inline constexpr int kGridColumnsWithWidth = 13; // widths 0..12 apply; 13 keeps the default

class MemoryGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit MemoryGridModel(model::Document& document, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    // A channel not in use shows blank cells, whatever its cells hold.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void redrawRows(int first, int last);
    model::Document& document_;
};

class SpecialGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit SpecialGridModel(model::Document& document, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    // The text cells as they stand, with no in-use test.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void redrawRows(int first, int last);
    model::Document& document_;
};

} // namespace zq::ui
