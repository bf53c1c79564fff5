#include "modifydialog.h"

#include "channelkeyfilter.h"
#include "model/channelentry.h"
#include "model/document.h"
#include "model/tables.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace zq::ui {

using namespace zq::model;

ModifyDialog::ModifyDialog(Document& document, QWidget* parent)
    : QDialog(parent), document_(document), form_(this) {
    setObjectName(QStringLiteral("dlgModify"));
    setModal(true);
    connect(form_.okButton, &QPushButton::clicked, this, &ModifyDialog::accept);
    connect(form_.cancelButton, &QPushButton::clicked, this, &ModifyDialog::reject);
    new ChannelKeyFilter(
        {form_.mhzBox, form_.fractionBox, form_.offsetMhzBox, form_.offsetFractionBox, form_.nameBox}, this);
    for (QLineEdit* box : {form_.mhzBox, form_.fractionBox, form_.offsetMhzBox, form_.offsetFractionBox})
        box->installEventFilter(this);
}

int ModifyDialog::effectiveVariant() const {
    // With no model option selected the first-ticked rule falls through to the last variant.
    const int variant = document_.ModelVariant();
    return (variant >= 0 && variant < kVariantCount) ? variant : VariantA;
}

void ModifyDialog::openMemoryChannel(int editIndex) {
    if (prepareMemoryChannel(editIndex)) exec();
}

void ModifyDialog::openSpecialRow(int editIndex) {
    if (prepareSpecialRow(editIndex)) exec();
}

bool ModifyDialog::prepareMemoryChannel(int editIndex) {
    if (editIndex < 0 || editIndex >= kChannelCount) return false;
    setWindowTitle(QStringLiteral("Modify Memory Channel Parameter"));
    form_.modeLabel->setText(QStringLiteral("Memory"));
    form_.channelLabel->setText(QStringLiteral("%1CH").arg(editIndex));
    // An empty channel takes the template row's cells, which counts as no edit yet.
    if (!document_.memory().ChannelInUse(editIndex) && !form_.hold->isChecked()) {
        document_.changeMemory(
            editIndex, editIndex,
            [editIndex](MemoryTable& memory) {
                for (int column = 0; column < kMemoryColumns; ++column)
                    memory.set(editIndex, column, memory.cell(kTemplateRow, column));
            },
            Document::Mark::Quiet);
    }
    prepare(EditMode::Memory, editIndex);
    return true;
}

bool ModifyDialog::prepareSpecialRow(int editIndex) {
    if (editIndex < 0 || editIndex >= kSpecialRows) return false;
    const char* const titles[] = {"Modify VFO Parameters", "Modify Call Channel Parameters",
                                  "Modifi Repeater Access Parameters"};
    const char* const modes[] = {"VFO", "Call", "Repeater"};
    const int kind = std::min(editIndex, int(kRptRow));
    setWindowTitle(QLatin1String(titles[kind]));
    form_.modeLabel->setText(QLatin1String(modes[kind]));
    prepare(EditMode::Special, editIndex);
    return true;
}

void ModifyDialog::prepare(EditMode mode, int editIndex) {
    mode_ = mode;
    editIndex_ = editIndex;
    form_.showMemoryControls(mode == EditMode::Memory);
    form_.rangeLabel->setText(RangeCaption(effectiveVariant(), document_.CloneCodeA()));
    form_.showRow(rowUnderEdit(), editsRepeaterRow());
}

ChannelRow ModifyDialog::rowUnderEdit() const {
    ChannelRow row;
    if (mode_ == EditMode::Memory) {
        for (int column = 0; column < kMemoryColumns; ++column)
            row[column] = document_.memory().cell(editIndex_, column);
    } else {
        for (int column = 0; column <= ColBclo; ++column)
            row[column] = document_.special().cell(editIndex_, column);
    }
    return row;
}

void ModifyDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    focusFrequency();
}

void ModifyDialog::focusFrequency() {
    if (editsRepeaterRow()) {
        if (QAbstractButton* tone = form_.toneModes->checkedButton()) tone->setFocus(Qt::OtherFocusReason);
        return;
    }
    form_.mhzBox->setFocus(Qt::OtherFocusReason);
    form_.mhzBox->selectAll();
}

bool ModifyDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        // Switching to another window or opening a popup is not leaving the field.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) correctField(watched);
    }
    return false;
}

void ModifyDialog::correctField(QObject* field) {
    if (field == form_.offsetMhzBox) {
        form_.offsetMhzBox->setText(PadOffsetMhz(form_.offsetMhzBox->text()));
    } else if (field == form_.offsetFractionBox) {
        form_.offsetFractionBox->setText(
            SnapOffsetFraction(form_.offsetFractionBox->text(), form_.steps->checkedId()));
    } else if (editsRepeaterRow()) {
        return; // the repeater row has no frequency of its own
    } else if (field == form_.mhzBox) {
        const bool unused = mode_ == EditMode::Memory && !document_.memory().ChannelInUse(editIndex_);
        const QString stored = mode_ == EditMode::Memory ? document_.memory().text(editIndex_, ColFrequency)
                                                         : document_.special().text(editIndex_, ColFrequency);
        form_.mhzBox->setText(
            CorrectMhz(form_.mhzBox->text(), {effectiveVariant(), document_.CloneCodeA(), unused, stored}));
    } else if (field == form_.fractionBox) {
        const SnappedFraction snapped = SnapFrequencyFraction(form_.fractionBox->text());
        form_.steps->button(snapped.step)->setChecked(true);
        form_.fractionBox->setText(snapped.text);
    }
}

void ModifyDialog::accept() {
    // Enter on the default button leaves the field without a focus change: correct it as leaving would.
    correctField(focusWidget());
    if (mode_ == EditMode::Memory)
        writeMemoryRow();
    else
        writeSpecialRow();
    QDialog::accept();
}

void ModifyDialog::reject() {
    QDialog::reject();
}

void ModifyDialog::writeMemoryRow() {
    ComposedColumns cells = form_.composeColumns();
    const bool skip = form_.skip->isChecked();
    if (skip) cells[ColFrequency]->text.append(QLatin1Char('*'));
    const QString name = form_.nameBox->text();
    const int row = editIndex_;
    document_.changeMemory(
        row, row,
        [&](MemoryTable& memory) {
            memory.setChannelInUse(row, true);
            for (int column = 0; column < int(cells.size()); ++column)
                if (cells[column]) memory.set(row, column, *cells[column]);
            memory.set(row, ColName, name, name.isEmpty() ? 0 : 1);
            memory.set(row, ColSkip, QString(), skip ? 1 : 0);
        },
        Document::Mark::Edit);
}

void ModifyDialog::writeSpecialRow() {
    const ComposedColumns cells = form_.composeColumns();
    const int row = editIndex_;
    document_.changeSpecial(
        std::min(row, int(kRptRow)), std::max(row, int(kRptRow)),
        [&](SpecialTable& special) {
            for (int column = 0; column < int(cells.size()); ++column)
                if (cells[column]) special.set(row, column, *cells[column]);
            // The repeater row shows only its tone, DCS and shift columns, whichever row was edited.
            BlankRptTexts(special);
        },
        Document::Mark::Edit);
}

} // namespace zq::ui
