#pragma once
// Page "Memorys": the memory grid with its current row, the buttons beside it (the memory
// transfers, Insert, Delete, Clear, Clear All, Up and Down) and the edit commands they run.
#include <QWidget>

class QPushButton;

namespace zq::model {
class Document;
}

namespace zq::ui {

class ChannelGridView;
class MessageBoxes;

class MemoryPage : public QWidget {
    Q_OBJECT
public:
    MemoryPage(model::Document& document, MessageBoxes& boxes, QWidget* parent = nullptr);

    ChannelGridView* grid() const { return grid_; }
    // The grid's current row, 1..200 (grid row r shows channel r - 1).
    int currentRow() const;
    void setCurrentRow(int gridRow);
    // A transfer disables the Read Memory and Write Memory buttons; the closings enable them again.
    void setTransferButtonsEnabled(bool enabled);

public Q_SLOTS:
    void insertChannel();
    void deleteChannel();
    void clearChannel();
    void clearAllChannels();
    void moveDown();
    void moveUp();

Q_SIGNALS:
    void readMemoryRequested();
    void writeMemoryRequested();
    // The user asked to edit the channel in store row `editIndex` (0..199).
    void channelOpened(int editIndex);

private:
    bool confirm(const QString& title, const QString& warning, const QString& question);

    model::Document& document_;
    MessageBoxes& boxes_;
    ChannelGridView* grid_ = nullptr;
    QPushButton* readButton_ = nullptr;  // cmbRxData
    QPushButton* writeButton_ = nullptr; // cmbTxData
};

} // namespace zq::ui
