#include "pagefixture.h"

#include "model/settingscodec.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>

#include <functional>

using zq::model::Document;

namespace {

QString spaced(const char* bytes) {
    return QString::fromLatin1(bytes).remove(QLatin1Char(' '));
}

// What a control shows, in one comparable text.
QString shown(QWidget* widget) {
    if (auto* box = qobject_cast<QCheckBox*>(widget)) return box->isChecked() ? "ticked" : "clear";
    if (auto* box = qobject_cast<QComboBox*>(widget)) return "[" + box->currentText() + "]";
    if (auto* slider = qobject_cast<QSlider*>(widget)) return QString::number(slider->value());
    if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
    return QStringLiteral("?");
}

const char* const kHalfA = "A5 00 01 01 00 0C 03 00 02 01 03 02 05 0A 01 00";
const char* const kHalfB = "01 01 00 00 AA 00 02 00 01 00 01 01 00 01 00 00";

void loadBlock(Document& doc, const char* halfA, const char* halfB) {
    doc.settingsBlock.halfA = spaced(halfA);
    doc.settingsBlock.halfB = spaced(halfB);
    doc.applySettingsBlock();
}

QString builtByte(Document& doc, char half, int byte) {
    doc.buildSettingsBlock();
    const QString& text = half == 'A' ? doc.settingsBlock.halfA : doc.settingsBlock.halfB;
    return text.mid(2 * byte, 2);
}

} // namespace

TEST(SettingsPages, AppliedBlockShowsInEveryControl) {
    PageFixture f;
    loadBlock(f.doc, kHalfA, kHalfB);
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
        EXPECT_EQ(shown(f.find(name)), QString::fromLatin1(text)) << name;
    EXPECT_FALSE(f.doc.DataChanged());

    // Unedited, the rebuilt block is the one applied (apart from the fixed bytes).
    f.doc.buildSettingsBlock();
    EXPECT_EQ(f.doc.settingsBlock.halfA, spaced(kHalfA));
    EXPECT_EQ(f.doc.settingsBlock.halfB, spaced("01 01 00 00 AA 00 01 00 01 00 01 01 00 01 00 00"));
}

// ---- user edits -> settings bytes ----------------------------------------------------------------

struct EditCase {
    const char* name;
    std::function<void(PageFixture&)> edit;
    char half;
    int byte;
    const char* expected;
};

void PrintTo(const EditCase& c, std::ostream* os) {
    *os << c.name;
}

class EditBuildsBytes : public ::testing::TestWithParam<EditCase> {};

TEST_P(EditBuildsBytes, ByteFollowsTheEdit) {
    const EditCase& c = GetParam();
    PageFixture f; // the start-up data: a blank block applied
    c.edit(f);
    EXPECT_EQ(builtByte(f.doc, c.half, c.byte), QString::fromLatin1(c.expected));
}

namespace {
void channelModeThenClick(PageFixture& f, const char* name) {
    f.click("chkChannel");
    f.click(name);
}
void keyOnSlider(PageFixture& f, const char* name, Qt::Key key) {
    auto* slider = f.find<QSlider>(name);
    slider->setFocus();
    QTest::keyClick(slider, key);
}
} // namespace

