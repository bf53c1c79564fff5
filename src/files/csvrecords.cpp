#include "csvrecords.h"

namespace zq::files {

namespace {

bool allEmpty(const QStringList& fields) {
    for (const QString& field : fields)
        if (!field.trimmed().isEmpty()) return false;
    return true;
}

class Splitter {
public:
    explicit Splitter(const QString& text) : text_(text) {}

    QList<CsvRecord> run() {
        QList<CsvRecord> records;
        while (pos_ < text_.size()) {
            const int line = line_;
            if (text_[pos_] == QLatin1Char('#')) {
                while (pos_ < text_.size() && !atLineEnd())
                    ++pos_;
                skipLineEnd();
                continue;
            }
            CsvRecord record{line, readRecord()};
            if (!allEmpty(record.fields)) records.append(record);
        }
        return records;
    }

private:
    bool atLineEnd() const { return text_[pos_] == QLatin1Char('\r') || text_[pos_] == QLatin1Char('\n'); }
    void skipLineEnd() {
        if (pos_ >= text_.size()) return;
        if (text_[pos_] == QLatin1Char('\r') && pos_ + 1 < text_.size() &&
            text_[pos_ + 1] == QLatin1Char('\n'))
            ++pos_;
        ++pos_;
        ++line_;
    }

    QStringList readRecord() {
        QStringList fields;
        QString field;
        bool quoted = false;
        while (pos_ < text_.size()) {
            const QChar c = text_[pos_];
            if (quoted) {
                if (c == QLatin1Char('"')) {
                    if (pos_ + 1 < text_.size() && text_[pos_ + 1] == QLatin1Char('"')) {
                        field += c;
                        pos_ += 2;
                    } else {
                        quoted = false;
                        ++pos_;
                    }
                } else if (atLineEnd()) {
                    // a line end inside quotes belongs to the field
                    field += QLatin1Char('\n');
                    skipLineEnd();
                } else {
                    field += c;
                    ++pos_;
                }
            } else if (c == QLatin1Char('"')) {
                quoted = true;
                ++pos_;
            } else if (c == QLatin1Char(',')) {
                fields.append(field);
                field.clear();
                ++pos_;
            } else if (atLineEnd()) {
                skipLineEnd();
                break;
            } else {
                field += c;
                ++pos_;
            }
        }
        fields.append(field);
        return fields;
    }

    const QString& text_;
    qsizetype pos_ = 0;
    int line_ = 1;
};

} // namespace

QList<CsvRecord> SplitCsvRecords(const QByteArray& bytes) {
    QByteArray body = bytes;
    if (body.startsWith("\xEF\xBB\xBF")) body.remove(0, 3);
    const QString text = QString::fromUtf8(body);
    return Splitter(text).run();
}

QString QuoteCsvField(const QString& value) {
    if (!value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) &&
        !value.contains(QLatin1Char('\r')) && !value.contains(QLatin1Char('\n')))
        return value;
    QString quoted = value;
    quoted.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

} // namespace zq::files
