// Whole clone files of any bytes. A file that fails validation is turned away with its reason; one
// whose records cannot be decoded changes nothing. A file that loads saves back to a file that
// validates, keeps its settings and dial texts, and from then on every save and load gives the same
// bytes and the same stores.
#include "files/clonefile.h"
#include "fuzzcheck.h"
#include "model/tables.h"

using namespace zq;
using model::Document;

namespace {

QString Describe(const model::Result& result) {
    return result.message() + QStringLiteral(": ") + result.detail;
}

// Loads `bytes` the way Open does, onto a document holding the start-up data; false when it fails.
bool Load(Document& document, const QByteArray& bytes, const char* what) {
    static const model::Contents startup = Document().contents();
    document.replaceContents(startup);
    const files::CloneReadResult read = files::ParseCloneFile(bytes);
    if (!read.result.ok()) {
        fuzz::Require(!read.result.detail.isEmpty(), "a rejected file says why");
        return false;
    }
    fuzz::Require(read.image.lines.size() == files::kCloneFileLines, "a valid file has 419 lines");
    const model::Result applied = files::ApplyCloneImage(document, read.image);
    if (!applied.ok()) {
        fuzz::Require(applied.outcome == model::Outcome::FileOpenError, what, Describe(applied));
        fuzz::Require(document.contents() == startup, "a file that cannot be decoded changes nothing");
        return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Document loaded, reloaded;
    // Open keeps the selected variant and clone code; the save writes their header.
    const int variant = int(size % 5) - 1; // -1: no model option selected
    const bool cloneCodeA = size % 2;
    for (Document* document : {&loaded, &reloaded}) {
        document->setModelVariant(variant);
        document->setCloneCodeA(cloneCodeA);
    }
    if (!Load(loaded, fuzz::Bytes(data, size), "only a record that cannot be decoded fails a valid file"))
        return 0;

    const QByteArray saved = files::SerializeCloneFile(loaded);
    const files::CloneReadResult read = files::ParseCloneFile(saved);
    fuzz::Require(read.result.ok(), "a loaded file saves as a valid file", Describe(read.result));
    fuzz::Require(read.image.variant == (variant < 0 ? model::VariantA : variant) &&
                      read.image.cloneCodeA == cloneCodeA,
                  "the saved header is the selected variant's", read.image.lines.value(0));
    fuzz::Require(Load(reloaded, saved, "a saved file decodes"), "a saved file loads");
    const model::Contents& once = loaded.contents();
    fuzz::Require(reloaded.dialTexts() == once.dialTexts, "dial texts survive a save");
    fuzz::Require(reloaded.settingsBlock() == once.settingsBlock && reloaded.settings() == once.settings,
                  "settings survive a save");

    const QByteArray again = files::SerializeCloneFile(reloaded);
    fuzz::Require(again == saved, "a second save gives the same bytes");
    fuzz::Require(Load(loaded, again, "a saved file decodes"), "a saved file loads");
    fuzz::Require(loaded.contents() == reloaded.contents(), "a second load gives the same stores");
    return 0;
}
