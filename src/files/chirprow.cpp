#include "chirprow.h"

#include "model/numeric.h"
#include "model/tables.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace zq::files::chirp {

namespace {

constexpr int kNameLength = 6;
constexpr qint64 kOffsetLimitHz = 100'000'000; // the offset keeps two digits of MHz

// A plain decimal number ("145.5", "5", ".5"): no sign, exponent, unit or thousands separator.
std::optional<double> decimal(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,9}(\\.\\d*)?|\\.\\d+)$"));
    if (!pattern.match(text).hasMatch()) return std::nullopt;
    return text.toDouble(); // QString::toDouble reads the C locale's numbers
}

std::optional<qint64> hzOfMhz(const QString& text) {
    const auto mhz = decimal(text);
    if (!mhz) return std::nullopt;
    return std::llround(*mhz * 1e6);
}

QString mhzText(qint64 hz) {
    return QString::number(hz / 1e6, 'f', 6);
}

QString stepText(int index) {
    return QString::number(model::StepHz(index) / 1000.0, 'f', 2);
}

double toneHz(int index) {
    return model::NumericValue(model::ToneNames().at(index));
}

std::optional<int> toneIndex(const QString& text) {
    const auto hz = decimal(text);
    if (!hz) return std::nullopt;
    for (int i = 0; i < model::kToneCount; ++i)
        if (std::llround(toneHz(i) * 10) == std::llround(*hz * 10)) return i;
    return std::nullopt;
}

std::optional<int> dcsIndex(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("^\\d{1,3}$"));
    if (!pattern.match(text).hasMatch()) return std::nullopt;
    const int index = model::DcsCodes().indexOf(text.rightJustified(3, QLatin1Char('0')));
    return index >= 0 ? std::optional<int>(index) : std::nullopt;
}

bool isNameCharacter(QChar c) {
    static const QString punctuation = QStringLiteral(" *#+-/\\=($_?");
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || punctuation.contains(c);
}

// Which of the tone fields a row's tone mode uses: those must be valid, or the channel could not
// work as written; the others are kept when valid and otherwise left at the template's.
struct ToneUse {
    int mode;
    Column txFrom; // TSQL carries its one tone in cToneFreq
    bool tx, rx, dcs;
    bool rxDcsMustMatch = false; // the cross mode DTCS->DTCS names the receive code apart
};

ToneUse toneUseOf(int mode) {
    using namespace model;
    return ToneUse{mode, RToneFreq, mode == ToneModeTone || mode == ToneModeTsq, mode == ToneModeTsq,
                   mode == ToneModeDcs};
}

class RowReader {
public:
    RowReader(const CsvRecord& record, const RowContext& context)
        : record_(record), at_(context.at), defaults_(context.defaults), channel_(context.defaults),
          variant_(context.variant), cloneCodeA_(context.cloneCodeA) {}

    // The channel number and values, or nothing when the row is skipped. The reports of a
    // stored row are added, or the reason of a skipped one.
    std::optional<std::pair<int, Channel>> read(QList<ChirpReport>& reports) {
        const bool stored = readLocation() && readFrequency() && readMode() && readDuplex() && readStep() &&
                            readOffset() && readTones() && readRest();
        reports.append(notes_);
        if (!stored) return std::nullopt;
        return std::pair{location_, channel_};
    }

private:
    // The field, blanks around it removed; nothing when the file has no such column.
    std::optional<QString> field(Column column) const {
        if (at_[column] < 0) return std::nullopt;
        return record_.fields.value(at_[column]).trimmed();
    }
    QString text(Column column) const { return field(column).value_or(QString()); }

    // 'Duplex "off"'; a value too long to read in a report line is cut short.
    static QString subject(Column column, const QString& value) {
        constexpr int kShown = 40;
        const QString shown = value.size() > kShown ? value.left(kShown) + QStringLiteral("...") : value;
        return QStringLiteral("%1 \"%2\"").arg(ChirpColumns().at(column), shown);
    }
    void note(Column column, const QString& value, const QString& outcome) {
        notes_.append(ChirpReport{record_.line, location_, subject(column, value), outcome, false});
    }
    // Replaces the row's reports by the reason it is skipped; always false.
    bool skip(Column column, const QString& why) {
        notes_ = {ChirpReport{record_.line, location_, subject(column, text(column)),
                              why + QStringLiteral("; row skipped"), true}};
        return false;
    }

