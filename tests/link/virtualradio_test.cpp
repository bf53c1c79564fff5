// The virtual radio's own protocol rules and clone images.
#include "linkfixture.h"
#include "model/tables.h"
#include "radio/radiofault.h"
#include "radio/radioimage.h"
#include "scriptedpeer.h"

#include <ostream>

#include <QTemporaryDir>

using namespace zq::radio;
using namespace linktest;

namespace {

struct ParseCase {
    const char* spec;
    bool valid;
    Fault::Kind kind;
    const char* target;
};

void PrintTo(const ParseCase& c, std::ostream* os) {
    *os << (*c.spec ? c.spec : "(empty)");
}

class ParseFaultTest : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ParseFaultTest, ReadsSpec) {
    const ParseCase& c = GetParam();
    const std::optional<Fault> fault = ParseFault(QString::fromLatin1(c.spec));
    ASSERT_EQ(fault.has_value(), c.valid);
    if (!c.valid) return;
    EXPECT_EQ(fault->kind, c.kind);
    EXPECT_EQ(fault->target, QString::fromLatin1(c.target));
}

INSTANTIATE_TEST_SUITE_P(Specs, ParseFaultTest,
                         ::testing::Values(ParseCase{"timeout@0FE0", true, Fault::Kind::Timeout, "0FE0"},
                                           ParseCase{"short@0fe0", true, Fault::Kind::Short, "0FE0"},
                                           ParseCase{"garble@model", true, Fault::Kind::Garble, "model"},
                                           ParseCase{"ng@end", true, Fault::Kind::Ng, "end"},
                                           ParseCase{"hangup@1AF0", true, Fault::Kind::Hangup, "1AF0"},
                                           ParseCase{"drop@0200", true, Fault::Kind::Drop, "0200"},
                                           ParseCase{"silent-end", true, Fault::Kind::SilentEnd, "end"},
                                           ParseCase{"timeout@FE0", false, Fault::Kind::Timeout, ""},
                                           ParseCase{"late@0200", false, Fault::Kind::Timeout, ""},
                                           ParseCase{"ng@", false, Fault::Kind::Timeout, ""},
                                           ParseCase{"", false, Fault::Kind::Timeout, ""}));

struct ProtocolCase {
    const char* command;
    const char* answer;
};

void PrintTo(const ProtocolCase& c, std::ostream* os) {
    *os << c.command;
}

class RadioProtocolTest : public RadioTest, public ::testing::WithParamInterface<ProtocolCase> {};

TEST_P(RadioProtocolTest, EchoesThenAnswers) {
    radio.setBlockHex(0x1FF0, QStringLiteral("00112233445566778899AABBCCDDEEFF"));
    ASSERT_TRUE(link.open().ok());
    const QString command = QString::fromLatin1(GetParam().command);
    EXPECT_EQ(link.SendCommand(command),
              command + QLatin1Char('\r') + QString::fromLatin1(GetParam().answer) + QStringLiteral("\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Commands, RadioProtocolTest,
                         ::testing::Values(ProtocolCase{"ZQ318", "OK"}, ProtocolCase{"KV~E", "OK"},
                                           ProtocolCase{"KV~F0000R", "000000AA000000000000000000000000"},
                                           ProtocolCase{"KV~F1FF0R", "00112233445566778899AABBCCDDEEFF"},
                                           ProtocolCase{"KV~F2000R", "NG"},     // beyond the memory map
                                           ProtocolCase{"KV~F0208R", "NG"},     // not a block address
                                           ProtocolCase{"KV~F02G0R", "NG"},     // not hexadecimal
                                           ProtocolCase{"KV~F0200X", "NG"},     // unknown operation
                                           ProtocolCase{"KV~F0200W0123", "NG"}, // too few data digits
                                           ProtocolCase{"KV~F0200W0123456789ABCDEF0123456789ABCDEX", "NG"},
                                           ProtocolCase{"KV~F0200W0123456789abcdef0123456789ABCDEF", "OK"},
                                           ProtocolCase{"HELLO", "NG"}));

TEST_F(RadioTest, DroppedWriteIsAcknowledgedButNotStored) {
    radio.addFault(*ParseFault(QStringLiteral("drop@0200")));
    ASSERT_TRUE(link.open().ok());
    const QString data = QStringLiteral("0123456789ABCDEF0123456789ABCDEF");
    EXPECT_TRUE(link.SendCommand(QStringLiteral("KV~F0200W") + data).endsWith(QStringLiteral("OK\r\n")));
    EXPECT_EQ(radio.blockHex(0x200), QString(32, QLatin1Char('0')));
    // A fault spoils one exchange only.
    EXPECT_TRUE(link.SendCommand(QStringLiteral("KV~F0200W") + data).endsWith(QStringLiteral("OK\r\n")));
    EXPECT_EQ(radio.blockHex(0x200), data);
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

struct BadImageCase {
    const char* name;
    int line;
    const char* text;
    zq::model::Outcome outcome;
};

void PrintTo(const BadImageCase& c, std::ostream* os) {
    *os << c.name;
}

class BadImageTest : public ::testing::TestWithParam<BadImageCase> {};

TEST_P(BadImageTest, RejectedWithoutTouchingMemory) {
    VirtualRadio radio;
    FillSampleRadio(radio);
    QStringList lines = CloneLines(radio.memory());
    if (GetParam().line < 0)
        lines = lines.mid(0, 300);
    else
        lines[GetParam().line] = QString::fromLatin1(GetParam().text);
    QByteArray memory(kMemorySize, '\x11');
    const QByteArray before = memory;
    EXPECT_EQ(ApplyCloneLines(lines, memory).outcome, GetParam().outcome);
    EXPECT_EQ(memory, before);
}

INSTANTIATE_TEST_SUITE_P(
    Images, BadImageTest,
    ::testing::Values(
        BadImageCase{"Truncated", -1, "", zq::model::Outcome::FileOpenError},
        BadImageCase{"Header", 0, "Korvex ZQ-318X Clone 0 FileStart", zq::model::Outcome::DataError},
        BadImageCase{"EndLine", 418, "Korvex ZQ-318 Clone File End....", zq::model::Outcome::DataError},
        BadImageCase{"ShortLine", 20, "0123", zq::model::Outcome::DataError},
        BadImageCase{"NotHex", 30, "0123456789ABCDEF0123456789ABCDEG", zq::model::Outcome::DataError}),
    [](const ::testing::TestParamInfo<BadImageCase>& info) { return std::string(info.param.name); });

} // namespace
