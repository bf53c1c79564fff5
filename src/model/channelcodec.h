#pragma once
// Channel records as the radio stores them (32 bytes, 64 hex digits) to and from store rows.
#include "stores.h"

#include <QString>

namespace zq::model {

// A decode that meets an index beyond its table stops there; the row keeps what was written so far.
enum class CodecError { None, StepIndex, ToneIndex, DcsIndex };
QString CodecErrorText(CodecError error);

// Decoders accept any text: bytes beyond its end read as empty, non-hex digits as 0.
CodecError DecodeChannelRecord(MemoryTable& memory, const QString& record, int channel);
CodecError DecodeSpecialRecord(SpecialTable& special, const QString& record, int row);

QString EncodeChannelFirstHalf(const MemoryTable& memory, int channel);
QString EncodeChannelSecondHalf(const MemoryTable& memory, int channel);
// Encoding any special row first sets the RPT row's numeric frequency to 145.0.
QString EncodeSpecialFirstHalf(SpecialTable& special, int row);
QString EncodeSpecialSecondHalf(SpecialTable& special, int row);

// One hex digit to "0000".."1111" (empty for anything else) and back ('\0' for a bad pattern).
QString HexDigitToBits(QChar digit);
QChar BitsToHexDigit(const QString& bits);

// Name characters: the two digits a character is written as, and the text a byte reads back as.
QString EncodeNameChar(QChar c);
QString DecodeNameByte(int value);

} // namespace zq::model
