#include "csvexchange.h"

#include "atomicwrite.h"
#include "fieldreader.h"
#include "inputfile.h"
#include "model/channeloptions.h"
#include "model/numeric.h"
#include "model/tables.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <optional>
#include <utility>

namespace zq::files {

using model::Outcome;
using model::Result;

namespace {

constexpr int kCsvFields = 18;
const char* const kHeadings[kCsvFields] = {
    "MODEL",           "BANK",  "CHANNEL", "FREQUENCY", "STEP",  "TONE", "TXTONE", "RXTONE", "DCS", "SHIFT",
    "SHIFT FREQUENCY", "Power", "ATT",     "BS",        "Clock", "BCLO", "Name",   "Skip"};
const char* const kModelWord = "ZQ-318";
const char* const kSpecialBank = "VFO";
const char* const kMemoryBank = "MEMORY";
// A field longer than this cannot match anything the import looks for; the rest is skipped.
constexpr qsizetype kFieldLimit = 4096;
constexpr int kNameLength = 6;

void appendRecord(QByteArray& out, const QStringList& fields) {
    for (qsizetype i = 0; i < fields.size(); ++i) {
        if (i > 0) out.append(',');
        out.append('"');
        out.append(fields[i].toLatin1());
        out.append('"');
    }
    out.append("\r\n");
}

// The first index whose caption has the same numeric value as the text, as the tone and DCS
// columns are matched ("88.5" and "88.5Hz" both find "88.5Hz").
std::optional<int> matchByValue(const QStringList& captions, int count, const QString& text) {
    const double value = model::NumericValue(text);
    for (int i = 0; i < count && i < captions.size(); ++i)
        if (model::NumericValue(captions[i]) == value) return i;
    return std::nullopt;
}

// Halves go to the even neighbour (2.5 -> 2, 3.5 -> 4).
int roundHalfEven(double value) {
    const double below = std::floor(value);
    const double fraction = value - below;
    double rounded = below;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(below, 2.0) != 0.0)) rounded = below + 1;
    return static_cast<int>(rounded);
}

using Row = std::array<model::Cell, model::kMemoryColumns>;

// Fields FREQUENCY..Skip (15 texts) to the stored cells; no value when a tone or DCS is unknown.
std::optional<Row> convertRecord(const QStringList& f) {
    using namespace model;
    Row row;
    const double frequency = NumericValue(f[0]);
    row[ColFrequency] = {FormatNoLeadingZero(frequency), frequency};

    row[ColStep] = {StepNames().at(0), 0};
    for (int i = 0; i < kStepCount; ++i)
        if (f[1] == StepNames().at(i)) row[ColStep] = {StepNames().at(i), double(i)};

    const int toneMode = ToneModes().indexOfCaption(f[2]);
    row[ColTone] = ToneModes().cell(toneMode < 0 ? ToneModeNone : toneMode);

    const std::optional<int> txTone = matchByValue(ToneNames(), kToneCount, f[3]);
    const std::optional<int> rxTone = matchByValue(ToneNames(), kToneCount, f[4]);
    const std::optional<int> dcs = matchByValue(DcsCodes(), kDcsCount, f[5]);
    if (!txTone || !rxTone || !dcs) return std::nullopt;
    row[ColTxTone] = {ToneNames().at(*txTone), double(*txTone)};
    row[ColRxTone] = {ToneNames().at(*rxTone), double(*rxTone)};
    row[ColDcs] = {DcsCodes().at(*dcs), double(*dcs)};

    const int shift = Shifts().indexOfCaption(f[6]);
    row[ColShift] = Shifts().cell(shift < 0 ? ShiftNone : shift);

    const double offset = NumericValue(f[7]);
    row[ColOffset] = {FormatOneLeadingZero(offset), offset};

    const bool high = f[8] == QLatin1String("Hi");
    row[ColPower] = {high ? QStringLiteral("Hi") : QStringLiteral("Lo"), high ? 1.0 : 0.0};
    row[ColBlank] = {QStringLiteral("------"), 0};
    // "Off" is the set state of battery save
    const bool bsOff = f[10] == QLatin1String("Off");
    row[ColBsv] = {bsOff ? QStringLiteral("Off") : QStringLiteral("On"), bsOff ? 1.0 : 0.0};
    const bool clock = f[11] == QLatin1String("On");
    row[ColClock] = {clock ? QStringLiteral("On") : QStringLiteral("Off"), clock ? 1.0 : 0.0};
    const bool bclo = f[12] == QLatin1String("On");
    row[ColBclo] = {bclo ? QStringLiteral("On") : QStringLiteral("Off"), bclo ? 1.0 : 0.0};
    const QString name = f[13].left(kNameLength);
    row[ColName] = {name, name.isEmpty() ? 0.0 : 1.0};
    row[ColSkip] = {QString(), f[14] == QLatin1String("On") ? 1.0 : 0.0};
    return row;
}

