#pragma once
// The one path to the radio: one ASCII command at a time, the reply collected until it is complete
// or its time runs out. Every wait runs a nested event loop, so the window keeps repainting.
#include "model/outcome.h"

#include <QLoggingCategory>
#include <QObject>
#include <QString>
#include <functional>
#include <limits>

class QIODevice;
class QSerialPort;

namespace zq::link {

Q_DECLARE_LOGGING_CATEGORY(lcLink)

// What SendCommand returns instead of a reply; no genuine reply can equal either.
inline const QString kTimeoutMarker = QStringLiteral("False01");
inline const QString kPortErrorMarker = QStringLiteral("False00");

inline constexpr int kReplyTimeoutMs = 2000;
inline constexpr int kCommandPauseMs = 10;

// One thing that happened on the link, as a trace records it.
struct LinkEvent {
    enum class Kind {
        Opened,     // text: the device
        OpenFailed, // text: the device and why
        Sent,       // text: the command as written, CR included
        Received,   // text: the characters of one arrival
        Replied,    // text: the whole reply (echo included) once the exchange ended complete
        TimedOut,   // text: what arrived before the time ran out
        PortError,  // text: why
        Paused,     // ms: the pause asked for
        Closed,
    };
    Kind kind;
    QString text;
    int ms = 0;
};
using LinkObserver = std::function<void(const LinkEvent&)>;

class SerialLink : public QObject {
    Q_OBJECT
public:
    explicit SerialLink(QObject* parent = nullptr);
    ~SerialLink() override;

    void setPortName(const QString& device);
    QString portName() const;

    // Talks over `device` instead of the serial port (a scripted stream of replies); not owned,
    // null goes back to the serial port. The device must be open; closing it is a hang-up.
    void setTransport(QIODevice* device);
    // Sees every event on the link; empty to stop.
    void setObserver(LinkObserver observer) { observer_ = std::move(observer); }
    // The reply time-out; shortened only by fuzz targets and tests, which would otherwise wait for real.
    void setReplyTimeoutMs(int ms) { replyTimeoutMs_ = ms; }
    int replyTimeoutMs() const { return replyTimeoutMs_; }
    // Pauses last at most this long (0: none); the observer still sees the pause asked for. For the
    // fuzz targets, which would otherwise spend seconds per memory transfer pausing.
    void setPauseLimitMs(int ms) { pauseLimitMs_ = ms; }

    // 9600 baud, 8 data bits, no parity, one stop bit, no flow control, DTR and RTS raised.
    zq::model::Result open();
    bool isOpen() const;
    void close();
    // Gives up for good: the exchange or pause under way ends at once as a port failure, the port
    // closes, and every later open, exchange and pause fails or returns at once. For a program that
    // must end in the middle of a transfer.
    void abort();
    bool aborted() const { return aborted_; }

    // Sends the command followed by CR and returns everything received (echo included) once it is
    // longer than the command plus three characters and ends in LF; kTimeoutMarker when that does
    // not happen within 2000 ms (the reply time-out), kPortErrorMarker when the port fails.
    QString SendCommand(const QString& command);

    // The service panel's exchange: sends the command followed by CR and collects for `timeoutMs`,
    // stopping early once `complete` accepts the text. Returns whatever arrived; `arrived` sees the
    // text after every chunk.
    QString Collect(const QString& command, int timeoutMs,
                    const std::function<bool(const QString&)>& complete,
                    const std::function<void(const QString&)>& arrived = {});

    // Lets events run for at least `ms` milliseconds.
    void Wait(int ms);
    // Ends a clone session: "KV~E", whatever comes back, then the usual pause.
    void TxEnd();

Q_SIGNALS:
    void aborting();

private:
    enum class Ending { Complete, TimedOut, PortError };
    Ending exchange(const QString& command, int timeoutMs,
                    const std::function<bool(const QString&)>& complete,
                    const std::function<void(const QString&)>& arrived, QString& reply);

    QIODevice* io() const;
    void notify(LinkEvent::Kind kind, const QString& text = QString(), int ms = 0) const;

    QSerialPort* port_;
    QIODevice* transport_ = nullptr;
    QString device_; // as given: QSerialPort keeps only the name under /dev
    LinkObserver observer_;
    int replyTimeoutMs_ = kReplyTimeoutMs;
    int pauseLimitMs_ = std::numeric_limits<int>::max();
    bool aborted_ = false;
};

} // namespace zq::link
