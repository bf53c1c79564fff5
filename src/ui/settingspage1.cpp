#include "settingscontrols.h"
#include "settingspages.h"

#include "model/document.h"
#include "model/tables.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

namespace zq::ui {

using namespace zq::ui::settings;

namespace {

// Positions the radio accepts for volume and squelch.
constexpr int kLevelMax = 20;

QSlider* makeLevelSlider(QWidget* parent, const QString& name) {
    auto* slider = new QSlider(Qt::Horizontal, parent);
    slider->setObjectName(name);
    slider->setRange(0, kLevelMax);
    slider->setSingleStep(1);
    slider->setPageStep(5);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(5);
    // Only a finished change counts as an edit; the label follows the drag through sliderMoved.
    slider->setTracking(false);
    return slider;
}

QGroupBox* levelFrame(QWidget* parent, const QString& caption, QSlider* slider, QLabel* label) {
    auto* frame = new QGroupBox(caption, parent);
    auto* row = new QHBoxLayout(frame);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("000")));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(slider, 1);
    row->addWidget(label);
    return frame;
}

void addComboRow(QGridLayout* grid, int row, QWidget* parent, const QString& caption, QComboBox* box,
                 const QString& unit = QString()) {
    grid->addWidget(makeLabel(parent, caption), row, 0);
    grid->addWidget(box, row, 1);
    if (!unit.isEmpty()) grid->addWidget(makeLabel(parent, unit), row, 2);
}

} // namespace

SettingsPage1::SettingsPage1(zq::model::Document& document, QWidget* parent)
    : QWidget(parent), document_(document) {
    setObjectName(QStringLiteral("SettingsPage1"));
    buildControls();
    connectControls();
    reload();
}

