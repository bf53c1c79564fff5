#pragma once
// Rows of text cells printed as left-aligned columns.
#include <QString>
#include <QStringList>

namespace zq::cli {

class TextTable {
public:
    explicit TextTable(QStringList headings) { rows_.append(std::move(headings)); }
    void addRow(QStringList cells) { rows_.append(std::move(cells)); }
    // One line per row, the heading first; columns two blanks apart, no trailing blanks.
    QStringList lines() const;

private:
    QList<QStringList> rows_;
};

} // namespace zq::cli
