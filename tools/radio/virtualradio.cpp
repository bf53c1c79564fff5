#include "virtualradio.h"

#include <QSocketNotifier>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/timerfd.h>
#include <termios.h>
#include <unistd.h>

namespace zq::radio {

using zq::model::Outcome;
using zq::model::Result;

namespace {

constexpr int kMaxCommandLength = 256; // a longer line is noise; it is dropped
const QString kOk = QStringLiteral("OK");
const QString kNg = QStringLiteral("NG");

bool IsHex(const QString& text) {
    for (const QChar c : text)
        if (!c.isDigit() && !(c >= QLatin1Char('A') && c <= QLatin1Char('F')) &&
            !(c >= QLatin1Char('a') && c <= QLatin1Char('f')))
            return false;
    return true;
}

// A block address: four hex digits naming a 16-byte block inside the memory map; -1 otherwise.
int BlockAddress(const QString& digits) {
    if (digits.size() != 4 || !IsHex(digits)) return -1;
    const int address = digits.toInt(nullptr, 16);
    return (address % kBlockSize == 0 && address < kMemorySize) ? address : -1;
}

// Characters reach the far end in groups, as a UART's receive FIFO or a USB cable's latency timer
// hands them over; none arrives before its last bit has gone down the line.
constexpr qint64 kDeliveryChunk = 16;

qint64 MonotonicNs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

QChar Inverted(QChar digit) {
    const int value = QString(digit).toInt(nullptr, 16);
    return QString::number(15 - value, 16).toUpper().at(0);
}

} // namespace

VirtualRadio::VirtualRadio(QObject* parent) : QObject(parent), memory_(kMemorySize, '\0') {
    clock_.start();
    setModelCode(kModelCodeT);
}

VirtualRadio::~VirtualRadio() {
    hangUp();
    delete paceNotifier_;
    if (paceFd_ >= 0) ::close(paceFd_);
}

Result VirtualRadio::open() {
    if (isOpen()) return Result::done();
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master < 0)
        return Result::fail(Outcome::ComPortError, QStringLiteral("no pseudo-terminal available"));
    char name[128] = {};
    if (grantpt(master) != 0 || unlockpt(master) != 0 || ptsname_r(master, name, sizeof name) != 0) {
        ::close(master);
        return Result::fail(Outcome::ComPortError, QStringLiteral("cannot set up the pseudo-terminal"));
    }
    const int holder = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (holder < 0) {
        ::close(master);
        return Result::fail(Outcome::ComPortError,
                            QStringLiteral("cannot open %1").arg(QString::fromLocal8Bit(name)));
    }
    // Raw bytes both ways: no echo, no line editing, no CR/LF translation.
    termios settings{};
    if (tcgetattr(holder, &settings) == 0) {
        cfmakeraw(&settings);
        cfsetspeed(&settings, B9600);
        tcsetattr(holder, TCSANOW, &settings);
    }
    fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
    master_ = master;
    holder_ = holder;
    devicePath_ = QString::fromLocal8Bit(name);
    readNotifier_ = new QSocketNotifier(master_, QSocketNotifier::Read, this);
    connect(readNotifier_, &QSocketNotifier::activated, this, &VirtualRadio::readAvailable);
    writeNotifier_ = new QSocketNotifier(master_, QSocketNotifier::Write, this);
    writeNotifier_->setEnabled(false);
    connect(writeNotifier_, &QSocketNotifier::activated, this, &VirtualRadio::writePending);
    return Result::done();
}

void VirtualRadio::hangUp() {
    pacing_ = false;
    burstSent_ = 0;
    if (paceNotifier_) paceNotifier_->setEnabled(false);
    delete readNotifier_;
    readNotifier_ = nullptr;
    delete writeNotifier_;
    writeNotifier_ = nullptr;
    if (master_ >= 0) ::close(master_);
    if (holder_ >= 0) ::close(holder_);
    master_ = holder_ = -1;
    output_.clear();
    input_.clear();
}

Result VirtualRadio::setLogFile(const QString& path) {
    log_.close();
    log_.setFileName(path);
    if (!log_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text | QIODevice::Unbuffered))
        return Result::fail(Outcome::FileOpenError, QStringLiteral("cannot write %1").arg(path));
    return Result::done();
}

QString VirtualRadio::blockHex(int address) const {
    if (address < 0 || address % kBlockSize != 0 || address >= kMemorySize) return QString();
    return QString::fromLatin1(memory_.mid(address, kBlockSize).toHex().toUpper());
}

bool VirtualRadio::setBlockHex(int address, const QString& digits) {
    if (address < 0 || address % kBlockSize != 0 || address >= kMemorySize) return false;
    if (digits.size() != 2 * kBlockSize || !IsHex(digits)) return false;
    const QByteArray bytes = QByteArray::fromHex(digits.toLatin1());
    memory_.replace(address, kBlockSize, bytes);
    return true;
}

void VirtualRadio::readAvailable() {
    char buffer[512];
    for (;;) {
        const ssize_t count = ::read(master_, buffer, sizeof buffer);
        if (count <= 0) break;
        for (ssize_t i = 0; i < count; ++i) {
            if (buffer[i] == '\r') {
                const QString command = QString::fromLatin1(input_);
                input_.clear();
                handle(command);
                if (!isOpen()) return; // hung up while handling
            } else if (input_.size() < kMaxCommandLength) {
                input_ += buffer[i];
            } else {
                input_.clear();
            }
        }
    }
}