class CsvImporter {
public:
    CsvImporter(model::Document& document, QIODevice& device, CsvImportReport& report)
        : document_(document), reader_(device, true), memory_(document.memory()),
          special_(document.special()), report_(report) {}

    Result run() {
        report_.read = true;
        while (!reader_.atEnd()) {
            QString word;
            if (!next(word)) return failure_;
            if (word != QLatin1String(kModelWord)) continue;
            const int recordLine = reader_.fieldLine() + 1;
            QString bank;
            if (!next(bank)) return failure_;
            const bool special = bank == QLatin1String(kSpecialBank);
            if (!special && bank != QLatin1String(kMemoryBank)) continue;
            QString channel;
            if (!next(channel)) return failure_;
            if (channel.isEmpty()) {
                drop(recordLine, QStringLiteral("no CHANNEL"));
                continue;
            }
            int row = -1;
            if (special) {
                for (int r = model::kVfoRow; r <= model::kRptRow && row < 0; ++r)
                    if (channel == SpecialRowHeading(r)) row = r;
                if (row < 0) {
                    drop(recordLine, QStringLiteral("CHANNEL \"%1\" is not VFO, CALL or RPT").arg(channel));
                    continue;
                }
            } else {
                const double value = model::NumericValue(channel);
                if (value < 0 || value > model::kChannelCount - 1) {
                    drop(recordLine, QStringLiteral("CHANNEL \"%1\" is not 0..199").arg(channel));
                    continue;
                }
                row = roundHalfEven(value);
            }
            QStringList values;
            for (int i = 3; i < kCsvFields; ++i) {
                QString value;
                if (!next(value)) return failure_;
                values.append(value);
            }
            const std::optional<Row> cells = convertRecord(values);
            if (!cells) {
                drop(recordLine, QStringLiteral("TXTONE, RXTONE or DCS is no value of the tables"));
                continue;
            }
            ++report_.recordsStored;
            // The grids are redrawn once at the end (or when a record is cut short).
            if (special) {
                for (int column = 0; column <= model::ColBclo; ++column)
                    special_.set(row, column, (*cells)[column]);
            } else {
                for (int column = 0; column < model::kMemoryColumns; ++column)
                    memory_.set(row, column, (*cells)[column]);
                // A skipped channel's frequency is starred; the special rows have no skip.
                if ((*cells)[model::ColSkip].number == 1)
                    memory_.setText(row, model::ColFrequency,
                                    (*cells)[model::ColFrequency].text + QLatin1Char('*'));
                memory_.setChannelInUse(row, true);
            }
        }
        endLine();
        // The repeater row shows only what the settings write; its imported texts go.
        for (int column = 0; column <= model::ColBclo; ++column)
            special_.setText(model::kRptRow, column, QString());
        store();
        document_.setCurrentFilePath(QString());
        document_.setDataChanged(false);
        return Result::done();
    }

private:
    // A record cut short by the end of the file is a read past the end, which the radio program
    // does not trap; what was stored before it stays.
    bool next(QString& value) {
        QByteArray field;
        const FieldReader::Status status = reader_.read(field, kFieldLimit, FieldReader::Overflow::Discard);
        if (status == FieldReader::Status::Ok) {
            value = QString::fromLatin1(field);
            countField(value);
            return true;
        }
        endLine();
        const QString why = status == FieldReader::Status::PastEnd ? QStringLiteral("Input past end of file")
                                                                   : QStringLiteral("read error");
        failure_ = Result::fail(Outcome::Fatal,
                                QStringLiteral("%1 (CSV line %2)").arg(why).arg(reader_.fieldLine() + 1));
        store();
        return false;
    }

