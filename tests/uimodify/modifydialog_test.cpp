// Drives the channel modify dialog through its real widgets: key filters, corrections on leaving a
// field, the opening steps and what OK and Cancel leave in the document.
#include "model/document.h"
#include "model/stores.h"
#include "model/tables.h"
#include "ui/modifydialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

using namespace zq::model;
using zq::ui::ModifyDialog;

namespace {

class ModifyDialogTest : public ::testing::Test {
protected:
    Document doc;
    ModifyDialog dlg{doc};

    template <class W = QWidget> W* child(const QString& name) {
        W* widget = dlg.findChild<W*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }
    QLineEdit* box(const char* name) { return child<QLineEdit>(QLatin1String(name)); }
    QComboBox* combo(const char* name) { return child<QComboBox>(QLatin1String(name)); }
    QRadioButton* option(const char* array, int index) {
        return child<QRadioButton>(QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index));
    }
    QCheckBox* check(const char* name) { return child<QCheckBox>(QLatin1String(name)); }
    QString label(const char* name) { return child<QLabel>(QLatin1String(name))->text(); }

    // Shows the dialog as the opener would and waits until it has the keyboard.
    void showActive() {
        dlg.show();
        QApplication::setActiveWindow(&dlg);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dlg));
    }
    void leave(QLineEdit* target) {
        ASSERT_TRUE(target->hasFocus());
        dlg.findChild<QPushButton*>(QStringLiteral("CancelButton"))->setFocus(Qt::TabFocusReason);
    }
    void retype(QLineEdit* target, const char* typed) {
        target->setFocus(Qt::OtherFocusReason);
        target->clear();
        QTest::keyClicks(target, QLatin1String(typed));
    }
    void putInUse(int row, const QString& frequency) {
        doc.memory.set(row, ColFrequency, frequency, frequency.left(8).toDouble());
        doc.memory.setChannelInUse(row, true);
    }
    void expectMemoryControlsVisible(bool visible) {
        for (const char* name : {"chkSkip", "chkHold", "txtName", "lblCH"})
            EXPECT_EQ(child(QLatin1String(name))->isVisibleTo(&dlg), visible) << name;
    }
};

TEST_F(ModifyDialogTest, MemoryOpeningSetsCaptionsAndShowsMemoryControls) {
    doc.setModelVariant(VariantE);
    ASSERT_TRUE(dlg.prepareMemoryChannel(12));
    EXPECT_EQ(dlg.windowTitle(), QStringLiteral("Modify Memory Channel Parameter"));
    EXPECT_EQ(label("lblMode"), QStringLiteral("Memory"));
    EXPECT_EQ(label("lblCH"), QStringLiteral("12CH"));
    EXPECT_EQ(label("lblMHz"), QStringLiteral("(144.000-145.995MHz)"));
    doc.setCloneCodeA(true);
    dlg.prepareMemoryChannel(0);
    EXPECT_EQ(label("lblCH"), QStringLiteral("0CH"));
    EXPECT_EQ(label("lblMHz"), QStringLiteral("(136.000-173.995MHz)"));
    expectMemoryControlsVisible(true);
    EXPECT_FALSE(dlg.prepareMemoryChannel(200));
    EXPECT_FALSE(dlg.prepareMemoryChannel(-1));
}

struct SpecialCase {
    int row;
    const char *title, *mode;
    bool frequencyEnabled;
    const char *freq, *freq2;
};

class SpecialOpening : public ModifyDialogTest, public ::testing::WithParamInterface<SpecialCase> {};

