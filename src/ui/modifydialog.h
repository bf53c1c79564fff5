#pragma once
// The channel modify dialog: edits one memory channel or the VFO, CALL or RPT row in place.
#include "model/stores.h"

#include <QDialog>

#include <array>
#include <optional>

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace zq::model {
class Document;
}

namespace zq::ui {

class ModifyDialog : public QDialog {
    Q_OBJECT
public:
    // Which store the row under edit lives in.
    enum class EditMode { Special = 0, Memory = 1 };

    explicit ModifyDialog(zq::model::Document& document, QWidget* parent = nullptr);

    // Prepare, then show modally. The dialog is created once and only hidden between openings.
    void openMemoryChannel(int editIndex);
    void openSpecialRow(int editIndex);

    // Everything an opening does except the modal loop, so that tests can drive the dialog.
    // An index outside the store leaves the dialog untouched and returns false.
    bool prepareMemoryChannel(int editIndex);
    bool prepareSpecialRow(int editIndex);

    EditMode editMode() const { return mode_; }
    int editIndex() const { return editIndex_; }
    bool editsRepeaterRow() const { return mode_ == EditMode::Special && editIndex_ >= 2; }

public Q_SLOTS:
    // OK: writes the row back, sets DataChanged, hides the dialog.
    void accept() override;
    // Cancel: hides the dialog and changes nothing.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildControls();
    void fillFromRow();
    void focusFrequency();

    // Corrections applied when a field loses focus.
    void correctFrequency();
    void correctFrequencyFraction();
    void correctShift();
    void correctShiftFraction();
    void correctField(QObject* field);

    bool filterNumericKey(QLineEdit* box, QKeyEvent* event);
    bool filterNameKey(QKeyEvent* event);
    void forwardKey(QObject* target, QKeyEvent* event);

    // Columns 0..12 as the controls give them; the step stays unset when no step is ticked.
    using ComposedColumns = std::array<std::optional<zq::model::Cell>, zq::model::ColBclo + 1>;
    void composeColumns(ComposedColumns& cells) const;
    void writeMemoryRow();
    void writeSpecialRow();
    int effectiveVariant() const;

    zq::model::Document& document_;
    EditMode mode_ = EditMode::Memory;
    int editIndex_ = 0;
    bool loading_ = false;
    bool forwarding_ = false;

    QLabel* lblMode_ = nullptr;
    QLabel* lblCH_ = nullptr;
    QLabel* lblMHz_ = nullptr;
    QLineEdit* txtFreq_ = nullptr;
    QLineEdit* txtFreq2_ = nullptr;
    QLineEdit* txtShift_ = nullptr;
    QLineEdit* txtShift2_ = nullptr;
    QLineEdit* txtName_ = nullptr;
    QGroupBox* nameFrame_ = nullptr;
    QGroupBox* stepFrame_ = nullptr;
    QGroupBox* powerFrame_ = nullptr;
    QGroupBox* batteryFrame_ = nullptr;
    std::array<QRadioButton*, 7> optStep_{};
    std::array<QRadioButton*, 4> optTone_{};
    std::array<QRadioButton*, 3> optSift_{};
    std::array<QRadioButton*, 3> optATT_{};
    std::array<QRadioButton*, 3> optBs_{};
    QButtonGroup* stepGroup_ = nullptr;
    QButtonGroup* toneGroup_ = nullptr;
    QButtonGroup* shiftGroup_ = nullptr;
    QButtonGroup* powerGroup_ = nullptr;
    QButtonGroup* batteryGroup_ = nullptr;
    QComboBox* cmbTxTone_ = nullptr;
    QComboBox* cmbRxTone_ = nullptr;
    QComboBox* cmbDCS_ = nullptr;
    QCheckBox* chkBCLO_ = nullptr;
    QCheckBox* chkClock_ = nullptr;
    QCheckBox* chkSkip_ = nullptr;
    QCheckBox* chkBS_ = nullptr;
    QCheckBox* chkPower_ = nullptr;
    QCheckBox* chkHold_ = nullptr;
    QPushButton* okButton_ = nullptr;
    QPushButton* cancelButton_ = nullptr;
};

} // namespace zq::ui
