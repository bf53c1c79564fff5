#include "channelform.h"

#include "model/channelentry.h"
#include "model/channeloptions.h"
#include "model/numeric.h"
#include "model/tables.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace zq::ui {

using namespace zq::model;

namespace {

QLineEdit* makeBox(QWidget* parent, const char* name, int maxLength) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QLatin1String(name));
    box->setMaxLength(maxLength);
    // Every character has to pass the key filter: no pasting by menu, drag or input method.
    box->setContextMenuPolicy(Qt::NoContextMenu);
    box->setAcceptDrops(false);
    box->setAttribute(Qt::WA_InputMethodEnabled, false);
    return box;
}

QLabel* makeLabel(QWidget* parent, const QString& text, const char* name = nullptr) {
    auto* label = new QLabel(text, parent);
    if (name) label->setObjectName(QLatin1String(name));
    return label;
}

QComboBox* makeList(QWidget* parent, const char* name, const QStringList& entries) {
    auto* list = new QComboBox(parent);
    list->setObjectName(QLatin1String(name));
    list->addItems(entries);
    return list;
}

// A group of option buttons "<name>_<index>" (the index also as a property), laid out by `place`.
template <class Place>
QButtonGroup* makeOptions(QWidget* frame, const char* name, const QStringList& captions, Place place) {
    auto* group = new QButtonGroup(frame);
    for (int i = 0; i < captions.size(); ++i) {
        auto* button = new QRadioButton(captions.at(i), frame);
        button->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
        button->setProperty("index", i);
        group->addButton(button, i);
        place(button, i);
    }
    return group;
}

QStringList captionsOf(const OptionTable& table) {
    QStringList captions;
    for (int i = 0; i < table.count(); ++i)
        captions << table.caption(i);
    return captions;
}

void tick(QButtonGroup* group, int id) {
    if (QAbstractButton* button = group->button(id)) {
        button->setChecked(true);
        return;
    }
    group->setExclusive(false);
    for (QAbstractButton* other : group->buttons())
        other->setChecked(false);
    group->setExclusive(true);
}

// The option with this code; the first when the code belongs to none.
int optionOfCode(const OptionTable& table, double code) {
    return std::max(0, table.indexOfCode(static_cast<int>(code)));
}

// 0, 1 and 2 for a level at or below 0, below 2 and above.
int levelOption(double number) {
    return number <= 0 ? 0 : (number < 2 ? 1 : 2);
}

int listIndex(double number, int count) {
    const int index = static_cast<int>(number);
    return (index >= 0 && index < count) ? index : 0;
}

// The first ticked option decides; with none ticked the last option is taken.
Cell tickedOption(const OptionTable& table, const QButtonGroup* group) {
    const int id = group->checkedId();
    return table.cell(id >= 0 && id < table.count() ? id : table.count() - 1);
}

} // namespace

ChannelForm::ChannelForm(QDialog* dialog) {
    auto* top = new QVBoxLayout(dialog);
    auto* header = new QHBoxLayout;
    modeLabel = makeLabel(dialog, QStringLiteral("VFO"), "lblMode");
    channelLabel = makeLabel(dialog, QStringLiteral("H-UHF"), "lblCH");
    QFont bold = modeLabel->font();
    bold.setBold(true);
    modeLabel->setFont(bold);
    channelLabel->setFont(bold);
    header->addWidget(modeLabel);
    header->addSpacing(12);
    header->addWidget(channelLabel);
    header->addStretch();
    top->addLayout(header);

    buildFrequency(dialog, top);
    buildOptions(dialog, top);
    buildChecks(dialog, top);
    syncShortcutChecks(dialog);
}

