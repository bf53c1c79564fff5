#include "linkfixture.h"

#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/settingscodec.h"
#include "model/tables.h"

using namespace zq::model;

namespace linktest {

MemoryTable SampleMemory() {
    static const int toneModes[] = {0, 1, 3, 12};
    MemoryTable memory;
    for (int n = 0; n < kChannelCount; ++n) {
        memory.setChannelInUse(n, n % 4 != 3);
        memory.set(n, ColFrequency, QString(), 136.0 + n * 0.1875);
        memory.set(n, ColStep, QString(), n % 2 ? 2 : 0);
        memory.set(n, ColTone, QString(), toneModes[n % 4]);
        memory.set(n, ColTxTone, QString(), n % kToneCount);
        memory.set(n, ColRxTone, QString(), (n * 7) % kToneCount);
        memory.set(n, ColDcs, QString(), (n * 5) % kDcsCount);
        memory.set(n, ColShift, QString(), n % 3);
        memory.set(n, ColOffset, QString(), 0.6 + (n % 7) * 0.1);
        memory.set(n, ColPower, QString(), n % 3);
        memory.set(n, ColBsv, QString(), n % 3);
        memory.set(n, ColClock, QString(), n % 2);
        memory.set(n, ColBclo, QString(), (n / 2) % 2);
        const QString name = n % 2 ? QStringLiteral("CH%1").arg(n) : QString();
        memory.set(n, ColName, name, name.isEmpty() ? 0 : 1);
        memory.set(n, ColSkip, QString(), n % 5 == 0 ? 1 : 0);
    }
    return memory;
}

SpecialTable SampleSpecial() {
    SpecialTable special;
    LoadSpecialDefaults(special, VariantT);
    special.set(kVfoRow, ColFrequency, QStringLiteral("146.5200"), 146.52);
    special.set(kVfoRow, ColTone, QStringLiteral("TSQ"), 3);
    special.set(kVfoRow, ColTxTone, QString(), 12);
    special.set(kCallRow, ColFrequency, QStringLiteral("145.5000"), 145.5);
    special.set(kCallRow, ColBsv, QString(), 2);
    special.set(kCallRow, ColPower, QString(), 2);
    special.set(kRptRow, ColOffset, QString(), 1.6);
    return special;
}

SettingsBlock SampleSettingsBlock() {
    RadioSettings settings;
    settings.volume = 14;
    settings.squelch = 3;
    settings.dtmfWait = 2;
    settings.timeOutTimer = 9;
    settings.keyLock = true;
    settings.beep = true;
    settings.scanEnable = true;
    settings.nameEnable = true;
    settings.batteryType = 1;
    SettingsBlock block;
    BuildSettingsBlock(block, settings);
    return block;
}

QStringList SampleDialTexts() {
    return {QStringLiteral("123#"),
            QStringLiteral("*0A"),
            QString(),
            QStringLiteral("555-1212"),
            QStringLiteral("D"),
            QStringLiteral("0123456789ABCD*#"),
            QString(),
            QStringLiteral("9"),
            QStringLiteral("ABCD")};
}

void FillSampleRadio(zq::radio::VirtualRadio& radio) {
    const MemoryTable memory = SampleMemory();
    for (int n = 0; n < kChannelCount; ++n) {
        radio.setBlockHex(0x200 + 0x20 * n, EncodeChannelFirstHalf(memory, n));
        radio.setBlockHex(0x210 + 0x20 * n, EncodeChannelSecondHalf(memory, n));
    }
    SpecialTable special = SampleSpecial();
    for (int row = 0; row < 3; ++row) {
        radio.setBlockHex(0x100 + 0x20 * row, EncodeSpecialFirstHalf(special, row));
        radio.setBlockHex(0x110 + 0x20 * row, EncodeSpecialSecondHalf(special, row));
    }
    const SettingsBlock block = SampleSettingsBlock();
    radio.setBlockHex(0xE0, block.halfA);
    radio.setBlockHex(0xF0, block.halfB);
    const QStringList dials = SampleDialTexts();
    for (int k = 0; k < kDialCount; ++k)
        radio.setBlockHex(0x1F00 + 0x10 * k, MakeDialData(dials.at(k)));
}

MemoryTable DecodeRadioChannels(const zq::radio::VirtualRadio& radio, MemoryTable base) {
    for (int n = 0; n < kChannelCount; ++n)
        DecodeChannelRecord(base, radio.blockHex(0x200 + 0x20 * n) + radio.blockHex(0x210 + 0x20 * n), n);
    return base;
}

bool SameMemoryRow(const MemoryTable& a, const MemoryTable& b, int row) {
    if (a.ChannelInUse(row) != b.ChannelInUse(row)) return false;
    for (int c = 0; c < kMemoryColumns; ++c)
        if (!(a.cell(row, c) == b.cell(row, c))) return false;
    return true;
}

bool SameSpecialRow(const SpecialTable& a, const SpecialTable& b, int row) {
    for (int c = 0; c < kSpecialColumns; ++c)
        if (!(a.cell(row, c) == b.cell(row, c))) return false;
    return true;
}

void RadioTest::SetUp() {
    ASSERT_TRUE(radio.open().ok());
    link.setPortName(radio.devicePath());
    clock.start();
    QObject::connect(&radio, &zq::radio::VirtualRadio::commandReceived,
                     [this](const QString&) { arrivals << clock.elapsed(); });
}

} // namespace linktest
