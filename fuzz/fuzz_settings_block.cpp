// Settings halves as the radio or a clone file gives them, of any length and content. Applying them
// repairs what the pages cannot show; building the halves from the pages gives two 16-byte halves,
// and a second apply and build changes neither the pages nor the halves.
#include "fuzzcheck.h"
#include "model/settingscodec.h"

using namespace zq::model;

namespace {

QString Show(const SettingsBlock& block) {
    return block.halfA + QLatin1Char(' ') + block.halfB;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = fuzz::Latin1(data, size);
    SettingsBlock block;
    block.halfA = text.left(text.size() / 2);
    block.halfB = text.mid(text.size() / 2);
    RadioSettings settings;
    ApplySettingsBlock(block, settings);
    fuzz::Require(settings.volume <= 20 && settings.squelch <= 20, "levels within the sliders");
    fuzz::Require(settings.dtmfWait <= 3 && settings.dtmfFirst <= 3 && settings.dtmfInterval <= 3,
                  "DTMF timings within their lists");
    fuzz::Require(settings.timeOutTimer <= 15 && settings.penaltyTime <= 15, "timers within their lists");
    fuzz::Require(settings.batteryType <= 1, "battery type within its list");

    BuildSettingsBlock(block, settings);
    fuzz::Require(block.halfA.size() == 32 && block.halfB.size() == 32, "two 32-digit halves", Show(block));
    const SettingsBlock built = block;
    RadioSettings again;
    ApplySettingsBlock(block, again);
    fuzz::Require(block == built, "built halves need no repair", Show(built) + " / " + Show(block));
    fuzz::Require(again == settings, "built halves apply to the same pages", Show(built));
    BuildSettingsBlock(block, again);
    fuzz::Require(block == built, "a second build gives the same halves", Show(built) + " / " + Show(block));
    return 0;
}
