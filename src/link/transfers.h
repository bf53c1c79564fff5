#pragma once
// The clone transfers between the radio and the document: memory channels, settings with the
// special records and dial memories, model detection, and the service panel's raw reads.
#include "model/outcome.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace zq::model {
class Document;
}

namespace zq::link {

class SerialLink;

// Told the channel (0..199) being transferred.
using Progress = std::function<void(int channel)>;
// Told the block (0..total - 1) being transferred and how many the transfer moves.
using StepProgress = std::function<void(int step, int total)>;

// Each transfer is one session: it stops at the first failure with no retry and sends no end
// command after a failure. Rows decoded before a failure keep their new contents.
zq::model::Result ReadMemory(SerialLink& link, zq::model::Document& document, const Progress& progress = {});
zq::model::Result WriteMemory(SerialLink& link, zq::model::Document& document, const Progress& progress = {});
zq::model::Result ReadSettings(SerialLink& link, zq::model::Document& document,
                               const StepProgress& progress = {});
zq::model::Result WriteSettings(SerialLink& link, zq::model::Document& document,
                                const StepProgress& progress = {});
// Selects the model variant the radio reports and records its clone code.
zq::model::Result AutoSelect(SerialLink& link, zq::model::Document& document);

// Settings, then memory: two complete sessions; the second runs even when the first failed.
struct AllResult {
    zq::model::Result settings;
    zq::model::Result memory;
    // The first failure of the two, or Done.
    zq::model::Result first() const { return settings.ok() ? memory : settings; }
};
AllResult ReadAll(SerialLink& link, zq::model::Document& document, const Progress& progress = {});
AllResult WriteAll(SerialLink& link, zq::model::Document& document, const Progress& progress = {});

// Reads the blocks at `addresses` in one session, 10 ms apart, then sends the end command: the raw
// read-back of a comparison. On a failure `payloads` holds the blocks read before it.
zq::model::Result ReadBlocks(SerialLink& link, const QStringList& addresses, QStringList& payloads,
                             const StepProgress& progress = {});

// Service panel: "KV~F" + the address exactly as typed + "R"; collects for 500 ms, stopping at 36
// or more characters ending in CR LF. No check: the raw text is the answer. `shown` sees the text
// so far. A port that cannot be opened is a Fatal outcome.
inline constexpr int kServiceTimeoutMs = 500;
zq::model::Result ReadServiceBlock(SerialLink& link, const QString& addressText, QString& reply,
                                   const std::function<void(const QString&)>& shown = {});
// Blocks 0000..0FF0: 256 lines of two hex digits, a TAB and the last 34 characters of each reply
// (the data digits and CR LF). `shown` sees the dump after every line.
zq::model::Result DumpBlocks(SerialLink& link, QString& dump,
                             const std::function<void(const QString&)>& shown = {});
// The same, except that a block with no answer at all (nothing beyond the echo of its command) ends
// the dump with a "Communication Error"; the lines before it stay in `dump`.
zq::model::Result DumpAnsweredBlocks(SerialLink& link, QString& dump,
                                     const std::function<void(const QString&)>& shown = {});

} // namespace zq::link
