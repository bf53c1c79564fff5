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
    EXPECT_EQ(box("txtFreq")->text() + '|' + box("txtFreq2")->text(), QLatin1String(c.freq) + '|' + c.freq2);
    expectMemoryControlsVisible(false);
    showActive(); // the repeater's first editable field is its tone mode
    EXPECT_TRUE(c.frequencyEnabled ? box("txtFreq")->hasFocus() : option("optTone", 1)->hasFocus());
    EXPECT_EQ(box("txtFreq")->selectedText(), QLatin1String(c.frequencyEnabled ? c.freq : ""));
    dlg.reject();
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SpecialOpening,
    ::testing::Values(SpecialCase{0, "Modify VFO Parameters", "VFO", true, "146", "5250"},
                      SpecialCase{1, "Modify Call Channel Parameters", "Call", true, "144", "0100"},
                      SpecialCase{2, "Modifi Repeater Access Parameters", "Repeater", false, "RPT", ""}),
    [](const auto& info) { return std::string(info.param.mode); });

TEST_F(ModifyDialogTest, ControlsShowTheRowAndOkWritesItBack) {
    QSignalSpy rows(&doc, &Document::memoryRowsChanged);
    const QStringList texts =
        QStringLiteral("147.1250*|12.5KHz|TSQ|250.3Hz|100.0Hz|754|+Shift|0.6000|Mid||on2|On|On|AB(1|")
            .split(QLatin1Char('|'));
    double numbers[kMemoryColumns] = {147.125, 2, 3, 38, 12, 103, 2, 0.6, 1, 0, 2, 1, 5, 1, 1};
    for (int column = 0; column < kMemoryColumns; ++column)
        doc.memory.set(7, column, texts[column], numbers[column]);
    doc.memory.setChannelInUse(7, true);
    dlg.prepareMemoryChannel(7);
    EXPECT_EQ(box("txtFreq")->text() + '.' + box("txtFreq2")->text(), QStringLiteral("147.1250"));
    EXPECT_EQ(box("txtShift")->text() + '.' + box("txtShift2")->text(), QStringLiteral("00.6000"));
    EXPECT_EQ(combo("cmbRxTone")->currentIndex(), 12);
    for (const auto& [array, index] :
         {std::pair{"optStep", 2}, {"optTone", 2}, {"optSift", 2}, {"optATT", 1}, {"optBs", 2}})
        EXPECT_TRUE(option(array, index)->isChecked()) << array;
    EXPECT_FALSE(check("chkPower")->isChecked());

    dlg.accept();
    numbers[ColBclo] = 1;
    const QStringList written =
        QStringLiteral("147.1250*|12.5KHz|TSQ|250.3Hz|100.0Hz|754|+Shift|0.6000|Mid|------|On2|On|On|AB(1|")
            .split(QLatin1Char('|'));
    for (int column = 0; column < kMemoryColumns; ++column) {
        EXPECT_EQ(doc.memory.text(7, column), written[column]) << column;
        EXPECT_NEAR(doc.memory.number(7, column), numbers[column], 1e-9) << column;
    }
    EXPECT_TRUE(doc.DataChanged());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows.at(0).at(0).toInt(), 7);
    EXPECT_EQ(rows.at(0).at(1).toInt(), 7);
}

