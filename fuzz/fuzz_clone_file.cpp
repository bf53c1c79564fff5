// Whole clone files: parsing never crashes, and a file that parses applies without harm.
#include "files/clonefile.h"

#include <QByteArray>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zq;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const files::CloneReadResult read = files::ParseCloneFile(bytes);
    if (read.result.ok()) {
        static model::Document document;
        files::ApplyCloneImage(document, read.image);
    }
    return 0;
}
