// CSV text of any shape imports onto the document without harm.
#include "files/csvexchange.h"

#include <QByteArray>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zq;
    static model::Document document;
    files::ImportCsvText(document, QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
