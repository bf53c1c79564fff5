// Drives the channel modify dialog through its real widgets, as the grids open it.
#include "model/document.h"
#include "model/stores.h"
#include "model/tables.h"
#include "ui/modifydialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <tuple>

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
    QRadioButton* option(const char* array, int index) {
        return child<QRadioButton>(QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index));
    }
    QCheckBox* check(const char* name) { return child<QCheckBox>(QLatin1String(name)); }
    QString label(const char* name) { return child<QLabel>(QLatin1String(name))->text(); }

    void showActive() {
        dlg.show();
        QApplication::setActiveWindow(&dlg);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dlg));
    }
    void putInUse(int row, const QString& frequency) {
        editMemory([&](MemoryTable& m) {
            m.set(row, ColFrequency, frequency, frequency.left(8).toDouble());
            m.setChannelInUse(row, true);
        });
    }
    void editMemory(const std::function<void(MemoryTable&)>& change) {
        doc.changeMemory(0, kChannelCount - 1, change, Document::Mark::Quiet);
    }
    void editSpecial(const std::function<void(SpecialTable&)>& change) {
        doc.changeSpecial(kVfoRow, kRptRow, change, Document::Mark::Quiet);
    }
};

TEST_F(ModifyDialogTest, OpeningsSetCaptionsFrequencyBoxesAndFocus) {
    doc.setModelVariant(VariantE);
    putInUse(12, QStringLiteral("144.5000"));
    editSpecial([](SpecialTable& s) {
        s.set(kVfoRow, ColFrequency, QStringLiteral("146.5250"), 146.525);
        s.set(kCallRow, ColFrequency, QStringLiteral("144.0100"), 144.01);
    });
    const std::tuple<int, const char*, const char*, const char*> rows[] = {
        {kVfoRow, "Modify VFO Parameters", "VFO", "146|5250"},
        {kCallRow, "Modify Call Channel Parameters", "Call", "144|0100"},
        {kRptRow, "Modifi Repeater Access Parameters", "Repeater", "RPT|"},
        {-1, "Modify Memory Channel Parameter", "Memory", "144|5000"}};
    for (const auto& [row, title, mode, frequency] : rows) {
        SCOPED_TRACE(mode);
        // Neither another memory opening nor the repeater's disabled frequency may leak into this one.
        dlg.prepareMemoryChannel(3);
        dlg.prepareSpecialRow(kRptRow);
        ASSERT_TRUE(row < 0 ? dlg.prepareMemoryChannel(12) : dlg.prepareSpecialRow(row));
        EXPECT_EQ(dlg.windowTitle(), QLatin1String(title));
        EXPECT_EQ(label("lblMode"), QLatin1String(mode));
        EXPECT_EQ(label("lblMHz"), QStringLiteral("(144.000-145.995MHz)"));
        const bool enabled = row != kRptRow;
        EXPECT_EQ(box("txtFreq")->isEnabled(), enabled);
        EXPECT_EQ(box("txtFreq2")->isEnabled(), enabled);
        EXPECT_EQ(box("txtFreq")->text() + '|' + box("txtFreq2")->text(), QLatin1String(frequency));
        for (const char* name : {"chkSkip", "chkHold", "txtName", "lblCH"})
            EXPECT_EQ(child(QLatin1String(name))->isVisibleTo(&dlg), row < 0) << name;
        showActive(); // the repeater's first editable field is its tone mode
        EXPECT_TRUE(enabled ? box("txtFreq")->hasFocus() : option("optTone", 1)->hasFocus());
        EXPECT_EQ(box("txtFreq")->selectedText(), enabled ? box("txtFreq")->text() : QString());
        dlg.reject();
    }
    EXPECT_EQ(label("lblCH"), QStringLiteral("12CH"));
    EXPECT_FALSE(dlg.prepareMemoryChannel(200));
    EXPECT_FALSE(dlg.prepareMemoryChannel(-1));
}

