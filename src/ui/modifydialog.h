#pragma once
// The channel modify dialog: edits one memory channel or the VFO, CALL or RPT row in place. It is
// created once and only hidden between openings, so that "Hold" keeps its tick.
#include "channeleditor.h"
#include "channelform.h"

#include <QDialog>

namespace zq::model {
class Document;
}

namespace zq::ui {

class ModifyDialog : public QDialog, public ChannelEditor {
    Q_OBJECT
public:
    // Which store the row under edit lives in.
    enum class EditMode { Special = 0, Memory = 1 };

    explicit ModifyDialog(zq::model::Document& document, QWidget* parent = nullptr);

    // Prepare, then show modally.
    void openMemoryChannel(int editIndex) override;
    void openSpecialRow(int editIndex) override;

    // Everything an opening does except the modal loop, so that tests can drive the dialog.
    // An index outside the store leaves the dialog untouched and returns false.
    bool prepareMemoryChannel(int editIndex);
    bool prepareSpecialRow(int editIndex);

    EditMode editMode() const { return mode_; }
    int editIndex() const { return editIndex_; }
    bool editsRepeaterRow() const { return mode_ == EditMode::Special && editIndex_ >= model::kRptRow; }

public Q_SLOTS:
    // OK: writes the row back, sets DataChanged, hides the dialog.
    void accept() override;
    // Cancel: hides the dialog and changes nothing.
    void reject() override;

protected:
    // Corrects a box when the focus leaves it.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void prepare(EditMode mode, int editIndex);
    ChannelRow rowUnderEdit() const;
    void focusFrequency();
    void correctField(QObject* field);
    void writeMemoryRow();
    void writeSpecialRow();
    int effectiveVariant() const;

    zq::model::Document& document_;
    ChannelForm form_;
    EditMode mode_ = EditMode::Memory;
    int editIndex_ = 0;
};

} // namespace zq::ui
