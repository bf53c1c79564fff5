#include "dialcodec.h"

#include "numeric.h"

namespace zq::model {

QString UpDateDialData(const QString& record) {
    static const char* const alphabet = "0123456789ABCD*#-"; // bytes 0x30..0x40
    QString text;
    for (int i = 0; i < 16; ++i) {
        const QString byte = record.mid(2 * i, 2);
        if (byte.isEmpty()) break;
        const int value = HexValue(byte);
        if (value >= 0x30 && value <= 0x40) text += QLatin1Char(alphabet[value - 0x30]);
    }
    return text;
}

QString MakeDialData(const QString& text) {
    QString record;
    for (const QChar c : text.toUpper()) {
        const char16_t u = c.unicode();
        if (u == u'#')
            record += QStringLiteral("3F");
        else if (u == u'*')
            record += QStringLiteral("3E");
        else if (u == u'-')
            record += QStringLiteral("40");
        else if (u >= u'0' && u <= u'9')
            record += HexByte(u);
        else if (u >= u'A' && u <= u'D')
            record += HexByte(u - 7);
    }
    while (record.size() < 32)
        record += QLatin1Char('0');
    return record;
}

DialKeyResult FilterDialKey(QChar key) {
    const char16_t u = key.unicode();
    if (u == u'\b') return {DialKeyAction::Accept, key};
    if (u == u'\r' || u == u'\n') return {DialKeyAction::NextBox, QChar()};
    if (u == u'#' || u == u'*' || u == u'-' || (u >= u'0' && u <= u'9') || (u >= u'A' && u <= u'D'))
        return {DialKeyAction::Accept, key};
    if (u >= u'a' && u <= u'd') return {DialKeyAction::Accept, key.toUpper()};
    return {DialKeyAction::Reject, QChar()};
}

int NextDialBox(int box) {
    return box >= 8 ? 0 : box + 1;
}

} // namespace zq::model