void ChannelForm::buildFrequency(QDialog* dialog, QVBoxLayout* top) {
    auto* frame = new QGroupBox(QStringLiteral("Frequency"), dialog);
    auto* row = new QHBoxLayout(frame);
    mhzBox = makeBox(frame, "txtFreq", 3);
    fractionBox = makeBox(frame, "txtFreq2", kFractionDigits);
    mhzBox->setMaximumWidth(48);
    fractionBox->setMaximumWidth(60);
    rangeLabel = makeLabel(frame, QStringLiteral("(118.000-141.995MHz)"), "lblMHz");
    row->addWidget(mhzBox);
    row->addWidget(makeLabel(frame, QStringLiteral(".")));
    row->addWidget(fractionBox);
    row->addWidget(makeLabel(frame, QStringLiteral("MHz")));
    row->addSpacing(12);
    row->addWidget(rangeLabel);
    row->addStretch();
    top->addWidget(frame);

    stepFrame = new QGroupBox(QStringLiteral("Tuning Step"), dialog);
    auto* stepGrid = new QGridLayout(stepFrame);
    steps = makeOptions(stepFrame, "optStep", StepNames().mid(0, kStepCount),
                        [stepGrid](QRadioButton* b, int i) { stepGrid->addWidget(b, i / 4, i % 4); });
    top->addWidget(stepFrame);
}

void ChannelForm::buildOptions(QDialog* dialog, QVBoxLayout* top) {
    auto* middle = new QHBoxLayout;
    auto* toneFrame = new QGroupBox(QStringLiteral("Tone / TSQ / DCS"), dialog);
    auto* toneGrid = new QGridLayout(toneFrame);
    toneModes = makeOptions(toneFrame, "optTone", captionsOf(ToneModes()),
                            [toneGrid](QRadioButton* b, int i) { toneGrid->addWidget(b, 0, i); });
    txToneList = makeList(toneFrame, "cmbTxTone", ToneNames());
    rxToneList = makeList(toneFrame, "cmbRxTone", ToneNames());
    dcsList = makeList(toneFrame, "cmbDCS", DcsCodes());
    toneGrid->addWidget(makeLabel(toneFrame, QStringLiteral("TX Tone")), 1, 0);
    toneGrid->addWidget(txToneList, 1, 1);
    toneGrid->addWidget(makeLabel(toneFrame, QStringLiteral("RX Tone")), 1, 2);
    toneGrid->addWidget(rxToneList, 1, 3);
    toneGrid->addWidget(makeLabel(toneFrame, QStringLiteral("DCS No")), 2, 0);
    toneGrid->addWidget(dcsList, 2, 1);
    middle->addWidget(toneFrame, 3);

    auto* shiftFrame = new QGroupBox(QStringLiteral("Shift"), dialog);
    auto* shiftGrid = new QGridLayout(shiftFrame);
    shifts = makeOptions(shiftFrame, "optSift", captionsOf(Shifts()),
                         [shiftGrid](QRadioButton* b, int i) { shiftGrid->addWidget(b, 0, i); });
    offsetMhzBox = makeBox(shiftFrame, "txtShift", 2);
    offsetFractionBox = makeBox(shiftFrame, "txtShift2", kFractionDigits);
    offsetMhzBox->setMaximumWidth(36);
    offsetFractionBox->setMaximumWidth(60);
    auto* offsetRow = new QHBoxLayout;
    offsetRow->addWidget(makeLabel(shiftFrame, QStringLiteral("Offset Frequency")));
    offsetRow->addWidget(offsetMhzBox);
    offsetRow->addWidget(makeLabel(shiftFrame, QStringLiteral(".")));
    offsetRow->addWidget(offsetFractionBox);
    offsetRow->addStretch();
    shiftGrid->addLayout(offsetRow, 1, 0, 1, 3);
    middle->addWidget(shiftFrame, 2);
    top->addLayout(middle);

    auto* lower = new QHBoxLayout;
    powerFrame = new QGroupBox(QStringLiteral("Tx Power"), dialog);
    auto* powerRow = new QHBoxLayout(powerFrame);
    powers = makeOptions(powerFrame, "optATT", captionsOf(Powers()),
                         [powerRow](QRadioButton* b, int) { powerRow->addWidget(b); });
    lower->addWidget(powerFrame);
    batterySaveFrame = new QGroupBox(QStringLiteral("Battery Save"), dialog);
    auto* batteryRow = new QHBoxLayout(batterySaveFrame);
    batterySaves = makeOptions(batterySaveFrame, "optBs", captionsOf(BatterySaves()),
                               [batteryRow](QRadioButton* b, int) { batteryRow->addWidget(b); });
    lower->addWidget(batterySaveFrame);
    nameFrame = new QGroupBox(QStringLiteral("Name"), dialog);
    nameFrame->setObjectName(QStringLiteral("fraName"));
    auto* nameRow = new QHBoxLayout(nameFrame);
    nameBox = makeBox(nameFrame, "txtName", 6);
    nameRow->addWidget(nameBox);
    lower->addWidget(nameFrame);
    top->addLayout(lower);
}

