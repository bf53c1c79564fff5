#include "pagefixture.h"

#include "model/dialcodec.h"

#include <QApplication>
#include <QClipboard>

namespace {

QLineEdit* dialBox(PageFixture& f, int k) {
    return f.find<QLineEdit>(QStringLiteral("txtDial_%1").arg(k));
}

struct KeyCase {
    const char* name;
    const char* typed;
    const char* shown;
};
void PrintTo(const KeyCase& c, std::ostream* os) {
    *os << c.name;
}

class DialKeyFilter : public ::testing::TestWithParam<KeyCase> {};

TEST_P(DialKeyFilter, TypedKeysBecomeDialCharacters) {
    PageFixture f;
    QLineEdit* box = dialBox(f, 3);
    box->setFocus();
    QTest::keyClicks(box, QString::fromLatin1(GetParam().typed));
    const QString expected = QString::fromLatin1(GetParam().shown);
    EXPECT_EQ(box->text(), expected);
    EXPECT_EQ(f.doc.dialTexts[3], expected);
    EXPECT_EQ(f.doc.DataChanged(), !expected.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    DialBoxes, DialKeyFilter,
    ::testing::Values(KeyCase{"Digits", "0123456789", "0123456789"}, KeyCase{"Signs", "#*-ABCD", "#*-ABCD"},
                      KeyCase{"LowerCaseRaised", "abcd", "ABCD"}, KeyCase{"Mixed", "1b2", "1B2"},
                      KeyCase{"EDropped", "Ee", ""}, KeyCase{"OthersDropped", "xyz!+ .", ""},
                      KeyCase{"DroppedBetween", "1E2e3F", "123"},
                      KeyCase{"SixteenAtMost", "12345678901234567890", "1234567890123456"},
                      KeyCase{"SixteenRaisedAtMost", "abcdabcdabcdabcdab", "ABCDABCDABCDABCD"}),
    [](const ::testing::TestParamInfo<KeyCase>& info) { return std::string(info.param.name); });

} // namespace

TEST(DialBoxes, BackspacePassesAndUpdatesTheText) {
    PageFixture f;
    QLineEdit* box = dialBox(f, 0);
    box->setFocus();
    QTest::keyClicks(box, "12#");
    QTest::keyClick(box, Qt::Key_Backspace);
    EXPECT_EQ(box->text(), QStringLiteral("12"));
    EXPECT_EQ(f.doc.dialTexts[0], QStringLiteral("12"));
}

TEST(DialBoxes, EnterMovesTheFocusToTheNextBoxAndFromTheLastToTheFirst) {
    PageFixture f;
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        QLineEdit* box = dialBox(f, k);
        box->setFocus();
        const QString before = box->text();
        QTest::keyClick(box, k % 2 ? Qt::Key_Enter : Qt::Key_Return);
        const int next = k == 8 ? 0 : k + 1;
        EXPECT_EQ(f.host->focusWidget(), dialBox(f, next)) << "from box " << k;
        EXPECT_EQ(box->text(), before) << "Enter types nothing";
    }
    EXPECT_FALSE(f.doc.DataChanged());
}

TEST(DialBoxes, PastedTextBypassesTheFilterAndIsEncodedUpperCased) {
    PageFixture f;
    QLineEdit* box = dialBox(f, 5);
    box->setFocus();
    QApplication::clipboard()->setText(QStringLiteral("1bE#"));
    box->paste();
    EXPECT_EQ(box->text(), QStringLiteral("1bE#"));
    EXPECT_EQ(f.doc.dialTexts[5], QStringLiteral("1bE#"));
    EXPECT_TRUE(f.doc.DataChanged());
    // b is encoded as B, E is dropped.
    EXPECT_EQ(zq::model::MakeDialData(f.doc.dialTexts[5]),
              QStringLiteral("313B3F") + QString(26, QLatin1Char('0')));

    // The box's length limit holds for a paste as well.
    box->clear();
    QApplication::clipboard()->setText(QString(20, QLatin1Char('9')));
    box->paste();
    EXPECT_EQ(f.doc.dialTexts[5], QString(16, QLatin1Char('9')));
}

TEST(DialBoxes, DocumentTextsShowWithoutMarkingTheData) {
    PageFixture f;
    for (int k = 0; k < zq::model::kDialCount; ++k)
        f.doc.dialTexts[k] =
            zq::model::UpDateDialData(QStringLiteral("3%1").arg(k) + QStringLiteral("3A3F40"));
    f.doc.notifyDialTexts();
    for (int k = 0; k < zq::model::kDialCount; ++k)
        EXPECT_EQ(dialBox(f, k)->text(), QString::number(k) + QStringLiteral("A#-")) << k;
    EXPECT_FALSE(f.doc.DataChanged());

    // An edit of one box leaves the others as loaded.
    dialBox(f, 2)->setFocus();
    QTest::keyClick(dialBox(f, 2), Qt::Key_End);
    QTest::keyClicks(dialBox(f, 2), "d");
    EXPECT_EQ(f.doc.dialTexts[2], QStringLiteral("2A#-D"));
    EXPECT_EQ(f.doc.dialTexts[7], QStringLiteral("7A#-"));
}