TEST_P(SpecialOpening, CaptionsAndFrequencyBoxes) {
    const SpecialCase& c = GetParam();
    doc.special.set(kVfoRow, ColFrequency, QStringLiteral("146.5250"), 146.525);
    doc.special.set(kCallRow, ColFrequency, QStringLiteral("144.0100"), 144.01);
    // Neither the memory opening nor the repeater's disabled frequency may leak into this one.
    dlg.prepareMemoryChannel(3);
    dlg.prepareSpecialRow(kRptRow);
    ASSERT_TRUE(dlg.prepareSpecialRow(c.row));
    EXPECT_EQ(dlg.windowTitle(), QLatin1String(c.title));
    EXPECT_EQ(label("lblMode"), QLatin1String(c.mode));
    EXPECT_EQ(box("txtFreq")->isEnabled(), c.frequencyEnabled);
    EXPECT_EQ(box("txtFreq2")->isEnabled(), c.frequencyEnabled);
    EXPECT_EQ(box("txtFreq")->text(), QLatin1String(c.freq));
    EXPECT_EQ(box("txtFreq2")->text(), QLatin1String(c.freq2));
    expectMemoryControlsVisible(false);
    showActive(); // the frequency takes the focus; the repeater's first editable field is its tone mode
    EXPECT_TRUE(c.frequencyEnabled ? box("txtFreq")->hasFocus() : option("optTone", 1)->hasFocus());
    EXPECT_EQ(box("txtFreq")->selectedText(), QLatin1String(c.frequencyEnabled ? c.freq : ""));
    dlg.reject();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SpecialOpening,
    ::testing::Values(SpecialCase{0, "Modify VFO Parameters", "VFO", true, "146", "5250"},
                      SpecialCase{1, "Modify Call Channel Parameters", "Call", true, "144", "0100"},
                      SpecialCase{2, "Modifi Repeater Access Parameters", "Repeater", false, "RPT", ""}));

TEST_F(ModifyDialogTest, FillsControlsFromTheRowAndOkKeepsThemUnchanged) {
    const QStringList texts =
        QStringLiteral("147.1250*|12.5KHz|TSQ|250.3Hz|100.0Hz|754|+Shift|0.6000|Mid||on2|On|On|AB(1|")
            .split(QLatin1Char('|'));
    const double numbers[kMemoryColumns] = {147.125, 2, 3, 38, 12, 103, 2, 0.6, 1, 0, 2, 1, 5, 1, 1};
    for (int column = 0; column < kMemoryColumns; ++column)
        doc.memory.set(7, column, texts[column], numbers[column]);
    doc.memory.setChannelInUse(7, true);
    dlg.prepareMemoryChannel(7);

    EXPECT_EQ(box("txtFreq")->text() + '.' + box("txtFreq2")->text(), QStringLiteral("147.1250"));
    EXPECT_EQ(box("txtShift")->text() + '.' + box("txtShift2")->text(), QStringLiteral("00.6000"));
    EXPECT_EQ(box("txtName")->text(), QStringLiteral("AB(1"));
    EXPECT_EQ(combo("cmbTxTone")->currentText(), QStringLiteral("250.3Hz"));
    EXPECT_EQ(combo("cmbRxTone")->currentIndex(), 12);
    EXPECT_EQ(combo("cmbDCS")->currentText(), QStringLiteral("754"));
    for (const auto& [array, index] :
         {std::pair{"optStep", 2}, {"optTone", 2}, {"optSift", 2}, {"optATT", 1}, {"optBs", 2}})
        EXPECT_TRUE(option(array, index)->isChecked()) << array;
    for (const char* name : {"chkClock", "chkBCLO", "chkSkip", "chkBS"})
        EXPECT_TRUE(check(name)->isChecked()) << name;
    EXPECT_FALSE(check("chkPower")->isChecked());
    EXPECT_EQ(option("optStep", 2)->text(), QStringLiteral("12.5KHz"));

    dlg.accept();
    EXPECT_EQ(doc.memory.cell(7, ColFrequency), (Cell{texts[0], numbers[0]}));
    EXPECT_EQ(doc.memory.text(7, ColOffset), QStringLiteral("0.6000"));
    EXPECT_EQ(doc.memory.number(7, ColSkip), 1);
}

