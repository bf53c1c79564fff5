#include "settingscodec.h"

#include "numeric.h"

namespace zq::model {

QString PatchSettingsByte(const QString& half, const QString& value, int position) {
    QString patched = half;
    const int at = 2 * position;
    if (position < 0 || at > patched.size()) return patched;
    patched.replace(at, 2, value.left(2));
    return patched;
}

void ClearSettingsBlock(SettingsBlock& block) {
    block.halfA = QString(32, QLatin1Char('0'));
    block.halfB = QString(32, QLatin1Char('0'));
}

QString SettingsByteName(int half, int position) {
    // clang-format off
    static const char* const names[2][16] = {
        {"fixed", "fixed", "channel mode", "fixed", "channel mode", "volume", "squelch", "fixed",
         "DTMF wait", "DTMF first digit", "DTMF interval", "tone burst", "time-out timer", "penalty time",
         "key lock", "auto power off"},
        {"beep", "scan type", "lamp", "fixed", "scan access", "power access", "lock access", "monitor access",
         "tone access", "burst access", "name access", "battery type", "fixed", "repeater mode", "fixed",
         "fixed"}};
    // clang-format on
    if (half < 0 || half > 1 || position < 0 || position > 15) return QString();
    return QLatin1String(names[half][position]);
}

void ResetLevelSliders(RadioSettings& settings) {
    settings.volume = 10;
    settings.squelch = 1;
}

namespace {
struct Range {
    int byte;
    int max;
};
} // namespace

void ApplySettingsBlock(SettingsBlock& block, RadioSettings& settings) {
    std::array<QString, 16> textA, textB;
    std::array<int, 16> a{}, b{};
    for (int i = 0; i < 16; ++i) {
        textA[i] = block.halfA.mid(2 * i, 2);
        textB[i] = block.halfB.mid(2 * i, 2);
        a[i] = HexValue(textA[i]);
        b[i] = HexValue(textB[i]);
    }

    // Out-of-range bytes read as 0 and are repaired in the stored half A.
    for (const Range r :
         {Range{5, 20}, Range{6, 20}, Range{8, 3}, Range{9, 3}, Range{10, 3}, Range{12, 15}, Range{13, 15}}) {
        if (a[r.byte] > r.max) {
            a[r.byte] = 0;
            block.halfA = PatchSettingsByte(block.halfA, QStringLiteral("00"), r.byte);
        }
    }
    // The battery type sits in half B, but its repair is written to byte 11 of half A.
    if (b[11] > 1) {
        b[11] = 0;
        block.halfA = PatchSettingsByte(block.halfA, QStringLiteral("00"), 11);
    }

    settings.channelMode = textA[2] != QLatin1String("00");
    settings.volume = a[5];
    settings.squelch = a[6];
    settings.dtmfWait = a[8];
    settings.dtmfFirst = a[9];
    settings.dtmfInterval = a[10];
    settings.toneBurst = a[11]; // its guard tests the wrong bytes and always passes
    settings.timeOutTimer = a[12];
    settings.penaltyTime = a[13];
    settings.keyLock = a[14] != 0;
    settings.autoPowerOff = a[15] != 0;

    settings.beep = b[0] == 1;
    settings.scanType = b[1] != 0 ? 1 : 0;
    settings.lamp = b[2] != 0 ? 1 : 0;
    settings.scanEnable = b[4] != 0;
    settings.powerEnable = b[5] != 0;
    settings.lockEnable = b[6] != 0;
    settings.monitorEnable = b[7] != 0;
    settings.toneEnable = b[8] != 0;
    settings.burstEnable = b[9] != 0;
    settings.nameEnable = b[10] != 0;
    settings.batteryType = b[11];
    settings.repeaterMode = b[13] != 0;
}

void BuildSettingsBlock(SettingsBlock& block, const RadioSettings& s) {
    const auto flag = [](bool set, const char* on) {
        return set ? QString::fromLatin1(on) : QStringLiteral("00");
    };
    block.halfA.clear();
    block.halfB.clear();
    block.halfA = QStringLiteral("A500") + flag(s.channelMode, "01") + QStringLiteral("01") +
                  (s.channelMode ? QStringLiteral("00") : QStringLiteral("C8")) + HexByte(s.volume) +
                  HexByte(s.squelch) + QStringLiteral("00") + HexByte(s.dtmfWait) + HexByte(s.dtmfFirst) +
                  HexByte(s.dtmfInterval) + HexByte(s.toneBurst) + HexByte(s.timeOutTimer) +
                  HexByte(s.penaltyTime) + flag(s.keyLock, "01") + flag(s.autoPowerOff, "01");
    // Scan and power access are stored as AA, the other five access flags as 01.
    block.halfB = flag(s.beep, "01") + HexByte(s.scanType) + HexByte(s.lamp) + QStringLiteral("00") +
                  flag(s.scanEnable, "AA") + flag(s.powerEnable, "AA") + flag(s.lockEnable, "01") +
                  flag(s.monitorEnable, "01") + flag(s.toneEnable, "01") + flag(s.burstEnable, "01") +
                  flag(s.nameEnable, "01") + HexByte(s.batteryType) + QStringLiteral("00") +
                  flag(s.repeaterMode, "01") + QStringLiteral("0000");
}

} // namespace zq::model
