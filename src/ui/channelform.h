#pragma once
// The controls of the modify dialog, built with the object names the string table and the tests
// look for, and the mapping between them and a channel row: an opening shows the row's cells,
// OK reads the cells back out.
#include "model/stores.h"

#include <array>
#include <optional>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDialog;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace zq::ui {

// One row of either store, columns 0..14; a VFO, CALL or RPT row leaves the name and skip empty.
using ChannelRow = std::array<model::Cell, model::kMemoryColumns>;
// Columns 0..12 as the controls give them; the step stays unset when no step is ticked.
using ComposedColumns = std::array<std::optional<model::Cell>, model::ColBclo + 1>;

struct ChannelForm {
    // Builds the controls into `dialog`, which owns them.
    explicit ChannelForm(QDialog* dialog);
    ChannelForm(const ChannelForm&) = delete; // its connections refer to it
    ChannelForm& operator=(const ChannelForm&) = delete;

    // Shows the row. The repeater row has no frequency, step, power, battery save, clock or
    // lock-out of its own: those are greyed.
    void showRow(const ChannelRow& row, bool repeater);
    ComposedColumns composeColumns() const;
    // The memory-only controls: skip, hold, name and the channel number.
    void showMemoryControls(bool shown);

    QLabel* modeLabel = nullptr;            // lblMode
    QLabel* channelLabel = nullptr;         // lblCH
    QLabel* rangeLabel = nullptr;           // lblMHz
    QLineEdit* mhzBox = nullptr;            // txtFreq
    QLineEdit* fractionBox = nullptr;       // txtFreq2
    QLineEdit* offsetMhzBox = nullptr;      // txtShift
    QLineEdit* offsetFractionBox = nullptr; // txtShift2
    QLineEdit* nameBox = nullptr;           // txtName
    QGroupBox* nameFrame = nullptr;
    QGroupBox* stepFrame = nullptr;
    QGroupBox* powerFrame = nullptr;
    QGroupBox* batterySaveFrame = nullptr;
    QButtonGroup* steps = nullptr;        // optStep
    QButtonGroup* toneModes = nullptr;    // optTone
    QButtonGroup* shifts = nullptr;       // optSift
    QButtonGroup* powers = nullptr;       // optATT
    QButtonGroup* batterySaves = nullptr; // optBs
    QComboBox* txToneList = nullptr;      // cmbTxTone
    QComboBox* rxToneList = nullptr;      // cmbRxTone
    QComboBox* dcsList = nullptr;         // cmbDCS
    QCheckBox* busyLockOut = nullptr;     // chkBCLO
    QCheckBox* clockShift = nullptr;      // chkClock
    QCheckBox* skip = nullptr;            // chkSkip
    QCheckBox* batterySave = nullptr;     // chkBS
    QCheckBox* hiPower = nullptr;         // chkPower
    QCheckBox* hold = nullptr;            // chkHold
    QPushButton* okButton = nullptr;
    QPushButton* cancelButton = nullptr;

private:
    void buildFrequency(QDialog* dialog, QVBoxLayout* top);
    void buildOptions(QDialog* dialog, QVBoxLayout* top);
    void buildChecks(QDialog* dialog, QVBoxLayout* top);
    void syncShortcutChecks(QDialog* dialog);
    bool showing_ = false;
};

} // namespace zq::ui
