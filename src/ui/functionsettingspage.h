#pragma once
// Page "Settings 1": the general function settings, the model choice with Auto Select, volume and
// squelch, the VFO/CALL/RPT grid and the settings transfer buttons.
#include "settingspage.h"

#include <array>

class QButtonGroup;
class QLabel;
class QSlider;

namespace zq::ui {

class ChannelGridView;

class FunctionSettingsPage : public SettingsPage {
    Q_OBJECT
public:
    explicit FunctionSettingsPage(model::Document& document, QWidget* parent = nullptr);

    ChannelGridView* specialGrid() const { return specialGrid_; } // MSFlexGrid2

    // What a click of model option `variant` does: select the variant, mark the data as changed
    // and redraw the memory grid.
    void selectModel(int variant);
    void setAutoSelectEnabled(bool enabled);

    void reload() override;

Q_SIGNALS:
    void autoSelectRequested();
    // The user asked to edit the VFO, CALL or RPT row, store row `editIndex`.
    void specialRowOpened(int editIndex);

private:
    void buildControls();
    void connectControls();

    QCheckBox* mosquitoRepel_ = nullptr; // chkMosq
    QCheckBox* sqlExternal_ = nullptr;   // chkSQL
    QCheckBox* repeaterMode_ = nullptr;  // chkCharge
    QCheckBox* beep_ = nullptr;          // chkBeep
    QCheckBox* autoPowerOff_ = nullptr;  // chkAPO
    QCheckBox* keyLock_ = nullptr;       // chkLock
    QCheckBox* autoProgram_ = nullptr;   // chkAutoProg
    std::array<QCheckBox*, 3> flags_{};  // chkFlg1: DoReMi, Battery Save, Keylock
    QComboBox* batteryType_ = nullptr;   // cmbBat
    QComboBox* lamp_ = nullptr;          // cmbLamp
    QComboBox* scanType_ = nullptr;      // cmbScan
    QComboBox* timeOutTimer_ = nullptr;  // cmbTOT
    QComboBox* penaltyTime_ = nullptr;   // cmbTOTP
    QComboBox* toneBurst_ = nullptr;     // cmbTB
    QSlider* volume_ = nullptr;          // Slider1
    QSlider* squelch_ = nullptr;         // Slider2
    QLabel* volumeLabel_ = nullptr;      // lblVol
    QLabel* squelchLabel_ = nullptr;     // lblSql
    QButtonGroup* models_ = nullptr;     // opbModel
    QPushButton* autoSelect_ = nullptr;  // cmdAuto
    ChannelGridView* specialGrid_ = nullptr;
};

} // namespace zq::ui
