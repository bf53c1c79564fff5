// Both settings pages over one document, shown in one window as the main window shows them, driven
// through their widgets: what loads show, which edits build which settings bytes and mark the data.
#include "model/dialcodec.h"
#include "model/document.h"
#include "model/settingscodec.h"
#include "ui/settingspages.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

using zq::model::Document;

namespace {

const char* const kHalfA = "A5 00 01 01 00 0C 03 00 02 01 03 02 05 0A 01 00";
const char* const kHalfB = "01 01 00 00 AA 00 02 00 01 00 01 01 00 01 00 00";

QString spaced(const char* bytes) {
    return QString::fromLatin1(bytes).remove(QLatin1Char(' '));
}

class Pages : public ::testing::Test {
protected:
    Pages() {
        auto* row = new QHBoxLayout(&host);
        row->addWidget(page1 = new zq::ui::SettingsPage1(doc, &host));
        row->addWidget(page2 = new zq::ui::SettingsPage2(doc, &host));
        host.show();
        host.activateWindow();
        (void)QTest::qWaitForWindowExposed(&host);
    }

    template <typename T = QWidget> T* find(const QString& name) const {
        T* widget = host.findChild<T*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    QLineEdit* dialBox(int k) const { return find<QLineEdit>(QStringLiteral("txtDial_%1").arg(k)); }

    // The user picks list entry `index` with the arrow keys, as from the open list.
    void choose(const QString& combo, int index) {
        auto* box = find<QComboBox>(combo);
        box->setFocus();
        while (box->currentIndex() > index)
            QTest::keyClick(box, Qt::Key_Up);
        while (box->currentIndex() < index)
            QTest::keyClick(box, Qt::Key_Down);
    }
    // The user replaces the text of a combo box by typing.
    void type(const QString& combo, const QString& text) {
        auto* box = find<QComboBox>(combo);
        box->setFocus();
        box->lineEdit()->selectAll();
        QTest::keyClick(box->lineEdit(), Qt::Key_Backspace);
        QTest::keyClicks(box->lineEdit(), text);
    }
    void click(const QString& name) {
        auto* button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
    }
    // What a control shows, in one comparable text.
    QString shown(const char* name) const {
        QWidget* widget = find(QLatin1String(name));
        if (auto* box = qobject_cast<QCheckBox*>(widget)) return box->isChecked() ? "ticked" : "clear";
        if (auto* box = qobject_cast<QComboBox*>(widget)) return "[" + box->currentText() + "]";
        if (auto* slider = qobject_cast<QSlider*>(widget)) return QString::number(slider->value());
        if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
        return QStringLiteral("?");
    }
    void load(const char* halfA, const char* halfB) {
        doc.settingsBlock.halfA = spaced(halfA);
        doc.settingsBlock.halfB = spaced(halfB);
        doc.applySettingsBlock();
    }
    QString builtByte(char half, int byte) {
        doc.buildSettingsBlock();
        return (half == 'A' ? doc.settingsBlock.halfA : doc.settingsBlock.halfB).mid(2 * byte, 2);
    }

    void perform(char how, const QString& widget, const char* arg) {
        if (how == 'L') { // a load is no edit
            doc.settings.channelMode = true;
            doc.notifySettings();
        }
        if (how == 'c' || how == 'L') click(widget);
        if (how == 's') choose(widget, QByteArray(arg).toInt());
        if (how == 't') type(widget, QLatin1String(arg));
        if (how == 'k') {
            find(widget)->setFocus();
            QTest::keyClick(find(widget), QKeySequence(QLatin1String(arg))[0].key());
        }
    }

    Document doc;
    QWidget host;
    zq::ui::SettingsPage1* page1 = nullptr;
    zq::ui::SettingsPage2* page2 = nullptr;
};

TEST_F(Pages, AppliedBlockShowsInEveryControl) {
    load(kHalfA, kHalfB);
    const std::pair<const char*, const char*> expected[] = {
        {"chkChannel", "ticked"}, {"Slider1", "12"},       {"lblVol", "12"},        {"Slider2", "3"},
        {"lblSql", "3"},          {"cmbDWait", "[ 700]"},  {"cmbDFirst", "[  80]"}, {"cmbDBurst", "[ 200]"},
        {"cmbTB", "[1000]"},      {"cmbTOT", "[150]"},     {"cmbTOTP", "[ 10]"},    {"chkLock", "ticked"},
        {"chkAPO", "clear"},      {"chkBeep", "ticked"},   {"cmbScan", "[Busy]"},   {"cmbLamp", "[5 second]"},
        {"chkScanEn", "ticked"},  {"chkPowerEn", "clear"}, {"chkLockEn", "ticked"}, {"chkMoniEn", "clear"},
        {"chkToneEn", "ticked"},  {"chkBurstEn", "clear"}, {"chkNameEn", "ticked"}, {"cmbBat", "[Li-ion]"},
        {"chkCharge", "ticked"},
    };
    for (const auto& [name, text] : expected)
        EXPECT_EQ(shown(name), QString::fromLatin1(text)) << name;
    EXPECT_FALSE(doc.DataChanged());

    // Unedited, the rebuilt block is the one applied (apart from the fixed bytes).
    doc.buildSettingsBlock();
    EXPECT_EQ(doc.settingsBlock.halfA, spaced(kHalfA));
    EXPECT_EQ(doc.settingsBlock.halfB, spaced("01 01 00 00 AA 00 01 00 01 00 01 01 00 01 00 00"));
}

// An edit from the start-up data (a blank block applied): whether it marks the data as changed and,
// where `half` is set, the settings byte it builds. An access flag is greyed while channel mode is off.
// The edit: c click, L click after a load set channel mode, s choose entry `arg`, t type `arg` into a
// list, k press key `arg`.
struct EditCase {
    char how;
    const char *widget, *arg;
    bool marks; // 1 or 0
    char half;
    int byte;
    const char* expected;
};

const EditCase kEdits[] = {
    {'c', "chkChannel", "", 1, 'A', 2, "01"},  {'c', "chkChannel", "", 1, 'A', 4, "00"},
    {'k', "Slider1", "End", 1, 'A', 5, "14"},  {'k', "Slider2", "PgUp", 1, 'A', 6, "05"},
    {'s', "cmbDWait", "3", 0, 'A', 8, "03"},   {'t', "cmbDFirst", "160", 1, 'A', 9, "02"},
    {'s', "cmbDBurst", "1", 0, 'A', 10, "01"}, {'s', "cmbTB", "3", 0, 'A', 11, "03"},
    {'t', "cmbTOT", "450", 1, 'A', 12, "0F"},  {'s', "cmbTOTP", "15", 0, 'A', 13, "0F"},
    {'c', "chkLock", "", 1, 'A', 14, "01"},    {'c', "chkAPO", "", 1, 'A', 15, "01"},
    {'c', "chkBeep", "", 1, 'B', 0, "01"},     {'s', "cmbScan", "1", 0, 'B', 1, "01"},
    {'s', "cmbLamp", "1", 0, 'B', 2, "01"},    {'L', "chkScanEn", "", 1, 'B', 4, "AA"},
    {'L', "chkPowerEn", "", 1, 'B', 5, "AA"},  {'L', "chkLockEn", "", 1, 'B', 6, "01"},
    {'L', "chkMoniEn", "", 1, 'B', 7, "01"},   {'L', "chkToneEn", "", 1, 'B', 8, "01"},
    {'L', "chkBurstEn", "", 1, 'B', 9, "01"},  {'L', "chkNameEn", "", 1, 'B', 10, "01"},
    {'s', "cmbBat", "1", 0, 'B', 11, "01"},    {'c', "chkCharge", "", 1, 'B', 13, "01"},
    {'c', "chkScanEn", "", 0, 'B', 4, "00"},   {'c', "chkAutoProg", "", 1, 0, 0, ""},
    {'c', "chkFlg1_0", "", 1, 0, 0, ""},       {'c', "chkFlg1_1", "", 1, 0, 0, ""},
    {'c', "chkFlg1_2", "", 1, 0, 0, ""},       {'c', "opbModel_1", "", 1, 0, 0, ""},
    {'s', "cmbTOT", "7", 0, 0, 0, ""},         {'t', "cmbScan", "Busy", 1, 'B', 1, "01"},
    {'t', "cmbTOTP", "9", 1, 0, 0, ""},        {'t', "cmbTB", "2100", 1, 0, 0, ""},
    {'t', "cmbDBurst", "x", 1, 0, 0, ""},      {'k', "Slider2", "Right", 1, 0, 0, ""},

};

class EditRule : public Pages, public ::testing::WithParamInterface<EditCase> {};

TEST_P(EditRule, MarksAndBuildsItsByte) {
    const EditCase& c = GetParam();
    ASSERT_FALSE(doc.DataChanged());
    perform(c.how, QLatin1String(c.widget), c.arg);
    EXPECT_EQ(doc.DataChanged(), c.marks);
    if (c.half) {
        EXPECT_EQ(builtByte(c.half, c.byte), QLatin1String(c.expected));
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, EditRule, ::testing::ValuesIn(kEdits), [](const auto& info) {
    return std::string(info.param.widget) + '_' + std::to_string(info.index);
});

TEST_F(Pages, MosquitoAndSqlTicksAreStoredWithoutMarking) {
    click("chkMosq");
    click("chkSQL");
    EXPECT_TRUE(doc.settings.mosquitoRepel);
    EXPECT_TRUE(doc.settings.sqlExternal);
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(Pages, SliderLabelFollowsTheDragAndTheReleaseMarks) {
    auto* slider = find<QSlider>("Slider1");
    ASSERT_EQ(slider->value(), 0);
    slider->setSliderDown(true);
    slider->setSliderPosition(9);
    EXPECT_EQ(shown("lblVol"), QStringLiteral("9"));
    EXPECT_FALSE(doc.DataChanged()) << "moving alone is no change yet";
    EXPECT_EQ(doc.settings.volume, 0);
    slider->setSliderDown(false);
    EXPECT_TRUE(doc.DataChanged());
    EXPECT_EQ(doc.settings.volume, 9);
    EXPECT_EQ(shown("lblVol"), QStringLiteral("9"));
}

TEST_F(Pages, ChannelModeGreysTheAccessFlagsAndKeepsTheirTicks) {
    load("A5 00 00 01 C8", "00 00 00 00 AA 00 01 00 00 00 01");
    const char* const access[] = {"chkScanEn", "chkPowerEn", "chkLockEn", "chkMoniEn",
                                  "chkToneEn", "chkBurstEn", "chkNameEn"};
    const bool ticks[] = {true, false, true, false, false, false, true};
    const auto expectState = [&](bool enabled, const char* when) {
        EXPECT_EQ(find("frmChannel")->isEnabled(), enabled) << when;
        for (int i = 0; i < 7; ++i) {
            auto* box = find<QCheckBox>(access[i]);
            EXPECT_EQ(box->isEnabled(), enabled) << access[i] << ' ' << when;
            EXPECT_EQ(box->isChecked(), ticks[i]) << access[i] << ' ' << when;
        }
    };
    expectState(false, "after a load without channel mode");
    for (const char* when : {"ticked", "unticked", "ticked again"}) {
        click("chkChannel");
        expectState(when[0] == 't', when);
    }
    load("A5 00 00 01 C8", "00 00 00 00 AA 00 01 00 00 00 01");
    expectState(false, "after loading channel mode off again");
}

TEST_F(Pages, LoadingNeverMarksTheData) {
    load(kHalfA, kHalfB);
    EXPECT_FALSE(doc.DataChanged()) << "settings block";
    load("A5 00 00 01 00 15 FF 00 09 09 09 33 FF FF", "FF FF FF");
    EXPECT_FALSE(doc.DataChanged()) << "repaired block";
    doc.setModelVariant(2);
    doc.setModelVariant(-1);
    EXPECT_FALSE(doc.DataChanged()) << "variants";
    doc.dialTexts[0] = QStringLiteral("123#");
    doc.dialTexts[8] = QStringLiteral("ABCD*-");
    doc.notifyDialTexts();
    EXPECT_FALSE(doc.DataChanged()) << "dial texts";
    doc.resetToStartup();
    EXPECT_FALSE(doc.DataChanged()) << "start-up data";
    EXPECT_EQ(dialBox(0)->text(), QString());
    EXPECT_EQ(shown("cmbTOT"), QStringLiteral("[OFF]"));
}

TEST_F(Pages, ValuesOutsideTheListsSurviveUntilAnEntryIsChosen) {
    load("A5 00 00 01 C8 00 00 00 00 00 00 07", "");
    EXPECT_EQ(doc.settings.toneBurst, 7);
    EXPECT_EQ(shown("cmbTB"), QStringLiteral("[]"));
    EXPECT_EQ(builtByte('A', 11), QStringLiteral("07"));

    click("chkBeep");
    type("cmbTB", "9999");
    EXPECT_TRUE(doc.DataChanged());
    EXPECT_EQ(builtByte('A', 11), QStringLiteral("07")) << "other edits and unknown text keep it";
    choose("cmbTB", 1);
    EXPECT_EQ(builtByte('A', 11), QStringLiteral("01"));

    choose("cmbTOT", 2);
    type("cmbTOT", "75");
    EXPECT_EQ(builtByte('A', 12), QStringLiteral("02"));
}

TEST_F(Pages, ModelOptionsFollowAndSetTheVariant) {
    QSignalSpy redraws(&doc, &Document::memoryRowsChanged);
    const auto checked = [&] {
        QString which;
        for (int i = 0; i < 4; ++i)
            which += find<QRadioButton>(QStringLiteral("opbModel_%1").arg(i))->isChecked() ? '1' : '0';
        return which;
    };
    EXPECT_EQ(checked(), QStringLiteral("1000"));

    click("opbModel_2");
    EXPECT_EQ(doc.ModelVariant(), 2);
    EXPECT_TRUE(doc.DataChanged());
    EXPECT_EQ(redraws.count(), 1);
    EXPECT_EQ(checked(), QStringLiteral("0010"));

    doc.setDataChanged(false);
    doc.setModelVariant(-1);
    EXPECT_EQ(checked(), QStringLiteral("0000"));
    doc.setModelVariant(1);
    EXPECT_EQ(checked(), QStringLiteral("0100"));
    EXPECT_FALSE(doc.DataChanged());

    page1->selectModel(3); // what Auto Select does
    EXPECT_EQ(checked(), QStringLiteral("0001"));
    EXPECT_TRUE(doc.DataChanged());
    EXPECT_EQ(redraws.count(), 2);
}

TEST_F(Pages, ButtonsRequestTheirCommands) {
    QSignalSpy spies[] = {{page1, &zq::ui::SettingsPage1::readSettingsRequested},
                          {page1, &zq::ui::SettingsPage1::writeSettingsRequested},
                          {page1, &zq::ui::SettingsPage1::autoSelectRequested},
                          {page2, &zq::ui::SettingsPage2::readSettingsRequested},
                          {page2, &zq::ui::SettingsPage2::writeSettingsRequested}};
    const char* const buttons[] = {"cmbRxData1", "cmbTxData1", "cmdAuto", "cmbRxData2", "cmbTxData2"};
    for (int i = 0; i < 5; ++i) {
        QTest::mouseClick(find<QPushButton>(buttons[i]), Qt::LeftButton);
        for (int k = 0; k < 5; ++k)
            EXPECT_EQ(spies[k].count(), k <= i ? 1 : 0) << buttons[i] << " signal " << k;
    }
    EXPECT_EQ(page1->readSettingsButton()->objectName(), QStringLiteral("cmbRxData1"));
    EXPECT_EQ(page2->writeSettingsButton()->objectName(), QStringLiteral("cmbTxData2"));
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(Pages, ListsAndCaptionsCarryTheirTextsExactly) {
    const std::pair<const char*, const char*> lists[] = {
        {"cmbTOT", "OFF| 30| 60| 90|120|150|180|210|240|270|300|330|360|390|420|450"},
        {"cmbTOTP", "  0|  1|  2|  3|  4|  5|  6|  7|  8|  9| 10| 11| 12| 13| 14| 15"},
        {"cmbTB", "1750|2100|1000|1450"},
        {"cmbBat", "Ni-MH|Li-ion"},
        {"cmbLamp", "5 second|Permanent on"},
        {"cmbScan", "Timer|Busy"},
        {"cmbDWait", " 100| 400| 700|1000"},
        {"cmbDFirst", "  60|  80| 160| 200"},
        {"cmbDBurst", "  60|  80| 160| 200"}};
    for (const auto& [name, entries] : lists) {
        auto* box = find<QComboBox>(name);
        QStringList list;
        for (int i = 0; i < box->count(); ++i)
            list << box->itemText(i);
        EXPECT_EQ(list.join('|'), QLatin1String(entries)) << name;
    }
    EXPECT_EQ(find<QCheckBox>("chkMosq")->text(), "Mosqito Repel");
    EXPECT_EQ(find<QCheckBox>("chkNameEn")->text(), "Name Opration");
    EXPECT_EQ(find<QRadioButton>("opbModel_2")->text(), "ZQ-318 TFH");
    EXPECT_EQ(find<QRadioButton>("opbModel_3")->property("index").toInt(), 3);
}

TEST_F(Pages, DialBoxTakesOnlyDialCharactersUpperCasedUpToSixteen) {
    const std::pair<const char*, const char*> cases[] = {{"0123456789", "0123456789"},
                                                         {"#*-ABCD", "#*-ABCD"},
                                                         {"abcd", "ABCD"},
                                                         {"1b2", "1B2"},
                                                         {"Ee", ""},
                                                         {"xyz!+ .", ""},
                                                         {"1E2e3F", "123"},
                                                         {"12#\b", "12"},
                                                         {"12345678901234567890", "1234567890123456"},
                                                         {"abcdabcdabcdabcdab", "ABCDABCDABCDABCD"}};
    QLineEdit* box = dialBox(3);
    box->setFocus();
    for (const auto& [typed, kept] : cases) {
        box->clear();
        doc.setDataChanged(false);
        QTest::keyClicks(box, QLatin1String(typed));
        EXPECT_EQ(box->text(), QLatin1String(kept)) << typed;
        EXPECT_EQ(doc.dialTexts[3], QLatin1String(kept)) << typed;
        EXPECT_EQ(doc.DataChanged(), *kept != 0) << typed;
    }
}

TEST_F(Pages, EnterMovesTheFocusToTheNextDialBoxAndFromTheLastToTheFirst) {
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        dialBox(k)->setFocus();
        QTest::keyClick(dialBox(k), k % 2 ? Qt::Key_Enter : Qt::Key_Return);
        EXPECT_EQ(host.focusWidget(), dialBox(k == 8 ? 0 : k + 1)) << "from box " << k;
        EXPECT_EQ(dialBox(k)->text(), QString()) << "Enter types nothing";
    }
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(Pages, PastedDialTextBypassesTheFilterAndIsEncodedUpperCased) {
    QLineEdit* box = dialBox(5);
    box->setFocus();
    QApplication::clipboard()->setText(QStringLiteral("1bE#"));
    box->paste();
    EXPECT_EQ(box->text(), QStringLiteral("1bE#"));
    EXPECT_EQ(doc.dialTexts[5], QStringLiteral("1bE#"));
    EXPECT_TRUE(doc.DataChanged());

    // The box's length limit holds for a paste as well.
    box->clear();
    QApplication::clipboard()->setText(QString(20, QLatin1Char('9')));
    box->paste();
    EXPECT_EQ(doc.dialTexts[5], QString(16, QLatin1Char('9')));
}

TEST_F(Pages, DocumentDialTextsShowWithoutMarkingTheData) {
    for (int k = 0; k < zq::model::kDialCount; ++k)
        doc.dialTexts[k] = zq::model::UpDateDialData(QStringLiteral("3%1").arg(k) + QStringLiteral("3A3F40"));
    doc.notifyDialTexts();
    for (int k = 0; k < zq::model::kDialCount; ++k)
        EXPECT_EQ(dialBox(k)->text(), QString::number(k) + QStringLiteral("A#-")) << k;
    EXPECT_FALSE(doc.DataChanged());

    // An edit of one box leaves the others as loaded.
    dialBox(2)->setFocus();
    QTest::keyClick(dialBox(2), Qt::Key_End);
    QTest::keyClicks(dialBox(2), "d");
    EXPECT_EQ(doc.dialTexts[2], QStringLiteral("2A#-D"));
    EXPECT_EQ(doc.dialTexts[7], QStringLiteral("7A#-"));
}

} // namespace

int main(int argc, char** argv) {
    // The test list is also read at build time, where no display may exist.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
