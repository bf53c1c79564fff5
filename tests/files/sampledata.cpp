#include "sampledata.h"

#include "model/channelcodec.h"
#include "model/tables.h"

#include <QFile>

namespace zq::testdata {

using namespace model;

void SetChannel(Document& document, int channel, const std::array<double, 15>& numbers, const char* name) {
    document.changeMemory(
        channel, channel,
        [&](MemoryTable& memory) {
            memory.setChannelInUse(channel, true);
            for (int column = 0; column < kMemoryColumns; ++column)
                if (column != ColBlank) memory.set(channel, column, QString(), numbers[column]);
            memory.set(channel, ColName, QString::fromLatin1(name), 0);
            // Round through the codec so that the text cells read as after a load.
            DecodeChannelRecord(
                memory, EncodeChannelFirstHalf(memory, channel) + EncodeChannelSecondHalf(memory, channel),
                channel);
        },
        Document::Mark::Quiet);
}

void FillAllChannels(Document& document) {
    for (int c = 0; c < kChannelCount; ++c)
        SetChannel(document, c,
                   {144.0 + 0.0125 * c, c % 3 == 0 ? 2.0 : 0.0, double(std::array{0, 1, 3, 12}[c % 4]),
                    double(c % kToneCount), double((c * 7) % kToneCount), double(c % kDcsCount),
                    double(c % 3), 0.6 + 0.1 * (c % 5), double(c % 3), 0, double(c % 3), double(c % 5 == 0),
                    double(c % 7 == 0), 0, double(c % 6 == 0)},
                   c % 2 ? "CH" : "RPT-1");
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
