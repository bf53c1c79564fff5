#pragma once
// What zq318 tells about a CSV import: the lines it could not use, and a "Data Error" when the file
// held nothing to import (an empty, binary or semicolon-separated file would otherwise give a clone
// file of unchanged data and success).
#include "files/csvexchange.h"
#include "model/outcome.h"

namespace zq::cli {

// Done when at least one record was imported, else a "Data Error" saying why.
model::Result ImportFound(const files::CsvImportReport& report, const QString& path);
// One line on standard error per line at fault ("FILE:LINE: ..."), a few of each kind.
void PrintImportReport(const files::CsvImportReport& report, const QString& path);

} // namespace zq::cli
