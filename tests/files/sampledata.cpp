#include "sampledata.h"

#include "model/channelcodec.h"
#include "model/tables.h"

#include <array>

namespace zq::testdata {

using namespace model;

void SetChannel(Document& document, int channel, const ChannelSpec& spec) {
    MemoryTable& memory = document.memory;
    memory.setChannelInUse(channel, true);
    memory.set(channel, ColFrequency, QString(), spec.frequency);
    memory.set(channel, ColStep, QString(), spec.step);
    memory.set(channel, ColTone, QString(), spec.toneMode);
    memory.set(channel, ColTxTone, QString(), spec.txTone);
    memory.set(channel, ColRxTone, QString(), spec.rxTone);
    memory.set(channel, ColDcs, QString(), spec.dcs);
    memory.set(channel, ColShift, QString(), spec.shift);
    memory.set(channel, ColOffset, QString(), spec.offset);
    memory.set(channel, ColPower, QString(), spec.power);
    memory.set(channel, ColBsv, QString(), spec.batterySave);
    memory.set(channel, ColClock, QString(), spec.clock ? 1 : 0);
    memory.set(channel, ColBclo, QString(), spec.lockOut ? 1 : 0);
    memory.set(channel, ColName, QString::fromLatin1(spec.name), 0);
    memory.set(channel, ColSkip, QString(), spec.skip ? 1 : 0);
    // Round through the codec so that the text cells read as after a load.
    const QString record = EncodeChannelFirstHalf(memory, channel) + EncodeChannelSecondHalf(memory, channel);
    DecodeChannelRecord(memory, record, channel);
    document.notifyMemoryRows(channel, channel);
}

void FillDemoData(Document& document) {
    document.resetToStartup();
    document.setModelVariant(VariantT);
    const ChannelSpec channels[] = {
        {145.5000, 0, 0, 8, 8, 0, 0, 0.6, 2, 0, false, false, "CALL", false},
        {146.5200, 0, 0, 8, 8, 0, 0, 0.6, 1, 0, false, false, "SIMPLX", false},
        {146.9400, 0, 1, 12, 12, 0, 1, 0.6, 2, 0, false, true, "W1AW", false},
        {147.3000, 0, 3, 18, 18, 0, 2, 0.6, 2, 0, false, true, "METRO", false},
        {145.2300, 2, 12, 8, 8, 11, 1, 0.6, 1, 1, false, false, "DIGI", false},
        {144.3900, 0, 0, 8, 8, 0, 0, 0.6, 0, 2, false, false, "APRS", true},
        {146.6100, 0, 1, 0, 0, 0, 1, 0.6, 2, 0, true, false, "HILL", false},
        {147.1200, 2, 1, 22, 22, 0, 2, 0.6, 2, 0, false, false, "RIVER", true},
        {145.8000, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, false, false, "ISS", false},
        {162.5500, 2, 0, 8, 8, 0, 0, 0.6, 0, 0, false, false, "WX1", true},
    };
    int channel = 0;
    for (const ChannelSpec& spec : channels)
        SetChannel(document, channel++, spec);
    SetChannel(document, 20, {146.4000, 0, 1, 9, 9, 0, 0, 0.6, 1, 0, false, false, "CLUB", false});
    SetChannel(document, 21, {146.4150, 0, 12, 8, 8, 40, 0, 0.6, 1, 0, false, false, "NET", false});

    document.special.set(kVfoRow, ColFrequency, QStringLiteral("146.5200"), 146.52);
    document.special.set(kCallRow, ColFrequency, QStringLiteral("145.5000"), 145.5);
    document.RefreshSpecialGrid();

    document.dialTexts = {QStringLiteral("5551234"),
                          QStringLiteral("*73#"),
                          QStringLiteral("0123456789ABCD"),
                          QStringLiteral("911"),
                          QString(),
                          QString(),
                          QStringLiteral("#"),
                          QString(),
                          QStringLiteral("1D")};
    document.notifyDialTexts();

    RadioSettings& settings = document.settings;
    settings.volume = 10;
    settings.squelch = 3;
    settings.dtmfWait = 1;
    settings.timeOutTimer = 6;
    settings.beep = true;
    settings.autoPowerOff = true;
    settings.lamp = 1;
    settings.scanEnable = true;
    settings.powerEnable = true;
    settings.lockEnable = true;
    settings.monitorEnable = true;
    settings.nameEnable = true;
    document.buildSettingsBlock();
    document.notifySettings();
}

void FillAllChannels(Document& document) {
    for (int channel = 0; channel < kChannelCount; ++channel) {
        const ChannelSpec spec{144.0 + 0.0125 * channel,
                               channel % 3 == 0 ? 2 : 0,
                               std::array{0, 1, 3, 12}[channel % 4],
                               channel % kToneCount,
                               (channel * 7) % kToneCount,
                               channel % kDcsCount,
                               channel % 3,
                               0.6 + 0.1 * (channel % 5),
                               channel % 3,
                               channel % 3,
                               channel % 5 == 0,
                               channel % 7 == 0,
                               channel % 2 ? "CH" : "RPT-1",
                               channel % 6 == 0};
        SetChannel(document, channel, spec);
    }
}

} // namespace zq::testdata
