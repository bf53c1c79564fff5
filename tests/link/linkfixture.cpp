#include "linkfixture.h"

#include "files/clonefile.h"
#include "link/transfers.h"
#include "model/channelcodec.h"
#include "model/tables.h"
#include "radio/radioimage.h"

#include <QCoreApplication>

using namespace zq::model;

namespace linktest {

void FillSampleDocument(Document& document) {
    static const int toneModes[] = {0, 1, 3, 12};
    Contents sample = document.contents();
    for (int n = 0; n < kChannelCount; ++n) {
        sample.memory.setChannelInUse(n, n % 4 != 3);
        // In column order from the frequency to BCLO; the blank column stays as it is.
        // clang-format off
        const double values[] = {136.0 + n * 0.1875, double(n % 2 ? 2 : 0), double(toneModes[n % 4]),
            double(n % kToneCount), double((n * 7) % kToneCount), double((n * 5) % kDcsCount), double(n % 3),
            0.6 + (n % 7) * 0.1, double(n % 3), 0, double(n % 3), double(n % 2), double((n / 2) % 2)};
        // clang-format on
        for (int column = ColFrequency; column <= ColBclo; ++column)
            if (column != ColBlank) sample.memory.set(n, column, QString(), values[column]);
        const QString name = n % 2 ? QStringLiteral("CH%1").arg(n) : QString();
        sample.memory.set(n, ColName, name, name.isEmpty() ? 0 : 1);
        sample.memory.set(n, ColSkip, QString(), n % 5 == 0 ? 1 : 0);
    }
    SpecialTable& special = sample.special;
    LoadSpecialDefaults(special, VariantT);
    special.set(kVfoRow, ColFrequency, QStringLiteral("146.5200"), 146.52);
    special.set(kVfoRow, ColTone, QStringLiteral("TSQ"), 3);
    special.set(kCallRow, ColFrequency, QStringLiteral("145.5000"), 145.5);
    special.set(kRptRow, ColOffset, QString(), 1.6);
    // clang-format off
    sample.settings = RadioSettings{.volume = 14, .squelch = 3, .dtmfWait = 2, .timeOutTimer = 9, .keyLock = true,
                                      .beep = true, .lamp = 1, .scanEnable = true, .nameEnable = true, .batteryType = 1};
    // clang-format on
    sample.dialTexts = {"123#", "*0A", "", "555-1212", "D", "0123456789ABCD*#", "", "9", "ABCD"};
    document.replaceContents(sample);
}

void FillSampleRadio(zq::radio::VirtualRadio& radio) {
    Document sample;
    FillSampleDocument(sample);
    const QString file = QString::fromLatin1(zq::files::SerializeCloneFile(sample));
    ASSERT_TRUE(zq::radio::ApplyCloneLines(file.split(QStringLiteral("\r\n")), radio.memory()).ok());
}

MemoryTable DecodeRadioChannels(const zq::radio::VirtualRadio& radio, MemoryTable base) {
    for (int n = 0; n < kChannelCount; ++n)
        DecodeChannelRecord(base, radio.blockHex(0x200 + 0x20 * n) + radio.blockHex(0x210 + 0x20 * n), n);
    return base;
}

Result RunTransfer(Transfer transfer, zq::link::SerialLink& link, Document& document) {
    using namespace zq::link;
    QString dump;
    // clang-format off
    switch (transfer) {
    case Transfer::ReadMemory: return ReadMemory(link, document);
    case Transfer::WriteMemory: return WriteMemory(link, document);
    case Transfer::ReadSettings: return ReadSettings(link, document);
    case Transfer::WriteSettings: return WriteSettings(link, document);
    case Transfer::AutoSelect: return AutoSelect(link, document);
    case Transfer::Dump: return DumpBlocks(link, dump);
    }
    // clang-format on
    return {};
}

} // namespace linktest

// The link waits in nested event loops, which need an application object.
int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
