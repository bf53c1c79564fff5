// Channel and special records straight from a radio reply or a clone file line pair.
#include "model/channelcodec.h"
#include "model/dialcodec.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zq::model;
    const QString record = QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size));
    static MemoryTable memory;
    static SpecialTable special;
    const int row = size ? data[0] % kMemoryRows : 0;
    DecodeChannelRecord(memory, record, row);
    DecodeSpecialRecord(special, record, row % kSpecialRows);
    if (EncodeChannelFirstHalf(memory, row).size() + EncodeChannelSecondHalf(memory, row).size() != 64) __builtin_trap();
    if (EncodeSpecialFirstHalf(special, row % kSpecialRows).size() != 32) __builtin_trap();
    const QString text = UpDateDialData(record);
    if (text.size() > kDialMaxLength) __builtin_trap();
    MakeDialData(record);
    return 0;
}
