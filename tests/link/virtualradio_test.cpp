// The virtual radio's own protocol rules and clone images.
#include "linkfixture.h"
#include "model/tables.h"
#include "radio/radiofault.h"
#include "radio/radioimage.h"

#include <QTemporaryDir>

using namespace zq::radio;
using namespace linktest;

namespace {

TEST(VirtualRadioTest, ParsesFaultTexts) {
    using enum Fault::Kind;
    // clang-format off
    const std::pair<const char*, std::optional<Fault>> cases[] = {
        {"timeout@0FE0", Fault{Timeout, "0FE0"}}, {"short@0fe0", Fault{Short, "0FE0"}},
        {"garble@model", Fault{Garble, "model"}}, {"ng@end", Fault{Ng, "end"}}, {"hangup@1AF0", Fault{Hangup, "1AF0"}},
        {"drop@0200", Fault{Drop, "0200"}}, {"silent-end", Fault{SilentEnd, "end"}},
        {"timeout@FE0", {}}, {"late@0200", {}}, {"ng@", {}}, {"", {}}};
    // clang-format on
    for (const auto& [text, fault] : cases)
        EXPECT_EQ(ParseFault(QString::fromLatin1(text)), fault) << text;
}

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

TEST_F(RadioTest, LineRatePacesEveryCharacter) {
    radio.setLineRate(9600);
    ASSERT_TRUE(link.open().ok());
    const qint64 start = clock.nsecsElapsed();
    const QString reply = link.SendCommand(QStringLiteral("KV~F0200R"));
    const qint64 ns = clock.nsecsElapsed() - start;
    ASSERT_EQ(reply.size(), 44);
    EXPECT_GE(ns, 44LL * 10 * 1000000000LL / 9600); // 45.8 ms
    EXPECT_LT(ns, 44LL * 10 * 1000000000LL / 9600 + 15000000LL);
    EXPECT_EQ(radio.charactersSent(), 44);
}

TEST(RadioImageTest, CloneFileLinesRoundTripThroughMemory) {
    VirtualRadio radio;
    FillSampleRadio(radio);
    radio.setModelCode(kModelCodeE);
    radio.setCloneCodeA(true);
    const QStringList lines = CloneLines(radio.memory());
    ASSERT_EQ(lines.size(), 419);
    for (const QString& line : lines)
        EXPECT_EQ(line.size(), 32);
    EXPECT_EQ(lines.at(0), zq::model::HeaderLine(zq::model::VariantE, true));
    EXPECT_EQ(lines.at(9), QStringLiteral("123#") + QString(28, QLatin1Char('Z')));
    EXPECT_EQ(lines.at(18), radio.blockHex(0x200));
    EXPECT_EQ(lines.at(417), radio.blockHex(0x1AF0));
    EXPECT_EQ(lines.at(418), zq::model::EndLine());

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("radio.318"));
    ASSERT_TRUE(SaveCloneImage(path, radio.memory()).ok());
    QByteArray copy(kMemorySize, '\0');
    ASSERT_TRUE(LoadCloneImage(path, copy).ok());
    EXPECT_EQ(CloneLines(copy), lines);
    EXPECT_EQ(quint8(copy[kModelCodeByte]), kModelCodeE);
    EXPECT_EQ(quint8(copy[kCloneCodeByte]), kCloneCodeA);
}

TEST(RadioImageTest, BadImageIsRejectedWithoutTouchingMemory) {
    VirtualRadio radio;
    FillSampleRadio(radio);
    const QStringList lines = CloneLines(radio.memory());
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
