#include "modifydialog.h"

#include "model/channeloptions.h"
#include "model/document.h"
#include "model/numeric.h"
#include "model/stores.h"
#include "model/tables.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace zq::ui {

using namespace zq::model;

namespace {

// Members of a control array carry "<name>_<index>" and the index as a property.
template <class Widget> Widget* arrayMember(Widget* widget, const char* name, int index) {
    widget->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index));
    widget->setProperty("index", index);
    return widget;
}

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

// Keys that move the focus, the cursor or close the dialog never reach the character filters.
bool isCharacterKey(const QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Delete:
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return false;
    default:
        return !(event->key() >= Qt::Key_F1 && event->key() <= Qt::Key_F35);
    }
}

// The single character a key types, or a null QChar when it types none or several.
QChar typedChar(const QKeyEvent* event) {
    const QString text = event->text();
    return text.size() == 1 ? text.at(0) : QChar();
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// A fraction box holds four digits in units of 100 Hz; a short entry means its leading digits.
int fractionValue(const QString& text) {
    QString digits = text;
    while (digits.size() < 4)
        digits.append(QLatin1Char('0'));
    return static_cast<int>(NumericValue(digits));
}

QString fractionText(int value) {
    return QStringLiteral("%1").arg(value, 4, 10, QLatin1Char('0'));
}

void clearGroup(QButtonGroup* group) {
    group->setExclusive(false);
    for (QAbstractButton* button : group->buttons())
        button->setChecked(false);
    group->setExclusive(true);
}

void tick(QButtonGroup* group, int id) {
    if (QAbstractButton* button = group->button(id)) {
        button->setChecked(true);
    } else {
        clearGroup(group);
    }
}

int comboIndex(double number, int count) {
    const int index = static_cast<int>(number);
    return (index >= 0 && index < count) ? index : 0;
}

} // namespace

ModifyDialog::ModifyDialog(Document& document, QWidget* parent) : QDialog(parent), document_(document) {
    setObjectName(QStringLiteral("dlgModify"));
    setModal(true);
    buildControls();
}