TEST_F(ModifyDialogTest, ControlsShowTheRowAndOkWritesItBack) {
    const QStringList texts =
        QStringLiteral("147.1250*|12.5KHz|TSQ|250.3Hz|100.0Hz|754|+Shift|0.6000|Mid||on2|On|On|AB(1|")
            .split(QLatin1Char('|'));
    double numbers[kMemoryColumns] = {147.125, 2, 3, 38, 12, 103, 2, 0.6, 1, 0, 2, 1, 5, 1, 1};
    editMemory([&](MemoryTable& m) {
        for (int column = 0; column < kMemoryColumns; ++column)
            m.set(7, column, texts[column], numbers[column]);
        m.setChannelInUse(7, true);
    });
    QSignalSpy rows(&doc, &Document::memoryRowsChanged);
    dlg.prepareMemoryChannel(7);
    EXPECT_EQ(box("txtFreq")->text() + '.' + box("txtFreq2")->text(), QStringLiteral("147.1250"));
    EXPECT_EQ(box("txtShift")->text() + '.' + box("txtShift2")->text(), QStringLiteral("00.6000"));
    EXPECT_EQ(child<QComboBox>(QStringLiteral("cmbRxTone"))->currentIndex(), 12);
    for (const auto& [array, index] :
         {std::pair{"optStep", 2}, {"optTone", 2}, {"optSift", 2}, {"optATT", 1}, {"optBs", 2}})
        EXPECT_TRUE(option(array, index)->isChecked()) << array;

    dlg.accept();
    numbers[ColBclo] = 1;
    const QStringList written =
        QStringLiteral("147.1250*|12.5KHz|TSQ|250.3Hz|100.0Hz|754|+Shift|0.6000|Mid|------|On2|On|On|AB(1|")
            .split(QLatin1Char('|'));
    for (int column = 0; column < kMemoryColumns; ++column) {
        EXPECT_EQ(doc.memory().text(7, column), written[column]) << column;
        EXPECT_NEAR(doc.memory().number(7, column), numbers[column], 1e-9) << column;
    }
    EXPECT_TRUE(doc.DataChanged());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows.at(0).at(0).toInt(), 7);
    EXPECT_EQ(rows.at(0).at(1).toInt(), 7);
}

TEST_F(ModifyDialogTest, EmptyChannelTakesTheTemplateUnlessHoldIsTicked) {
    editMemory([](MemoryTable& m) {
        m.set(kTemplateRow, ColName, QStringLiteral("TMPL"), 1);
        m.set(6, ColFrequency, QStringLiteral("161.0000"), 161.0);
    });
    dlg.prepareMemoryChannel(9);
    check("chkHold")->setChecked(true);
    dlg.reject();
    // The dialog is only hidden: the tick survives into the next opening.
    dlg.prepareMemoryChannel(6);
    EXPECT_EQ(box("txtFreq")->text(), QStringLiteral("161"));

    check("chkHold")->setChecked(false);
    dlg.prepareMemoryChannel(5);
    EXPECT_EQ(box("txtName")->text(), QStringLiteral("TMPL"));
    // Cancel keeps the copied cells but the channel stays empty.
    dlg.reject();
    for (int column = 0; column < kMemoryColumns; ++column)
        EXPECT_EQ(doc.memory().cell(5, column), doc.memory().cell(kTemplateRow, column)) << column;
    EXPECT_FALSE(doc.memory().ChannelInUse(5));
    EXPECT_FALSE(doc.DataChanged());
}

