#pragma once
// The clone file "*.318": 419 lines of 32 characters, CR LF.
#include "model/document.h"
#include "model/outcome.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace zq::files {

inline constexpr int kCloneFileLines = 419;
inline constexpr int kCloneLineLength = 32;
// Where each part of the radio starts: line 0 is the header, the last line the end line.
inline constexpr int kSettingsLine = 1;
inline constexpr int kSpecialLine = 3;
inline constexpr int kDialLine = 9;
inline constexpr int kChannelLine = 18;
inline constexpr int kEndLine = kCloneFileLines - 1;
// A clone file is 419 lines of 34 bytes; a file many times that size is refused unread.
inline constexpr qint64 kCloneFileSizeLimit = 1024 * 1024;

// A clone file that passed validation: its 419 lines and the header that matched.
struct CloneImage {
    QStringList lines;
    int variant = 0;         // the header's variant 0..3
    bool cloneCodeA = false; // the header's "Clone A"
};

struct CloneReadResult {
    model::Result result; // Done, DataError (with the line at fault) or FileOpenError
    CloneImage image;     // valid when result.ok(); on a DataError for a wrong end line the
                          // header fields are still filled (the start-up open uses them)
    bool headerMatched = false;
};

// Reads and validates without touching any document. Reading past the end of the file, or any
// I/O failure (a missing or unreadable file, a folder, a device or FIFO), is FileOpenError; a wrong
// line length, header or end line, or a file over kCloneFileSizeLimit, is DataError.
CloneReadResult ParseCloneFile(const QByteArray& contents);
CloneReadResult ReadCloneFile(const QString& path);

// The 419 lines the document saves as (runs BuildSettingsBlock first), and the file bytes.
QStringList CloneFileLines(model::Document& document);
QByteArray SerializeCloneFile(model::Document& document);

// Applies a validated image: settings, special records, dial texts, channels; redraws.
// A record that cannot be decoded leaves the document untouched and gives FileOpenError.
model::Result ApplyCloneImage(model::Document& document, const CloneImage& image);

// Open (after the file dialog): validate, apply, set the path and caption, clear DataChanged.
// Keeps the selected variant and clone code whatever the header says.
model::Result OpenCloneFile(model::Document& document, const QString& path);
// The start-up open: as Open, but the header selects variant and clone code (even when the end
// line then fails). A file that cannot be read, or is shorter than 419 lines, is Fatal.
model::Result LoadCloneFile(model::Document& document, const QString& path);
// Save and Save As after the dialog: written through QSaveFile; on failure "File Open Error"
// and the previous file stays as it was.
model::Result SaveCloneFile(model::Document& document, const QString& path);
// New: blank settings, no dial texts, special defaults, memory rows 0..199 emptied (the
// template row kept), no file, DataChanged false.
void NewDocument(model::Document& document);

// The unsaved-changes prompt, asked by the front ends only when this says so.
inline bool NeedsSavePrompt(const model::Document& document) {
    return document.DataChanged();
}
QString SavePromptText();  // "Save changes to settings?"
QString SavePromptTitle(); // "Save Changes"

} // namespace zq::files
