#pragma once
// A channel grid as the user sees it: whole-row selection, the designed column widths scaled to
// the user's font so that every text a column can show fits, and the keys that open a row for
// editing (double-click, Enter, F2).
#include <QTableView>

namespace zq::ui {

class ChannelGridModel;

// The factor from the designed sizes (twips at 15 per pixel) to this font's pixels: the ratio of
// the font's average character width (over the Latin letters) to that of the 8-point font the
// sizes were laid out for.
// Sizes are logical pixels; the screen's scale factor turns them into device pixels, and the
// font's size in logical pixels already follows the screen's logical dots per inch.
double LayoutScale(const QFont& font);

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
    void changeEvent(QEvent* event) override;

private:
    // Column widths, row height and, when it shows all rows, the grid's height for its font.
    void fitToFont();

    bool allRows_ = false;
};

} // namespace zq::ui
