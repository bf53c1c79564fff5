#pragma once
// Reads a text file one field at a time, the way the radio program reads its clone and CSV files:
// leading blanks are skipped, a field ends at a comma or at the end of the line, and a field that
// starts with a quotation mark runs to the closing one. Reads from the device in chunks, so a huge
// or binary file costs bounded memory.
#include <QByteArray>
#include <QIODevice>

namespace zq::files {

class FieldReader {
public:
    // lfEndsLine: whether a lone LF ends a line as CR and CR LF do (spreadsheets write LF-only
    // lines; clone files are CR LF only, so there an LF is an ordinary character).
    FieldReader(QIODevice& device, bool lfEndsLine);

    enum class Status { Ok, PastEnd, ReadError };
    // What happens to a field longer than the limit: Stop returns at once with limit + 1
    // characters (the caller rejects it anyway); Discard keeps the first limit + 1 characters
    // and reads on to the field's end.
    enum class Overflow { Stop, Discard };

    // Reading when nothing is left is PastEnd.
    Status read(QByteArray& field, qsizetype limit, Overflow overflow);
    bool atEnd();
    // 0-based line on which the last field started.
    int fieldLine() const { return fieldLine_; }

private:
    int peek(); // the next byte, or -1 at the end (or after a read error)
    void advance();
    bool isLineEnd(int c) const { return c == '\r' || (lfEndsLine_ && c == '\n'); }
    void consumeLineEnd();

    QIODevice& device_;
    bool lfEndsLine_;
    QByteArray buffer_;
    qsizetype position_ = 0;
    bool failed_ = false;
    int line_ = 0;
    int fieldLine_ = 0;
};

} // namespace zq::files
