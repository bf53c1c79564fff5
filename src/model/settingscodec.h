#pragma once
// The 32 function-settings bytes to and from the values the settings pages edit.
#include "stores.h"

#include <QString>
#include <array>

namespace zq::model {

// The working copy of the function settings, one member per settings control. Combo boxes hold
// their list index, sliders their position, check boxes their tick.
struct RadioSettings {
    // settings stored in the radio
    bool channelMode = false;   // chkChannel
    int volume = 0;             // Slider1
    int squelch = 0;            // Slider2
    int dtmfWait = 0;           // cmbDWait
    int dtmfFirst = 0;          // cmbDFirst
    int dtmfInterval = 0;       // cmbDBurst
    int toneBurst = 0;          // cmbTB: passed on unrepaired, may lie outside the list
    int timeOutTimer = 0;       // cmbTOT
    int penaltyTime = 0;        // cmbTOTP
    bool keyLock = false;       // chkLock
    bool autoPowerOff = false;  // chkAPO
    bool beep = false;          // chkBeep
    int scanType = 0;           // cmbScan
    int lamp = 0;               // cmbLamp
    bool scanEnable = false;    // chkScanEn
    bool powerEnable = false;   // chkPowerEn
    bool lockEnable = false;    // chkLockEn
    bool monitorEnable = false; // chkMoniEn
    bool toneEnable = false;    // chkToneEn
    bool burstEnable = false;   // chkBurstEn
    bool nameEnable = false;    // chkNameEn
    int batteryType = 0;        // cmbBat
    bool repeaterMode = false;  // chkCharge

    // controls of the pages that no settings byte carries
    bool mosquitoRepel = false;  // chkMosq
    bool sqlExternal = false;    // chkSQL
    bool autoProgram = false;    // chkAutoProg
    std::array<bool, 3> flags{}; // chkFlg1

    bool operator==(const RadioSettings&) const = default;
};

// Sets the settings from the block, repairing out-of-range bytes as the radio program does
// (the battery-type repair lands on half A byte 11, and the tone-burst byte is never repaired).
void ApplySettingsBlock(SettingsBlock& block, RadioSettings& settings);
// Rebuilds both halves from the settings.
void BuildSettingsBlock(SettingsBlock& block, const RadioSettings& settings);
// The half with byte `position` (0..15) replaced by the two characters of `value`.
QString PatchSettingsByte(const QString& half, const QString& value, int position);
void ClearSettingsBlock(SettingsBlock& block);
// What byte `position` (0..15) of half 0 (A) or 1 (B) holds, in words: "volume", "beep";
// "fixed" for the bytes every build writes alike.
QString SettingsByteName(int half, int position);
void ResetLevelSliders(RadioSettings& settings);

} // namespace zq::model
