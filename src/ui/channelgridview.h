#pragma once
// A channel grid as the user sees it: whole-row selection, the designed column widths and the keys
// that open a row for editing (double-click, Enter, F2).
#include <QTableView>

namespace zq::ui {

class ChannelGridModel;

class ChannelGridView : public QTableView {
    Q_OBJECT
public:
    ChannelGridView(const QString& objectName, ChannelGridModel* model, QWidget* parent = nullptr);

    // The grid row (1-based) of the current row.
    int currentGridRow() const;
    // Makes grid row `gridRow` current with the whole row selected and in view; rows outside the
    // grid change nothing.
    void selectGridRow(int gridRow);
    // Keeps the grid exactly as tall as its rows, whatever the font.
    void showAllRows();

Q_SIGNALS:
    // The user asked to edit the current row.
    void rowOpened();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Column widths, row height and, when it shows all rows, the grid's height.
    void fitToFont();

    bool allRows_ = false;
};

} // namespace zq::ui