INSTANTIATE_TEST_SUITE_P(
    SettingsPages, EditBuildsBytes,
    ::testing::Values(
        EditCase{"ChannelModeOn", [](PageFixture& f) { f.click("chkChannel"); }, 'A', 2, "01"},
        EditCase{"ChannelModeClearsC8", [](PageFixture& f) { f.click("chkChannel"); }, 'A', 4, "00"},
        EditCase{"VolumeEnd", [](PageFixture& f) { keyOnSlider(f, "Slider1", Qt::Key_End); }, 'A', 5, "14"},
        EditCase{"SquelchPageUp", [](PageFixture& f) { keyOnSlider(f, "Slider2", Qt::Key_PageUp); }, 'A', 6,
                 "05"},
        EditCase{"DtmfWaitChosen", [](PageFixture& f) { f.choose("cmbDWait", 3); }, 'A', 8, "03"},
        EditCase{"DtmfFirstTyped", [](PageFixture& f) { f.type("cmbDFirst", "160"); }, 'A', 9, "02"},
        EditCase{"DtmfIntervalChosen", [](PageFixture& f) { f.choose("cmbDBurst", 1); }, 'A', 10, "01"},
        EditCase{"ToneBurstChosen", [](PageFixture& f) { f.choose("cmbTB", 3); }, 'A', 11, "03"},
        EditCase{"TimeOutTyped", [](PageFixture& f) { f.type("cmbTOT", "450"); }, 'A', 12, "0F"},
        EditCase{"PenaltyChosen", [](PageFixture& f) { f.choose("cmbTOTP", 15); }, 'A', 13, "0F"},
        EditCase{"KeyLock", [](PageFixture& f) { f.click("chkLock"); }, 'A', 14, "01"},
        EditCase{"AutoPowerOff", [](PageFixture& f) { f.click("chkAPO"); }, 'A', 15, "01"},
        EditCase{"Beep", [](PageFixture& f) { f.click("chkBeep"); }, 'B', 0, "01"},
        EditCase{"ScanBusyChosen", [](PageFixture& f) { f.choose("cmbScan", 1); }, 'B', 1, "01"},
        EditCase{"LampTyped", [](PageFixture& f) { f.type("cmbLamp", "Permanent on"); }, 'B', 2, "01"},
        EditCase{"ScanAccess", [](PageFixture& f) { channelModeThenClick(f, "chkScanEn"); }, 'B', 4, "AA"},
        EditCase{"PowerAccess", [](PageFixture& f) { channelModeThenClick(f, "chkPowerEn"); }, 'B', 5, "AA"},
        EditCase{"LockAccess", [](PageFixture& f) { channelModeThenClick(f, "chkLockEn"); }, 'B', 6, "01"},
        EditCase{"MonitorAccess", [](PageFixture& f) { channelModeThenClick(f, "chkMoniEn"); }, 'B', 7, "01"},
        EditCase{"ToneAccess", [](PageFixture& f) { channelModeThenClick(f, "chkToneEn"); }, 'B', 8, "01"},
        EditCase{"BurstAccess", [](PageFixture& f) { channelModeThenClick(f, "chkBurstEn"); }, 'B', 9, "01"},
        EditCase{"NameAccess", [](PageFixture& f) { channelModeThenClick(f, "chkNameEn"); }, 'B', 10, "01"},
        EditCase{"BatteryChosen", [](PageFixture& f) { f.choose("cmbBat", 1); }, 'B', 11, "01"},
        EditCase{"RepeaterMode", [](PageFixture& f) { f.click("chkCharge"); }, 'B', 13, "01"},
        // An access flag cannot be ticked while channel mode is off.
        EditCase{"AccessLockedWithoutChannelMode", [](PageFixture& f) { f.click("chkScanEn"); }, 'B', 4, "00"},
        // A typed text that names no entry keeps the value.
        EditCase{"UnknownTextKeepsValue",
                 [](PageFixture& f) {
                     f.choose("cmbTOT", 2);
                     f.type("cmbTOT", "75");
                 },
                 'A', 12, "02"}),
    [](const ::testing::TestParamInfo<EditCase>& info) { return std::string(info.param.name); });

// ---- which edits mark the data as changed ---------------------------------------------------------

struct ChangeCase {
    const char* name;
    std::function<void(PageFixture&)> edit;
    bool marks;
};

void PrintTo(const ChangeCase& c, std::ostream* os) {
    *os << c.name;
}

class DataChangedRule : public ::testing::TestWithParam<ChangeCase> {};

TEST_P(DataChangedRule, EditMarksOrNot) {
    const ChangeCase& c = GetParam();
    PageFixture f;
    ASSERT_FALSE(f.doc.DataChanged());
    c.edit(f);
    EXPECT_EQ(f.doc.DataChanged(), c.marks);
}

namespace {
ChangeCase clickCase(const char* name, bool marks) {
    return ChangeCase{name, [name](PageFixture& f) { f.click(name); }, marks};
}
ChangeCase accessCase(const char* name) {
    // Channel mode is ticked by a load, which does not count as an edit.
    return ChangeCase{name,
                      [name](PageFixture& f) {
                          f.doc.settings.channelMode = true;
                          f.doc.notifySettings();
                          f.click(name);
                      },
                      true};
}
} // namespace