TEST_F(ModifyDialogTest, EmptyChannelTakesTheTemplateUnlessHoldIsTicked) {
    doc.memory.set(kTemplateRow, ColFrequency, QStringLiteral("150.5000"), 150.5);
    doc.memory.set(kTemplateRow, ColName, QStringLiteral("TMPL"), 1);
    doc.memory.set(5, ColFrequency, QStringLiteral("160.0000"), 160.0);
    doc.memory.set(5, ColName, QStringLiteral("OLD"), 1);
    doc.memory.set(6, ColFrequency, QStringLiteral("161.0000"), 161.0);
    putInUse(9, QStringLiteral("151.0000"));
    QSignalSpy flag(&doc, &Document::dataChangedFlagChanged);

    dlg.prepareMemoryChannel(9); // a channel in use is never overwritten
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("151"));
    EXPECT_EQ(doc.memory.text(9, ColFrequency), QStringLiteral("151.0000"));

    check("chkHold")->setChecked(true);
    dlg.prepareMemoryChannel(5);
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("160"));
    EXPECT_EQ(doc.memory.text(5, ColName), QStringLiteral("OLD"));
    dlg.reject();
    // The dialog is only hidden: the tick survives into the next opening.
    dlg.prepareMemoryChannel(6);
    EXPECT_TRUE(check("chkHold")->isChecked());
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("161"));

    check("chkHold")->setChecked(false);
    dlg.prepareMemoryChannel(5);
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("150"));
    EXPECT_EQ(box("txtName")->text(), QStringLiteral("TMPL"));
    for (int column = 0; column < kMemoryColumns; ++column)
        EXPECT_EQ(doc.memory.cell(5, column), doc.memory.cell(kTemplateRow, column)) << column;
    // Cancel keeps the copied cells but the channel stays empty.
    dlg.reject();
    EXPECT_EQ(doc.memory.text(5, ColFrequency), QStringLiteral("150.5000"));
    EXPECT_FALSE(doc.memory.ChannelInUse(5));
    EXPECT_FALSE(doc.DataChanged());
    EXPECT_EQ(flag.count(), 0);
}

TEST_F(ModifyDialogTest, TypingThreeMegahertzDigitsRunsOnIntoTheFraction) {
    // In use, so that leaving the box too early would put back the stored 150.
    putInUse(0, QStringLiteral("150.0000"));
    dlg.prepareMemoryChannel(0);
    showActive();
    QLineEdit* freq = box("txtFreq");
    QLineEdit* freq2 = box("txtFreq2");
    ASSERT_TRUE(freq->hasFocus());
    EXPECT_EQ(freq->selectedText(), QStringLiteral("150"));
    QTest::keyClick(freq, Qt::Key_1);
    QTest::keyClick(freq, Qt::Key_A);
    QTest::keyClick(freq, Qt::Key_4);
    EXPECT_TRUE(freq->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_5);
    EXPECT_EQ(freq->text(), QStringLiteral("145"));
    EXPECT_TRUE(freq2->hasFocus());
    EXPECT_EQ(freq2->selectedText(), QStringLiteral("0000"));
    // Typing continues over the selected fraction.
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("0125"));
    EXPECT_EQ(freq2->text(), QStringLiteral("0125"));
    dlg.reject();
}

TEST_F(ModifyDialogTest, ShiftRunsOnIntoItsFractionSelectingAsMuchAsTheFrequencyFraction) {
    dlg.prepareMemoryChannel(0);
    showActive();
    QLineEdit* shift = box("txtShift");
    QLineEdit* shift2 = box("txtShift2");
    box("txtFreq2")->setText(QStringLiteral("50")); // a short fraction shows whose length counts
    retype(shift, "1");
    EXPECT_TRUE(shift->hasFocus());
    QTest::keyClick(shift, Qt::Key_2);
    EXPECT_EQ(shift->text(), QStringLiteral("12"));
    ASSERT_TRUE(shift2->hasFocus());
    EXPECT_EQ(shift2->selectionStart(), 0);
    EXPECT_EQ(shift2->selectedText(), QStringLiteral("60"));
    dlg.reject();
}

