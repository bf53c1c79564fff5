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

// The far end of a pseudo-terminal that answers a CR-terminated command with `reply`, byte for byte:
// replies no radio would send.
class PeerTest : public ::testing::Test {
protected:
    void SetUp() override {
        master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        const char* name =
            master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0 ? ptsname(master) : nullptr;
        ASSERT_TRUE(name);
        fcntl(master, F_SETFL, O_NONBLOCK);
        notifier = std::make_unique<QSocketNotifier>(master, QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] {
            char buffer[256];
            for (ssize_t count; (count = ::read(master, buffer, sizeof buffer)) > 0;)
                received.append(buffer, count);
            if (received.endsWith('\r')) push(std::exchange(reply, {}));
        });
        link.setPortName(QString::fromLocal8Bit(name));
        ASSERT_TRUE(link.open().ok());
        clock.start();
    }
    void TearDown() override { hangUp(); }
    void push(const QByteArray& bytes) {
        if (!bytes.isEmpty()) (void)::write(master, bytes.constData(), size_t(bytes.size()));
    }
    void hangUp() {
        notifier.reset();
        if (master >= 0) ::close(master);
        master = -1;
    }
    int master = -1;
    std::unique_ptr<QSocketNotifier> notifier;
    QByteArray reply, received;
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
    reply = c.scripted;
    clock.restart();
    const QString answer = link.SendCommand(QString::fromLatin1(c.command));
    const qint64 elapsed = clock.elapsed();
    EXPECT_EQ(answer, c.complete ? QString::fromLatin1(c.scripted) : zq::link::kTimeoutMarker);
    EXPECT_EQ(received, QByteArray(c.command) + '\r');
    EXPECT_GE(elapsed, c.complete ? 0 : zq::link::kReplyTimeoutMs);
    EXPECT_LT(elapsed, (c.complete ? 0 : zq::link::kReplyTimeoutMs) + 300);
}

// Whether the length is right is the caller's business: an answer ending in LF is complete once it is
// longer than the echo plus three characters.
INSTANTIATE_TEST_SUITE_P(Replies, SendCommandTest,
                         ::testing::Values(ReplyCase{"ShortestComplete", "ZQ318", "ZQ318\rOK\r\n", true},
                                           ReplyCase{"NgIsComplete", "KV~F0200R", "KV~F0200R\rNG\r\n", true},
                                           ReplyCase{"NoLineFeedTimesOut", "KV~F0200R",
                                                     "KV~F0200R\r0123456789ABCDEF0123456789ABCDEF\r", false},
                                           ReplyCase{"TooShortTimesOut", "ZQ318", "ZQ318\rK\r\n", false},
                                           ReplyCase{"SilenceTimesOut", "KV~E", "", false}),
                         CaseName);

TEST_F(PeerTest, StaleInputEndCommandAndPulledCable) {
    push("KV~F0000R\r0123456789ABCDEF0123456789ABCDEF\r\n");
    link.Wait(50); // the stale reply has arrived by now and is discarded before the next command
    reply = "ZQ318\rOK\r\n";
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), QStringLiteral("ZQ318\rOK\r\n"));

    received.clear();
    reply = "KV~E\rNG\r\n"; // ignored
    clock.restart();
    link.TxEnd();
    EXPECT_GE(clock.elapsed(), zq::link::kCommandPauseMs);
    EXPECT_EQ(received, "KV~E\r");

    hangUp();
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