void SettingsPage1::buildControls() {
    // General switches.
    chkMosq_ = makeCheck(this, QStringLiteral("chkMosq"), QStringLiteral("Mosqito Repel"));
    chkSQL_ = makeCheck(this, QStringLiteral("chkSQL"), QStringLiteral("SQL External"));
    chkCharge_ = makeCheck(this, QStringLiteral("chkCharge"), QStringLiteral("Repeater mode"));
    chkBeep_ = makeCheck(this, QStringLiteral("chkBeep"), QStringLiteral("Beep"));
    chkAPO_ = makeCheck(this, QStringLiteral("chkAPO"), QStringLiteral("Auto Power Off"));
    chkLock_ = makeCheck(this, QStringLiteral("chkLock"), QStringLiteral("Keylock"));
    chkAutoProg_ = makeCheck(this, QStringLiteral("chkAutoProg"), QStringLiteral("Auto Program"));
    const QStringList flagCaptions{QStringLiteral("DoReMi"), QStringLiteral("Battery Save"),
                                   QStringLiteral("Keylock")};
    for (int i = 0; i < 3; ++i) {
        chkFlg1_[i] = makeCheck(this, QString(), flagCaptions[i]);
        nameArrayMember(chkFlg1_[i], QStringLiteral("chkFlg1"), i);
    }
    auto* switches = new QVBoxLayout;
    switches->setSpacing(2);
    for (QCheckBox* box : {chkMosq_, chkSQL_, chkCharge_, chkBeep_, chkAPO_, chkLock_, chkAutoProg_})
        switches->addWidget(box);
    for (QCheckBox* box : chkFlg1_)
        switches->addWidget(box);
    switches->addStretch(1);

    // List settings.
    cmbBat_ = makeCombo(this, QStringLiteral("cmbBat"), {QStringLiteral("Ni-MH"), QStringLiteral("Li-ion")});
    cmbLamp_ = makeCombo(this, QStringLiteral("cmbLamp"),
                         {QStringLiteral("5 second"), QStringLiteral("Permanent on")});
    cmbScan_ = makeCombo(this, QStringLiteral("cmbScan"), {QStringLiteral("Timer"), QStringLiteral("Busy")});
    cmbTB_ = makeCombo(
        this, QStringLiteral("cmbTB"),
        {QStringLiteral("1750"), QStringLiteral("2100"), QStringLiteral("1000"), QStringLiteral("1450")});
    QStringList timeOuts{QStringLiteral("OFF")};
    for (int seconds = 30; seconds <= 450; seconds += 30)
        timeOuts << QStringLiteral("%1").arg(seconds, 3);
    cmbTOT_ = makeCombo(this, QStringLiteral("cmbTOT"), timeOuts);
    QStringList penalties;
    for (int seconds = 0; seconds <= 15; ++seconds)
        penalties << QStringLiteral("%1").arg(seconds, 3);
    cmbTOTP_ = makeCombo(this, QStringLiteral("cmbTOTP"), penalties);

    auto* lists = new QGridLayout;
    addComboRow(lists, 0, this, QStringLiteral("Battery Type"), cmbBat_);
    addComboRow(lists, 1, this, QStringLiteral("Lamp"), cmbLamp_);
    addComboRow(lists, 2, this, QStringLiteral("Scan Type"), cmbScan_);
    addComboRow(lists, 3, this, QStringLiteral("Tone Burst"), cmbTB_, QStringLiteral("(Hz)"));
    auto* timeOutFrame = new QGroupBox(QStringLiteral("Time Out Timer"), this);
    auto* timeOutGrid = new QGridLayout(timeOutFrame);
    addComboRow(timeOutGrid, 0, timeOutFrame, QStringLiteral("TOT"), cmbTOT_, QStringLiteral("(sec)"));
    addComboRow(timeOutGrid, 1, timeOutFrame, QStringLiteral("Penalty Time"), cmbTOTP_,
                QStringLiteral("(sec)"));
    auto* listColumn = new QVBoxLayout;
    listColumn->addLayout(lists);
    listColumn->addWidget(timeOutFrame);
    listColumn->addStretch(1);

    // Volume and squelch.
    Slider1_ = makeLevelSlider(this, QStringLiteral("Slider1"));
    Slider2_ = makeLevelSlider(this, QStringLiteral("Slider2"));
    lblVol_ = makeLabel(this, QStringLiteral("0"), QStringLiteral("lblVol"));
    lblSql_ = makeLabel(this, QStringLiteral("0"), QStringLiteral("lblSql"));
    auto* levelColumn = new QVBoxLayout;
    levelColumn->addWidget(levelFrame(this, QStringLiteral("Volume"), Slider1_, lblVol_));
    levelColumn->addWidget(levelFrame(this, QStringLiteral("Squelch"), Slider2_, lblSql_));
    levelColumn->addStretch(1);

    // Model choice and the transfer buttons.
    auto* modelFrame = new QGroupBox(QStringLiteral("Model"), this);
    auto* modelColumn = new QVBoxLayout(modelFrame);
    modelColumn->setSpacing(2);
    modelGroup_ = new QButtonGroup(this);
    for (int i = 0; i < 4; ++i) {
        opbModel_[i] = new QRadioButton(zq::model::VariantCaption(i), modelFrame);
        nameArrayMember(opbModel_[i], QStringLiteral("opbModel"), i);
        modelGroup_->addButton(opbModel_[i], i);
        modelColumn->addWidget(opbModel_[i]);
    }
    cmdAuto_ = new QPushButton(QStringLiteral("Auto Select"), modelFrame);
    cmdAuto_->setObjectName(QStringLiteral("cmdAuto"));
    modelColumn->addWidget(cmdAuto_);
    cmbRxData1_ = new QPushButton(QStringLiteral("Read Settings"), this);
    cmbRxData1_->setObjectName(QStringLiteral("cmbRxData1"));
    cmbTxData1_ = new QPushButton(QStringLiteral("Write Settings"), this);
    cmbTxData1_->setObjectName(QStringLiteral("cmbTxData1"));
    auto* modelAndButtons = new QVBoxLayout;
    modelAndButtons->addWidget(modelFrame);
    modelAndButtons->addStretch(1);
    modelAndButtons->addWidget(cmbRxData1_);
    modelAndButtons->addWidget(cmbTxData1_);

    auto* top = new QHBoxLayout;
    top->addLayout(modelAndButtons);
    top->addLayout(switches);
    top->addLayout(listColumn);
    top->addLayout(levelColumn, 1);

    gridArea_ = new QVBoxLayout;
    gridArea_->setContentsMargins(0, 0, 0, 0);

    auto* page = new QVBoxLayout(this);
    page->addLayout(top);
    page->addLayout(gridArea_, 1);
}