TEST_F(ModifyDialogTest, KeyFiltersOfTheNumericBoxesAndTheName) {
    const struct {
        const char *box, *before, *typed, *after;
    } cases[] = {{"txtFreq", "14", "\b7a.", "17"},
                 {"txtFreq2", "01", "- ", "01"},
                 {"txtShift2", "12", "9e", "129"},
                 {"txtShift", "1", "\b+", ""}};
    for (const auto& c : cases) {
        QLineEdit* target = box(c.box);
        target->setText(QLatin1String(c.before));
        target->end(false);
        QTest::keyClicks(target, QLatin1String(c.typed));
        EXPECT_EQ(target->text(), QLatin1String(c.after)) << c.box << " typed " << c.typed;
    }
    // Ctrl+V arrives as a control character, which is no digit either.
    QTest::sendKeyEvent(QTest::Click, box("txtFreq2"), Qt::Key_V, QStringLiteral("\x16"),
                        Qt::ControlModifier);
    EXPECT_EQ(box("txtFreq2")->text(), QStringLiteral("01"));

    // Per modifier: the keys pressed and what each adds to the name ('~' for nothing).
    const struct {
        Qt::KeyboardModifiers modifiers;
        const char *keys, *added;
    } groups[] = {{Qt::NoModifier, "ezad*+-/=\\ 9.[", "EZAD*+-/=\\ 9~~"},
                  {Qt::ShiftModifier, "EZAD#$()_%@?", "~~AD#$()_~~~"},
                  {Qt::ControlModifier, "a", "~"}};
    QLineEdit* name = box("txtName");
    for (const auto& g : groups) {
        for (int i = 0; g.keys[i]; ++i) {
            name->setText(QStringLiteral("1"));
            name->end(false);
            QTest::keyClick(name, g.keys[i], g.modifiers);
            const QString added = g.added[i] == '~' ? QString() : QString(QLatin1Char(g.added[i]));
            EXPECT_EQ(name->text(), QStringLiteral("1") + added) << "key " << g.keys[i] << int(g.modifiers);
        }
    }
    name->clear();
    QTest::keyClicks(name, QStringLiteral("abcdefgh"));
    EXPECT_EQ(name->text(), QStringLiteral("ABCDEF"));
    QTest::keyClick(name, Qt::Key_Backspace);
    EXPECT_EQ(name->text(), QStringLiteral("ABCDE"));
}

struct FractionCase {
    const char* box;
    const char* typed;
    int stepBefore;
    const char* corrected;
    int stepAfter; // the frequency fraction ticks the step it fits; the shift's leaves it
};

class FractionSnap : public ModifyDialogTest, public ::testing::WithParamInterface<FractionCase> {};

TEST_P(FractionSnap, SnapsToTheStepRaster) {
    const FractionCase& c = GetParam();
    dlg.prepareMemoryChannel(0);
    showActive();
    option("optStep", c.stepBefore)->setChecked(true);
    QLineEdit* fraction = box(c.box);
    retype(fraction, c.typed);
    leave(fraction);
    EXPECT_EQ(fraction->text(), QLatin1String(c.corrected));
    EXPECT_TRUE(option("optStep", c.stepAfter)->isChecked());
    dlg.reject();
}

