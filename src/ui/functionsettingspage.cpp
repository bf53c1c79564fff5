#include "functionsettingspage.h"

#include "channelgridmodels.h"
#include "channelgridview.h"
#include "settingscontrols.h"

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

FunctionSettingsPage::FunctionSettingsPage(zq::model::Document& document, QWidget* parent)
    : SettingsPage(document, QStringLiteral("SettingsPage1"), parent) {
    buildControls();
    connectControls();
    reload();
}

void FunctionSettingsPage::buildControls() {
    // General switches.
    mosquitoRepel_ = makeCheck(this, QStringLiteral("chkMosq"), QStringLiteral("Mosqito Repel"));
    sqlExternal_ = makeCheck(this, QStringLiteral("chkSQL"), QStringLiteral("SQL External"));
    repeaterMode_ = makeCheck(this, QStringLiteral("chkCharge"), QStringLiteral("Repeater mode"));
    beep_ = makeCheck(this, QStringLiteral("chkBeep"), QStringLiteral("Beep"));
    autoPowerOff_ = makeCheck(this, QStringLiteral("chkAPO"), QStringLiteral("Auto Power Off"));
    keyLock_ = makeCheck(this, QStringLiteral("chkLock"), QStringLiteral("Keylock"));
    autoProgram_ = makeCheck(this, QStringLiteral("chkAutoProg"), QStringLiteral("Auto Program"));
    const QStringList flagCaptions{QStringLiteral("DoReMi"), QStringLiteral("Battery Save"),
                                   QStringLiteral("Keylock")};
    for (int i = 0; i < 3; ++i) {
        flags_[i] = makeCheck(this, QString(), flagCaptions[i]);
        nameArrayMember(flags_[i], QStringLiteral("chkFlg1"), i);
    }
    auto* switches = new QVBoxLayout;
    switches->setSpacing(2);
    for (QCheckBox* box :
         {mosquitoRepel_, sqlExternal_, repeaterMode_, beep_, autoPowerOff_, keyLock_, autoProgram_})
        switches->addWidget(box);
    for (QCheckBox* box : flags_)
        switches->addWidget(box);
    switches->addStretch(1);

    // List settings.
    batteryType_ =
        makeCombo(this, QStringLiteral("cmbBat"), {QStringLiteral("Ni-MH"), QStringLiteral("Li-ion")});
    lamp_ = makeCombo(this, QStringLiteral("cmbLamp"),
                      {QStringLiteral("5 second"), QStringLiteral("Permanent on")});
    scanType_ = makeCombo(this, QStringLiteral("cmbScan"), {QStringLiteral("Timer"), QStringLiteral("Busy")});
    toneBurst_ = makeCombo(
        this, QStringLiteral("cmbTB"),
        {QStringLiteral("1750"), QStringLiteral("2100"), QStringLiteral("1000"), QStringLiteral("1450")});
    QStringList timeOuts{QStringLiteral("OFF")};
    for (int seconds = 30; seconds <= 450; seconds += 30)
        timeOuts << QStringLiteral("%1").arg(seconds, 3);
    timeOutTimer_ = makeCombo(this, QStringLiteral("cmbTOT"), timeOuts);
    QStringList penalties;
    for (int seconds = 0; seconds <= 15; ++seconds)
        penalties << QStringLiteral("%1").arg(seconds, 3);
    penaltyTime_ = makeCombo(this, QStringLiteral("cmbTOTP"), penalties);

    auto* lists = new QGridLayout;
    addComboRow(lists, 0, this, QStringLiteral("Battery Type"), batteryType_);
    addComboRow(lists, 1, this, QStringLiteral("Lamp"), lamp_);
    addComboRow(lists, 2, this, QStringLiteral("Scan Type"), scanType_);
    addComboRow(lists, 3, this, QStringLiteral("Tone Burst"), toneBurst_, QStringLiteral("(Hz)"));
    auto* timeOutFrame = new QGroupBox(QStringLiteral("Time Out Timer"), this);
    auto* timeOutGrid = new QGridLayout(timeOutFrame);
    addComboRow(timeOutGrid, 0, timeOutFrame, QStringLiteral("TOT"), timeOutTimer_, QStringLiteral("(sec)"));
    addComboRow(timeOutGrid, 1, timeOutFrame, QStringLiteral("Penalty Time"), penaltyTime_,
                QStringLiteral("(sec)"));
    auto* listColumn = new QVBoxLayout;
    listColumn->addLayout(lists);
    listColumn->addWidget(timeOutFrame);
    listColumn->addStretch(1);

    // Volume and squelch.
    volume_ = makeLevelSlider(this, QStringLiteral("Slider1"));
    squelch_ = makeLevelSlider(this, QStringLiteral("Slider2"));
    volumeLabel_ = makeLabel(this, QStringLiteral("0"), QStringLiteral("lblVol"));
    squelchLabel_ = makeLabel(this, QStringLiteral("0"), QStringLiteral("lblSql"));
    auto* levelColumn = new QVBoxLayout;
    levelColumn->addWidget(levelFrame(this, QStringLiteral("Volume"), volume_, volumeLabel_));
    levelColumn->addWidget(levelFrame(this, QStringLiteral("Squelch"), squelch_, squelchLabel_));
    levelColumn->addStretch(1);

    // Model choice and the transfer buttons.
    auto* modelFrame = new QGroupBox(QStringLiteral("Model"), this);
    auto* modelColumn = new QVBoxLayout(modelFrame);
    modelColumn->setSpacing(2);
    models_ = new QButtonGroup(this);
    for (int i = 0; i < zq::model::kVariantCount; ++i) {
        auto* option = new QRadioButton(zq::model::VariantCaption(i), modelFrame);
        nameArrayMember(option, QStringLiteral("opbModel"), i);
        models_->addButton(option, i);
        modelColumn->addWidget(option);
    }
    autoSelect_ = new QPushButton(QStringLiteral("Auto Select"), modelFrame);
    autoSelect_->setObjectName(QStringLiteral("cmdAuto"));
    modelColumn->addWidget(autoSelect_);
    makeTransferButtons(1);
    auto* modelAndButtons = new QVBoxLayout;
    modelAndButtons->addWidget(modelFrame);
    modelAndButtons->addStretch(1);
    modelAndButtons->addWidget(readButton_);
    modelAndButtons->addWidget(writeButton_);

    auto* top = new QHBoxLayout;
    top->addLayout(modelAndButtons);
    top->addLayout(switches);
    top->addLayout(listColumn);
    top->addLayout(levelColumn, 1);

    specialGrid_ =
        new ChannelGridView(QStringLiteral("MSFlexGrid2"), new SpecialGridModel(document_, this), this);
    specialGrid_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    specialGrid_->showAllRows();
    specialGrid_->selectGridRow(1);

    auto* page = new QVBoxLayout(this);
    page->addLayout(top);
    page->addWidget(specialGrid_, 1);
}