void ModifyDialog::buildControls() {
    auto* top = new QVBoxLayout(this);

    auto* header = new QHBoxLayout;
    lblMode_ = makeLabel(this, QStringLiteral("VFO"), "lblMode");
    lblCH_ = makeLabel(this, QStringLiteral("H-UHF"), "lblCH");
    QFont bold = lblMode_->font();
    bold.setBold(true);
    lblMode_->setFont(bold);
    lblCH_->setFont(bold);
    header->addWidget(lblMode_);
    header->addSpacing(12);
    header->addWidget(lblCH_);
    header->addStretch();
    top->addLayout(header);

    auto* frequencyFrame = new QGroupBox(QStringLiteral("Frequency"), this);
    auto* frequencyRow = new QHBoxLayout(frequencyFrame);
    txtFreq_ = makeBox(frequencyFrame, "txtFreq", 3);
    txtFreq2_ = makeBox(frequencyFrame, "txtFreq2", 4);
    txtFreq_->setMaximumWidth(48);
    txtFreq2_->setMaximumWidth(60);
    lblMHz_ = makeLabel(frequencyFrame, QStringLiteral("(118.000-141.995MHz)"), "lblMHz");
    frequencyRow->addWidget(txtFreq_);
    frequencyRow->addWidget(makeLabel(frequencyFrame, QStringLiteral(".")));
    frequencyRow->addWidget(txtFreq2_);
    frequencyRow->addWidget(makeLabel(frequencyFrame, QStringLiteral("MHz")));
    frequencyRow->addSpacing(12);
    frequencyRow->addWidget(lblMHz_);
    frequencyRow->addStretch();
    top->addWidget(frequencyFrame);

    stepFrame_ = new QGroupBox(QStringLiteral("Tuning Step"), this);
    auto* stepGrid = new QGridLayout(stepFrame_);
    stepGroup_ = new QButtonGroup(this);
    for (int i = 0; i < kStepCount; ++i) {
        optStep_[i] = arrayMember(new QRadioButton(StepNames().at(i), stepFrame_), "optStep", i);
        stepGroup_->addButton(optStep_[i], i);
        stepGrid->addWidget(optStep_[i], i / 4, i % 4);
    }
    top->addWidget(stepFrame_);

    auto* middle = new QHBoxLayout;
    auto* toneFrame = new QGroupBox(QStringLiteral("Tone / TSQ / DCS"), this);
    auto* toneGrid = new QGridLayout(toneFrame);
    toneGroup_ = new QButtonGroup(this);
    const QStringList toneCaptions{QStringLiteral("None"), QStringLiteral("Tone"), QStringLiteral("TSQ"),
                                   QStringLiteral("DCS")};
    for (int i = 0; i < 4; ++i) {
        optTone_[i] = arrayMember(new QRadioButton(toneCaptions.at(i), toneFrame), "optTone", i);
        toneGroup_->addButton(optTone_[i], i);
        toneGrid->addWidget(optTone_[i], 0, i);
    }
    cmbTxTone_ = new QComboBox(toneFrame);
    cmbTxTone_->setObjectName(QStringLiteral("cmbTxTone"));
    cmbTxTone_->addItems(ToneNames());
    cmbRxTone_ = new QComboBox(toneFrame);
    cmbRxTone_->setObjectName(QStringLiteral("cmbRxTone"));
    cmbRxTone_->addItems(ToneNames());
    cmbDCS_ = new QComboBox(toneFrame);
    cmbDCS_->setObjectName(QStringLiteral("cmbDCS"));
    cmbDCS_->addItems(DcsCodes());
    toneGrid->addWidget(makeLabel(toneFrame, QStringLiteral("TX Tone")), 1, 0);
    toneGrid->addWidget(cmbTxTone_, 1, 1);
    toneGrid->addWidget(makeLabel(toneFrame, QStringLiteral("RX Tone")), 1, 2);
    toneGrid->addWidget(cmbRxTone_, 1, 3);
    toneGrid->addWidget(makeLabel(toneFrame, QStringLiteral("DCS No")), 2, 0);
    toneGrid->addWidget(cmbDCS_, 2, 1);
    middle->addWidget(toneFrame, 3);

    auto* shiftFrame = new QGroupBox(QStringLiteral("Shift"), this);
    auto* shiftGrid = new QGridLayout(shiftFrame);
    shiftGroup_ = new QButtonGroup(this);
    const QStringList shiftCaptions{QStringLiteral("None"), QStringLiteral("-Shift"),
                                    QStringLiteral("+Shift")};
    for (int i = 0; i < 3; ++i) {
        optSift_[i] = arrayMember(new QRadioButton(shiftCaptions.at(i), shiftFrame), "optSift", i);
        shiftGroup_->addButton(optSift_[i], i);
        shiftGrid->addWidget(optSift_[i], 0, i);
    }
    txtShift_ = makeBox(shiftFrame, "txtShift", 2);
    txtShift2_ = makeBox(shiftFrame, "txtShift2", 4);
    txtShift_->setMaximumWidth(36);
    txtShift2_->setMaximumWidth(60);
    auto* offsetRow = new QHBoxLayout;
    offsetRow->addWidget(makeLabel(shiftFrame, QStringLiteral("Offset Frequency")));
    offsetRow->addWidget(txtShift_);
    offsetRow->addWidget(makeLabel(shiftFrame, QStringLiteral(".")));
    offsetRow->addWidget(txtShift2_);
    offsetRow->addStretch();
    shiftGrid->addLayout(offsetRow, 1, 0, 1, 3);
    middle->addWidget(shiftFrame, 2);
    top->addLayout(middle);

    auto* lower = new QHBoxLayout;
    powerFrame_ = new QGroupBox(QStringLiteral("Tx Power"), this);
    auto* powerRow = new QHBoxLayout(powerFrame_);
    powerGroup_ = new QButtonGroup(this);
    const QStringList powerCaptions{QStringLiteral("Low"), QStringLiteral("Mid"), QStringLiteral("High")};
    for (int i = 0; i < 3; ++i) {
        optATT_[i] = arrayMember(new QRadioButton(powerCaptions.at(i), powerFrame_), "optATT", i);
        powerGroup_->addButton(optATT_[i], i);
        powerRow->addWidget(optATT_[i]);
    }
    lower->addWidget(powerFrame_);

    batteryFrame_ = new QGroupBox(QStringLiteral("Battery Save"), this);
    auto* batteryRow = new QHBoxLayout(batteryFrame_);
    batteryGroup_ = new QButtonGroup(this);
    const QStringList batteryCaptions{QStringLiteral("Off"), QStringLiteral("On1"), QStringLiteral("On2")};
    for (int i = 0; i < 3; ++i) {
        optBs_[i] = arrayMember(new QRadioButton(batteryCaptions.at(i), batteryFrame_), "optBs", i);
        batteryGroup_->addButton(optBs_[i], i);
        batteryRow->addWidget(optBs_[i]);
    }
    lower->addWidget(batteryFrame_);

    nameFrame_ = new QGroupBox(QStringLiteral("Name"), this);
    nameFrame_->setObjectName(QStringLiteral("fraName"));
    auto* nameRow = new QHBoxLayout(nameFrame_);
    txtName_ = makeBox(nameFrame_, "txtName", 6);
    nameRow->addWidget(txtName_);
    lower->addWidget(nameFrame_);
    top->addLayout(lower);

    auto makeCheck = [this](const QString& caption, const char* name) {
        auto* box = new QCheckBox(caption, this);
        box->setObjectName(QLatin1String(name));
        return box;
    };
    chkBCLO_ = makeCheck(QStringLiteral("Busy Channel Lock Out"), "chkBCLO");
    chkClock_ = makeCheck(QStringLiteral("Clock Shift"), "chkClock");
    chkSkip_ = makeCheck(QStringLiteral("Skip"), "chkSkip");
    chkBS_ = makeCheck(QStringLiteral("Battery Save"), "chkBS");
    chkPower_ = makeCheck(QStringLiteral("Hi Power"), "chkPower");
    chkHold_ = makeCheck(QStringLiteral("Hold"), "chkHold");
    auto* checks = new QGridLayout;
    checks->addWidget(chkBCLO_, 0, 0);
    checks->addWidget(chkClock_, 0, 1);
    checks->addWidget(chkPower_, 0, 2);
    checks->addWidget(chkBS_, 1, 0);
    checks->addWidget(chkSkip_, 1, 1);
    checks->addWidget(chkHold_, 1, 2);
    top->addLayout(checks);

    auto* buttons = new QHBoxLayout;
    okButton_ = new QPushButton(QStringLiteral("OK"), this);
    okButton_->setObjectName(QStringLiteral("OKButton"));
    okButton_->setDefault(true);
    cancelButton_ = new QPushButton(QStringLiteral("Cancel"), this);
    cancelButton_->setObjectName(QStringLiteral("CancelButton"));
    buttons->addStretch();
    buttons->addWidget(okButton_);
    buttons->addWidget(cancelButton_);
    top->addLayout(buttons);

    connect(okButton_, &QPushButton::clicked, this, &ModifyDialog::accept);
    connect(cancelButton_, &QPushButton::clicked, this, &ModifyDialog::reject);

    // "Hi Power" and "Battery Save" are shortcuts onto the option groups that OK stores.
    connect(chkPower_, &QCheckBox::toggled, this, [this](bool on) {
        if (loading_) return;
        if (on != optATT_[2]->isChecked()) optATT_[on ? 2 : 0]->setChecked(true);
    });
    connect(powerGroup_, &QButtonGroup::idToggled, this, [this](int, bool) {
        const QSignalBlocker block(chkPower_);
        chkPower_->setChecked(optATT_[2]->isChecked());
    });
    connect(chkBS_, &QCheckBox::toggled, this, [this](bool on) {
        if (loading_) return;
        if (on == optBs_[0]->isChecked()) optBs_[on ? 1 : 0]->setChecked(true);
    });
    connect(batteryGroup_, &QButtonGroup::idToggled, this, [this](int, bool) {
        const QSignalBlocker block(chkBS_);
        chkBS_->setChecked(batteryGroup_->checkedId() > 0);
    });

    for (QLineEdit* box : {txtFreq_, txtFreq2_, txtShift_, txtShift2_, txtName_})
        box->installEventFilter(this);
}