const FractionCase kFractions[] = {
    {"txtFreq2", "0125", 5, "0125", 2},  {"txtFreq2", "0130", 5, "0125", 2},
    {"txtFreq2", "0100", 2, "0100", 0},  {"txtFreq2", "0007", 2, "0000", 0},
    {"txtFreq2", "5", 2, "5000", 0},     {"txtFreq2", "0375", 0, "0375", 2},
    {"txtFreq2", "0990", 2, "0950", 0},  {"txtFreq2", "9999", 2, "9950", 0},
    {"txtFreq2", "", 2, "0000", 0},      {"txtFreq2", "0049", 2, "0000", 0},
    {"txtFreq2", "0124", 0, "0100", 0},  {"txtShift2", "0060", 5, "0000", 5},
    {"txtShift2", "0060", 1, "0050", 1}, {"txtShift2", "0260", 2, "0250", 2},
    {"txtShift2", "6", 0, "6000", 0},    {"txtShift2", "0130", 2, "0125", 2},
    {"txtShift2", "0130", 6, "0100", 6}, {"txtShift2", "0", 5, "0000", 5},
};

INSTANTIATE_TEST_SUITE_P(Cases, FractionSnap, ::testing::ValuesIn(kFractions));

struct RangeCase {
    int variant;
    bool cloneCodeA;
    int mode; // 0 memory not in use, 1 memory in use, 2 VFO row
    const char *typed, *expected;
};

class FrequencyRange : public ModifyDialogTest, public ::testing::WithParamInterface<RangeCase> {};

TEST_P(FrequencyRange, OutOfRangeMegahertzIsReplaced) {
    const RangeCase& c = GetParam();
    doc.setModelVariant(c.variant);
    doc.setCloneCodeA(c.cloneCodeA);
    doc.special.set(kVfoRow, ColFrequency, QStringLiteral("146.5000"), 146.5);
    if (c.mode == 1) putInUse(3, QStringLiteral("150.0000*"));
    if (c.mode == 2)
        dlg.prepareSpecialRow(kVfoRow);
    else
        dlg.prepareMemoryChannel(3);
    showActive();
    QLineEdit* freq = box("txtFreq");
    ASSERT_TRUE(freq->hasFocus());
    freq->setText(QLatin1String(c.typed));
    leave(freq);
    EXPECT_EQ(freq->text(), QLatin1String(c.expected));
    EXPECT_FALSE(doc.DataChanged());
    dlg.reject();
}

const RangeCase kRanges[] = {
    {VariantT, false, 0, "099", "145"}, {VariantT, false, 0, "136", "136"},
    {VariantT, false, 0, "173", "173"}, {VariantT, false, 0, "174", "145"},
    {VariantT, false, 0, "", "145"},    {VariantJ, false, 0, "440", "145"},
    {VariantA, false, 0, "099", "155"}, {-1, false, 0, "099", "155"},
    {VariantE, false, 0, "146", "145"}, {VariantE, false, 0, "144", "144"},
    {VariantE, false, 0, "143", "145"}, {VariantE, true, 0, "146", "146"},
    {VariantE, true, 0, "050", "050"},  {VariantT, true, 0, "174", "145"},
    {VariantT, false, 1, "180", "150"}, {VariantA, false, 1, "099", "150"},
    {VariantT, false, 2, "200", "146"}, {VariantE, false, 2, "150", "146"},
};

INSTANTIATE_TEST_SUITE_P(Cases, FrequencyRange, ::testing::ValuesIn(kRanges));

TEST_F(ModifyDialogTest, ShiftIsPaddedAndEnterOnTheDefaultButtonStillCorrectsTheFocusedField) {
    putInUse(2, QStringLiteral("145.0000"));
    dlg.prepareMemoryChannel(2);
    showActive();
    QLineEdit* shift = box("txtShift");
    retype(shift, "5");
    leave(shift);
    EXPECT_EQ(shift->text(), QStringLiteral("05"));
    box("txtShift2")->setText(QStringLiteral("2500"));
    QLineEdit* freq2 = box("txtFreq2");
    retype(freq2, "013");
    QTest::keyClick(freq2, Qt::Key_Return);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(doc.memory.text(2, ColFrequency), QStringLiteral("145.0125"));
    EXPECT_EQ(doc.memory.text(2, ColStep), QStringLiteral("12.5KHz"));
    // Stored without one leading zero.
    EXPECT_EQ(doc.memory.cell(2, ColOffset), (Cell{QStringLiteral("5.2500"), 5.25}));
}

