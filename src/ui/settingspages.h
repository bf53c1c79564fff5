#pragma once
// The two function-settings pages of the main window: "Settings 1" and "Settings2".
// Both show the document's working copy of the settings (and the dial texts) and write every user
// edit straight back into it; they reload on the document's change signals without marking the
// data as changed.
#include "model/settingscodec.h"

#include <QWidget>
#include <array>
#include <functional>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QVBoxLayout;

namespace zq::model {
class Document;
}

namespace zq::ui {

// Page "Settings 1" (inside Frame1_0): general settings, model choice, volume and squelch, the
// VFO/CALL/RPT grid area and the settings transfer buttons.
class SettingsPage1 : public QWidget {
    Q_OBJECT
public:
    explicit SettingsPage1(zq::model::Document& document, QWidget* parent = nullptr);

    // Places the VFO/CALL/RPT grid (MSFlexGrid2) in the page's grid area; the page takes it as a
    // child. A grid placed before is taken out of the area and hidden.
    void setSpecialGrid(QWidget* grid);
    QWidget* specialGrid() const { return specialGrid_; }

    // What a click of opbModel(variant) does: select the variant, mark the data as changed and
    // redraw the memory grid. Auto Select uses it as well.
    void selectModel(int variant);

    QPushButton* readSettingsButton() const { return cmbRxData1_; }  // cmbRxData1
    QPushButton* writeSettingsButton() const { return cmbTxData1_; } // cmbTxData1
    QPushButton* autoSelectButton() const { return cmdAuto_; }       // cmdAuto

    // Sets every control from the document; never marks the data as changed.
    void reload();

Q_SIGNALS:
    void readSettingsRequested();
    void writeSettingsRequested();
    void autoSelectRequested();

private:
    void buildControls();
    void connectControls();
    void storeChoice(int model::RadioSettings::*value, int index);
    void storeTyped(int model::RadioSettings::*value, int index);
    // Stores a change of the user's; `edit` says whether it marks the data as changed.
    void store(const std::function<void(model::RadioSettings&)>& change, bool edit);

    zq::model::Document& document_;
    bool loading_ = false;

    QCheckBox* chkMosq_ = nullptr;
    QCheckBox* chkSQL_ = nullptr;
    QCheckBox* chkCharge_ = nullptr;
    QCheckBox* chkBeep_ = nullptr;
    QCheckBox* chkAPO_ = nullptr;
    QCheckBox* chkLock_ = nullptr;
    QCheckBox* chkAutoProg_ = nullptr;
    std::array<QCheckBox*, 3> chkFlg1_{};
    QComboBox* cmbBat_ = nullptr;
    QComboBox* cmbLamp_ = nullptr;
    QComboBox* cmbScan_ = nullptr;
    QComboBox* cmbTOT_ = nullptr;
    QComboBox* cmbTOTP_ = nullptr;
    QComboBox* cmbTB_ = nullptr;
    QSlider* Slider1_ = nullptr;
    QSlider* Slider2_ = nullptr;
    QLabel* lblVol_ = nullptr;
    QLabel* lblSql_ = nullptr;
    QButtonGroup* modelGroup_ = nullptr;
    std::array<QRadioButton*, 4> opbModel_{};
    QPushButton* cmdAuto_ = nullptr;
    QPushButton* cmbRxData1_ = nullptr;
    QPushButton* cmbTxData1_ = nullptr;
    QVBoxLayout* gridArea_ = nullptr;
    QWidget* specialGrid_ = nullptr;
};

// Page "Settings2" (inside Frame1_1): DTMF timing, the nine auto-dialer boxes, the channel-mode
// access group and the settings transfer buttons.
class SettingsPage2 : public QWidget {
    Q_OBJECT
public:
    explicit SettingsPage2(zq::model::Document& document, QWidget* parent = nullptr);

    QPushButton* readSettingsButton() const { return cmbRxData2_; }  // cmbRxData2
    QPushButton* writeSettingsButton() const { return cmbTxData2_; } // cmbTxData2

    // Sets every control from the document; never marks the data as changed.
    void reload();

Q_SIGNALS:
    void readSettingsRequested();
    void writeSettingsRequested();

protected:
    // The dial boxes' key filter.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void connectControls();
    void storeChoice(int model::RadioSettings::*value, int index);
    void storeTyped(int model::RadioSettings::*value, int index);
    // Stores a change of the user's; `edit` says whether it marks the data as changed.
    void store(const std::function<void(model::RadioSettings&)>& change, bool edit);
    void applyChannelModeEnabled();
    void reloadSettings();
    void reloadDialTexts();
    void storeDialText(int box, const QString& text);

    zq::model::Document& document_;
    bool loading_ = false;

    QComboBox* cmbDWait_ = nullptr;
    QComboBox* cmbDFirst_ = nullptr;
    QComboBox* cmbDBurst_ = nullptr;
    std::array<QLineEdit*, 9> txtDial_{};
    std::array<QLabel*, 9> Label17_{};
    QCheckBox* chkChannel_ = nullptr;
    QGroupBox* frmChannel_ = nullptr;
    QCheckBox* chkScanEn_ = nullptr;
    QCheckBox* chkPowerEn_ = nullptr;
    QCheckBox* chkLockEn_ = nullptr;
    QCheckBox* chkMoniEn_ = nullptr;
    QCheckBox* chkToneEn_ = nullptr;
    QCheckBox* chkBurstEn_ = nullptr;
    QCheckBox* chkNameEn_ = nullptr;
    QPushButton* cmbRxData2_ = nullptr;
    QPushButton* cmbTxData2_ = nullptr;
};

} // namespace zq::ui
