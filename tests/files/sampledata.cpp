#include "sampledata.h"

#include "model/channelcodec.h"
#include "model/tables.h"

#include <QFile>
#include <array>

namespace zq::testdata {

using namespace model;

void SetChannel(Document& document, int channel, const ChannelValues& v) {
    MemoryTable& memory = document.memory;
    memory.setChannelInUse(channel, true);
    const double numbers[] = {v.frequency,           double(v.step),
                              double(v.toneMode),    double(v.txTone),
                              double(v.rxTone),      double(v.dcs),
                              double(v.shift),       v.offset,
                              double(v.power),       0,
                              double(v.batterySave), double(v.clock),
                              double(v.lockOut),     0,
                              double(v.skip)};
    for (int column = 0; column < kMemoryColumns; ++column)
        if (column != ColBlank) memory.set(channel, column, QString(), numbers[column]);
    memory.set(channel, ColName, QString::fromLatin1(v.name), 0);
    // Round through the codec so that the text cells read as after a load.
    DecodeChannelRecord(
        memory, EncodeChannelFirstHalf(memory, channel) + EncodeChannelSecondHalf(memory, channel), channel);
    document.notifyMemoryRows(channel, channel);
}

void FillDemoData(Document& document) {
    document.resetToStartup();
    document.setModelVariant(VariantT);
    const std::pair<int, ChannelValues> channels[] = {
        {0, {145.5000, 0, 0, 8, 8, 0, 0, 0.6, 2, 0, false, false, "CALL", false}},
        {1, {146.5200, 0, 0, 8, 8, 0, 0, 0.6, 1, 0, false, false, "SIMPLX", false}},
        {2, {146.9400, 0, 1, 12, 12, 0, 1, 0.6, 2, 0, false, true, "W1AW", false}},
        {3, {147.3000, 0, 3, 18, 18, 0, 2, 0.6, 2, 0, false, true, "METRO", false}},
        {4, {145.2300, 2, 12, 8, 8, 11, 1, 0.6, 1, 1, false, false, "DIGI", false}},
        {5, {144.3900, 0, 0, 8, 8, 0, 0, 0.6, 0, 2, false, false, "APRS", true}},
        {6, {146.6100, 0, 1, 0, 0, 0, 1, 0.6, 2, 0, true, false, "HILL", false}},
        {7, {147.1200, 2, 1, 22, 22, 0, 2, 0.6, 2, 0, false, false, "RIVER", true}},
        {8, {145.8000, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, false, false, "ISS", false}},
        {9, {162.5500, 2, 0, 8, 8, 0, 0, 0.6, 0, 0, false, false, "WX1", true}},
        {20, {146.4000, 0, 1, 9, 9, 0, 0, 0.6, 1, 0, false, false, "CLUB", false}},
        {21, {146.4150, 0, 12, 8, 8, 40, 0, 0.6, 1, 0, false, false, "NET", false}},
    };
    for (const auto& [channel, values] : channels)
        SetChannel(document, channel, values);
    document.special.set(kVfoRow, ColFrequency, QStringLiteral("146.5200"), 146.52);
    document.special.set(kCallRow, ColFrequency, QStringLiteral("145.5000"), 145.5);
    document.RefreshSpecialGrid();
    const char* const dials[] = {"5551234", "*73#", "0123456789ABCD", "911", "", "", "#", "", "1D"};
    for (int i = 0; i < 9; ++i)
        document.dialTexts[i] = QString::fromLatin1(dials[i]);
    document.notifyDialTexts();
    document.settings = {.volume = 10,
                         .squelch = 3,
                         .dtmfWait = 1,
                         .timeOutTimer = 6,
                         .autoPowerOff = true,
                         .beep = true,
                         .lamp = 1,
                         .scanEnable = true,
                         .powerEnable = true,
                         .lockEnable = true,
                         .monitorEnable = true,
                         .nameEnable = true};
    document.buildSettingsBlock();
    document.notifySettings();
}

void FillAllChannels(Document& document) {
    for (int c = 0; c < kChannelCount; ++c)
        SetChannel(document, c,
                   {144.0 + 0.0125 * c, c % 3 == 0 ? 2 : 0, std::array{0, 1, 3, 12}[c % 4], c % kToneCount,
                    (c * 7) % kToneCount, c % kDcsCount, c % 3, 0.6 + 0.1 * (c % 5), c % 3, c % 3, c % 5 == 0,
                    c % 7 == 0, c % 2 ? "CH" : "RPT-1", c % 6 == 0});
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace zq::testdata