    bool readLocation() {
        static const QRegularExpression digits(QStringLiteral("^\\d{1,3}$"));
        const QString location = text(Location);
        if (!digits.match(location).hasMatch() || location.toInt() >= model::kChannelCount)
            return skip(Location, QStringLiteral("not a channel number 0..199"));
        location_ = location.toInt();
        return true;
    }

    bool readFrequency() {
        const auto hz = hzOfMhz(text(Frequency));
        if (!hz) return skip(Frequency, QStringLiteral("not a frequency in MHz"));
        if (!model::InBand(*hz / 1e6, variant_, cloneCodeA_))
            return skip(Frequency,
                        QStringLiteral("outside the band %1").arg(model::BandText(variant_, cloneCodeA_)));
        if (model::StepForFrequency(*hz) < 0)
            return skip(Frequency,
                        QStringLiteral("on neither the 5 kHz nor the 12.5 kHz raster the radio tunes"));
        channel_.hz = *hz;
        return true;
    }

    bool readMode() {
        const QString mode = text(Mode);
        if (mode.isEmpty() || mode == QLatin1String("FM")) return true;
        if (mode == QLatin1String("NFM")) {
            note(Mode, mode, QStringLiteral("the radio has no narrow FM; taken as FM"));
            return true;
        }
        return skip(Mode, QStringLiteral("the radio sends and receives FM only"));
    }

    bool readDuplex() {
        const auto duplex = field(Duplex);
        if (!duplex) return true;
        if (duplex->isEmpty())
            channel_.shift = model::ShiftNone;
        else if (*duplex == QLatin1String("+"))
            channel_.shift = model::ShiftPlus;
        else if (*duplex == QLatin1String("-"))
            channel_.shift = model::ShiftMinus;
        else if (*duplex == QLatin1String("split"))
            split_ = true;
        else if (*duplex == QLatin1String("off"))
            return skip(Duplex, QStringLiteral("the radio cannot keep its transmitter off on a channel"));
        else
            return skip(Duplex, QStringLiteral("none of \"\", \"+\", \"-\", \"split\""));
        return true;
    }

    bool readStep() {
        const int fitting = model::StepForFrequency(channel_.hz);
        channel_.step = fitting;
        const QString step = text(TStep);
        if (step.isEmpty()) return true;
        const auto khz = decimal(step);
        const int index = khz ? model::StepIndexOfHz(std::llround(*khz * 1000)) : -1;
        if (index < 0)
            note(TStep, step, QStringLiteral("not a step of the radio; %1 taken").arg(stepText(fitting)));
        else if (!model::FitsStep(channel_.hz, index))
            note(
                TStep, step,
                QStringLiteral("does not fit %1 MHz; %2 taken").arg(mhzText(channel_.hz), stepText(fitting)));
        else
            channel_.step = index;
        return true;
    }

    bool holdsOffset(qint64 hz) const {
        return hz >= 0 && hz < kOffsetLimitHz && model::FitsStep(hz, channel_.step);
    }
    QString offsetRule() const {
        return QStringLiteral("an offset must stay below 100 MHz on the %1 kHz raster of the step")
            .arg(model::StepRasterHz(channel_.step) / 1000.0);
    }

    bool readOffset() {
        const auto offset = field(Offset);
        if (split_) {
            // The transmit frequency becomes the shift that reaches it.
            const auto tx = hzOfMhz(offset.value_or(QString()));
            if (!tx) return skip(Offset, QStringLiteral("not a transmit frequency in MHz"));
            const qint64 apart = *tx - channel_.hz;
            if (!holdsOffset(std::llabs(apart)))
                return skip(Offset, QStringLiteral("a split the radio cannot do: %1").arg(offsetRule()));
            channel_.shift = apart < 0 ? model::ShiftMinus : apart > 0 ? model::ShiftPlus : model::ShiftNone;
            channel_.offsetHz = std::llabs(apart);
            return true;
        }
        if (!offset) return true;
        const auto hz = hzOfMhz(*offset);
        if (hz && holdsOffset(*hz)) {
            channel_.offsetHz = *hz;
            return true;
        }
        if (channel_.shift != model::ShiftNone)
            return skip(Offset,
                        hz ? offsetRule() : QStringLiteral("not an offset in MHz, but the channel shifts"));
        if (!offset->isEmpty())
            note(Offset, *offset,
                 QStringLiteral("%1; left at %2").arg(offsetRule(), mhzText(defaults_.offsetHz)));
        return true;
    }

