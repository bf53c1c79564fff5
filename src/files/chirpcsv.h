#pragma once
// Memory channels in CHIRP's CSV layout, the channel list that owners of many radios keep, so
// that channels move between this radio and the others. Only memory channels 0..199 travel; the
// VFO/CALL/RPT rows, the settings and the dial memories have no place in the layout.
//
// Column          this radio                     written as / read from
// Location        channel 0..199                 the number; other rows are skipped
// Name            name, up to 6 characters       the name; lower-case letters are upper-cased,
//                                                characters the radio lacks (")" among them, which
//                                                it writes as "(") dropped, the rest cut to 6
// Frequency       receive frequency              MHz, six decimals; it must lie in the variant's
//                                                band and on the 5 kHz or 12.5 kHz raster
// Duplex          shift None / + / -             "" / "+" / "-"; "split" becomes the shift that
//                                                reaches the transmit frequency; "off" (no transmit)
//                                                is more than the radio can do: row skipped
// Offset          offset                         MHz, six decimals, below 100 MHz, on the step's raster
// Tone            tone mode None/Tone/TSQ/DCS    "" / "Tone" / "TSQL" / "DTCS"; TSQ with two different
//                                                tones is "Cross" with CrossMode "Tone->Tone"
// rToneFreq       TX tone                        "%.1f" Hz (under TSQL the tone both ways is cToneFreq)
// cToneFreq       RX tone                        "%.1f" Hz
// DtcsCode        DCS code                       "%03d"
// DtcsPolarity    -                              "NN"; other polarities skip a DTCS row
// RxDtcsCode      -                              the DCS code; under Cross "DTCS->DTCS" it must equal it
// CrossMode       -                              "Tone->Tone"; of the cross modes the radio does
//                                                "Tone->Tone" (TSQ), "Tone->" (Tone) and "DTCS->DTCS"
//                                                with one code (DCS); the others skip the row
// Mode            -                              "FM"; "NFM" is taken as FM (reported), others skip
// TStep           step                           kHz, "%.2f", one of 5, 10, 12.5, 15, 20, 25, 30
//                                                that fits the frequency, else the step it fits
// Skip            skip flag                      "" / "S"
// Power           Low / Mid / High               the word; on reading also watts: below 1.5 W Low,
//                                                below 3.5 W Mid, from 3.5 W High
// Comment, URCALL, RPT1CALL, RPT2CALL, DVCODE    written empty, not read
//
// Busy lock-out, clock shift and battery save have no column: an export drops them (and reports
// every channel where one of them is set) and an import takes them from the channel's previous
// contents when it was in use, else from the template channel.
//
// Columns are found by their names in the header (the first record that is not a comment, in any
// letter case). A missing column takes the template channel's value (the step: the one the
// frequency fits), and so does an empty field, except where the channel needs it: the offset of
// a shift, a tone or DCS code its tone mode uses. Blanks around a field are dropped, except in
// the name. A value the radio cannot hold is reported with its row, and either the row is
// skipped (when the channel could not work as written: its location, frequency, duplex, mode,
// the offset of a shift, or a tone, DCS code or polarity its tone mode uses) or the field is
// left at the template's value; the report says which. Numbers are written in the C locale,
// records end in CR LF.
#include "model/document.h"
#include "model/outcome.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace zq::files {

// What an export or import could not carry over, and what was done about it.
struct ChirpReport {
    int row = 0;      // import: the file's row (line) where the record starts; 0 on export
    int channel = -1; // the channel concerned, when known
    QString subject;  // the column and its value ('Duplex "off"'), or the channel's fields
    QString outcome;  // what the radio cannot hold and what was done
    bool rowSkipped = false;
    // One line: 'row 12 (Location 40): Duplex "off": the radio cannot ...; row skipped'.
    QString text() const;
};

struct ChirpOutcome {
    model::Result result;       // Done, DataError (no header) or FileOpenError
    QList<ChirpReport> reports; // in the file's order
    int channels = 0;           // channels written or stored
    QStringList lines() const;  // the reports' texts, for one box or standard error
};

// The header record of the layout.
const QStringList& ChirpColumns();

// The CSV text of the channels in use, in channel order; `reports` gets the channels whose
// busy lock-out, clock shift or battery save is set.
QByteArray ChirpExportText(const model::Document& document, QList<ChirpReport>* reports = nullptr);
// Writes the text through an atomic write ("File Open Error" when that fails). The document's
// file path and DataChanged stay as they are: the clone file is still the one the data belong to.
ChirpOutcome ExportChirpCsv(const model::Document& document, const QString& path);

// Stores the text's channels into the document's memory store, each replacing that channel;
// channels not in the file keep their contents. The band is that of the document's variant and
// clone code. The changes count as an edit (DataChanged is set) when any channel is stored.
// DataError when no header with the Location and Frequency columns comes first.
ChirpOutcome ImportChirpCsvData(model::Document& document, const QByteArray& contents);
// The same from a file; "File Open Error" when it cannot be read.
ChirpOutcome ImportChirpCsv(model::Document& document, const QString& path);

} // namespace zq::files
