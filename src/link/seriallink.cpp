#include "seriallink.h"

#include "portaccess.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QSerialPort>
#include <QTimer>
#include <algorithm>

#include <cerrno>

namespace zq::link {

Q_LOGGING_CATEGORY(lcLink, "zq318.link", QtWarningMsg)

using zq::model::Outcome;
using zq::model::Result;

namespace {

// Runs a nested event loop until `deadline` has passed or `loop` is quit by someone else. The timer
// is re-armed if it fires early, so a pause is never shorter than asked.
void RunUntil(QEventLoop& loop, const QDeadlineTimer& deadline) {
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    const auto remainingMs = [&deadline] {
        const qint64 ns = deadline.remainingTimeNSecs();
        return ns <= 0 ? 0 : int((ns + 999999) / 1000000);
    };
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (deadline.hasExpired())
            loop.quit();
        else
            timer.start(remainingMs());
    });
    timer.start(remainingMs());
    loop.exec();
}

bool ReplyComplete(const QString& command, const QString& reply) {
    return reply.size() > command.size() + 1 + 3 && reply.endsWith(QLatin1Char('\n'));
}

} // namespace

SerialLink::SerialLink(QObject* parent) : QObject(parent), port_(new QSerialPort(this)) {}

SerialLink::~SerialLink() = default;

void SerialLink::setTransport(QIODevice* device) {
    transport_ = device;
}

QIODevice* SerialLink::io() const {
    return transport_ ? transport_ : static_cast<QIODevice*>(port_);
}

void SerialLink::notify(LinkEvent::Kind kind, const QString& text, int ms) const {
    if (observer_) observer_(LinkEvent{kind, text, ms});
}

void SerialLink::setPortName(const QString& device) {
    device_ = device;
    port_->setPortName(device);
}

QString SerialLink::portName() const {
    return device_;
}

Result SerialLink::open() {
    if (aborted_) return Result::fail(Outcome::ComPortError, QStringLiteral("the link was given up"));
    if (transport_) {
        if (!transport_->isOpen())
            return Result::fail(Outcome::ComPortError, QStringLiteral("transport closed"));
        return Result::done();
    }
    if (port_->isOpen()) return Result::done();
    port_->clearError();
    if (device_.isEmpty())
        return Result::fail(Outcome::ComPortError, QStringLiteral("no serial port chosen"));
    if (!port_->open(QIODevice::ReadWrite)) {
        const int savedErrno = errno;
        const PortProbe probe =
            ExplainOpenFailure(ProbePort(device_), port_->error(), savedErrno, port_->errorString());
        const QString why = AccessAdvice(probe);
        port_->clearError();
        notify(LinkEvent::Kind::OpenFailed, QStringLiteral("%1: %2").arg(device_, why));
        return Result::fail(Outcome::ComPortError, QStringLiteral("cannot open %1: %2").arg(device_, why));
    }
    const bool lineSet = port_->setBaudRate(QSerialPort::Baud9600) &&
                         port_->setDataBits(QSerialPort::Data8) && port_->setParity(QSerialPort::NoParity) &&
                         port_->setStopBits(QSerialPort::OneStop) &&
                         port_->setFlowControl(QSerialPort::NoFlowControl);
    if (!lineSet) {
        const QString why = port_->errorString();
        port_->close();
        port_->clearError();
        notify(LinkEvent::Kind::OpenFailed, QStringLiteral("%1: %2").arg(device_, why));
        return Result::fail(Outcome::ComPortError, QStringLiteral("cannot set up %1: %2").arg(device_, why));
    }
    // The cable draws its power from DTR and RTS; a pseudo-terminal has neither line, which is fine.
    port_->setDataTerminalReady(true);
    port_->setRequestToSend(true);
    port_->clearError();
    qCDebug(lcLink) << "opened" << device_;
    notify(LinkEvent::Kind::Opened, device_);
    return Result::done();
}

bool SerialLink::isOpen() const {
    return io()->isOpen();
}

void SerialLink::close() {
    if (transport_) return; // the scripted stream belongs to whoever set it
    if (port_->isOpen()) {
        qCDebug(lcLink) << "closed" << device_;
        port_->close();
        notify(LinkEvent::Kind::Closed);
    }
    port_->clearError();
}