int ModifyDialog::effectiveVariant() const {
    // With no model option selected the first-ticked rule falls through to the last variant.
    const int variant = document_.ModelVariant();
    return (variant >= 0 && variant < kVariantCount) ? variant : VariantA;
}

void ModifyDialog::openMemoryChannel(int editIndex) {
    if (prepareMemoryChannel(editIndex)) exec();
}

void ModifyDialog::openSpecialRow(int editIndex) {
    if (prepareSpecialRow(editIndex)) exec();
}

bool ModifyDialog::prepareMemoryChannel(int editIndex) {
    if (editIndex < 0 || editIndex >= kChannelCount) return false;
    mode_ = EditMode::Memory;
    editIndex_ = editIndex;

    nameFrame_->setVisible(true);
    chkSkip_->setVisible(true);
    chkHold_->setVisible(true);
    lblCH_->setVisible(true);
    lblMHz_->setText(RangeCaption(effectiveVariant(), document_.CloneCodeA()));
    setWindowTitle(QStringLiteral("Modify Memory Channel Parameter"));
    lblMode_->setText(QStringLiteral("Memory"));
    lblCH_->setText(QStringLiteral("%1CH").arg(editIndex));

    // An empty channel takes the template row's cells, which counts as no edit yet.
    if (!document_.memory().ChannelInUse(editIndex) && !chkHold_->isChecked()) {
        document_.changeMemory(
            editIndex, editIndex,
            [editIndex](MemoryTable& memory) {
                for (int column = 0; column < kMemoryColumns; ++column)
                    memory.set(editIndex, column, memory.cell(kTemplateRow, column));
            },
            Document::Mark::Quiet);
    }
    fillFromRow();
    return true;
}

