#include "sampledata.h"

#include "model/channelcodec.h"
#include "model/tables.h"

#include <QFile>

namespace zq::testdata {

using namespace model;

void SetChannel(Document& document, int channel, const ChannelValues& v) {
    MemoryTable& memory = document.memory;
    memory.setChannelInUse(channel, true);
    for (int column = 0; column < kMemoryColumns; ++column)
        if (column != ColBlank) memory.set(channel, column, QString(), v.numbers[column]);
    memory.set(channel, ColName, QString::fromLatin1(v.name), 0);
    // Round through the codec so that the text cells read as after a load.
    DecodeChannelRecord(
        memory, EncodeChannelFirstHalf(memory, channel) + EncodeChannelSecondHalf(memory, channel), channel);
    document.notifyMemoryRows(channel, channel);
}

void FillDemoData(Document& document) {
    document.resetToStartup();
    document.setModelVariant(VariantT);
    // frequency, step, tone mode, tx, rx, DCS, shift, offset, power, -, battery save, clock, lock-out, -,
    // skip
    const std::pair<int, ChannelValues> channels[] = {
        {0, {{145.5000, 0, 0, 8, 8, 0, 0, 0.6, 2, 0, 0, 0, 0, 0, 0}, "CALL"}},
        {1, {{146.5200, 0, 0, 8, 8, 0, 0, 0.6, 1, 0, 0, 0, 0, 0, 0}, "SIMPLX"}},
        {2, {{146.9400, 0, 1, 12, 12, 0, 1, 0.6, 2, 0, 0, 0, 1, 0, 0}, "W1AW"}},
        {3, {{147.3000, 0, 3, 18, 18, 0, 2, 0.6, 2, 0, 0, 0, 1, 0, 0}, "METRO"}},
        {4, {{145.2300, 2, 12, 8, 8, 11, 1, 0.6, 1, 0, 1, 0, 0, 0, 0}, "DIGI"}},
        {5, {{144.3900, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, 2, 0, 0, 0, 1}, "APRS"}},
        {6, {{146.6100, 0, 1, 0, 0, 0, 1, 0.6, 2, 0, 0, 1, 0, 0, 0}, "HILL"}},
        {7, {{147.1200, 2, 1, 22, 22, 0, 2, 0.6, 2, 0, 0, 0, 0, 0, 1}, "RIVER"}},
        {8, {{145.8000, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, 0, 0, 0, 0, 0}, "ISS"}},
        {9, {{162.5500, 2, 0, 8, 8, 0, 0, 0.6, 0, 0, 0, 0, 0, 0, 1}, "WX1"}},
        {20, {{146.4000, 0, 1, 9, 9, 0, 0, 0.6, 1, 0, 0, 0, 0, 0, 0}, "CLUB"}},
        {21, {{146.4150, 0, 12, 8, 8, 40, 0, 0.6, 1, 0, 0, 0, 0, 0, 0}, "NET"}},
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
    document.settingsBlock = {QStringLiteral("A5000001C80A03000100000006000001"),
                              QStringLiteral("01000100AAAA01010000010000000000")};
    document.applySettingsBlock();
}

void FillAllChannels(Document& document) {
    for (int c = 0; c < kChannelCount; ++c)
        SetChannel(document, c,
                   {{144.0 + 0.0125 * c, c % 3 == 0 ? 2.0 : 0.0, double(std::array{0, 1, 3, 12}[c % 4]),
                     double(c % kToneCount), double((c * 7) % kToneCount), double(c % kDcsCount),
                     double(c % 3), 0.6 + 0.1 * (c % 5), double(c % 3), 0, double(c % 3), double(c % 5 == 0),
                     double(c % 7 == 0), 0, double(c % 6 == 0)},
                    c % 2 ? "CH" : "RPT-1"});
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
