#include "radiofault.h"

#include <QRegularExpression>

namespace zq::radio {

std::optional<Fault> ParseFault(const QString& text) {
    if (text == QLatin1String("silent-end")) return Fault{Fault::Kind::SilentEnd, QStringLiteral("end")};
    static const QRegularExpression form(
        QStringLiteral("^(timeout|short|garble|ng|hangup|drop)@([0-9A-Fa-f]{4}|model|end)$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return std::nullopt;
    const QString kind = match.captured(1);
    Fault fault{Fault::Kind::Timeout, match.captured(2)};
    if (fault.target.size() == 4 && fault.target != QLatin1String("end"))
        fault.target = fault.target.toUpper();
    if (kind == QLatin1String("short"))
        fault.kind = Fault::Kind::Short;
    else if (kind == QLatin1String("garble"))
        fault.kind = Fault::Kind::Garble;
    else if (kind == QLatin1String("ng"))
        fault.kind = Fault::Kind::Ng;
    else if (kind == QLatin1String("hangup"))
        fault.kind = Fault::Kind::Hangup;
    else if (kind == QLatin1String("drop"))
        fault.kind = Fault::Kind::Drop;
    return fault;
}

} // namespace zq::radio
