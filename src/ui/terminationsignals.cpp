#include "terminationsignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace zq::ui {

namespace {

// Where the handler writes; -1 while no object catches the signals.
volatile sig_atomic_t gWriteEnd = -1;

extern "C" void onTerminationSignal(int signalNumber) {
    const int savedErrno = errno;
    const int fd = gWriteEnd;
    if (fd >= 0) {
        const unsigned char byte = static_cast<unsigned char>(signalNumber);
        // A full pipe already holds a signal waiting to be handled: losing this byte loses nothing.
        [[maybe_unused]] const ssize_t written = ::write(fd, &byte, 1);
    }
    errno = savedErrno;
}

} // namespace

const std::array<int, 3>& TerminationSignals::Caught() {
    static const std::array<int, 3> caught{SIGTERM, SIGHUP, SIGINT};
    return caught;
}

QString TerminationSignals::Name(int signalNumber) {
    switch (signalNumber) {
    case SIGTERM:
        return QStringLiteral("SIGTERM");
    case SIGHUP:
        return QStringLiteral("SIGHUP");
    case SIGINT:
        return QStringLiteral("SIGINT");
    }
    return QStringLiteral("signal %1").arg(signalNumber);
}

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    readEnd_ = ends[0];
    writeEnd_ = ends[1];
    notifier_ = new QSocketNotifier(readEnd_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &TerminationSignals::drain);

    previousWriteEnd_ = gWriteEnd;
    gWriteEnd = writeEnd_;
    struct sigaction action {};
    action.sa_handler = onTerminationSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (size_t i = 0; i < Caught().size(); ++i)
        ::sigaction(Caught()[i], &action, &previous_[i]);
}

TerminationSignals::~TerminationSignals() {
    if (!notifier_) return;
    for (size_t i = 0; i < Caught().size(); ++i)
        ::sigaction(Caught()[i], &previous_[i], nullptr);
    gWriteEnd = previousWriteEnd_;
    ::close(writeEnd_);
    ::close(readEnd_);
}

void TerminationSignals::drain() {
    unsigned char bytes[16];
    for (;;) {
        const ssize_t count = ::read(readEnd_, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        for (ssize_t i = 0; i < count; ++i)
            Q_EMIT arrived(bytes[i]);
    }
}

} // namespace zq::ui
