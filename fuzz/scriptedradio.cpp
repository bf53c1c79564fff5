#include "scriptedradio.h"

#include <QMetaObject>
#include <cstring>

namespace fuzz {

using zq::link::LinkEvent;

ScriptedRadio::ScriptedRadio(const QByteArray& script) : script_(script) {}

int ScriptedRadio::nextByte() {
    return at_ < script_.size() ? static_cast<unsigned char>(script_[at_++]) : -1;
}

QByteArray ScriptedRadio::take(int count) {
    const QByteArray bytes = script_.mid(at_, count);
    at_ += bytes.size();
    return bytes;
}

QByteArray ScriptedRadio::genuineAnswer(const QByteArray& command) const {
    // A block read ("KV~F" + address + "R") answers its 16 bytes, everything else "OK".
    const bool blockRead = command.size() == 10 && command.startsWith("KV~F") && command.endsWith("R\r");
    QByteArray answer = command;
    if (blockRead) {
        QByteArray block = blockData_.left(16);
        block.append(QByteArray(16 - block.size(), '\0'));
        answer += block.toHex().toUpper();
    } else {
        answer += "OK";
    }
    return answer + "\r\n";
}

qint64 ScriptedRadio::writeData(const char* data, qint64 size) {
    const QByteArray command(data, size);
    commands_.append(QString::fromLatin1(command.endsWith('\r') ? command.chopped(1) : command));
    for (;;) {
        if (genuineLeft_ != 0) {
            if (genuineLeft_ > 0) --genuineLeft_;
            send(genuineAnswer(command));
            return size;
        }
        const int b = nextByte();
        if (b < 0) return size; // silence
        const int n = b & 31;
        switch (static_cast<Step>(b >> 5)) {
        case Step::Genuine:
            genuineLeft_ = n == 31 ? -1 : n + 1;
            blockData_ = take(16);
            continue;
        case Step::EchoAnd:
            send(command + take(qMax(0, nextByte())));
            return size;
        case Step::Raw:
            send(take(qMax(0, nextByte())));
            return size;
        case Step::Silence:
            return size;
        case Step::HangUp:
            if (n % 2) return -1;
            onLine_.push_back(Piece{QByteArray(), true});
            if (!arrivalPosted_) {
                arrivalPosted_ = true;
                QMetaObject::invokeMethod(this, &ScriptedRadio::arrive, Qt::QueuedConnection);
            }
            return size;
        case Step::Altered:
            send(altered(genuineAnswer(command), n));
            return size;
        case Step::Pieces:
            pieceSize_ = n == 31 ? 0 : n + 1;
            continue;
        case Step::Trailer:
            trailer_ = take(n + 1);
            continue;
        }
    }
}

QByteArray ScriptedRadio::altered(QByteArray answer, int how) {
    const qsizetype at = answer.size() - 1 - (how & 7);
    switch (how >> 3) {
    case 0:
        answer[at] = char(qMax(0, nextByte()));
        break;
    case 1:
        answer.insert(at, char(qMax(0, nextByte())));
        break;
    case 2:
        answer.remove(at, 1);
        break;
    default:
        answer += answer;
        break;
    }
    return answer;
}

void ScriptedRadio::send(const QByteArray& reply) {
    const qsizetype size = pieceSize_ > 0 ? pieceSize_ : qMax<qsizetype>(reply.size(), 1);
    for (qsizetype at = 0; at < reply.size(); at += size)
        onLine_.push_back(Piece{reply.mid(at, size)});
    if (!onLine_.empty() && !arrivalPosted_) {
        arrivalPosted_ = true;
        QMetaObject::invokeMethod(this, &ScriptedRadio::arrive, Qt::QueuedConnection);
    }
}

// One piece arrives per pass of the event loop, as a serial port's input comes in bursts.
void ScriptedRadio::arrive() {
    arrivalPosted_ = false;
    if (onLine_.empty()) return;
    const Piece piece = onLine_.front();
    onLine_.pop_front();
    if (!onLine_.empty()) {
        arrivalPosted_ = true;
        QMetaObject::invokeMethod(this, &ScriptedRadio::arrive, Qt::QueuedConnection);
    }
    if (piece.hangUp) {
        hangUp();
        return;
    }
    input_ += piece.bytes;
    Q_EMIT readyRead();
}

void ScriptedRadio::hangUp() {
    if (hungUp_) return;
    hungUp_ = true;
    onLine_.clear();
    close();
}

void ScriptedRadio::observe(const LinkEvent& event) {
    using Kind = LinkEvent::Kind;
    if (event.kind != Kind::Replied && event.kind != Kind::TimedOut && event.kind != Kind::PortError) return;
    // The link has stopped listening: what was still on the line arrives unread, for the next
    // command to discard. A pulled cable still comes out on the next pass of the event loop.
    while (!onLine_.empty() && !onLine_.front().hangUp) {
        input_ += onLine_.front().bytes;
        onLine_.pop_front();
    }
    if (!hungUp_) input_ += trailer_;
    trailer_.clear();
}

qint64 ScriptedRadio::readData(char* data, qint64 maxSize) {
    const qint64 count = qMin<qint64>(maxSize, input_.size());
    std::memcpy(data, input_.constData(), size_t(count));
    input_.remove(0, count);
    return count;
}

} // namespace fuzz