    std::optional<ToneUse> toneUse() {
        const auto tone = field(Tone);
        if (!tone) return toneUseOf(defaults_.toneMode);
        using namespace model;
        if (tone->isEmpty()) return toneUseOf(ToneModeNone);
        if (*tone == QLatin1String("Tone")) return toneUseOf(ToneModeTone);
        if (*tone == QLatin1String("TSQL")) return ToneUse{ToneModeTsq, CToneFreq, true, true, false};
        if (*tone == QLatin1String("DTCS")) return toneUseOf(ToneModeDcs);
        if (*tone != QLatin1String("Cross")) {
            skip(Tone, QStringLiteral("not a tone mode the radio has"));
            return std::nullopt;
        }
        const QString cross = text(CrossMode);
        if (cross.isEmpty() || cross == QLatin1String("Tone->Tone")) return toneUseOf(ToneModeTsq);
        if (cross == QLatin1String("Tone->")) return toneUseOf(ToneModeTone);
        if (cross == QLatin1String("DTCS->DTCS")) {
            ToneUse use = toneUseOf(ToneModeDcs);
            use.rxDcsMustMatch = true;
            return use;
        }
        skip(CrossMode,
             QStringLiteral("the radio's cross modes are Tone->Tone, Tone-> and DTCS->DTCS with one code"));
        return std::nullopt;
    }

    // A tone or DCS field: its index, the template's when the column is missing, or the
    // template's with a report when the mode does not use it; nothing when the row is skipped.
    std::optional<int> pick(Column column, bool used, int fallback, bool dcs) {
        const auto value = field(column);
        if (!value) return fallback;
        if (const auto index = dcs ? dcsIndex(*value) : toneIndex(*value)) return *index;
        const QString table = dcs ? QStringLiteral("DCS code") : QStringLiteral("tone");
        if (used) {
            skip(column, value->isEmpty() ? QStringLiteral("empty, but the tone mode uses it")
                                          : QStringLiteral("not in the radio's %1 table").arg(table));
            return std::nullopt;
        }
        if (!value->isEmpty()) {
            const QString kept =
                dcs ? model::DcsCodes().at(fallback) : QString::number(toneHz(fallback), 'f', 1);
            note(column, *value, QStringLiteral("not in the radio's %1 table; left at %2").arg(table, kept));
        }
        return fallback;
    }

    bool readTones() {
        const auto use = toneUse();
        if (!use) return false;
        const auto tx = pick(use->txFrom, use->tx, defaults_.tx, false);
        const auto rx = tx ? pick(CToneFreq, use->rx, defaults_.rx, false) : std::nullopt;
        const auto dcs = rx ? pick(DtcsCode, use->dcs, defaults_.dcs, true) : std::nullopt;
        if (!dcs) return false;
        if (use->dcs) {
            const QString polarity = text(DtcsPolarity);
            if (!polarity.isEmpty() && polarity != QLatin1String("NN"))
                return skip(DtcsPolarity,
                            QStringLiteral("the radio sends and receives DCS with normal polarity only"));
        }
        if (use->rxDcsMustMatch) {
            const QString rxDcs = text(RxDtcsCode);
            if (!rxDcs.isEmpty() && dcsIndex(rxDcs) != dcs)
                return skip(RxDtcsCode,
                            QStringLiteral("differs from DtcsCode; the radio has one DCS code both ways"));
        }
        channel_.toneMode = use->mode;
        channel_.tx = *tx;
        channel_.rx = *rx;
        channel_.dcs = *dcs;
        return true;
    }

    // Skip, power and name never skip a row.
    bool readRest() {
        readSkip();
        readPower();
        readName();
        return true;
    }