SerialLink::Ending SerialLink::exchange(const QString& command, int timeoutMs,
                                        const std::function<bool(const QString&)>& complete,
                                        const std::function<void(const QString&)>& arrived, QString& reply) {
    reply.clear();
    QIODevice* const io = this->io();
    if (aborted_ || !io->isOpen()) return Ending::PortError;
    if (!transport_) port_->clearError();

    QEventLoop loop;
    Ending ending = Ending::TimedOut;
    // Anything left over from an earlier exchange is not part of this reply.
    io->readAll();
    if (!transport_ && !port_->clear(QSerialPort::Input)) ending = Ending::PortError;

    const QDeadlineTimer deadline(timeoutMs, Qt::PreciseTimer);
    connect(io, &QIODevice::readyRead, &loop, [&] {
        if (ending != Ending::TimedOut) return;
        const QString chunk = QString::fromLatin1(io->readAll());
        notify(LinkEvent::Kind::Received, chunk);
        reply += chunk;
        if (arrived) arrived(reply);
        if (complete(reply)) {
            ending = Ending::Complete;
            loop.quit();
        }
    });
    if (transport_) {
        connect(io, &QIODevice::aboutToClose, &loop, [&] {
            if (ending != Ending::TimedOut) return;
            ending = Ending::PortError;
            loop.quit();
        });
    } else {
        connect(port_, &QSerialPort::errorOccurred, &loop, [&](QSerialPort::SerialPortError error) {
            if (error == QSerialPort::NoError || ending != Ending::TimedOut) return;
            ending = Ending::PortError;
            loop.quit();
        });
    }
    connect(this, &SerialLink::aborting, &loop, [&] {
        if (ending != Ending::TimedOut) return;
        ending = Ending::PortError;
        loop.quit();
    });

    const QByteArray bytes = command.toLatin1() + '\r';
    notify(LinkEvent::Kind::Sent, QString::fromLatin1(bytes));
    // Written at once rather than on the port's next write notification: one wake-up less per command.
    if (ending == Ending::TimedOut && io->write(bytes) != bytes.size()) ending = Ending::PortError;
    if (ending == Ending::TimedOut && !transport_ && !port_->flush()) ending = Ending::PortError;
    if (ending == Ending::TimedOut) RunUntil(loop, deadline);

    switch (ending) {
    case Ending::Complete:
        notify(LinkEvent::Kind::Replied, reply);
        break;
    case Ending::TimedOut:
        notify(LinkEvent::Kind::TimedOut, reply);
        break;
    case Ending::PortError: {
        const QString why = io->errorString();
        qCDebug(lcLink) << "port error on" << device_ << ":" << why;
        notify(LinkEvent::Kind::PortError, why);
        // A port that failed (a pulled cable) is opened afresh by the next transfer.
        if (!transport_) {
            port_->close();
            port_->clearError();
            notify(LinkEvent::Kind::Closed);
        }
        break;
    }
    }
    return ending;
}

QString SerialLink::SendCommand(const QString& command) {
    QString reply;
    const Ending ending = exchange(
        command, replyTimeoutMs_, [&command](const QString& text) { return ReplyComplete(command, text); },
        {}, reply);
    QString result;
    switch (ending) {
    case Ending::Complete:
        result = reply;
        break;
    case Ending::TimedOut:
        result = kTimeoutMarker;
        break;
    case Ending::PortError:
        result = kPortErrorMarker;
        break;
    }
    qCDebug(lcLink) << "sent" << command << "got" << result;
    return result;
}

QString SerialLink::Collect(const QString& command, int timeoutMs,
                            const std::function<bool(const QString&)>& complete,
                            const std::function<void(const QString&)>& arrived) {
    QString reply;
    exchange(command, timeoutMs, complete, arrived, reply);
    qCDebug(lcLink).noquote() << "sent" << command << "collected" << reply.size() << "characters";
    return reply;
}

void SerialLink::Wait(int ms) {
    if (ms <= 0 || aborted_) return;
    notify(LinkEvent::Kind::Paused, QString(), ms);
    ms = std::min(ms, pauseLimitMs_);
    if (ms <= 0) return;
    QEventLoop loop;
    connect(this, &SerialLink::aborting, &loop, &QEventLoop::quit);
    RunUntil(loop, QDeadlineTimer(ms, Qt::PreciseTimer));
}

void SerialLink::abort() {
    if (aborted_) return;
    aborted_ = true;
    qCDebug(lcLink) << "aborted on" << device_;
    Q_EMIT aborting();
    close();
}

void SerialLink::TxEnd() {
    SendCommand(QStringLiteral("KV~E"));
    Wait(kCommandPauseMs);
}

} // namespace zq::link
