#pragma once
// The two channel grids as views of the document's stores: the memory grid (one row per
// channel, headed 0..199) and the VFO/CALL/RPT grid. Model column c is grid column c + 1; the
// grid's heading column is the vertical header.
#include "model/document.h"

#include <QAbstractTableModel>

namespace zq::ui {

// The grids' column headings, grid columns 1..14 (the VFO/CALL/RPT grid stops before "Name").
const QStringList& ChannelGridHeadings();

// What both grids share: a fixed number of rows and columns of text cells, left aligned, headed
// by the channel headings, redrawn when the document reports changed rows.
class ChannelGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

protected:
    ChannelGridModel(model::Document& document, int rows, int columns, QObject* parent);
    virtual QString cellText(int row, int column) const = 0;
    virtual QString rowLabel(int row) const = 0;
    void redrawRows(int first, int last);
    model::Document& document_;

private:
    const int rows_;
    const int columns_;
};

class MemoryGridModel : public ChannelGridModel {
    Q_OBJECT
public:
    explicit MemoryGridModel(model::Document& document, QObject* parent = nullptr);

protected:
    // A channel not in use shows blank cells, whatever its cells hold.
    QString cellText(int row, int column) const override;
    QString rowLabel(int row) const override;
};

class SpecialGridModel : public ChannelGridModel {
    Q_OBJECT
public:
    explicit SpecialGridModel(model::Document& document, QObject* parent = nullptr);

protected:
    // The text cells as they stand, with no in-use test.
    QString cellText(int row, int column) const override;
    QString rowLabel(int row) const override;
};

} // namespace zq::ui
