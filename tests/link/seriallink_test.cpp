// The exchange primitive against a peer that sends exactly what each case scripts.
#include "link/seriallink.h"
#include "linkfixture.h"

#include <QSocketNotifier>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

using zq::link::SerialLink;
using namespace linktest;

namespace {

// The far end of a pseudo-terminal that answers the first CR-terminated command with whatever the
// test scripted, byte for byte: replies no radio would send.
class ScriptedPeer {
public:
    ScriptedPeer() {
        master_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        const char* name =
            master_ >= 0 && grantpt(master_) == 0 && unlockpt(master_) == 0 ? ptsname(master_) : nullptr;
        if (!name) return;
        devicePath = QString::fromLocal8Bit(name);
        fcntl(master_, F_SETFL, O_NONBLOCK);
        notifier_ = std::make_unique<QSocketNotifier>(master_, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
            char buffer[256];
            for (ssize_t count; (count = ::read(master_, buffer, sizeof buffer)) > 0;)
                received.append(buffer, count);
            if (received.endsWith('\r')) push(std::exchange(reply, {}));
        });
    }
    ~ScriptedPeer() { hangUp(); }
    void push(const QByteArray& bytes) {
        if (!bytes.isEmpty()) (void)::write(master_, bytes.constData(), size_t(bytes.size()));
    }
    void hangUp() {
        notifier_.reset();
        if (master_ >= 0) ::close(master_);
        master_ = -1;
    }
    QString devicePath;
    QByteArray reply;    // sent once a command is complete
    QByteArray received; // everything the link sent

private:
    int master_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

class PeerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(peer.devicePath.isEmpty());
        link.setPortName(peer.devicePath);
        ASSERT_TRUE(link.open().ok());
        clock.start();
    }
    ScriptedPeer peer;
    SerialLink link;
    QElapsedTimer clock;
};

struct ReplyCase {
    const char* name;
    const char* command;
    QByteArray scripted;
    bool complete; // else the wait runs out
};

class SendCommandTest : public PeerTest, public ::testing::WithParamInterface<ReplyCase> {};

TEST_P(SendCommandTest, ClassifiesReply) {
    const ReplyCase& c = GetParam();
    peer.reply = c.scripted;
    clock.restart();
    const QString reply = link.SendCommand(QString::fromLatin1(c.command));
    const qint64 elapsed = clock.elapsed();
    EXPECT_EQ(reply, c.complete ? QString::fromLatin1(c.scripted) : zq::link::kTimeoutMarker);
    EXPECT_EQ(peer.received, QByteArray(c.command) + '\r');
    EXPECT_GE(elapsed, c.complete ? 0 : zq::link::kReplyTimeoutMs);
    EXPECT_LT(elapsed, (c.complete ? 0 : zq::link::kReplyTimeoutMs) + 300);
}

INSTANTIATE_TEST_SUITE_P(
    Replies, SendCommandTest,
    ::testing::Values(
        ReplyCase{"ModelCheckOk", "ZQ318", "ZQ318\rOK\r\n", true},
        // Whether the length is right is the caller's business: an answer ending in LF is complete.
        ReplyCase{"NgIsComplete", "KV~F0200R", "KV~F0200R\rNG\r\n", true},
        ReplyCase{"NoLineFeedTimesOut", "KV~F0200R", "KV~F0200R\r0123456789ABCDEF0123456789ABCDEF\r", false},
        // Echo plus three characters is not yet longer than the minimum.
        ReplyCase{"TooShortTimesOut", "ZQ318", "ZQ318\rK\r\n", false},
        ReplyCase{"SilenceTimesOut", "KV~E", "", false}),
    CaseName<ReplyCase>);

TEST_F(PeerTest, StaleInputEndCommandAndPulledCable) {
    peer.push("KV~F0000R\r0123456789ABCDEF0123456789ABCDEF\r\n");
    link.Wait(50); // the stale reply has arrived by now and is discarded before the next command
    peer.reply = "ZQ318\rOK\r\n";
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), QStringLiteral("ZQ318\rOK\r\n"));

    peer.received.clear();
    peer.reply = "KV~E\rNG\r\n"; // ignored
    clock.restart();
    link.TxEnd();
    EXPECT_GE(clock.elapsed(), zq::link::kCommandPauseMs);
    EXPECT_EQ(peer.received, "KV~E\r");

    peer.hangUp();
    clock.restart();
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), zq::link::kPortErrorMarker);
    EXPECT_LT(clock.elapsed(), 300);
    EXPECT_FALSE(link.isOpen()); // the next transfer opens it afresh
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), zq::link::kPortErrorMarker);
}

TEST(SerialLinkTest, WaitIsNeverShorterThanAsked) {
    SerialLink link;
    for (const qint64 ms : {1, 10, 100})
        for (int round = 0; round < 5; ++round) {
            QElapsedTimer clock;
            clock.start();
            link.Wait(int(ms));
            const qint64 ns = clock.nsecsElapsed();
            EXPECT_GE(ns, ms * 1000000) << ms;
            EXPECT_LT(ns, (ms + 20) * 1000000) << ms;
        }
}

} // namespace
