#pragma once
// What the fuzz targets share: a property check that says what broke, and the input as text.
#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

// A broken property is a finding: name it, then abort so that libFuzzer (or the replay) reports
// the input that broke it.
[[noreturn]] inline void Broken(const char* property, const QString& detail = QString()) {
    std::fprintf(stderr, "\nproperty broken: %s\n%s\n", property, detail.toLocal8Bit().constData());
    std::abort();
}

inline void Require(bool holds, const char* property, const QString& detail = QString()) {
    if (!holds) Broken(property, detail);
}

inline QByteArray Bytes(const uint8_t* data, size_t size) {
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

// One character per byte, as the radio's line and the program's files carry text.
inline QString Latin1(const uint8_t* data, size_t size) {
    return QString::fromLatin1(reinterpret_cast<const char*>(data), qsizetype(size));
}

// Two tables equal, or a finding that lists the cells in which they differ.
template <class Table> void RequireSame(const Table& got, const Table& due, const char* property) {
    if (got == due) return;
    QString text;
    if constexpr (requires { got.ChannelInUse(0); })
        for (int row = 0; row < Table::rows; ++row)
            if (got.ChannelInUse(row) != due.ChannelInUse(row))
                text += QStringLiteral("row %1 in use: %2, due %3\n")
                            .arg(row)
                            .arg(got.ChannelInUse(row))
                            .arg(due.ChannelInUse(row));
    for (int row = 0; row < Table::rows; ++row)
        for (int column = 0; column < Table::columns; ++column)
            if (!(got.cell(row, column) == due.cell(row, column)))
                text += QStringLiteral("row %1 column %2: \"%3\" %4, due \"%5\" %6\n")
                            .arg(row)
                            .arg(column)
                            .arg(got.text(row, column))
                            .arg(got.number(row, column), 0, 'g', 17)
                            .arg(due.text(row, column))
                            .arg(due.number(row, column), 0, 'g', 17);
    Broken(property, text);
}

} // namespace fuzz