    // What was imported so far goes into the document in one change per store.
    void store() {
        document_.changeSpecial(
            model::kVfoRow, model::kRptRow, [this](model::SpecialTable& s) { s = special_; },
            model::Document::Mark::Quiet);
        document_.changeMemory(
            0, model::kChannelCount - 1, [this](model::MemoryTable& m) { m = memory_; },
            model::Document::Mark::Quiet);
    }

    void drop(int line, const QString& why) {
        ++report_.recordsDropped;
        if (report_.dropped.size() < kCsvReportedLines) report_.dropped.append({line, why});
    }

    // Fields are counted per line, for the report of lines that do not hold a whole record.
    void countField(const QString& value) {
        if (reader_.fieldLine() != line_) {
            endLine();
            line_ = reader_.fieldLine();
            lineStart_ = value;
            lineFields_ = 0;
        }
        ++lineFields_;
    }
    void endLine() {
        const int fields = std::exchange(lineFields_, 0);
        if (fields == 0 || fields == kCsvFields) return;
        if (lineStart_ != QLatin1String(kModelWord) && lineStart_ != QLatin1String(kHeadings[0])) return;
        ++report_.wrongFieldCountLines;
        if (report_.wrongFieldCounts.size() < kCsvReportedLines)
            report_.wrongFieldCounts.append({line_ + 1, fields});
    }

    model::Document& document_;
    FieldReader reader_;
    model::MemoryTable memory_;
    model::SpecialTable special_;
    CsvImportReport& report_;
    Result failure_;
    int line_ = -1; // 0-based line of the fields counted
    QString lineStart_;
    int lineFields_ = 0;
};

} // namespace

QString SpecialRowHeading(int row) {
    switch (row) {
    case model::kVfoRow:
        return QStringLiteral("VFO");
    case model::kCallRow:
        return QStringLiteral("CALL");
    case model::kRptRow:
        return QStringLiteral("RPT");
    default:
        return QString();
    }
}

QByteArray CsvExportText(const model::Document& document) {
    QByteArray out;
    QStringList heading;
    for (const char* text : kHeadings)
        heading.append(QLatin1String(text));
    appendRecord(out, heading);
    for (int row = model::kVfoRow; row <= model::kRptRow; ++row) {
        QStringList fields{QLatin1String(kModelWord), QLatin1String(kSpecialBank), SpecialRowHeading(row)};
        for (int column = 0; column <= model::ColBclo; ++column)
            fields.append(document.special().text(row, column));
        fields.append(QStringLiteral("No"));
        fields.append(QStringLiteral("Off"));
        appendRecord(out, fields);
    }
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        if (!document.memory().ChannelInUse(channel)) continue;
        QStringList fields{QLatin1String(kModelWord), QLatin1String(kMemoryBank), QString::number(channel)};
        for (int column = 0; column <= model::ColName; ++column)
            fields.append(document.memory().text(channel, column));
        fields.append(document.memory().number(channel, model::ColSkip) == 1 ? QStringLiteral("On")
                                                                             : QStringLiteral("Off"));
        appendRecord(out, fields);
    }
    return out;
}

Result ExportCsv(model::Document& document, const QString& path) {
    const QByteArray bytes = CsvExportText(document);
    if (const QString why = WriteFileAtomically(path, bytes); !why.isEmpty()) {
        return Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why));
    }
    // Only the bare name is kept: a later Save writes there, relative to the current directory.
    document.setCurrentFilePath(QFileInfo(path).fileName());
    document.setDataChanged(false);
    return Result::done();
}

Result ImportCsvData(model::Document& document, const QByteArray& contents, CsvImportReport* report) {
    QBuffer buffer;
    buffer.setData(contents);
    buffer.open(QIODevice::ReadOnly);
    CsvImportReport unused;
    return CsvImporter(document, buffer, report ? *report : unused).run();
}

void ImportCsvText(model::Document& document, const QByteArray& contents) {
    ImportCsvData(document, contents);
}

Result ImportCsv(model::Document& document, const QString& path, CsvImportReport* report) {
    QFile file;
    if (const InputFile input = OpenInputFile(file, path, kCsvFileSizeLimit); !input.ok())
        return input.refusal(Outcome::Fatal);
    CsvImportReport unused;
    return CsvImporter(document, file, report ? *report : unused).run();
}

} // namespace zq::files