void FunctionSettingsPage::connectControls() {
    using model::RadioSettings;
    // Every switch but the two without a handler marks the data as changed.
    bindCheck(mosquitoRepel_, &RadioSettings::mosquitoRepel, false);
    bindCheck(sqlExternal_, &RadioSettings::sqlExternal, false);
    bindCheck(repeaterMode_, &RadioSettings::repeaterMode);
    bindCheck(beep_, &RadioSettings::beep);
    bindCheck(autoPowerOff_, &RadioSettings::autoPowerOff);
    bindCheck(keyLock_, &RadioSettings::keyLock);
    bindCheck(autoProgram_, &RadioSettings::autoProgram);
    for (int i = 0; i < int(flags_.size()); ++i) {
        connect(flags_[i], &QCheckBox::clicked, this,
                [this, i](bool checked) { store([&](RadioSettings& s) { s.flags[i] = checked; }, true); });
    }

    bindList(batteryType_, &RadioSettings::batteryType);
    bindList(lamp_, &RadioSettings::lamp);
    bindList(scanType_, &RadioSettings::scanType);
    bindList(toneBurst_, &RadioSettings::toneBurst);
    bindList(timeOutTimer_, &RadioSettings::timeOutTimer);
    bindList(penaltyTime_, &RadioSettings::penaltyTime);

    const auto bindSlider = [this](QSlider* slider, QLabel* label, int RadioSettings::*value) {
        connect(slider, &QSlider::sliderMoved, label, [label](int position) { label->setNum(position); });
        connect(slider, &QSlider::valueChanged, this, [this, label, value](int position) {
            label->setNum(position);
            store([&](RadioSettings& s) { s.*value = position; }, true);
        });
    };
    bindSlider(volume_, volumeLabel_, &RadioSettings::volume);
    bindSlider(squelch_, squelchLabel_, &RadioSettings::squelch);

    connect(models_, &QButtonGroup::idClicked, this, &FunctionSettingsPage::selectModel);
    connect(autoSelect_, &QPushButton::clicked, this, &FunctionSettingsPage::autoSelectRequested);
    connect(specialGrid_, &ChannelGridView::rowOpened, this,
            [this] { Q_EMIT specialRowOpened(specialGrid_->currentGridRow() - 1); });
    followDocument(&model::Document::settingsChanged, [this] { reload(); });
    followDocument(&model::Document::modelVariantChanged, [this] { reload(); });
}

void FunctionSettingsPage::selectModel(int variant) {
    if (variant < 0 || variant >= zq::model::kVariantCount) return;
    document_.chooseModelVariant(variant);
}

void FunctionSettingsPage::setAutoSelectEnabled(bool enabled) {
    autoSelect_->setEnabled(enabled);
}

void FunctionSettingsPage::reload() {
    inStep([this] {
        const auto& s = document_.settings();
        mosquitoRepel_->setChecked(s.mosquitoRepel);
        sqlExternal_->setChecked(s.sqlExternal);
        repeaterMode_->setChecked(s.repeaterMode);
        beep_->setChecked(s.beep);
        autoPowerOff_->setChecked(s.autoPowerOff);
        keyLock_->setChecked(s.keyLock);
        autoProgram_->setChecked(s.autoProgram);
        for (int i = 0; i < int(flags_.size()); ++i)
            flags_[i]->setChecked(s.flags[i]);
        showComboIndex(batteryType_, s.batteryType);
        showComboIndex(lamp_, s.lamp);
        showComboIndex(scanType_, s.scanType);
        showComboIndex(toneBurst_, s.toneBurst);
        showComboIndex(timeOutTimer_, s.timeOutTimer);
        showComboIndex(penaltyTime_, s.penaltyTime);
        volume_->setValue(s.volume);
        squelch_->setValue(s.squelch);
        volumeLabel_->setNum(volume_->value());
        squelchLabel_->setNum(squelch_->value());

        // No option is shown selected when the document has no variant.
        const int variant = document_.ModelVariant();
        models_->setExclusive(false);
        for (QAbstractButton* option : models_->buttons())
            option->setChecked(models_->id(option) == variant);
        models_->setExclusive(true);
    });
}

} // namespace zq::ui