void SettingsPage1::connectControls() {
    using model::RadioSettings;
    // A click stores the tick; every switch but the two without a handler marks the data changed.
    const auto bindCheck = [this](QCheckBox* box, bool RadioSettings::*value, bool marks) {
        connect(box, &QCheckBox::clicked, this, [this, value, marks](bool checked) {
            store([&](RadioSettings& s) { s.*value = checked; }, marks);
        });
    };
    bindCheck(chkMosq_, &RadioSettings::mosquitoRepel, false);
    bindCheck(chkSQL_, &RadioSettings::sqlExternal, false);
    bindCheck(chkCharge_, &RadioSettings::repeaterMode, true);
    bindCheck(chkBeep_, &RadioSettings::beep, true);
    bindCheck(chkAPO_, &RadioSettings::autoPowerOff, true);
    bindCheck(chkLock_, &RadioSettings::keyLock, true);
    bindCheck(chkAutoProg_, &RadioSettings::autoProgram, true);
    for (int i = 0; i < 3; ++i) {
        connect(chkFlg1_[i], &QCheckBox::clicked, this,
                [this, i](bool checked) { store([&](RadioSettings& s) { s.flags[i] = checked; }, true); });
    }

    const auto bindCombo = [this](QComboBox* box, int RadioSettings::*value) {
        onComboEdits(
            this, box, [this, value](int index) { storeChoice(value, index); },
            [this, value](int index) { storeTyped(value, index); });
    };
    bindCombo(cmbBat_, &RadioSettings::batteryType);
    bindCombo(cmbLamp_, &RadioSettings::lamp);
    bindCombo(cmbScan_, &RadioSettings::scanType);
    bindCombo(cmbTB_, &RadioSettings::toneBurst);
    bindCombo(cmbTOT_, &RadioSettings::timeOutTimer);
    bindCombo(cmbTOTP_, &RadioSettings::penaltyTime);

    const auto bindSlider = [this](QSlider* slider, QLabel* label, int RadioSettings::*value) {
        connect(slider, &QSlider::sliderMoved, label, [label](int position) { label->setNum(position); });
        connect(slider, &QSlider::valueChanged, this, [this, label, value](int position) {
            label->setNum(position);
            store([&](RadioSettings& s) { s.*value = position; }, true);
        });
    };
    bindSlider(Slider1_, lblVol_, &RadioSettings::volume);
    bindSlider(Slider2_, lblSql_, &RadioSettings::squelch);

    connect(modelGroup_, &QButtonGroup::idClicked, this, &SettingsPage1::selectModel);
    connect(cmdAuto_, &QPushButton::clicked, this, &SettingsPage1::autoSelectRequested);
    connect(cmbRxData1_, &QPushButton::clicked, this, &SettingsPage1::readSettingsRequested);
    connect(cmbTxData1_, &QPushButton::clicked, this, &SettingsPage1::writeSettingsRequested);

    connect(&document_, &zq::model::Document::settingsChanged, this, [this] {
        if (!loading_) reload();
    });
    connect(&document_, &zq::model::Document::modelVariantChanged, this, [this] {
        if (!loading_) reload();
    });
}

void SettingsPage1::storeChoice(int model::RadioSettings::*value, int index) {
    // Choosing a list entry changes the value but does not count as an edit.
    store([&](model::RadioSettings& s) { s.*value = index; }, false);
}

void SettingsPage1::storeTyped(int model::RadioSettings::*value, int index) {
    // A typed text that names no entry leaves the value as it was.
    store(
        [&](model::RadioSettings& s) {
            if (index >= 0) s.*value = index;
        },
        true);
}

void SettingsPage1::store(const std::function<void(model::RadioSettings&)>& change, bool edit) {
    if (loading_) return;
    // The page itself is already up to date: the announcement is for the other views.
    loading_ = true;
    document_.changeSettings(change, edit ? model::Document::Mark::Edit : model::Document::Mark::Quiet);
    loading_ = false;
}

void SettingsPage1::selectModel(int variant) {
    if (variant < 0 || variant >= int(opbModel_.size())) return;
    document_.chooseModelVariant(variant);
}

void SettingsPage1::setSpecialGrid(QWidget* grid) {
    if (grid == specialGrid_) return;
    if (specialGrid_) {
        gridArea_->removeWidget(specialGrid_);
        specialGrid_->hide();
    }
    specialGrid_ = grid;
    if (grid) {
        gridArea_->addWidget(grid);
        grid->show();
    }
}

void SettingsPage1::reload() {
    const auto& s = document_.settings();
    loading_ = true;
    chkMosq_->setChecked(s.mosquitoRepel);
    chkSQL_->setChecked(s.sqlExternal);
    chkCharge_->setChecked(s.repeaterMode);
    chkBeep_->setChecked(s.beep);
    chkAPO_->setChecked(s.autoPowerOff);
    chkLock_->setChecked(s.keyLock);
    chkAutoProg_->setChecked(s.autoProgram);
    for (int i = 0; i < 3; ++i)
        chkFlg1_[i]->setChecked(s.flags[i]);
    showComboIndex(cmbBat_, s.batteryType);
    showComboIndex(cmbLamp_, s.lamp);
    showComboIndex(cmbScan_, s.scanType);
    showComboIndex(cmbTB_, s.toneBurst);
    showComboIndex(cmbTOT_, s.timeOutTimer);
    showComboIndex(cmbTOTP_, s.penaltyTime);
    Slider1_->setValue(s.volume);
    Slider2_->setValue(s.squelch);
    lblVol_->setNum(Slider1_->value());
    lblSql_->setNum(Slider2_->value());

    // No option is shown selected when the document has no variant.
    const int variant = document_.ModelVariant();
    modelGroup_->setExclusive(false);
    for (int i = 0; i < int(opbModel_.size()); ++i)
        opbModel_[i]->setChecked(i == variant);
    modelGroup_->setExclusive(true);
    loading_ = false;
}

} // namespace zq::ui
