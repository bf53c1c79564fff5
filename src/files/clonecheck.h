#pragma once
// The strict check of a clone file that passed Open's own checks: every record decoded field by
// field, every field that holds no valid value named with its line.
#include "clonefile.h"

#include <QStringList>

namespace zq::files {

// One line per field at fault, in file order, each naming the line (1-based) and the record:
// "line 51: channel 16: TX tone index 45 outside the tone table (0-38)". Frequencies are held
// against the band of the header's variant and clone code. Empty when every field is valid.
QStringList StrictCheckCloneImage(const CloneImage& image);

} // namespace zq::files
