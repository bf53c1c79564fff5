#pragma once
// Page "Settings2": DTMF timing, the nine auto-dialer boxes, the channel-mode access group and the
// settings transfer buttons.
#include "model/dialcodec.h"
#include "settingspage.h"

#include <array>

class QGroupBox;
class QLabel;
class QLineEdit;

namespace zq::ui {

class DtmfSettingsPage : public SettingsPage {
    Q_OBJECT
public:
    explicit DtmfSettingsPage(model::Document& document, QWidget* parent = nullptr);

    void reload() override;

protected:
    // The dial boxes' key filter.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void connectControls();
    void applyChannelModeEnabled();
    void reloadSettings();
    void reloadDialTexts();

    QComboBox* dtmfWait_ = nullptr;                         // cmbDWait
    QComboBox* dtmfFirst_ = nullptr;                        // cmbDFirst
    QComboBox* dtmfInterval_ = nullptr;                     // cmbDBurst
    std::array<QLineEdit*, model::kDialCount> dialBoxes_{}; // txtDial
    QCheckBox* channelMode_ = nullptr;                      // chkChannel
    QGroupBox* accessFrame_ = nullptr;                      // frmChannel
    // chkScanEn, chkPowerEn, chkLockEn, chkMoniEn, chkToneEn, chkBurstEn, chkNameEn
    std::array<QCheckBox*, 7> accessChecks_{};
};

} // namespace zq::ui