std::optional<Fault> VirtualRadio::takeFault(const QString& target) {
    for (auto it = faults_.begin(); it != faults_.end(); ++it) {
        if (it->target == target) {
            const Fault taken = *it;
            faults_.erase(it); // each fault spoils one exchange
            return taken;
        }
    }
    return std::nullopt;
}

void VirtualRadio::handle(const QString& command) {
    commands_ << command;
    if (log_.isOpen()) log_.write(QStringLiteral("%1\t%2\n").arg(clock_.elapsed()).arg(command).toLatin1());
    Q_EMIT commandReceived(command);

    QString target;
    if (command == QLatin1String("ZQ318"))
        target = QStringLiteral("model");
    else if (command == QLatin1String("KV~E"))
        target = QStringLiteral("end");
    else if (command.startsWith(QLatin1String("KV~F")))
        target = command.mid(4, 4).toUpper();
    const std::optional<Fault> fault = target.isEmpty() ? std::nullopt : takeFault(target);
    const Fault::Kind kind = fault ? fault->kind : Fault::Kind::Timeout;

    if (fault && kind == Fault::Kind::Hangup) {
        hangUp();
        return;
    }
    const QByteArray echo = command.toLatin1() + '\r';
    if (fault && (kind == Fault::Kind::Timeout || kind == Fault::Kind::SilentEnd)) {
        send(echo);
        return;
    }

    QString reply;
    const bool write = command.size() > 8 && command.at(8) == QLatin1Char('W');
    if (fault && kind == Fault::Kind::Ng)
        reply = kNg;
    else if (fault && kind == Fault::Kind::Drop && write)
        reply = kOk;
    else
        reply = answer(command);

    if (fault && kind == Fault::Kind::Short && !reply.isEmpty()) reply.chop(1);
    if (fault && kind == Fault::Kind::Garble) {
        if (reply == kOk || reply == kNg)
            reply = QStringLiteral("KO");
        else
            for (QChar& digit : reply)
                digit = Inverted(digit);
    }
    send(echo + reply.toLatin1() + "\r\n");
}

QString VirtualRadio::answer(const QString& command) {
    if (command == QLatin1String("ZQ318") || command == QLatin1String("KV~E")) return kOk;
    if (!command.startsWith(QLatin1String("KV~F")) || command.size() < 9) return kNg;
    const int address = BlockAddress(command.mid(4, 4));
    if (address < 0) return kNg;
    const QChar op = command.at(8);
    if (op == QLatin1Char('R') && command.size() == 9) return blockHex(address);
    if (op == QLatin1Char('W') && command.size() == 9 + 2 * kBlockSize)
        return setBlockHex(address, command.mid(9)) ? kOk : kNg;
    return kNg;
}

void VirtualRadio::send(const QByteArray& bytes) {
    if (!isOpen()) return;
    output_ += bytes;
    if (lineRate_ <= 0) {
        writeOut(output_.size());
        return;
    }
    if (!pacing_) {
        pacing_ = true;
        burstStartNs_ = MonotonicNs();
        burstSent_ = 0;
        pace();
    }
}

void VirtualRadio::writeOut(qsizetype count) {
    qsizetype done = 0;
    while (done < count) {
        const ssize_t written = ::write(master_, output_.constData() + done, size_t(count - done));
        if (written > 0) {
            done += written;
        } else if (written < 0 && errno == EINTR) {
            continue;
        } else {
            break; // the far end's queue is full: the rest goes when it drains
        }
    }
    output_.remove(0, done);
    charactersSent_ += done;
    if (writeNotifier_) writeNotifier_->setEnabled(lineRate_ <= 0 && !output_.isEmpty());
}

void VirtualRadio::writePending() {
    writeOut(output_.size());
}

void VirtualRadio::armPace(qint64 atNs) {
    if (paceFd_ < 0) {
        paceFd_ = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
        if (paceFd_ < 0) return;
        paceNotifier_ = new QSocketNotifier(paceFd_, QSocketNotifier::Read, this);
        connect(paceNotifier_, &QSocketNotifier::activated, this, [this] {
            quint64 expirations = 0;
            // Reading only drains the timer; how often it expired does not matter.
            if (::read(paceFd_, &expirations, sizeof expirations) < 0) expirations = 0;
            pace();
        });
    }
    itimerspec when{};
    when.it_value.tv_sec = time_t(atNs / 1000000000LL);
    when.it_value.tv_nsec = long(atNs % 1000000000LL);
    timerfd_settime(paceFd_, TFD_TIMER_ABSTIME, &when, nullptr);
    paceNotifier_->setEnabled(true);
}

void VirtualRadio::pace() {
    if (!isOpen() || !pacing_) return;
    const qint64 characterNs = 10LL * 1000000000LL / lineRate_;
    const qint64 due = (MonotonicNs() - burstStartNs_) / characterNs - burstSent_;
    const qint64 group = std::min<qint64>(kDeliveryChunk, output_.size());
    if (due >= group) {
        const qsizetype before = output_.size();
        writeOut(qsizetype(std::min<qint64>(due, output_.size())));
        burstSent_ += before - output_.size();
    }
    if (output_.isEmpty()) {
        pacing_ = false; // the line is idle: the next answer starts a new burst
        return;
    }
    const qint64 next = burstSent_ + std::min<qint64>(kDeliveryChunk, output_.size());
    armPace(burstStartNs_ + next * characterNs);
}

} // namespace zq::radio
