// The virtual radio's own protocol rules and clone images.
#include "linkfixture.h"
#include "model/tables.h"
#include "radio/radiofault.h"
#include "radio/radioimage.h"

#include <QTemporaryDir>

using namespace zq::radio;
using namespace linktest;

namespace {

// Unusable addresses (beyond the map, off a block boundary, not hexadecimal), unknown operations, data of
// the wrong length or with a non-hex digit are all refused.
TEST_F(RadioTest, EchoesThenAnswers) {
    radio.setBlockHex(0x1FF0, QStringLiteral("00112233445566778899AABBCCDDEEFF"));
    ASSERT_TRUE(link.open().ok());
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"ZQ318", "OK"}, {"KV~E", "OK"}, {"KV~F0000R", "000000AA000000000000000000000000"},
        {"KV~F1FF0R", "00112233445566778899AABBCCDDEEFF"}, {"KV~F2000R", "NG"}, {"KV~F0208R", "NG"},
        {"KV~F02G0R", "NG"}, {"KV~F0200X", "NG"}, {"KV~F0200W0123", "NG"}, {"HELLO", "NG"},
        {"KV~F0200W0123456789ABCDEF0123456789ABCDEX", "NG"}, {"KV~F0200W0123456789abcdef0123456789ABCDEF", "OK"}};
    // clang-format on
    for (const auto& [command, answer] : cases)
        EXPECT_EQ(link.SendCommand(QString::fromLatin1(command)),
                  QStringLiteral("%1\r%2\r\n").arg(QLatin1String(command), QLatin1String(answer)));
    // A dropped write is acknowledged but not stored; a fault spoils one exchange only.
    addFault("drop@0200");
    const QString write = QStringLiteral("KV~F0200W00112233445566778899AABBCCDDEEFF");
    EXPECT_TRUE(link.SendCommand(write).endsWith(QStringLiteral("OK\r\n")));
    EXPECT_EQ(radio.blockHex(0x200), QStringLiteral("0123456789ABCDEF0123456789ABCDEF"));
    EXPECT_TRUE(link.SendCommand(write).endsWith(QStringLiteral("OK\r\n")));
    EXPECT_EQ(radio.blockHex(0x200), write.mid(9));
    // Fault texts: an address in either case, always four digits.
    EXPECT_EQ(ParseFault(QStringLiteral("short@0fe0")), (Fault{Fault::Kind::Short, QStringLiteral("0FE0")}));
    EXPECT_FALSE(ParseFault(QStringLiteral("timeout@FE0")));
}

// A link that took a partial reply for a whole one would return it short here.
TEST_F(RadioTest, LineRatePacesEveryCharacterAndLateRepliesAreDropped) {
    radio.setLineRate(9600);
    ASSERT_TRUE(link.open().ok());
    const qint64 start = clock.nsecsElapsed();
    const QString reply = link.SendCommand(QStringLiteral("KV~F0200R"));
    const qint64 ns = clock.nsecsElapsed() - start;
    ASSERT_EQ(reply.size(), 44);
    EXPECT_GE(ns, 44LL * 10 * 1000000000LL / 9600); // 45.8 ms
    EXPECT_LT(ns, 44LL * 10 * 1000000000LL / 9600 + 15000000LL);
    EXPECT_EQ(radio.charactersSent(), 44);

    // At 600 baud a block read takes 733 ms: the rest of its reply arrives after the link gave up.
    radio.setLineRate(600);
    link.Collect(QStringLiteral("KV~F0200R"), 300, [](const QString&) { return false; });
    link.Wait(600);
    EXPECT_EQ(link.SendCommand(QStringLiteral("ZQ318")), QStringLiteral("ZQ318\rOK\r\n"));
}

// Where each block goes in the file is checked against the file core by the command-line test.
TEST(RadioImageTest, CloneImageRoundTripsAndBadOnesChangeNothing) {
    VirtualRadio radio;
    FillSampleRadio(radio);
    radio.setModelCode(kModelCodeE);
    radio.setCloneCodeA(true);
    const QStringList lines = CloneLines(radio.memory());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("radio.318"));
    ASSERT_TRUE(SaveCloneImage(path, radio.memory()).ok());
    QByteArray copy(kMemorySize, '\0');
    ASSERT_TRUE(LoadCloneImage(path, copy).ok());
    EXPECT_EQ(CloneLines(copy), lines);

    const struct {
        int line; // -1: the file stops after 300 lines
        const char* text;
        zq::model::Outcome outcome;
    } cases[] = {{-1, "", zq::model::Outcome::FileOpenError},
                 {0, "Korvex ZQ-318X Clone 0 FileStart", zq::model::Outcome::DataError},
                 {418, "Korvex ZQ-318 Clone File End....", zq::model::Outcome::DataError},
                 {20, "0123", zq::model::Outcome::DataError},
                 {30, "0123456789ABCDEF0123456789ABCDEG", zq::model::Outcome::DataError}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        QStringList bad = lines.mid(0, c.line < 0 ? 300 : -1);
        if (c.line >= 0) bad[c.line] = QString::fromLatin1(c.text);
        QByteArray memory(kMemorySize, '\x11');
        EXPECT_EQ(ApplyCloneLines(bad, memory).outcome, c.outcome);
        EXPECT_EQ(memory, QByteArray(kMemorySize, '\x11'));
    }
}

} // namespace
