// DTMF autodial memories. A record of any text reads back as at most 16 dial characters; those
// encode to a 16-byte record that reads back as the same text. Any text typed or pasted into a dial
// box encodes to a record that reads back as its dial characters, upper-cased, in order.
#include "fuzzcheck.h"
#include "model/dialcodec.h"

using namespace zq::model;

namespace {

const QString kAlphabet = QStringLiteral("0123456789ABCD*#-");

QString DialCharacters(const QString& text) {
    QString kept;
    for (const QChar c : text.toUpper())
        if (kAlphabet.contains(c)) kept += c;
    return kept;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString input = fuzz::Latin1(data, size);

    const QString text = UpDateDialData(input);
    fuzz::Require(text.size() <= kDialMaxLength, "a record holds at most 16 characters", text);
    fuzz::Require(DialCharacters(text) == text, "a record reads as dial characters only", text);
    const QString record = MakeDialData(text);
    fuzz::Require(record.size() == 32, "a text of up to 16 characters is a 16-byte record", record);
    fuzz::Require(UpDateDialData(record) == text, "a record of a text reads back as the text", record);

    const QString typed = DialCharacters(input);
    const QString pasted = MakeDialData(input);
    fuzz::Require(pasted.size() == qMax(32, 2 * int(typed.size())), "two digits per dial character", pasted);
    fuzz::Require(UpDateDialData(pasted) == typed.left(kDialMaxLength), "pasted text reads back", pasted);

    for (const QChar key : input) {
        const DialKeyResult result = FilterDialKey(key);
        if (result.action != DialKeyAction::Accept || result.character == QLatin1Char('\b')) continue;
        fuzz::Require(DialCharacters(result.character) == QString(result.character),
                      "an accepted key is a dial character", QString(key));
    }
    return 0;
}