void ChannelForm::buildChecks(QDialog* dialog, QVBoxLayout* top) {
    const auto makeCheck = [dialog](const QString& caption, const char* name) {
        auto* box = new QCheckBox(caption, dialog);
        box->setObjectName(QLatin1String(name));
        return box;
    };
    busyLockOut = makeCheck(QStringLiteral("Busy Channel Lock Out"), "chkBCLO");
    clockShift = makeCheck(QStringLiteral("Clock Shift"), "chkClock");
    skip = makeCheck(QStringLiteral("Skip"), "chkSkip");
    batterySave = makeCheck(QStringLiteral("Battery Save"), "chkBS");
    hiPower = makeCheck(QStringLiteral("Hi Power"), "chkPower");
    hold = makeCheck(QStringLiteral("Hold"), "chkHold");
    auto* checks = new QGridLayout;
    checks->addWidget(busyLockOut, 0, 0);
    checks->addWidget(clockShift, 0, 1);
    checks->addWidget(hiPower, 0, 2);
    checks->addWidget(batterySave, 1, 0);
    checks->addWidget(skip, 1, 1);
    checks->addWidget(hold, 1, 2);
    top->addLayout(checks);

    auto* buttons = new QHBoxLayout;
    okButton = new QPushButton(QStringLiteral("OK"), dialog);
    okButton->setObjectName(QStringLiteral("OKButton"));
    okButton->setDefault(true);
    cancelButton = new QPushButton(QStringLiteral("Cancel"), dialog);
    cancelButton->setObjectName(QStringLiteral("CancelButton"));
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancelButton);
    top->addLayout(buttons);
}

// "Hi Power" and "Battery Save" are shortcuts onto the option groups that OK stores.
void ChannelForm::syncShortcutChecks(QDialog* dialog) {
    QObject::connect(hiPower, &QCheckBox::toggled, dialog, [this](bool on) {
        if (showing_) return;
        if (on != powers->button(PowerHigh)->isChecked())
            powers->button(on ? PowerHigh : PowerLow)->setChecked(true);
    });
    QObject::connect(powers, &QButtonGroup::idToggled, dialog, [this](int, bool) {
        const QSignalBlocker block(hiPower);
        hiPower->setChecked(powers->checkedId() == PowerHigh);
    });
    QObject::connect(batterySave, &QCheckBox::toggled, dialog, [this](bool on) {
        if (showing_) return;
        if (on == batterySaves->button(BatterySaveOff)->isChecked())
            batterySaves->button(on ? BatterySaveOn1 : BatterySaveOff)->setChecked(true);
    });
    QObject::connect(batterySaves, &QButtonGroup::idToggled, dialog, [this](int, bool) {
        const QSignalBlocker block(batterySave);
        batterySave->setChecked(batterySaves->checkedId() > BatterySaveOff);
    });
}

void ChannelForm::showMemoryControls(bool shown) {
    for (QWidget* widget : std::initializer_list<QWidget*>{nameFrame, skip, hold, channelLabel})
        widget->setVisible(shown);
}

