// Settings halves as they come from the radio or a file.
#include "model/settingscodec.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zq::model;
    const QString text = QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size));
    SettingsBlock block;
    block.halfA = text.left(text.size() / 2);
    block.halfB = text.mid(text.size() / 2);
    RadioSettings settings;
    ApplySettingsBlock(block, settings);
    if (settings.volume > 20 || settings.squelch > 20 || settings.batteryType > 1) __builtin_trap();
    BuildSettingsBlock(block, settings);
    if (block.halfA.size() != 32 || block.halfB.size() != 32) __builtin_trap();
    return 0;
}
