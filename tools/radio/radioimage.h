#pragma once
// The radio's memory map to and from a clone file: the file's lines map onto blocks directly.
#include "model/outcome.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace zq::radio {

// The model code a variant's radio reports in block 0000, and back (an unknown code gives the
// fourth variant, whose radios the detection does not know).
int ModelCodeForVariant(int variant);
int VariantForModelCode(int code);

// Lines 1-2 go to 00E0/00F0, 3-8 to 0100..0150, the dial texts 9-17 to 1F00..1F80, the channels
// 18-417 to 0200..1AF0; the header sets the identity bytes of block 0000.
zq::model::Result ApplyCloneLines(const QStringList& lines, QByteArray& memory);
QStringList CloneLines(const QByteArray& memory);

zq::model::Result LoadCloneImage(const QString& path, QByteArray& memory);
zq::model::Result SaveCloneImage(const QString& path, const QByteArray& memory);

} // namespace zq::radio
