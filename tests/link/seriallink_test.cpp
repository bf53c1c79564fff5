// The exchange primitive against a peer that sends exactly what each case scripts.
#include "link/seriallink.h"
#include "scriptedpeer.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>
#include <ostream>

using zq::link::SerialLink;

namespace {

struct ReplyCase {
    const char* name;
    const char* command;
    QByteArray scripted;
    QString expected;
    bool timesOut;
};

void PrintTo(const ReplyCase& c, std::ostream* os) {
    *os << c.name;
}

class SendCommandTest : public ::testing::TestWithParam<ReplyCase> {};

TEST_P(SendCommandTest, ClassifiesReply) {
    const ReplyCase& c = GetParam();
    ScriptedPeer peer;
    ASSERT_TRUE(peer.ok());
    peer.script(c.scripted);
    SerialLink link;
    link.setPortName(peer.devicePath());
    ASSERT_TRUE(link.open().ok());
    QElapsedTimer clock;
    clock.start();
    const QString reply = link.SendCommand(QString::fromLatin1(c.command));
    const qint64 elapsed = clock.elapsed();
    EXPECT_EQ(reply, c.expected);
    ASSERT_EQ(peer.commands().size(), 1);
    EXPECT_EQ(peer.commands().first(), QString::fromLatin1(c.command)); // sent with a single CR
    if (c.timesOut) {
        EXPECT_GE(elapsed, zq::link::kReplyTimeoutMs);
        EXPECT_LT(elapsed, zq::link::kReplyTimeoutMs + 300);
    } else {
        EXPECT_LT(elapsed, 300);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Replies, SendCommandTest,
    ::testing::Values(
        ReplyCase{"ModelCheckOk", "ZQ318", "ZQ318\rOK\r\n", QStringLiteral("ZQ318\rOK\r\n"), false},
        ReplyCase{"ReadBlock", "KV~F0200R", "KV~F0200R\r0123456789ABCDEF0123456789ABCDEF\r\n",
                  QStringLiteral("KV~F0200R\r0123456789ABCDEF0123456789ABCDEF\r\n"), false},
        // Whether the length is right is the caller's business: a short answer ending in LF is complete.
        ReplyCase{"NgIsComplete", "KV~F0200R", "KV~F0200R\rNG\r\n", QStringLiteral("KV~F0200R\rNG\r\n"),
                  false},
        ReplyCase{"NoLineFeedTimesOut", "KV~F0200R", "KV~F0200R\r0123456789ABCDEF0123456789ABCDEF\r",
                  QStringLiteral("False01"), true},
        // Echo plus three characters is not yet longer than the minimum.
        ReplyCase{"TooShortTimesOut", "ZQ318", "ZQ318\rK\r\n", QStringLiteral("False01"), true},
        ReplyCase{"SilenceTimesOut", "KV~E", "", QStringLiteral("False01"), true}),
    [](const ::testing::TestParamInfo<ReplyCase>& info) { return std::string(info.param.name); });

TEST(SerialLinkTest, DiscardsInputLeftFromEarlierExchange) {
    ScriptedPeer peer;
    ASSERT_TRUE(peer.ok());
    SerialLink link;
    link.setPortName(peer.devicePath());
    ASSERT_TRUE(link.open().ok());
    peer.push("KV~F0000R\r0123456789ABCDEF0123456789ABCDEF\r\n");
    link.Wait(50); // the stale reply has arrived by now
    peer.script("ZQ318\rOK\r\n");
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), QStringLiteral("ZQ318\rOK\r\n"));
}

TEST(SerialLinkTest, PulledCableIsPortError) {
    ScriptedPeer peer;
    ASSERT_TRUE(peer.ok());
    SerialLink link;
    link.setPortName(peer.devicePath());
    ASSERT_TRUE(link.open().ok());
    peer.hangUp();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), zq::link::kPortErrorMarker);
    EXPECT_LT(clock.elapsed(), 300);
    EXPECT_FALSE(link.isOpen()); // the next transfer opens it afresh
}

TEST(SerialLinkTest, ClosedPortIsPortError) {
    SerialLink link;
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), zq::link::kPortErrorMarker);
}

TEST(SerialLinkTest, MissingDeviceCannotBeOpened) {
    SerialLink link;
    link.setPortName(QStringLiteral("/dev/zq318-no-such-port"));
    const zq::model::Result opened = link.open();
    EXPECT_EQ(opened.outcome, zq::model::Outcome::ComPortError);
    EXPECT_EQ(opened.message(), QStringLiteral("COM Port Error"));
    EXPECT_FALSE(link.isOpen());
}

class WaitTest : public ::testing::TestWithParam<int> {};

TEST_P(WaitTest, IsNeverShorterThanAsked) {
    SerialLink link;
    for (int round = 0; round < 5; ++round) {
        QElapsedTimer clock;
        clock.start();
        link.Wait(GetParam());
        const qint64 ns = clock.nsecsElapsed();
        EXPECT_GE(ns, qint64(GetParam()) * 1000000);
        EXPECT_LT(ns, (qint64(GetParam()) + 20) * 1000000);
    }
}

INSTANTIATE_TEST_SUITE_P(Pauses, WaitTest, ::testing::Values(1, 10, 100));

TEST(SerialLinkTest, TxEndIgnoresWhateverComesBack) {
    ScriptedPeer peer;
    ASSERT_TRUE(peer.ok());
    SerialLink link;
    link.setPortName(peer.devicePath());
    ASSERT_TRUE(link.open().ok());
    peer.script("KV~E\rNG\r\n");
    QElapsedTimer clock;
    clock.start();
    link.TxEnd();
    EXPECT_GE(clock.elapsed(), zq::link::kCommandPauseMs);
    EXPECT_EQ(peer.commands(), QStringList{QStringLiteral("KV~E")});
}

} // namespace