INSTANTIATE_TEST_SUITE_P(
    SettingsPages, DataChangedRule,
    ::testing::Values(
        clickCase("chkMosq", false), clickCase("chkSQL", false), clickCase("chkAPO", true),
        clickCase("chkAutoProg", true), clickCase("chkBeep", true), clickCase("chkCharge", true),
        clickCase("chkFlg1_0", true), clickCase("chkFlg1_1", true), clickCase("chkFlg1_2", true),
        clickCase("chkLock", true), clickCase("chkChannel", true), accessCase("chkScanEn"),
        accessCase("chkPowerEn"), accessCase("chkLockEn"), accessCase("chkMoniEn"), accessCase("chkToneEn"),
        accessCase("chkBurstEn"), accessCase("chkNameEn"), clickCase("opbModel_1", true),
        ChangeCase{"cmbBat_chosen", [](PageFixture& f) { f.choose("cmbBat", 1); }, false},
        ChangeCase{"cmbLamp_chosen", [](PageFixture& f) { f.choose("cmbLamp", 1); }, false},
        ChangeCase{"cmbTOT_chosen", [](PageFixture& f) { f.choose("cmbTOT", 7); }, false},
        ChangeCase{"cmbDWait_chosen", [](PageFixture& f) { f.choose("cmbDWait", 2); }, false},
        ChangeCase{"cmbScan_typed", [](PageFixture& f) { f.type("cmbScan", "Busy"); }, true},
        ChangeCase{"cmbTOTP_typed", [](PageFixture& f) { f.type("cmbTOTP", "9"); }, true},
        ChangeCase{"cmbTB_typed", [](PageFixture& f) { f.type("cmbTB", "2100"); }, true},
        ChangeCase{"cmbDBurst_typed", [](PageFixture& f) { f.type("cmbDBurst", "x"); }, true},
        ChangeCase{"Slider1_key", [](PageFixture& f) { keyOnSlider(f, "Slider1", Qt::Key_Right); }, true},
        ChangeCase{"Slider2_key", [](PageFixture& f) { keyOnSlider(f, "Slider2", Qt::Key_Right); }, true},
        ChangeCase{"txtDial_typed",
                   [](PageFixture& f) { QTest::keyClicks(f.find<QLineEdit>("txtDial_4"), "12"); }, true},
        ChangeCase{"txtDial_rejected_key",
                   [](PageFixture& f) { QTest::keyClicks(f.find<QLineEdit>("txtDial_4"), "xyz"); }, false}),
    [](const ::testing::TestParamInfo<ChangeCase>& info) { return std::string(info.param.name); });

TEST(SettingsPages, MosquitoAndSqlTicksAreStoredWithoutMarking) {
    PageFixture f;
    f.click("chkMosq");
    f.click("chkSQL");
    EXPECT_TRUE(f.doc.settings.mosquitoRepel);
    EXPECT_TRUE(f.doc.settings.sqlExternal);
    EXPECT_FALSE(f.doc.DataChanged());
}

TEST(SettingsPages, SliderLabelFollowsTheDragAndTheReleaseMarks) {
    PageFixture f;
    auto* slider = f.find<QSlider>("Slider1");
    auto* label = f.find<QLabel>("lblVol");
    slider->resize(210, slider->sizeHint().height());
    ASSERT_EQ(slider->value(), 0);

    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->sliderPosition();
    option.sliderValue = slider->value();
    option.subControls = QStyle::SC_All;
    const QRect handle =
        slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
    const QRect groove =
        slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, slider);

    QTest::mousePress(slider, Qt::LeftButton, {}, handle.center());
    ASSERT_TRUE(slider->isSliderDown());
    const QPoint middle(handle.center().x() + (groove.width() - handle.width()) / 2, handle.center().y());
    QTest::mouseMove(slider, middle);
    EXPECT_EQ(label->text(), QString::number(slider->sliderPosition()));
    EXPECT_GT(slider->sliderPosition(), 5);
    EXPECT_LT(slider->sliderPosition(), 15);
    EXPECT_FALSE(f.doc.DataChanged()) << "moving alone is no change yet";
    EXPECT_EQ(f.doc.settings.volume, 0);

    QTest::mouseRelease(slider, Qt::LeftButton, {}, middle);
    EXPECT_TRUE(f.doc.DataChanged());
    EXPECT_EQ(f.doc.settings.volume, slider->value());
    EXPECT_EQ(label->text(), QString::number(slider->value()));
}

