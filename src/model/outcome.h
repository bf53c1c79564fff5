#pragma once
// How a command of the core ended. Errors cross from the core as values; the window shows the
// message in a box, the command-line tool prints it and exits with the matching status.
#include <QString>

namespace zq::model {

enum class Outcome {
    Done,
    Cancelled,          // the user cancelled a dialog: the command ends silently
    DataError,          // "Data Error": a clone file was rejected
    FileOpenError,      // "File Open Error": opening, reading or writing a file failed
    CommunicationError, // "Communication Error"
    ComPortError,       // "COM Port Error"
    Fatal,              // where the radio program ends with a run-time error report
};

struct Result {
    Outcome outcome = Outcome::Done;
    QString detail; // what went wrong, for logs and the command-line tool ("line 12: ...")
    int line = -1;  // the clone-file line at fault (0-based), when there is one

    bool ok() const { return outcome == Outcome::Done; }
    // The program's own message text: "Data Error", "File Open Error", "Communication Error",
    // "COM Port Error"; for Fatal the detail; empty for Done and Cancelled.
    QString message() const {
        switch (outcome) {
        case Outcome::Done:
        case Outcome::Cancelled:
            return QString();
        case Outcome::DataError:
            return QStringLiteral("Data Error");
        case Outcome::FileOpenError:
            return QStringLiteral("File Open Error");
        case Outcome::CommunicationError:
            return QStringLiteral("Communication Error");
        case Outcome::ComPortError:
            return QStringLiteral("COM Port Error");
        case Outcome::Fatal:
            return detail.isEmpty() ? QStringLiteral("Run-time error") : detail;
        }
        return QString();
    }
    static Result done() { return {}; }
    static Result fail(Outcome outcome, const QString& detail = QString(), int line = -1) {
        return Result{outcome, detail, line};
    }
};

} // namespace zq::model