TEST_F(ModifyDialogTest, OkWritesEveryColumnOfAMemoryChannel) {
    QSignalSpy rows(&doc, &Document::memoryRowsChanged);
    dlg.prepareMemoryChannel(17);
    box("txtFreq")->setText(QStringLiteral("146"));
    box("txtFreq2")->setText(QStringLiteral("0125"));
    for (const auto& [array, index] :
         {std::pair{"optStep", 2}, {"optTone", 2}, {"optSift", 2}, {"optATT", 1}, {"optBs", 2}})
        option(array, index)->setChecked(true);
    combo("cmbTxTone")->setCurrentIndex(3);
    combo("cmbRxTone")->setCurrentIndex(38);
    combo("cmbDCS")->setCurrentIndex(10);
    box("txtShift")->setText(QStringLiteral("12"));
    box("txtShift2")->setText(QStringLiteral("5000"));
    for (const char* name : {"chkClock", "chkBCLO", "chkSkip"})
        check(name)->setChecked(true);
    box("txtName")->setText(QStringLiteral("AB12"));
    dlg.accept();

    const QStringList texts =
        QStringLiteral("146.0125*|12.5KHz|TSQ|74.4Hz|250.3Hz|054|+Shift|12.5000|Mid|------|On2|On|On|AB12|")
            .split(QLatin1Char('|'));
    const double numbers[kMemoryColumns] = {146.0125, 2, 3, 3, 38, 10, 2, 12.5, 1, 0, 2, 1, 1, 1, 1};
    for (int column = 0; column < kMemoryColumns; ++column) {
        EXPECT_EQ(doc.memory.text(17, column), texts[column]) << column;
        EXPECT_NEAR(doc.memory.number(17, column), numbers[column], 1e-9) << column;
    }
    EXPECT_TRUE(doc.memory.ChannelInUse(17));
    EXPECT_TRUE(doc.DataChanged());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows.at(0).at(0).toInt(), 17);
    EXPECT_EQ(rows.at(0).at(1).toInt(), 17);
}

TEST_F(ModifyDialogTest, TickedOptionBecomesTextAndCode) {
    const struct {
        const char* array;
        int index, column;
        const char* text;
        double number;
    } cases[] = {{"optTone", 0, ColTone, "None", 0},    {"optTone", 1, ColTone, "Tone", 1},
                 {"optTone", 2, ColTone, "TSQ", 3},     {"optTone", 3, ColTone, "DCS", 12},
                 {"optSift", 0, ColShift, "None", 0},   {"optSift", 1, ColShift, "-Shift", 1},
                 {"optSift", 2, ColShift, "+Shift", 2}, {"optATT", 0, ColPower, "Low", 0},
                 {"optATT", 2, ColPower, "High", 2},    {"optBs", 0, ColBsv, "Off", 0},
                 {"optBs", 1, ColBsv, "On1", 1},        {"optStep", 6, ColStep, "30KHz", 6},
                 {"optStep", 3, ColStep, "15KHz", 3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.array) + '_' + std::to_string(c.index));
        doc.memory.setChannelInUse(1, false);
        dlg.prepareMemoryChannel(1);
        option(c.array, c.index)->setChecked(true);
        dlg.accept();
        EXPECT_EQ(doc.memory.cell(1, c.column), (Cell{QLatin1String(c.text), c.number}));
    }
}

TEST_F(ModifyDialogTest, NoStepTickedLeavesTheStepColumn) {
    putInUse(8, QStringLiteral("145.0000"));
    doc.memory.set(8, ColStep, QStringLiteral("odd"), 11);
    dlg.prepareMemoryChannel(8);
    for (int i = 0; i < kStepCount; ++i)
        EXPECT_FALSE(option("optStep", i)->isChecked());
    dlg.accept();
    EXPECT_EQ(doc.memory.cell(8, ColStep), (Cell{QStringLiteral("odd"), 11}));
}