TEST(SettingsPages, ChannelModeGreysTheAccessFlagsAndKeepsTheirTicks) {
    PageFixture f;
    loadBlock(f.doc, "A5 00 00 01 C8", "00 00 00 00 AA 00 01 00 00 00 01");
    const char* const access[] = {"chkScanEn", "chkPowerEn", "chkLockEn", "chkMoniEn",
                                  "chkToneEn", "chkBurstEn", "chkNameEn"};
    const bool ticks[] = {true, false, true, false, false, false, true};
    const auto expectState = [&](bool enabled, const char* when) {
        EXPECT_EQ(f.find("frmChannel")->isEnabled(), enabled) << when;
        for (int i = 0; i < 7; ++i) {
            auto* box = f.find<QCheckBox>(access[i]);
            EXPECT_EQ(box->isEnabled(), enabled) << access[i] << ' ' << when;
            EXPECT_EQ(box->isChecked(), ticks[i]) << access[i] << ' ' << when;
        }
    };
    expectState(false, "after a load without channel mode");
    f.click("chkChannel");
    expectState(true, "ticked");
    f.click("chkChannel");
    expectState(false, "unticked");
    f.click("chkChannel");
    expectState(true, "ticked again");

    loadBlock(f.doc, "A5 00 00 01 C8", "00 00 00 00 AA 00 01 00 00 00 01");
    expectState(false, "after loading channel mode off again");
}

TEST(SettingsPages, LoadingNeverMarksTheData) {
    PageFixture f;
    const std::pair<const char*, std::function<void(Document&)>> loads[] = {
        {"settings block", [](Document& d) { loadBlock(d, kHalfA, kHalfB); }},
        {"repaired block",
         [](Document& d) { loadBlock(d, "A5 00 00 01 00 15 FF 00 09 09 09 33 FF FF", "FF FF FF"); }},
        {"variant", [](Document& d) { d.setModelVariant(2); }},
        {"no variant", [](Document& d) { d.setModelVariant(-1); }},
        {"dial texts",
         [](Document& d) {
             d.dialTexts[0] = QStringLiteral("123#");
             d.dialTexts[8] = QStringLiteral("ABCD*-");
             d.notifyDialTexts();
         }},
        {"start-up data", [](Document& d) { d.resetToStartup(); }},
    };
    for (const auto& [what, load] : loads) {
        load(f.doc);
        EXPECT_FALSE(f.doc.DataChanged()) << what;
    }
    // The repaired block's volume shows as 0, the start-up data as blank controls.
    EXPECT_EQ(f.find<QLineEdit>("txtDial_0")->text(), QString());
    EXPECT_EQ(shown(f.find("cmbTOT")), QStringLiteral("[OFF]"));
}

TEST(SettingsPages, ToneBurstOutsideTheListSurvivesUntilAnEntryIsChosen) {
    PageFixture f;
    loadBlock(f.doc, "A5 00 00 01 C8 00 00 00 00 00 00 07", "");
    EXPECT_EQ(f.doc.settings.toneBurst, 7);
    EXPECT_EQ(shown(f.find("cmbTB")), QStringLiteral("[]"));
    EXPECT_EQ(builtByte(f.doc, 'A', 11), QStringLiteral("07"));

    f.click("chkBeep");
    f.type("cmbTB", "9999");
    EXPECT_TRUE(f.doc.DataChanged());
    EXPECT_EQ(builtByte(f.doc, 'A', 11), QStringLiteral("07")) << "other edits and unknown text keep it";

    f.choose("cmbTB", 1);
    EXPECT_EQ(builtByte(f.doc, 'A', 11), QStringLiteral("01"));
}

