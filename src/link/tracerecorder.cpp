#include "tracerecorder.h"

#include "files/userdata.h"

#include <QDateTime>

namespace zq::link {

using zq::model::Outcome;
using zq::model::Result;

namespace {

// Control characters spelt out, so that CR and LF show where they are.
QString Visible(const QString& text) {
    QString shown;
    for (const QChar c : text) {
        if (c == QLatin1Char('\r'))
            shown += QStringLiteral("\\r");
        else if (c == QLatin1Char('\n'))
            shown += QStringLiteral("\\n");
        else if (c == QLatin1Char('\\'))
            shown += QStringLiteral("\\\\");
        else if (c.unicode() < 0x20 || c.unicode() >= 0x7F)
            shown += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            shown += c;
    }
    return shown;
}

} // namespace

TraceRecorder::~TraceRecorder() {
    detach();
    if (file_.isOpen()) finish(QStringLiteral("not told (the program ended)"));
}

Result TraceRecorder::start(const QString& path, const QString& heading) {
    detach();
    file_.close();
    file_.setFileName(path);
    lost_ = false;
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text,
                    QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, file_.errorString()));
    const QString started = QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
    file_.write(QStringLiteral("# serial trace, started %1\n").arg(started).toUtf8());
    if (!heading.isEmpty()) file_.write(QStringLiteral("# %1\n").arg(heading).toUtf8());
    file_.flush();
    return Result::done();
}

Result TraceRecorder::startInTraceFolder(const QString& operation, const QString& heading) {
    QString why;
    const QString folder = zq::files::UserDataFolder(QStringLiteral("traces"), &why);
    if (folder.isEmpty()) return Result::fail(Outcome::FileOpenError, why);
    const QString path = zq::files::FreshTimestampedPath(folder, QDateTime::currentDateTime(), {operation},
                                                         QStringLiteral(".txt"));
    const Result started = start(path, heading);
    if (started.ok()) zq::files::KeepNewest(folder, {QStringLiteral("*.txt")}, kTracesKept);
    return started;
}

void TraceRecorder::attach(SerialLink& link) {
    detach();
    link_ = &link;
    link.setObserver([this](const LinkEvent& event) { record(event); });
}

void TraceRecorder::detach() {
    if (link_) link_->setObserver({});
    link_ = nullptr;
}

Result TraceRecorder::finish(const QString& outcome) {
    detach();
    if (!file_.isOpen()) return Result::done();
    write(QStringLiteral("outcome"), outcome);
    file_.close();
    if (lost_)
        return Result::fail(
            Outcome::FileOpenError,
            QStringLiteral("%1: lines of the trace could not be written").arg(file_.fileName()));
    return Result::done();
}

QString TraceRecorder::OutcomeText(const Result& result) {
    if (result.ok()) return QStringLiteral("done");
    if (result.outcome == Outcome::Cancelled) return QStringLiteral("cancelled");
    const QString message = result.message();
    if (result.detail.isEmpty() || result.detail == message) return message;
    return message + QStringLiteral(": ") + result.detail;
}

void TraceRecorder::record(const LinkEvent& event) {
    using Kind = LinkEvent::Kind;
    switch (event.kind) {
    case Kind::Opened:
        write(QStringLiteral("opened"), event.text);
        break;
    case Kind::OpenFailed:
        write(QStringLiteral("open failed"), event.text);
        break;
    case Kind::Sent:
        lastCommand_ = event.text;
        sinceSent_.start();
        write(QStringLiteral("sent"), Visible(event.text));
        break;
    case Kind::Received:
        write(QStringLiteral("received"), Visible(event.text));
        break;
    case Kind::Replied:
        // The characters themselves are on the "received" lines above.
        write(QStringLiteral("reply"), QStringLiteral("complete, %1 characters after %2 ms")
                                           .arg(event.text.size())
                                           .arg(sinceSent_.elapsed()));
        break;
    case Kind::TimedOut:
        write(QStringLiteral("time-out"),
              QStringLiteral("no complete reply to %1 after %2 ms; received %3")
                  .arg(Visible(lastCommand_))
                  .arg(sinceSent_.elapsed())
                  .arg(event.text.isEmpty() ? QStringLiteral("nothing")
                                            : QLatin1Char('"') + Visible(event.text) + QLatin1Char('"')));
        break;
    case Kind::PortError:
        write(QStringLiteral("port error"),
              QStringLiteral("%1 (during %2)").arg(event.text, Visible(lastCommand_)));
        break;
    case Kind::Paused:
        write(QStringLiteral("pause"), QStringLiteral("%1 ms").arg(event.ms));
        break;
    case Kind::Closed:
        write(QStringLiteral("closed"), QString());
        break;
    }
}

void TraceRecorder::write(const QString& what, const QString& text) {
    if (!file_.isOpen()) return;
    const QString line =
        QStringLiteral("%1  %2 %3\n")
            .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")), what.leftJustified(11), text);
    const QByteArray bytes = line.toUtf8();
    // Flushed line by line: a trace is read when something went wrong, perhaps the program itself.
    if (file_.write(bytes) != bytes.size() || !file_.flush()) lost_ = true;
}

} // namespace zq::link
