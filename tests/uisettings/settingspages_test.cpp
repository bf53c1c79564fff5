// Both settings pages over one document, shown side by side and driven through their widgets.
#include "model/document.h"
#include "ui/dtmfsettingspage.h"
#include "ui/functionsettingspage.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

using zq::model::Document;

namespace {

class Pages : public ::testing::Test {
protected:
    Pages() {
        auto* row = new QHBoxLayout(&host);
        row->addWidget(new zq::ui::FunctionSettingsPage(doc, &host));
        row->addWidget(page2 = new zq::ui::DtmfSettingsPage(doc, &host));
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
    void click(const QString& name) {
        auto* button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
    }
    QString shown(const char* name) const {
        QWidget* widget = find(QLatin1String(name));
        if (auto* box = qobject_cast<QCheckBox*>(widget)) return box->isChecked() ? "ticked" : "clear";
        if (auto* box = qobject_cast<QComboBox*>(widget)) return "[" + box->currentText() + "]";
        return find<QLabel>(QLatin1String(name))->text();
    }
    void load(const char* halfA, const char* halfB) {
        doc.setSettingsHalf(0, QString::fromLatin1(halfA).remove(QLatin1Char(' ')));
        doc.setSettingsHalf(1, QString::fromLatin1(halfB).remove(QLatin1Char(' ')));
        doc.applySettingsBlock();
    }
    Document doc;
    QWidget host;
    zq::ui::DtmfSettingsPage* page2 = nullptr;
};

TEST_F(Pages, AppliedBlockShowsInEveryControl) {
    load("A5 00 01 01 00 0C 03 00 02 01 03 02 05 0A 01 00",
         "01 01 00 00 AA 00 02 00 01 00 01 01 00 01 00 00");
    const std::pair<const char*, const char*> expected[] = {
        {"chkChannel", "ticked"}, {"lblVol", "12"},          {"lblSql", "3"},         {"cmbDWait", "[ 700]"},
        {"cmbDFirst", "[  80]"},  {"cmbDBurst", "[ 200]"},   {"cmbTB", "[1000]"},     {"cmbTOT", "[150]"},
        {"cmbTOTP", "[ 10]"},     {"chkLock", "ticked"},     {"chkAPO", "clear"},     {"chkBeep", "ticked"},
        {"cmbScan", "[Busy]"},    {"cmbLamp", "[5 second]"}, {"chkScanEn", "ticked"}, {"chkPowerEn", "clear"},
        {"chkLockEn", "ticked"},  {"chkMoniEn", "clear"},    {"chkToneEn", "ticked"}, {"chkBurstEn", "clear"},
        {"chkNameEn", "ticked"},  {"cmbBat", "[Li-ion]"},    {"chkCharge", "ticked"},
    };
    doc.setDialText(8, QStringLiteral("8D#"), Document::Mark::Quiet);
    for (const auto& [name, text] : expected)
        EXPECT_EQ(shown(name), QString::fromLatin1(text)) << name;
    EXPECT_EQ(dialBox(8)->text(), QStringLiteral("8D#"));
    EXPECT_FALSE(doc.DataChanged());
}

// One edit per control, in this order: c click, s choose entry `arg` with the arrow keys, t type `arg` into
// the list, k press key `arg`. Whether it marks the data, and the settings byte it builds. The tone burst
// starts outside its list and keeps its value through other edits and unknown text until an entry is chosen.
TEST_F(Pages, EachEditStoresItsByteAndMarksOnlyWhereItShould) {
    const struct {
        char how;
        const char *widget, *arg;
        bool marks;
        char half;
        int byte;
        const char* expected;
    } edits[] = {
        {'c', "chkScanEn", "", 0, 'B', 4, "00"}, // greyed while channel mode is off
        {'c', "chkMosq", "", 0, 0, 0, ""},          {'c', "chkSQL", "", 0, 0, 0, ""},
        {'c', "chkChannel", "", 1, 'A', 2, "01"},   {'k', "Slider1", "End", 1, 'A', 5, "14"},
        {'k', "Slider2", "PgUp", 1, 'A', 6, "05"},  {'s', "cmbDWait", "3", 0, 'A', 8, "03"},
        {'t', "cmbDFirst", "160", 1, 'A', 9, "02"}, {'s', "cmbDBurst", "1", 0, 'A', 10, "01"},
        {'t', "cmbTB", "9999", 1, 'A', 11, "07"},   {'s', "cmbTB", "3", 0, 'A', 11, "03"},
        {'t', "cmbTOT", "450", 1, 'A', 12, "0F"},   {'s', "cmbTOTP", "15", 0, 'A', 13, "0F"},
        {'c', "chkLock", "", 1, 'A', 14, "01"},     {'c', "chkAPO", "", 1, 'A', 15, "01"},
        {'c', "chkBeep", "", 1, 'B', 0, "01"},      {'s', "cmbScan", "1", 0, 'B', 1, "01"},
        {'s', "cmbLamp", "1", 0, 'B', 2, "01"},     {'c', "chkScanEn", "", 1, 'B', 4, "AA"},
        {'c', "chkPowerEn", "", 1, 'B', 5, "AA"},   {'c', "chkLockEn", "", 1, 'B', 6, "01"},
        {'c', "chkMoniEn", "", 1, 'B', 7, "01"},    {'c', "chkToneEn", "", 1, 'B', 8, "01"},
        {'c', "chkBurstEn", "", 1, 'B', 9, "01"},   {'c', "chkNameEn", "", 1, 'B', 10, "01"},
        {'s', "cmbBat", "1", 0, 'B', 11, "01"},     {'c', "chkCharge", "", 1, 'B', 13, "01"},
        {'c', "chkAutoProg", "", 1, 0, 0, ""},      {'c', "chkFlg1_0", "", 1, 0, 0, ""},
    };
    load("A5 00 00 01 C8 00 00 00 00 00 00 07", "");
    EXPECT_EQ(shown("cmbTB"), QStringLiteral("[]"));
    for (const auto& e : edits) {
        SCOPED_TRACE(e.widget);
        doc.setDataChanged(false);
        QWidget* widget = find(QLatin1String(e.widget));
        auto* list = qobject_cast<QComboBox*>(widget);
        const int entry = QByteArray(e.arg).toInt();
        widget->setFocus();
        if (e.how == 'c') click(QLatin1String(e.widget));
        if (e.how == 'k') QTest::keyClick(widget, QKeySequence(QLatin1String(e.arg))[0].key());
        while (e.how == 's' && list->currentIndex() != entry)
            QTest::keyClick(list, list->currentIndex() > entry ? Qt::Key_Up : Qt::Key_Down);
        if (e.how == 't') {
            list->lineEdit()->selectAll();
            QTest::keyClick(list->lineEdit(), Qt::Key_Backspace);
            QTest::keyClicks(list->lineEdit(), QLatin1String(e.arg));
        }
        EXPECT_EQ(doc.DataChanged(), e.marks);
        doc.buildSettingsBlock();
        const QString& half = e.half == 'A' ? doc.settingsBlock().halfA : doc.settingsBlock().halfB;
        if (e.half) {
            EXPECT_EQ(half.mid(2 * e.byte, 2), QLatin1String(e.expected));
        }
    }
    EXPECT_TRUE(doc.settings().mosquitoRepel && doc.settings().sqlExternal);
}

TEST_F(Pages, SliderLabelFollowsTheDragAndOnlyTheReleaseStoresAndMarks) {
    auto* slider = find<QSlider>("Slider1");
    slider->setSliderDown(true);
    slider->setSliderPosition(9);
    EXPECT_EQ(shown("lblVol"), QStringLiteral("9"));
    EXPECT_EQ(doc.settings().volume, 0);
    EXPECT_FALSE(doc.DataChanged());
    slider->setSliderDown(false);
    EXPECT_EQ(doc.settings().volume, 9);
    EXPECT_TRUE(doc.DataChanged());
}

TEST_F(Pages, ChannelModeGreysTheAccessFlagsAndKeepsTheirTicks) {
    load("A5 00 00 01 C8", "00 00 00 00 AA 00 01 00 00 00 01");
    for (const bool greyed : {true, false, true}) {
        EXPECT_EQ(find("chkNameEn")->isEnabled(), !greyed);
        EXPECT_EQ(shown("chkScanEn") + shown("chkPowerEn") + shown("chkLockEn") + shown("chkNameEn"),
                  QStringLiteral("tickedcleartickedticked"));
        click("chkChannel");
    }
}

TEST_F(Pages, ModelOptionsFollowAndSetTheVariant) {
    QSignalSpy redraws(&doc, &Document::memoryRowsChanged);
    click("opbModel_2");
    EXPECT_EQ(doc.ModelVariant(), 2);
    EXPECT_TRUE(doc.DataChanged());
    EXPECT_EQ(redraws.count(), 1);
    doc.setDataChanged(false);
    doc.setModelVariant(-1);
    EXPECT_FALSE(find<QRadioButton>("opbModel_2")->isChecked()) << "no variant, no option";
    doc.setModelVariant(1);
    EXPECT_TRUE(find<QRadioButton>("opbModel_1")->isChecked());
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(Pages, ListsCaptionsAndTheWriteButtonOfThePage) {
    auto* timeOut = find<QComboBox>("cmbTOT"); // the other lists' entries show in the applied-block test
    QStringList entries;
    for (int i = 0; i < timeOut->count(); ++i)
        entries << timeOut->itemText(i);
    EXPECT_EQ(entries.join('|'), "OFF| 30| 60| 90|120|150|180|210|240|270|300|330|360|390|420|450");
    EXPECT_EQ(find<QCheckBox>("chkMosq")->text(), "Mosqito Repel");
    EXPECT_EQ(find<QCheckBox>("chkNameEn")->text(), "Name Opration");
    EXPECT_EQ(find<QRadioButton>("opbModel_2")->text(), "ZQ-318 TFH");

    // The other transfer buttons are driven through the main window.
    QSignalSpy writes(page2, &zq::ui::DtmfSettingsPage::writeSettingsRequested);
    click("cmbTxData2");
    EXPECT_EQ(writes.count(), 1);
}

TEST_F(Pages, DialBoxTakesOnlyDialCharactersUpperCasedUpToSixteenAndEnterMovesOn) {
    const std::pair<const char*, const char*> cases[] = {
        {"1bE-*\b", "1B-"}, {"xyz!+ .", ""}, {"abcdabcdabcdabcdab", "ABCDABCDABCDABCD"}};
    QLineEdit* box = dialBox(3);
    box->setFocus();
    for (const auto& [typed, kept] : cases) {
        box->clear();
        doc.setDataChanged(false);
        QTest::keyClicks(box, QLatin1String(typed));
        EXPECT_EQ(box->text(), QLatin1String(kept)) << typed;
        EXPECT_EQ(doc.dialTexts()[3], QLatin1String(kept)) << typed;
        EXPECT_EQ(doc.DataChanged(), *kept != 0) << typed;
    }
    // A paste passes the filter unchanged.
    QApplication::clipboard()->setText(QStringLiteral("1bE#"));
    box->clear();
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(doc.dialTexts()[3], QStringLiteral("1bE#"));

    doc.setDataChanged(false);
    for (const auto& [from, key, to] : {std::tuple{0, Qt::Key_Return, 1}, {8, Qt::Key_Enter, 0}}) {
        dialBox(from)->setFocus();
        QTest::keyClick(dialBox(from), key);
        EXPECT_EQ(host.focusWidget(), dialBox(to)) << from;
    }
    EXPECT_FALSE(doc.DataChanged()) << "Enter types nothing";
}

} // namespace