void ChannelForm::showRow(const ChannelRow& row, bool repeater) {
    showing_ = true;
    mhzBox->setEnabled(!repeater);
    fractionBox->setEnabled(!repeater);
    if (repeater) {
        mhzBox->setText(QStringLiteral("RPT"));
        fractionBox->clear();
    } else {
        // The skip mark after the fraction falls beyond the box's four characters.
        const QString& frequency = row[ColFrequency].text;
        mhzBox->setText(frequency.left(3));
        fractionBox->setText(frequency.mid(4));
    }
    for (QWidget* widget : std::initializer_list<QWidget*>{stepFrame, powerFrame, batterySaveFrame,
                                                           clockShift, busyLockOut, batterySave, hiPower})
        widget->setEnabled(!repeater);

    const double step = row[ColStep].number;
    tick(steps, (step >= 0 && step < kStepCount) ? static_cast<int>(step) : -1);
    tick(toneModes, optionOfCode(ToneModes(), row[ColTone].number));
    txToneList->setCurrentIndex(listIndex(row[ColTxTone].number, kToneCount));
    rxToneList->setCurrentIndex(listIndex(row[ColRxTone].number, kToneCount));
    dcsList->setCurrentIndex(listIndex(row[ColDcs].number, kDcsCount));
    tick(shifts, optionOfCode(Shifts(), row[ColShift].number));
    const auto [offsetMhz, offsetFraction] = SplitOffset(row[ColOffset].text, row[ColOffset].number);
    offsetMhzBox->setText(offsetMhz);
    offsetFractionBox->setText(offsetFraction);

    tick(powers, levelOption(row[ColPower].number));
    tick(batterySaves, levelOption(row[ColBsv].number));
    hiPower->setChecked(powers->checkedId() == PowerHigh);
    batterySave->setChecked(batterySaves->checkedId() != BatterySaveOff);
    clockShift->setChecked(row[ColClock].number != 0);
    busyLockOut->setChecked(row[ColBclo].number != 0);
    nameBox->setText(row[ColName].text);
    skip->setChecked(row[ColSkip].number != 0);
    showing_ = false;
}

ComposedColumns ChannelForm::composeColumns() const {
    ComposedColumns cells;
    const auto put = [&cells](int column, const QString& text, double number) {
        cells[column] = Cell{text, number};
    };
    put(ColFrequency, mhzBox->text() + QLatin1Char('.') + fractionBox->text(),
        NumericValue(mhzBox->text()) + NumericValue(fractionBox->text()) / 10000.0);
    const int step = steps->checkedId();
    if (step >= 0) put(ColStep, StepNames().at(step), step);

    cells[ColTone] = tickedOption(ToneModes(), toneModes);
    const int txTone = std::max(0, txToneList->currentIndex());
    const int rxTone = std::max(0, rxToneList->currentIndex());
    const int dcs = std::max(0, dcsList->currentIndex());
    put(ColTxTone, ToneNames().at(txTone), txTone);
    put(ColRxTone, ToneNames().at(rxTone), rxTone);
    put(ColDcs, DcsCodes().at(dcs), dcs);

    cells[ColShift] = tickedOption(Shifts(), shifts);
    put(ColOffset, JoinOffset(offsetMhzBox->text(), offsetFractionBox->text()),
        NumericValue(offsetMhzBox->text()) + NumericValue(offsetFractionBox->text()) / 10000.0);

    cells[ColPower] = tickedOption(Powers(), powers);
    put(ColBlank, QStringLiteral("------"), 0);
    cells[ColBsv] = tickedOption(BatterySaves(), batterySaves);
    const bool clock = clockShift->isChecked();
    const bool bclo = busyLockOut->isChecked();
    put(ColClock, clock ? QStringLiteral("On") : QStringLiteral("Off"), clock ? 1 : 0);
    put(ColBclo, bclo ? QStringLiteral("On") : QStringLiteral("Off"), bclo ? 1 : 0);
    return cells;
}

} // namespace zq::ui
