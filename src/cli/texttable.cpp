#include "texttable.h"

#include <algorithm>

namespace zq::cli {

QStringList TextTable::lines() const {
    QList<qsizetype> widths;
    for (const QStringList& row : rows_) {
        for (qsizetype column = 0; column < row.size(); ++column) {
            if (column >= widths.size()) widths.append(0);
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    QStringList out;
    for (const QStringList& row : rows_) {
        QString line;
        for (qsizetype column = 0; column < row.size(); ++column) {
            if (column > 0) line += QStringLiteral("  ");
            line += row[column].leftJustified(widths[column]);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        out.append(line);
    }
    return out;
}

} // namespace zq::cli
