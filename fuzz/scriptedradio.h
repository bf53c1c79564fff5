#pragma once
// A radio at the far end of a QIODevice that answers each command the link writes from a script of
// bytes, so that any byte string is a radio's behaviour over a whole session. Replies arrive through
// the event loop like a serial port's input. The script is read one step per command:
//
//   byte b, kind = b >> 5, n = b & 31
//   0  genuine answers to this and the next n commands (n = 31: to every command from here on); a
//      block read's 16 data bytes are the next 16 script bytes
//   1  the echoed command followed by the next L script bytes, L being the byte after b
//   2  the next L script bytes alone, L being the byte after b
//   3  silence
//   4  hang-up: the cable is pulled while the reply is awaited (n even) or the write fails (n odd)
//   5  the genuine answer altered k = n & 7 characters from its end (0: the last): n >> 3 = 0 replaces
//      that character by the next byte, 1 inserts the next byte before it, 2 deletes it, 3 sends the
//      answer twice
//   6  from now on replies arrive in pieces of n + 1 characters (n = 31: whole); then the next step
//   7  the next reply is trailed by the next n + 1 bytes, arriving once the link has stopped
//      waiting (left over for the next command); then the next step
//
// A script that has run out is silence.
#include "link/seriallink.h"

#include <QByteArray>
#include <QIODevice>
#include <QStringList>
#include <deque>

namespace fuzz {

class ScriptedRadio : public QIODevice {
    Q_OBJECT
public:
    explicit ScriptedRadio(const QByteArray& script);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return input_.size() + QIODevice::bytesAvailable(); }

    // To be called from the link's observer: an exchange that ended makes whatever was still on
    // the line arrive (and a pulled cable come out), and the trailer of its reply follow.
    void observe(const zq::link::LinkEvent& event);

    // Each command as written, without its CR.
    const QStringList& commands() const { return commands_; }
    bool hungUp() const { return hungUp_; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    struct Piece {
        QByteArray bytes;
        bool hangUp = false;
    };
    enum class Step { Genuine, EchoAnd, Raw, Silence, HangUp, Altered, Pieces, Trailer };

    int nextByte(); // -1 once the script has run out
    QByteArray take(int count);
    QByteArray genuineAnswer(const QByteArray& command) const;
    QByteArray altered(QByteArray answer, int how);
    void send(const QByteArray& reply);
    void arrive();
    void hangUp();

    const QByteArray script_;
    qsizetype at_ = 0;
    QStringList commands_;
    QByteArray input_;         // arrived, waiting to be read
    std::deque<Piece> onLine_; // sent, not arrived yet
    bool arrivalPosted_ = false;
    int pieceSize_ = 0; // 0: a reply arrives whole
    QByteArray trailer_;
    int genuineLeft_ = 0; // -1: for ever
    QByteArray blockData_;
    bool hungUp_ = false;
};

} // namespace fuzz