TEST(SettingsPages, ModelOptionsFollowAndSetTheVariant) {
    PageFixture f;
    QSignalSpy redraws(&f.doc, &Document::memoryRowsChanged);
    const auto checked = [&] {
        QString which;
        for (int i = 0; i < 4; ++i)
            which += f.find<QRadioButton>(QStringLiteral("opbModel_%1").arg(i))->isChecked() ? '1' : '0';
        return which;
    };
    EXPECT_EQ(checked(), QStringLiteral("1000"));

    f.click("opbModel_2");
    EXPECT_EQ(f.doc.ModelVariant(), 2);
    EXPECT_TRUE(f.doc.DataChanged());
    EXPECT_EQ(redraws.count(), 1);
    EXPECT_EQ(checked(), QStringLiteral("0010"));

    f.doc.setDataChanged(false);
    f.doc.setModelVariant(-1);
    EXPECT_EQ(checked(), QStringLiteral("0000"));
    f.doc.setModelVariant(1);
    EXPECT_EQ(checked(), QStringLiteral("0100"));
    EXPECT_FALSE(f.doc.DataChanged());

    f.page1->selectModel(3); // what Auto Select does
    EXPECT_EQ(checked(), QStringLiteral("0001"));
    EXPECT_TRUE(f.doc.DataChanged());
    EXPECT_EQ(redraws.count(), 2);
}

TEST(SettingsPages, ButtonsRequestTheirCommands) {
    PageFixture f;
    QSignalSpy read1(f.page1, &zq::ui::SettingsPage1::readSettingsRequested);
    QSignalSpy write1(f.page1, &zq::ui::SettingsPage1::writeSettingsRequested);
    QSignalSpy autoSelect(f.page1, &zq::ui::SettingsPage1::autoSelectRequested);
    QSignalSpy read2(f.page2, &zq::ui::SettingsPage2::readSettingsRequested);
    QSignalSpy write2(f.page2, &zq::ui::SettingsPage2::writeSettingsRequested);
    const std::pair<const char*, QSignalSpy*> buttons[] = {
        {"cmbRxData1", &read1}, {"cmbTxData1", &write1}, {"cmdAuto", &autoSelect},
        {"cmbRxData2", &read2}, {"cmbTxData2", &write2},
    };
    for (const auto& [name, spy] : buttons) {
        const int before =
            read1.count() + write1.count() + autoSelect.count() + read2.count() + write2.count();
        QTest::mouseClick(f.find<QPushButton>(name), Qt::LeftButton);
        EXPECT_EQ(spy->count(), 1) << name;
        EXPECT_EQ(read1.count() + write1.count() + autoSelect.count() + read2.count() + write2.count(),
                  before + 1)
            << name;
    }
    EXPECT_EQ(f.page1->readSettingsButton()->objectName(), QStringLiteral("cmbRxData1"));
    EXPECT_EQ(f.page2->writeSettingsButton()->objectName(), QStringLiteral("cmbTxData2"));
    EXPECT_FALSE(f.doc.DataChanged());
}

TEST(SettingsPages, ListsCarryTheirEntriesExactly) {
    PageFixture f;
    const auto entries = [&](const char* name) {
        auto* box = f.find<QComboBox>(name);
        QStringList list;
        for (int i = 0; i < box->count(); ++i)
            list << box->itemText(i);
        return list.join('|');
    };
    EXPECT_EQ(entries("cmbTOT"), "OFF| 30| 60| 90|120|150|180|210|240|270|300|330|360|390|420|450");
    EXPECT_EQ(entries("cmbTOTP"), "  0|  1|  2|  3|  4|  5|  6|  7|  8|  9| 10| 11| 12| 13| 14| 15");
    EXPECT_EQ(entries("cmbTB"), "1750|2100|1000|1450");
    EXPECT_EQ(entries("cmbBat"), "Ni-MH|Li-ion");
    EXPECT_EQ(entries("cmbLamp"), "5 second|Permanent on");
    EXPECT_EQ(entries("cmbScan"), "Timer|Busy");
    EXPECT_EQ(entries("cmbDWait"), " 100| 400| 700|1000");
    EXPECT_EQ(entries("cmbDFirst"), "  60|  80| 160| 200");
    EXPECT_EQ(entries("cmbDBurst"), "  60|  80| 160| 200");
    EXPECT_EQ(f.find<QCheckBox>("chkMosq")->text(), "Mosqito Repel");
    EXPECT_EQ(f.find<QCheckBox>("chkNameEn")->text(), "Name Opration");
    EXPECT_EQ(f.find<QRadioButton>("opbModel_2")->text(), "ZQ-318 TFH");
    EXPECT_EQ(f.find<QRadioButton>("opbModel_3")->property("index").toInt(), 3);
}