TEST_F(ModifyDialogTest, CancelChangesNothing) {
    putInUse(30, QStringLiteral("150.0000"));
    const MemoryTable before = doc.memory;
    const SpecialTable specialBefore = doc.special;
    dlg.prepareMemoryChannel(30);
    box("txtFreq")->setText(QStringLiteral("160"));
    check("chkSkip")->setChecked(true);
    dlg.reject();
    dlg.prepareSpecialRow(kCallRow);
    option("optTone", 3)->setChecked(true);
    check("chkPower")->setChecked(true);
    dlg.reject();
    EXPECT_TRUE(doc.memory == before);
    EXPECT_TRUE(doc.special == specialBefore);
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(ModifyDialogTest, OkOnSpecialRowsWritesTheirColumnsOnly) {
    QSignalSpy rows(&doc, &Document::specialRowsChanged);
    doc.special.setText(kRptRow, ColPower, QStringLiteral("stale"));
    dlg.prepareSpecialRow(kVfoRow);
    box("txtFreq")->setText(QStringLiteral("147"));
    box("txtFreq2")->setText(QStringLiteral("0250"));
    option("optStep", 4)->setChecked(true);
    option("optATT", 2)->setChecked(true);
    dlg.accept();
    EXPECT_EQ(doc.special.cell(kVfoRow, ColFrequency), (Cell{QStringLiteral("147.0250"), 147.025}));
    EXPECT_EQ(doc.special.cell(kVfoRow, ColStep), (Cell{QStringLiteral("20KHz"), 4}));
    EXPECT_EQ(doc.special.cell(kVfoRow, ColPower), (Cell{QStringLiteral("High"), 2}));
    EXPECT_EQ(doc.special.cell(kVfoRow, ColBlank), (Cell{QStringLiteral("------"), 0}));
    EXPECT_EQ(doc.special.text(kRptRow, ColPower), QString());
    EXPECT_TRUE(doc.DataChanged());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows.at(0).at(0).toInt(), kVfoRow);

    // The repeater row takes tone and shift only.
    dlg.prepareSpecialRow(kRptRow);
    option("optTone", 2)->setChecked(true);
    combo("cmbDCS")->setCurrentIndex(1);
    option("optSift", 2)->setChecked(true);
    box("txtShift")->setText(QStringLiteral("01"));
    box("txtShift2")->setText(QStringLiteral("6000"));
    dlg.accept();
    EXPECT_EQ(doc.special.cell(kRptRow, ColTone), (Cell{QStringLiteral("TSQ"), 3}));
    EXPECT_EQ(doc.special.cell(kRptRow, ColDcs), (Cell{QStringLiteral("025"), 1}));
    EXPECT_EQ(doc.special.cell(kRptRow, ColShift), (Cell{QStringLiteral("+Shift"), 2}));
    EXPECT_EQ(doc.special.text(kRptRow, ColOffset), QStringLiteral("1.6000"));
    for (int column : {0, 1, 8, 9, 10, 11, 12})
        EXPECT_TRUE(doc.special.text(kRptRow, column).isEmpty()) << column;
}

TEST_F(ModifyDialogTest, PowerAndBatteryChecksFollowTheirOptions) {
    dlg.prepareMemoryChannel(0);
    check("chkPower")->setChecked(true);
    EXPECT_TRUE(option("optATT", 2)->isChecked());
    option("optATT", 1)->setChecked(true);
    EXPECT_FALSE(check("chkPower")->isChecked());
    option("optBs", 2)->setChecked(true);
    EXPECT_TRUE(check("chkBS")->isChecked());
    check("chkBS")->setChecked(false);
    EXPECT_TRUE(option("optBs", 0)->isChecked());
}

} // namespace

int main(int argc, char** argv) {
    // The test list is also read at build time, where no display may exist.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
