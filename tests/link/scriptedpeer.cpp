#include "scriptedpeer.h"

#include <QSocketNotifier>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

ScriptedPeer::ScriptedPeer() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    char name[128] = {};
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0 ||
        ptsname_r(master, name, sizeof name) != 0) {
        if (master >= 0) ::close(master);
        return;
    }
    holder_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (holder_ >= 0 && tcgetattr(holder_, &settings) == 0) {
        cfmakeraw(&settings);
        tcsetattr(holder_, TCSANOW, &settings);
    }
    fcntl(master, F_SETFL, fcntl(master, F_GETFL) | O_NONBLOCK);
    master_ = master;
    devicePath_ = QString::fromLocal8Bit(name);
    notifier_ = new QSocketNotifier(master_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &ScriptedPeer::readAvailable);
}

ScriptedPeer::~ScriptedPeer() {
    hangUp();
}

void ScriptedPeer::push(const QByteArray& bytes) {
    if (master_ >= 0 && !bytes.isEmpty()) (void)::write(master_, bytes.constData(), size_t(bytes.size()));
}

void ScriptedPeer::hangUp() {
    delete notifier_;
    notifier_ = nullptr;
    if (master_ >= 0) ::close(master_);
    if (holder_ >= 0) ::close(holder_);
    master_ = holder_ = -1;
}

void ScriptedPeer::readAvailable() {
    char buffer[256];
    ssize_t count;
    while ((count = ::read(master_, buffer, sizeof buffer)) > 0) {
        for (ssize_t i = 0; i < count; ++i) {
            if (buffer[i] != '\r') {
                input_ += buffer[i];
                continue;
            }
            commands_ << QString::fromLatin1(input_);
            input_.clear();
            if (!replies_.empty()) {
                const QByteArray reply = replies_.front();
                replies_.pop_front();
                push(reply);
            }
        }
    }
}