    void readSkip() {
        const auto skip = field(Skip);
        if (!skip) return;
        channel_.skip = *skip == QLatin1String("S");
        if (*skip == QLatin1String("P"))
            note(Skip, *skip, QStringLiteral("the radio has no priority channel; scanned as usual"));
        else if (!skip->isEmpty() && !channel_.skip)
            note(Skip, *skip, QStringLiteral("neither \"\" nor \"S\"; scanned as usual"));
    }

    void readPower() {
        static const QRegularExpression watts(QStringLiteral("^(\\d{1,9}(\\.\\d*)?|\\.\\d+) ?[wW]?$"));
        const QString power = text(Power);
        if (power.isEmpty()) return;
        const int word = model::Powers().indexOfCaption(power.at(0).toUpper() + power.mid(1).toLower());
        if (word >= 0) {
            channel_.power = word;
        } else if (const auto match = watts.match(power); match.hasMatch()) {
            const double w = match.captured(1).toDouble();
            channel_.power = w < 1.5 ? model::PowerLow : w < 3.5 ? model::PowerMid : model::PowerHigh;
        } else {
            note(Power, power,
                 QStringLiteral("neither Low, Mid, High nor watts; left at %1")
                     .arg(model::Powers().caption(defaults_.power)));
        }
    }

    void readName() {
        if (at_[Name] < 0) return;
        // Blanks are name characters too: the name is taken as it stands.
        const QString name = record_.fields.value(at_[Name]);
        QString stored;
        QString foreign;
        bool lowered = false;
        for (const QChar c : name) {
            const QChar upper = c >= QLatin1Char('a') && c <= QLatin1Char('z') ? c.toUpper() : c;
            lowered = lowered || upper != c;
            if (isNameCharacter(upper))
                stored += upper;
            else if (!foreign.contains(c))
                foreign += c;
        }
        QStringList changes;
        if (lowered) changes.append(QStringLiteral("lower-case letters upper-cased"));
        if (!foreign.isEmpty())
            changes.append(QStringLiteral("\"%1\" not among the radio's name characters").arg(foreign));
        if (stored.size() > kNameLength) {
            changes.append(QStringLiteral("longer than %1 characters").arg(kNameLength));
            stored.truncate(kNameLength);
        }
        if (!changes.isEmpty())
            note(Name, name,
                 changes.join(QStringLiteral(", ")) + QStringLiteral("; stored as \"%1\"").arg(stored));
        channel_.name = stored;
    }

    const CsvRecord& record_;
    const ColumnIndex& at_;
    const Channel& defaults_;
    Channel channel_;
    int variant_;
    bool cloneCodeA_;
    int location_ = -1;
    bool split_ = false;
    QList<ChirpReport> notes_;
};

} // namespace

Channel ChannelOf(const model::MemoryTable& memory, int row) {
    using namespace model;
    // A cell's number as an index below `count`; 0 for anything else a foreign file left there.
    const auto index = [&](int column, int count) {
        const double v = memory.number(row, column);
        return v >= 0 && v < count ? int(v) : 0;
    };
    const auto hz = [&](int column) {
        const double v = memory.number(row, column);
        return std::abs(v) < 1e6 ? std::llround(v * 1e6) : 0;
    };
    Channel c;
    c.hz = hz(ColFrequency);
    c.step = index(ColStep, kStepCount);
    c.toneMode = std::max(0, ToneModes().indexOfCode(memory.number(row, ColTone)));
    c.tx = index(ColTxTone, kToneCount);
    c.rx = index(ColRxTone, kToneCount);
    c.dcs = index(ColDcs, kDcsCount);
    c.shift = std::max(0, Shifts().indexOfCode(memory.number(row, ColShift)));
    c.offsetHz = hz(ColOffset);
    c.power = index(ColPower, PowerHigh + 1);
    c.name = memory.text(row, ColName);
    c.skip = memory.number(row, ColSkip) == 1;
    return c;
}

std::optional<std::pair<int, Channel>> ReadRow(const CsvRecord& record, const RowContext& context,
                                               QList<ChirpReport>& reports) {
    return RowReader(record, context).read(reports);
}

} // namespace zq::files::chirp
