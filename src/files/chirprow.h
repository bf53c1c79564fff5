#pragma once
// One row of a CHIRP channel list read into the values of a memory channel, each field checked
// against what the radio can hold.
#include "chirpcsv.h"
#include "csvrecords.h"
#include "model/channeloptions.h"
#include "model/steprules.h"
#include "model/stores.h"

#include <QList>
#include <array>
#include <optional>
#include <utility>

namespace zq::files::chirp {

// The columns the import reads, in the layout's order.
enum Column : int {
    Location,
    Name,
    Frequency,
    Duplex,
    Offset,
    Tone,
    RToneFreq,
    CToneFreq,
    DtcsCode,
    DtcsPolarity,
    RxDtcsCode,
    CrossMode,
    Mode,
    TStep,
    Skip,
    Power,
    kReadColumns
};
using ColumnIndex = std::array<int, kReadColumns>; // where each is in the file; -1 when missing

// One channel's values as the radio stores them.
struct Channel {
    qint64 hz = 0;
    int step = model::kStep5kHz;
    int toneMode = model::ToneModeNone; // index into the tone-mode options
    int tx = 0, rx = 0, dcs = 0;
    int shift = model::ShiftNone;
    qint64 offsetHz = 0;
    int power = model::PowerLow;
    QString name;
    bool skip = false;
};

// The values of a store row; the template's are the defaults of every row.
Channel ChannelOf(const model::MemoryTable& memory, int row);

struct RowContext {
    const ColumnIndex& at;
    const Channel& defaults;
    int variant;
    bool cloneCodeA;
};

// The channel number and values of a row, or nothing when the row is skipped. `reports` gets
// what a stored row changed, or the reason a row is skipped.
std::optional<std::pair<int, Channel>> ReadRow(const CsvRecord& record, const RowContext& context,
                                               QList<ChirpReport>& reports);

} // namespace zq::files::chirp
