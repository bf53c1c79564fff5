#include "memorypage.h"

#include "channelgridmodels.h"
#include "channelgridview.h"
#include "memoryedits.h"
#include "messageboxes.h"
#include "model/document.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zq::ui {

using model::Document;
using model::MemoryTable;

MemoryPage::MemoryPage(Document& document, MessageBoxes& boxes, QWidget* parent)
    : QWidget(parent), document_(document), boxes_(boxes) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    grid_ = new ChannelGridView(QStringLiteral("MSFlexGrid1"), new MemoryGridModel(document_, this), this);
    layout->addWidget(grid_, 1);

    auto* side = new QVBoxLayout;
    const auto button = [this, side](const char* name, const char* caption, void (MemoryPage::*run)()) {
        auto* b = new QPushButton(QString::fromUtf8(caption), this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        side->addWidget(b);
        connect(b, &QPushButton::clicked, this, run);
        return b;
    };
    readButton_ = button("cmbRxData", "Read Memory", &MemoryPage::readMemoryRequested);
    writeButton_ = button("cmbTxData", "Write Memory", &MemoryPage::writeMemoryRequested);
    side->addSpacing(16);
    button("cmbInsert", "Insert", &MemoryPage::insertChannel);
    button("cmbDelete", "Delete", &MemoryPage::deleteChannel);
    button("cmbClear", "Clear", &MemoryPage::clearChannel);
    button("cmbClAll", "Clear All", &MemoryPage::clearAllChannels);
    side->addStretch(1);
    button("Command5", "Up", &MemoryPage::moveUp);
    button("Command4", "Down", &MemoryPage::moveDown);
    layout->addLayout(side);

    // Whole-row selection: the current row follows the end of any selection.
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QModelIndexList rows = grid_->selectionModel()->selectedRows();
        if (rows.isEmpty()) return;
        const int end = rows.last().row() + 1;
        if (end != currentRow()) setCurrentRow(end);
    });
    connect(grid_, &ChannelGridView::rowOpened, this, [this] { Q_EMIT channelOpened(currentRow() - 1); });
    setCurrentRow(kFirstGridRow);
}

int MemoryPage::currentRow() const {
    return grid_->currentGridRow();
}

void MemoryPage::setCurrentRow(int gridRow) {
    grid_->selectGridRow(gridRow);
}

void MemoryPage::setTransferButtonsEnabled(bool enabled) {
    readButton_->setEnabled(enabled);
    writeButton_->setEnabled(enabled);
}

bool MemoryPage::confirm(const QString& title, const QString& warning, const QString& question) {
    return boxes_.show(ConfirmBox(title, warning, question)) == MessageAnswer::Ok;
}

void MemoryPage::insertChannel() {
    // Insert marks the data as changed even when it moves nothing.
    const int row = currentRow();
    document_.changeMemory(
        row - 1, model::kChannelCount - 1, [row](MemoryTable& memory) { InsertChannel(memory, row); },
        Document::Mark::Edit);
}

void MemoryPage::deleteChannel() {
    const int row = currentRow();
    if (!confirm(QStringLiteral("DELETE OK"), QStringLiteral("Delete cannot be undone."),
                 QStringLiteral("Are you sure that you want to do the delete?")))
        return;
    document_.changeMemory(
        row - 1, model::kChannelCount - 1, [row](MemoryTable& memory) { DeleteChannel(memory, row); },
        Document::Mark::Edit);
}

void MemoryPage::clearChannel() {
    if (!confirm(QStringLiteral("CLEAR OK"), QStringLiteral("Clear cannot be undone."),
                 QStringLiteral("Are you sure that you want to do the clear?")))
        return;
    const int row = currentRow();
    document_.changeMemory(
        row - 1, row - 1, [row](MemoryTable& memory) { ClearChannel(memory, row); }, Document::Mark::Edit);
}

void MemoryPage::clearAllChannels() {
    if (!confirm(QStringLiteral("CLEAR OK"), QStringLiteral("Clear cannot be undone."),
                 QStringLiteral("Are you sure that you want to clear all memory?")))
        return;
    document_.changeMemory(0, model::kChannelCount - 1, ClearAllChannels, Document::Mark::Edit);
}

void MemoryPage::moveDown() {
    const int row = currentRow();
    if (const int next = RowAfterDown(row); next != row) setCurrentRow(next);
}

void MemoryPage::moveUp() {
    const int row = currentRow();
    if (const int next = RowAfterUp(row); next != row) setCurrentRow(next);
}

} // namespace zq::ui
