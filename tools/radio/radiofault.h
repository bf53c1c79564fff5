#pragma once
// The ways the virtual radio can get one exchange wrong.
#include <QString>
#include <optional>

namespace zq::radio {

struct Fault {
    enum class Kind {
        Timeout,   // echo, then silence
        Short,     // one character of the answer missing
        Garble,    // wrong digits, right length
        Ng,        // answered "NG"
        Hangup,    // the pseudo-terminal is closed
        Drop,      // a write answered "OK" but not stored
        SilentEnd, // no answer to the end command
    };
    Kind kind;
    QString target; // a block address ("0FE0"), "model" or "end"
    bool operator==(const Fault&) const = default;
};

// "timeout@0FE0", "ng@model", "silent-end"; nothing for anything else.
std::optional<Fault> ParseFault(const QString& text);

} // namespace zq::radio
