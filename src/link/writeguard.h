#pragma once
// The check before a clone file goes to a radio: a file made for another model variant or clone
// code than the radio's would put frequencies the radio cannot use into its memory.
#include "model/outcome.h"

#include <QString>
#include <QStringList>

namespace zq::model {
class Document;
}

namespace zq::link {

class SerialLink;

struct RadioIdentity {
    int variant = 0; // 0..2, as Auto Select selects it
    bool cloneCodeA = false;
};

// Auto Select on a scratch document: the radio's variant and clone code, with the caller's
// document left alone. A session of its own, failing as Auto Select does.
zq::model::Result IdentifyRadio(SerialLink& link, RadioIdentity& identity);

struct WriteCheck {
    bool matches = true;     // the document's variant and clone code are the radio's
    QString fileModel;       // "ZQ-318 E, clone code A"
    QString radioModel;      // the same for the radio
    QString radioBand;       // "(136.000-173.995MHz)"
    QStringList outsideBand; // "channel 12 (174.5000)", "VFO (175.0000)": what the radio's band excludes
};
WriteCheck CheckWrite(const zq::model::Document& document, const RadioIdentity& radio);

// "ZQ-318 E, clone code A", as zq318 detect prints it.
QString ModelText(int variant, bool cloneCodeA);

} // namespace zq::link