TEST_F(ModifyDialogTest, EmptyChannelTakesTheTemplateUnlessHoldIsTicked) {
    doc.memory.set(kTemplateRow, ColFrequency, QStringLiteral("150.5000"), 150.5);
    doc.memory.set(kTemplateRow, ColName, QStringLiteral("TMPL"), 1);
    doc.memory.set(5, ColName, QStringLiteral("OLD"), 1);
    doc.memory.set(6, ColFrequency, QStringLiteral("161.0000"), 161.0);
    putInUse(9, QStringLiteral("151.0000"));

    dlg.prepareMemoryChannel(9);
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("151"));
    check("chkHold")->setChecked(true);
    dlg.prepareMemoryChannel(5);
    EXPECT_EQ(doc.memory.text(5, ColName), QStringLiteral("OLD"));
    dlg.reject();
    // The dialog is only hidden: the tick survives into the next opening.
    dlg.prepareMemoryChannel(6);
    EXPECT_TRUE(check("chkHold")->isChecked());
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("161"));

    check("chkHold")->setChecked(false);
    dlg.prepareMemoryChannel(5);
    EXPECT_EQ(box("txtName")->text(), QStringLiteral("TMPL"));
    // Cancel keeps the copied cells but the channel stays empty.
    dlg.reject();
    for (int column = 0; column < kMemoryColumns; ++column)
        EXPECT_EQ(doc.memory.cell(5, column), doc.memory.cell(kTemplateRow, column)) << column;
    EXPECT_FALSE(doc.memory.ChannelInUse(5));
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(ModifyDialogTest, FrequencyRunsOnIntoItsFraction) {
    putInUse(0, QStringLiteral("150.0000"));
    dlg.prepareMemoryChannel(0);
    showActive();
    QLineEdit* freq = box("txtFreq");
    QLineEdit* freq2 = box("txtFreq2");
    EXPECT_EQ(freq->selectedText(), QStringLiteral("150"));
    QTest::keyClicks(freq, QStringLiteral("1a4"));
    EXPECT_TRUE(freq->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_5);
    EXPECT_EQ(freq->text(), QStringLiteral("145"));
    EXPECT_TRUE(freq2->hasFocus());
    EXPECT_EQ(freq2->selectedText(), QStringLiteral("0000"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("01"));
    EXPECT_EQ(freq2->text(), QStringLiteral("01"));
    dlg.reject();
}

TEST_F(ModifyDialogTest, ShiftRunsOnIntoItsFractionSelectingAsMuchAsTheFrequencyFraction) {
    dlg.prepareMemoryChannel(0);
    showActive();
    box("txtFreq2")->setText(QStringLiteral("50")); // a short fraction shows whose length counts
    QLineEdit* shift = box("txtShift");
    retype(shift, "1");
    EXPECT_TRUE(shift->hasFocus());
    QTest::keyClick(shift, Qt::Key_2);
    EXPECT_EQ(shift->text(), QStringLiteral("12"));
    ASSERT_TRUE(box("txtShift2")->hasFocus());
    EXPECT_EQ(box("txtShift2")->selectionStart(), 0);
    EXPECT_EQ(box("txtShift2")->selectedText(), QStringLiteral("60"));
    dlg.reject();
}

TEST_F(ModifyDialogTest, KeyFiltersOfTheNumericBoxesAndTheName) {
    const struct {
        const char *box, *before, *typed, *after;
    } cases[] = {
        {"txtFreq", "14", "\b7a.", "17"}, {"txtFreq2", "01", "- ", "01"}, {"txtShift", "1", "\b+", ""}};
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
    QTest::keyClicks(name, QStringLiteral("abcdefgh\b"));
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
    {"txtFreq2", "0130", 5, "0125", 2},  {"txtFreq2", "0007", 2, "0000", 0},
    {"txtFreq2", "5", 2, "5000", 0},     {"txtFreq2", "0124", 0, "0100", 0},
    {"txtShift2", "0060", 5, "0000", 5}, {"txtShift2", "0060", 1, "0050", 1},
    {"txtShift2", "0130", 2, "0125", 2}, {"txtShift2", "6", 0, "6000", 0},
};

INSTANTIATE_TEST_SUITE_P(Cases, FractionSnap, ::testing::ValuesIn(kFractions),
                         [](const auto& info) { return std::to_string(info.index); });

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
    freq->setText(QLatin1String(c.typed));
    leave(freq);
    EXPECT_EQ(freq->text(), QLatin1String(c.expected));
    EXPECT_FALSE(doc.DataChanged());
    dlg.reject();
}

const RangeCase kRanges[] = {
    {VariantT, false, 0, "136", "136"}, {VariantT, false, 0, "174", "145"},
    {VariantA, false, 0, "099", "155"}, {-1, false, 0, "099", "155"},
    {VariantE, true, 0, "146", "146"},  {VariantT, false, 1, "180", "150"},
    {VariantE, false, 2, "150", "146"},
};

INSTANTIATE_TEST_SUITE_P(Cases, FrequencyRange, ::testing::ValuesIn(kRanges),
                         [](const auto& info) { return std::to_string(info.index); });

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

TEST_F(ModifyDialogTest, TickedOptionBecomesTextAndCode) {
    const struct {
        const char* array;
        int index, column;
        const char* text;
        double number;
    } cases[] = {{"optTone", 0, ColTone, "None", 0},    {"optTone", 1, ColTone, "Tone", 1},
                 {"optTone", 3, ColTone, "DCS", 12},    {"optSift", 0, ColShift, "None", 0},
                 {"optSift", 1, ColShift, "-Shift", 1}, {"optATT", 0, ColPower, "Low", 0},
                 {"optATT", 2, ColPower, "High", 2},    {"optBs", 0, ColBsv, "Off", 0},
                 {"optBs", 1, ColBsv, "On1", 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.array) + '_' + std::to_string(c.index));
        doc.memory.setChannelInUse(1, false);
        dlg.prepareMemoryChannel(1);
        option(c.array, c.index)->setChecked(true);
        dlg.accept();
        EXPECT_EQ(doc.memory.cell(1, c.column), (Cell{QLatin1String(c.text), c.number}));
        EXPECT_TRUE(doc.memory.ChannelInUse(1));
    }
}

TEST_F(ModifyDialogTest, NoStepTickedLeavesTheStepColumn) {
    putInUse(8, QStringLiteral("145.0000"));
    doc.memory.set(8, ColStep, QStringLiteral("odd"), 11);
    dlg.prepareMemoryChannel(8);
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
    option("optATT", 2)->setChecked(true);
    dlg.accept();
    EXPECT_EQ(doc.special.cell(kVfoRow, ColFrequency), (Cell{QStringLiteral("147.0250"), 147.025}));
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
    dlg.accept();
    EXPECT_EQ(doc.special.cell(kRptRow, ColTone), (Cell{QStringLiteral("TSQ"), 3}));
    EXPECT_EQ(doc.special.cell(kRptRow, ColDcs), (Cell{QStringLiteral("025"), 1}));
    EXPECT_EQ(doc.special.cell(kRptRow, ColShift), (Cell{QStringLiteral("+Shift"), 2}));
    EXPECT_TRUE(doc.special.text(kRptRow, ColFrequency).isEmpty());
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