bool ModifyDialog::prepareSpecialRow(int editIndex) {
    if (editIndex < 0 || editIndex >= kSpecialRows) return false;
    mode_ = EditMode::Special;
    editIndex_ = editIndex;

    nameFrame_->setVisible(false);
    chkSkip_->setVisible(false);
    chkHold_->setVisible(false);
    lblCH_->setVisible(false);
    lblMHz_->setText(RangeCaption(effectiveVariant(), document_.CloneCodeA()));
    if (editIndex == kVfoRow) {
        setWindowTitle(QStringLiteral("Modify VFO Parameters"));
        lblMode_->setText(QStringLiteral("VFO"));
    } else if (editIndex == kCallRow) {
        setWindowTitle(QStringLiteral("Modify Call Channel Parameters"));
        lblMode_->setText(QStringLiteral("Call"));
    } else {
        setWindowTitle(QStringLiteral("Modifi Repeater Access Parameters"));
        lblMode_->setText(QStringLiteral("Repeater"));
    }
    fillFromRow();
    return true;
}

void ModifyDialog::fillFromRow() {
    loading_ = true;
    const bool memoryMode = mode_ == EditMode::Memory;
    const auto cell = [&](int column) -> const Cell& {
        return memoryMode ? document_.memory().cell(editIndex_, column)
                          : document_.special().cell(editIndex_, column);
    };

    const bool repeater = editsRepeaterRow();
    txtFreq_->setEnabled(!repeater);
    txtFreq2_->setEnabled(!repeater);
    if (repeater) {
        txtFreq_->setText(QStringLiteral("RPT"));
        txtFreq2_->clear();
    } else {
        // The skip mark after the fraction falls beyond the box's four characters.
        const QString frequency = cell(ColFrequency).text;
        txtFreq_->setText(frequency.left(3));
        txtFreq2_->setText(frequency.mid(4));
    }
    // The repeater row has no step, power, battery save, clock or lock-out of its own.
    for (QWidget* widget : std::initializer_list<QWidget*>{stepFrame_, powerFrame_, batteryFrame_, chkClock_,
                                                           chkBCLO_, chkBS_, chkPower_})
        widget->setEnabled(!repeater);

    const double step = cell(ColStep).number;
    tick(stepGroup_, (step >= 0 && step < kStepCount) ? static_cast<int>(step) : -1);

    const int toneMode = ToneModes().indexOfCode(static_cast<int>(cell(ColTone).number));
    tick(toneGroup_, toneMode < 0 ? ToneModeNone : toneMode);
    cmbTxTone_->setCurrentIndex(comboIndex(cell(ColTxTone).number, kToneCount));
    cmbRxTone_->setCurrentIndex(comboIndex(cell(ColRxTone).number, kToneCount));
    cmbDCS_->setCurrentIndex(comboIndex(cell(ColDcs).number, kDcsCount));

    const int shift = Shifts().indexOfCode(static_cast<int>(cell(ColShift).number));
    tick(shiftGroup_, shift < 0 ? ShiftNone : shift);

    // "0.6000" opens as 00 and 6000; a text without a point is rebuilt from the number.
    QString offset = cell(ColOffset).text;
    if (!offset.contains(QLatin1Char('.'))) offset = FormatOneLeadingZero(cell(ColOffset).number);
    const qsizetype point = offset.indexOf(QLatin1Char('.'));
    QString whole = offset.left(point);
    while (whole.size() < 2)
        whole.prepend(QLatin1Char('0'));
    txtShift_->setText(whole);
    txtShift2_->setText(offset.mid(point + 1));

    const double power = cell(ColPower).number;
    tick(powerGroup_, power <= 0 ? 0 : (power < 2 ? 1 : 2));
    const double battery = cell(ColBsv).number;
    tick(batteryGroup_, battery <= 0 ? 0 : (battery < 2 ? 1 : 2));
    chkPower_->setChecked(optATT_[2]->isChecked());
    chkBS_->setChecked(!optBs_[0]->isChecked());
    chkClock_->setChecked(cell(ColClock).number != 0);
    chkBCLO_->setChecked(cell(ColBclo).number != 0);

    if (memoryMode) {
        txtName_->setText(cell(ColName).text);
        chkSkip_->setChecked(document_.memory().number(editIndex_, ColSkip) != 0);
    } else {
        txtName_->clear();
        chkSkip_->setChecked(false);
    }
    loading_ = false;
}

void ModifyDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    focusFrequency();
}

void ModifyDialog::focusFrequency() {
    if (editsRepeaterRow()) {
        if (QAbstractButton* tone = toneGroup_->checkedButton()) tone->setFocus(Qt::OtherFocusReason);
        return;
    }
    txtFreq_->setFocus(Qt::OtherFocusReason);
    txtFreq_->selectAll();
}

bool ModifyDialog::eventFilter(QObject* watched, QEvent* event) {
    if (forwarding_) return false;
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (!isCharacterKey(key)) return false;
        if (watched == txtName_) return filterNameKey(key);
        return filterNumericKey(static_cast<QLineEdit*>(watched), key);
    }
    if (event->type() == QEvent::FocusOut) {
        // Switching to another window or opening a popup is not leaving the field.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) correctField(watched);
    }
    return false;
}

void ModifyDialog::forwardKey(QObject* target, QKeyEvent* event) {
    forwarding_ = true;
    QCoreApplication::sendEvent(target, event);
    forwarding_ = false;
}

bool ModifyDialog::filterNumericKey(QLineEdit* box, QKeyEvent* event) {
    const bool backspace = event->key() == Qt::Key_Backspace;
    const bool ctrl = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!backspace && (ctrl || !isDigit(typedChar(event)))) return true;

    // The key still lands in the box it was typed into before typing runs on in the next one.
    if (box == txtFreq_ && box->text().size() == 2) {
        forwardKey(box, event);
        txtFreq2_->setFocus(Qt::OtherFocusReason);
        txtFreq2_->selectAll();
        return true;
    }
    if (box == txtShift_ && box->text().size() == 1) {
        forwardKey(box, event);
        txtShift2_->setFocus(Qt::OtherFocusReason);
        // The selection length follows the frequency fraction box; both hold four digits.
        txtShift2_->setSelection(0, int(txtFreq2_->text().size()));
        return true;
    }
    return false;
}