TEST_F(ModifyDialogTest, FrequencyAndShiftRunOnIntoTheirFractionsAndEnterStillCorrectsTheFocusedField) {
    putInUse(0, QStringLiteral("150.0000"));
    dlg.prepareMemoryChannel(0);
    showActive();
    QLineEdit* freq = box("txtFreq");
    QLineEdit* freq2 = box("txtFreq2");
    QTest::keyClicks(freq, QStringLiteral("14"));
    EXPECT_TRUE(freq->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_5);
    EXPECT_EQ(freq->text(), QStringLiteral("145"));
    EXPECT_TRUE(freq2->hasFocus());
    EXPECT_EQ(freq2->selectedText(), QStringLiteral("0000"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("01"));
    EXPECT_EQ(freq2->text(), QStringLiteral("01"));

    // The shift fraction gets a selection as long as the frequency fraction, however short.
    QLineEdit* shift = box("txtShift");
    shift->setFocus(Qt::OtherFocusReason);
    freq2->setText(QStringLiteral("50"));
    box("txtShift2")->setText(QStringLiteral("6000"));
    shift->setText(QStringLiteral("1"));
    QTest::keyClick(shift, Qt::Key_2);
    EXPECT_EQ(shift->text(), QStringLiteral("12"));
    ASSERT_TRUE(box("txtShift2")->hasFocus());
    EXPECT_EQ(box("txtShift2")->selectionStart(), 0);
    EXPECT_EQ(box("txtShift2")->selectedText(), QStringLiteral("60"));

    // Enter on the default button leaves the field without a focus change.
    freq2->setFocus(Qt::OtherFocusReason);
    freq2->setText(QStringLiteral("013"));
    QTest::keyClick(freq2, Qt::Key_Return);
    EXPECT_FALSE(dlg.isVisible());
    EXPECT_EQ(doc.memory().text(0, ColFrequency), QStringLiteral("145.0125"));
    EXPECT_EQ(doc.memory().text(0, ColStep), QStringLiteral("12.5KHz"));
}

TEST_F(ModifyDialogTest, KeyFiltersOfTheNumericBoxesAndTheName) {
    // What each key adds to the empty box, '~' for nothing.
    QString added;
    for (const auto& [name, keys] :
         {std::pair{"txtShift2", "7a.- +"}, {"txtName", "ezadEZAD*+-/=\\ 9.[#$()_%@?"}})
        for (const char* key = keys; *key; ++key) {
            box(name)->clear();
            QTest::keyClick(box(name), *key);
            added += box(name)->text().isEmpty() ? QStringLiteral("~") : box(name)->text();
        }
    EXPECT_EQ(added, QStringLiteral("7~~~~~EZAD~~AD*+-/=\\ 9~~#$()_~~~"));
    for (const auto& [name, before, typed, after] :
         {std::tuple{"txtFreq", "14", "\b7", "17"}, {"txtName", "", "abcdefgh\b", "ABCDE"}}) {
        box(name)->setText(QLatin1String(before));
        QTest::keyClicks(box(name), QLatin1String(typed));
        EXPECT_EQ(box(name)->text(), QLatin1String(after)) << name;
    }
    QApplication::clipboard()->setText(QStringLiteral("99"));
    for (const char* pasted : {"txtFreq2", "txtName"}) {
        box(pasted)->clear();
        QTest::keyClick(box(pasted), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(box(pasted)->text(), QString()) << pasted << " takes no paste";
    }
}

// `mode`: 0 memory channel 3 empty, 1 channel 3 in use at 150 MHz, 2 the VFO row at 146 MHz. The step
// option ticked before and after leaving the field; -1 where the field has nothing to do with it.
struct LeaveCase {
    const char *box, *typed;
    int variant;
    bool cloneCodeA;
    int mode, stepBefore;
    const char* corrected;
    int stepAfter;
};

class LeavingAField : public ModifyDialogTest, public ::testing::WithParamInterface<LeaveCase> {};

TEST_P(LeavingAField, CorrectsIt) {
    const LeaveCase& c = GetParam();
    doc.setModelVariant(c.variant);
    doc.setCloneCodeA(c.cloneCodeA);
    editSpecial([](SpecialTable& s) { s.set(kVfoRow, ColFrequency, QStringLiteral("146.5000"), 146.5); });
    if (c.mode == 1) putInUse(3, QStringLiteral("150.0000*"));
    if (c.mode == 2)
        dlg.prepareSpecialRow(kVfoRow);
    else
        dlg.prepareMemoryChannel(3);
    if (c.stepBefore >= 0) option("optStep", c.stepBefore)->setChecked(true);
    showActive();
    QLineEdit* field = box(c.box);
    field->setFocus(Qt::OtherFocusReason);
    field->setText(QLatin1String(c.typed));
    child(QStringLiteral("CancelButton"))->setFocus(Qt::TabFocusReason); // leaves the field
    EXPECT_EQ(field->text(), QLatin1String(c.corrected));
    if (c.stepAfter >= 0) {
        EXPECT_TRUE(option("optStep", c.stepAfter)->isChecked());
    }
    EXPECT_FALSE(doc.DataChanged());
    dlg.reject();
}

// The frequency fraction ticks the step whose raster it snaps to; the shift's follows the ticked step.
const LeaveCase kLeaves[] = {
    {"txtFreq2", "0130", VariantT, false, 0, 5, "0125", 2},
    {"txtFreq2", "0124", VariantT, false, 0, 2, "0100", 0},
    {"txtShift2", "0060", VariantT, false, 0, 5, "0000", 5},
    {"txtShift2", "0060", VariantT, false, 0, 1, "0050", 1},
    {"txtShift2", "0130", VariantT, false, 0, 2, "0125", 2},
    {"txtShift2", "6", VariantT, false, 0, 0, "6000", 0},
    {"txtShift", "5", VariantT, false, 0, -1, "05", -1},
    {"txtFreq", "174", VariantT, false, 0, -1, "145", -1},
    {"txtFreq", "099", -1, false, 0, -1, "155", -1},
    {"txtFreq", "146", VariantE, true, 0, -1, "146", -1},
    {"txtFreq", "180", VariantT, false, 1, -1, "150", -1},
    {"txtFreq", "150", VariantE, false, 2, -1, "146", -1},
};

INSTANTIATE_TEST_SUITE_P(Cases, LeavingAField, ::testing::ValuesIn(kLeaves),
                         [](const auto& info) { return std::to_string(info.index); });

TEST_F(ModifyDialogTest, TickedOptionBecomesTextAndCode) {
    const struct {
        const char* array;
        int index, column;
        const char* text;
        double number;
    } cases[] = {{"optTone", 0, ColTone, "None", 0},    {"optTone", 1, ColTone, "Tone", 1},
                 {"optTone", 3, ColTone, "DCS", 12},    {"optSift", 0, ColShift, "None", 0},
                 {"optSift", 1, ColShift, "-Shift", 1}, {"optATT", 0, ColPower, "Low", 0},
                 {"optBs", 0, ColBsv, "Off", 0},        {"optBs", 1, ColBsv, "On1", 1}};
    editMemory([](MemoryTable& m) {
        m.set(kTemplateRow, ColStep, QStringLiteral("odd"), 11);
    }); // ticks no step: kept
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.array) + '_' + std::to_string(c.index));
        editMemory([](MemoryTable& m) { m.setChannelInUse(1, false); });
        dlg.prepareMemoryChannel(1);
        option(c.array, c.index)->setChecked(true);
        dlg.accept();
        EXPECT_EQ(doc.memory().cell(1, c.column), (Cell{QLatin1String(c.text), c.number}));
        EXPECT_TRUE(doc.memory().ChannelInUse(1));
        EXPECT_EQ(doc.memory().cell(1, ColStep), (Cell{QStringLiteral("odd"), 11}));
    }
}

TEST_F(ModifyDialogTest, OkOnTheVfoRowWritesItAndBlanksTheRepeaterRowTexts) {
    editSpecial([](SpecialTable& s) { s.setText(kRptRow, ColPower, QStringLiteral("stale")); });
    QSignalSpy rows(&doc, &Document::specialRowsChanged);
    dlg.prepareSpecialRow(kVfoRow);
    box("txtFreq")->setText(QStringLiteral("147"));
    box("txtFreq2")->setText(QStringLiteral("0250"));
    option("optATT", 2)->setChecked(true);
    dlg.accept();
    EXPECT_EQ(doc.special().cell(kVfoRow, ColFrequency), (Cell{QStringLiteral("147.0250"), 147.025}));
    EXPECT_EQ(doc.special().cell(kVfoRow, ColPower), (Cell{QStringLiteral("High"), 2}));
    EXPECT_EQ(doc.special().text(kRptRow, ColPower), QString());
    EXPECT_TRUE(doc.DataChanged());
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows.at(0).at(0).toInt(), kVfoRow);
}

} // namespace
