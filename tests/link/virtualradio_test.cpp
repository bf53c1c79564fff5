// The virtual radio's own protocol rules.
#include "linkfixture.h"
#include "radio/radioimage.h"

#include <QFile>
#include <QTemporaryDir>

using namespace linktest;
using namespace zq::radio;

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
}

// Ten bits a character at 600 baud: a block read's 44 take 733 ms, arriving 16 at a time.
TEST_F(RadioTest, LineRatePacesEveryCharacterAndLateRepliesAreDropped) {
    radio.setLineRate(600);
    ASSERT_TRUE(link.open().ok());
    // What arrives after the link gave up on a reply is not part of the next one.
    link.Collect(QStringLiteral("KV~F0200R"), 300, [](const QString&) { return false; });
    link.Wait(600);
    const qint64 start = clock.nsecsElapsed();
    EXPECT_EQ(link.SendCommand(QStringLiteral("KV~F0200R")),
              QStringLiteral("KV~F0200R\r") + radio.blockHex(0x200) + QStringLiteral("\r\n"));
    const qint64 ns = clock.nsecsElapsed() - start;
    EXPECT_GE(ns, 44LL * 10 * 1000000000LL / 600);
    EXPECT_LT(ns, 44LL * 11 * 1000000000LL / 600); // less than eleven bits a character
    EXPECT_EQ(radio.charactersSent(), 88);
}

// --image and --save: the file round-trips, and a file the program would reject leaves the memory alone.
TEST(RadioImageTest, SavedImageLoadsBackAndBadOnesChangeNothing) {
    VirtualRadio radio;
    FillSampleRadio(radio);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("radio.318"));
    ASSERT_TRUE(SaveCloneImage(path, radio.memory()).ok());
    QByteArray copy(kMemorySize, '\0');
    ASSERT_TRUE(LoadCloneImage(path, copy).ok());
    EXPECT_EQ(copy, radio.memory());
    QStringList bad = CloneLines(radio.memory());
    bad[30] = QStringLiteral("0123456789ABCDEF0123456789ABCDEG");
    EXPECT_EQ(ApplyCloneLines(bad, copy).outcome, zq::model::Outcome::DataError);
    EXPECT_EQ(ApplyCloneLines(bad.mid(0, 300), copy).outcome, zq::model::Outcome::FileOpenError);
    EXPECT_EQ(copy, radio.memory());
}

} // namespace