bool ModifyDialog::filterNameKey(QKeyEvent* event) {
    if (event->key() == Qt::Key_Backspace) return false;
    // Control chords never type a name character; Ctrl+Alt together is AltGr on some systems.
    const Qt::KeyboardModifiers mods = event->modifiers();
    const bool altGr = (mods & Qt::ControlModifier) && (mods & Qt::AltModifier);
    if (!altGr && (mods & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) return true;
    const QChar c = typedChar(event);
    if (c.isNull()) return true;
    const char16_t u = c.unicode();
    if (u >= u'a' && u <= u'z') {
        // Only the lower-case keys of E..Z produce those capitals.
        const QString upper(QChar(char16_t(u - u'a' + u'A')));
        QKeyEvent raised(QEvent::KeyPress, event->key(), event->modifiers() & ~Qt::ShiftModifier, upper,
                         event->isAutoRepeat(), ushort(event->count()));
        forwardKey(txtName_, &raised);
        return true;
    }
    static const QString allowed = QStringLiteral(" #$()*+-/0123456789=ABCD\\_");
    return !allowed.contains(c);
}

void ModifyDialog::correctField(QObject* field) {
    if (field == txtFreq_)
        correctFrequency();
    else if (field == txtFreq2_)
        correctFrequencyFraction();
    else if (field == txtShift_)
        correctShift();
    else if (field == txtShift2_)
        correctShiftFraction();
}

void ModifyDialog::correctFrequency() {
    if (editsRepeaterRow()) return;
    const int variant = effectiveVariant();
    const bool codeA = document_.CloneCodeA();
    const double value = NumericValue(txtFreq_->text());
    if (LowerLimit(variant, codeA) <= value && value < UpperLimit(variant, codeA)) return;

    QString replacement;
    if (mode_ == EditMode::Memory) {
        if (document_.memory().ChannelInUse(editIndex_))
            replacement = document_.memory().text(editIndex_, ColFrequency).left(3);
        else
            replacement = variant == VariantA ? QStringLiteral("155") : QStringLiteral("145");
    } else {
        replacement = document_.special().text(editIndex_, ColFrequency).left(3);
    }
    txtFreq_->setText(replacement);
}

void ModifyDialog::correctFrequencyFraction() {
    if (editsRepeaterRow()) return;
    int value = fractionValue(txtFreq2_->text());
    value -= value % 5;
    // Snap down to the 5 kHz or 12.5 kHz raster; the step follows the raster reached.
    for (;;) {
        if (value % 50 == 0) {
            optStep_[0]->setChecked(true);
            break;
        }
        if (value % 125 == 0) {
            optStep_[2]->setChecked(true);
            break;
        }
        value -= 5;
    }
    txtFreq2_->setText(fractionText(value));
}

void ModifyDialog::correctShift() {
    QString text = txtShift_->text();
    while (text.size() < 2)
        text.prepend(QLatin1Char('0'));
    txtShift_->setText(text);
}

void ModifyDialog::correctShiftFraction() {
    int value = fractionValue(txtShift2_->text());
    value -= value % 5;
    const bool wideRaster = optStep_[2]->isChecked() || optStep_[5]->isChecked();
    const int raster = wideRaster ? 125 : 50;
    while (value % raster != 0)
        value -= 5;
    txtShift2_->setText(fractionText(value));
}

void ModifyDialog::accept() {
    // Enter on the default button leaves the field without a focus change: correct it as leaving would.
    correctField(focusWidget());
    if (mode_ == EditMode::Memory) {
        writeMemoryRow();
    } else {
        writeSpecialRow();
    }
    QDialog::accept();
}

void ModifyDialog::reject() {
    QDialog::reject();
}

void ModifyDialog::composeColumns(ComposedColumns& cells) const {
    const auto put = [&cells](int column, const QString& text, double number) {
        cells[column] = Cell{text, number};
    };
    put(ColFrequency, txtFreq_->text() + QLatin1Char('.') + txtFreq2_->text(),
        NumericValue(txtFreq_->text()) + NumericValue(txtFreq2_->text()) / 10000.0);
    const int step = stepGroup_->checkedId();
    if (step >= 0) put(ColStep, StepNames().at(step), step);

    // The first ticked option decides; with none ticked the last option is taken.
    const auto option = [](const OptionTable& table, const QButtonGroup* group) {
        const int id = group->checkedId();
        return table.cell(id >= 0 && id < table.count() ? id : table.count() - 1);
    };
    cells[ColTone] = option(ToneModes(), toneGroup_);
    const int txTone = std::max(0, cmbTxTone_->currentIndex());
    const int rxTone = std::max(0, cmbRxTone_->currentIndex());
    const int dcs = std::max(0, cmbDCS_->currentIndex());
    put(ColTxTone, ToneNames().at(txTone), txTone);
    put(ColRxTone, ToneNames().at(rxTone), rxTone);
    put(ColDcs, DcsCodes().at(dcs), dcs);

    cells[ColShift] = option(Shifts(), shiftGroup_);
    QString offsetText = txtShift_->text() + QLatin1Char('.') + txtShift2_->text();
    if (offsetText.startsWith(QLatin1Char('0'))) offsetText.remove(0, 1);
    put(ColOffset, offsetText, NumericValue(txtShift_->text()) + NumericValue(txtShift2_->text()) / 10000.0);

    cells[ColPower] = option(Powers(), powerGroup_);
    put(ColBlank, QStringLiteral("------"), 0);
    cells[ColBsv] = option(BatterySaves(), batteryGroup_);
    const bool clock = chkClock_->isChecked();
    const bool bclo = chkBCLO_->isChecked();
    put(ColClock, clock ? QStringLiteral("On") : QStringLiteral("Off"), clock ? 1 : 0);
    put(ColBclo, bclo ? QStringLiteral("On") : QStringLiteral("Off"), bclo ? 1 : 0);
}

void ModifyDialog::writeMemoryRow() {
    ComposedColumns cells;
    composeColumns(cells);
    const bool skip = chkSkip_->isChecked();
    if (skip) cells[ColFrequency]->text.append(QLatin1Char('*'));
    const QString name = txtName_->text();
    const int row = editIndex_;
    document_.changeMemory(
        row, row,
        [&](MemoryTable& memory) {
            memory.setChannelInUse(row, true);
            for (int column = 0; column < int(cells.size()); ++column)
                if (cells[column]) memory.set(row, column, *cells[column]);
            memory.set(row, ColName, name, name.isEmpty() ? 0 : 1);
            memory.set(row, ColSkip, QString(), skip ? 1 : 0);
        },
        Document::Mark::Edit);
}

void ModifyDialog::writeSpecialRow() {
    ComposedColumns cells;
    composeColumns(cells);
    const int row = editIndex_;
    document_.changeSpecial(
        std::min(row, int(kRptRow)), std::max(row, int(kRptRow)),
        [&](SpecialTable& special) {
            for (int column = 0; column < int(cells.size()); ++column)
                if (cells[column]) special.set(row, column, *cells[column]);
            // The repeater row shows only its tone, DCS and shift columns, whichever row was edited.
            BlankRptTexts(special);
        },
        Document::Mark::Edit);
}

} // namespace zq::ui
