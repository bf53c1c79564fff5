#pragma once
// The read-back comparison: reads every block a write of the document sends and compares it with
// what the write would send. What is compared is exactly those blocks: the identity block 0000, the
// bytes between the records and the template row are never written and never compared. Bytes are
// compared as bytes (the encoder's lower-case "5c" equals the radio's "5C"). A differing block is
// told field by field where the fields show the difference, else byte by byte.
#include "model/outcome.h"
#include "transfers.h"

#include <QList>
#include <QString>

namespace zq::model {
class Document;
}

namespace zq::link {

class SerialLink;

struct Difference {
    QString address; // the block, "0340"
    QString owner;   // "channel 10", "VFO", "CALL", "RPT", "settings", "autodial memory 3"
    QString field;   // a grid heading ("Frequency"), "in use", "text", a settings byte, "byte 5"
    QString inFile;  // what the write sends there, in the form the window shows
    QString inRadio; // what the radio holds, in the same form
};

struct VerifyReport {
    zq::model::Result result; // how the read-back itself went
    QList<Difference> differences;
    int blocksCompared = 0;
    bool same() const { return result.ok() && differences.isEmpty(); }
};

enum class VerifyScope { All, Settings, Memory };

// One read-only session: the blocks of Write Settings (unless Memory), then those of Write Memory
// (unless Settings), 10 ms apart, then the end command. Stops at the first failed read with the
// differences found so far. Works on a copy: the document is neither changed nor marked.
VerifyReport VerifyRadio(SerialLink& link, const zq::model::Document& document,
                         VerifyScope scope = VerifyScope::All, const StepProgress& progress = {});

// `0340 channel 10, Frequency: file "145.0000", radio "146.5200"`.
QString DifferenceText(const Difference& difference);

} // namespace zq::link
