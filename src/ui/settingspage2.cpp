#include "settingscontrols.h"
#include "settingspages.h"

#include "model/dialcodec.h"
#include "model/document.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace zq::ui {

using namespace zq::ui::settings;

SettingsPage2::SettingsPage2(zq::model::Document& document, QWidget* parent)
    : QWidget(parent), document_(document) {
    setObjectName(QStringLiteral("SettingsPage2"));
    buildControls();
    connectControls();
    reload();
}

void SettingsPage2::buildControls() {
    // DTMF timing.
    const QStringList bursts{QStringLiteral("  60"), QStringLiteral("  80"), QStringLiteral(" 160"),
                             QStringLiteral(" 200")};
    cmbDWait_ = makeCombo(
        this, QStringLiteral("cmbDWait"),
        {QStringLiteral(" 100"), QStringLiteral(" 400"), QStringLiteral(" 700"), QStringLiteral("1000")});
    cmbDFirst_ = makeCombo(this, QStringLiteral("cmbDFirst"), bursts);
    cmbDBurst_ = makeCombo(this, QStringLiteral("cmbDBurst"), bursts);
    auto* dtmfFrame = new QGroupBox(QStringLiteral("DTMF"), this);
    auto* dtmfGrid = new QGridLayout(dtmfFrame);
    const std::array<std::pair<QString, QComboBox*>, 3> dtmfRows{{{QStringLiteral("Wait Time"), cmbDWait_},
                                                                  {QStringLiteral("First Burst"), cmbDFirst_},
                                                                  {QStringLiteral("Interval"), cmbDBurst_}}};
    for (int row = 0; row < int(dtmfRows.size()); ++row) {
        dtmfGrid->addWidget(makeLabel(dtmfFrame, dtmfRows[row].first), row, 0);
        dtmfGrid->addWidget(dtmfRows[row].second, row, 1);
        dtmfGrid->addWidget(makeLabel(dtmfFrame, QStringLiteral("(msec)")), row, 2);
    }

    // Channel mode and what it allows.
    chkChannel_ = makeCheck(this, QStringLiteral("chkChannel"), QStringLiteral("Channel Mode"));
    frmChannel_ = new QGroupBox(QStringLiteral("Allow the access to :"), this);
    frmChannel_->setObjectName(QStringLiteral("frmChannel"));
    chkScanEn_ = makeCheck(frmChannel_, QStringLiteral("chkScanEn"), QStringLiteral("Scan Start"));
    chkPowerEn_ = makeCheck(frmChannel_, QStringLiteral("chkPowerEn"), QStringLiteral("TX Power"));
    chkLockEn_ = makeCheck(frmChannel_, QStringLiteral("chkLockEn"), QStringLiteral("Key Lock"));
    chkMoniEn_ = makeCheck(frmChannel_, QStringLiteral("chkMoniEn"), QStringLiteral("Monitor Function"));
    chkToneEn_ = makeCheck(frmChannel_, QStringLiteral("chkToneEn"), QStringLiteral("CTCSS / DCS"));
    chkBurstEn_ = makeCheck(frmChannel_, QStringLiteral("chkBurstEn"), QStringLiteral("Tone Burst Output"));
    chkNameEn_ = makeCheck(frmChannel_, QStringLiteral("chkNameEn"), QStringLiteral("Name Opration"));
    auto* accessColumn = new QVBoxLayout(frmChannel_);
    accessColumn->setSpacing(2);
    for (QCheckBox* box :
         {chkScanEn_, chkPowerEn_, chkLockEn_, chkMoniEn_, chkToneEn_, chkBurstEn_, chkNameEn_})
        accessColumn->addWidget(box);

    auto* left = new QVBoxLayout;
    left->addWidget(dtmfFrame);
    left->addWidget(chkChannel_);
    left->addWidget(frmChannel_);
    left->addStretch(1);

    // Auto dialer memories 0..8.
    auto* dialFrame = new QGroupBox(QStringLiteral("Auto Dialer"), this);
    auto* dialGrid = new QGridLayout(dialFrame);
    dialGrid->setVerticalSpacing(3);
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        Label17_[k] = makeLabel(dialFrame, QString::number(k));
        nameArrayMember(Label17_[k], QStringLiteral("Label17"), k);
        txtDial_[k] = new QLineEdit(dialFrame);
        nameArrayMember(txtDial_[k], QStringLiteral("txtDial"), k);
        txtDial_[k]->setMaxLength(zq::model::kDialMaxLength);
        txtDial_[k]->setMinimumWidth(
            txtDial_[k]->fontMetrics().horizontalAdvance(QString(17, QLatin1Char('8'))));
        txtDial_[k]->installEventFilter(this);
        Label17_[k]->setBuddy(txtDial_[k]);
        dialGrid->addWidget(Label17_[k], k, 0);
        dialGrid->addWidget(txtDial_[k], k, 1);
    }
    auto* middle = new QVBoxLayout;
    middle->addWidget(dialFrame);
    middle->addStretch(1);

    // The note and the transfer buttons.
    auto* label18 = makeLabel(this, QStringLiteral("NOTE:"), QStringLiteral("Label18"));
    auto* label1 = makeLabel(this,
                             QStringLiteral("The Auto Dialer and the DTMF functions cannot be used "
                                            "with the ZQ-318 A."),
                             QStringLiteral("Label1"));
    label1->setWordWrap(true);
    cmbRxData2_ = new QPushButton(QStringLiteral("Read Settings"), this);
    cmbRxData2_->setObjectName(QStringLiteral("cmbRxData2"));
    cmbTxData2_ = new QPushButton(QStringLiteral("Write Settings"), this);
    cmbTxData2_->setObjectName(QStringLiteral("cmbTxData2"));
    auto* right = new QVBoxLayout;
    right->addWidget(label18);
    right->addWidget(label1);
    right->addStretch(1);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(cmbRxData2_);
    buttons->addWidget(cmbTxData2_);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch(1);
    buttonRow->addLayout(buttons);
    right->addLayout(buttonRow);

    auto* page = new QHBoxLayout(this);
    page->addLayout(left);
    page->addLayout(middle);
    page->addLayout(right, 1);
}

void SettingsPage2::connectControls() {
    using model::RadioSettings;
    const auto bindCombo = [this](QComboBox* box, int RadioSettings::*value) {
        onComboEdits(
            this, box, [this, value](int index) { storeChoice(value, index); },
            [this, value](int index) { storeTyped(value, index); });
    };
    bindCombo(cmbDWait_, &RadioSettings::dtmfWait);
    bindCombo(cmbDFirst_, &RadioSettings::dtmfFirst);
    bindCombo(cmbDBurst_, &RadioSettings::dtmfInterval);

    const auto bindCheck = [this](QCheckBox* box, bool RadioSettings::*value) {
        connect(box, &QCheckBox::clicked, this,
                [this, value](bool checked) { store([&](RadioSettings& s) { s.*value = checked; }, true); });
    };
    bindCheck(chkScanEn_, &RadioSettings::scanEnable);
    bindCheck(chkPowerEn_, &RadioSettings::powerEnable);
    bindCheck(chkLockEn_, &RadioSettings::lockEnable);
    bindCheck(chkMoniEn_, &RadioSettings::monitorEnable);
    bindCheck(chkToneEn_, &RadioSettings::toneEnable);
    bindCheck(chkBurstEn_, &RadioSettings::burstEnable);
    bindCheck(chkNameEn_, &RadioSettings::nameEnable);
    connect(chkChannel_, &QCheckBox::clicked, this, [this](bool checked) {
        store([&](RadioSettings& s) { s.channelMode = checked; }, true);
        applyChannelModeEnabled();
    });

    for (int k = 0; k < zq::model::kDialCount; ++k) {
        connect(txtDial_[k], &QLineEdit::textChanged, this,
                [this, k](const QString& text) { storeDialText(k, text); });
    }

    connect(cmbRxData2_, &QPushButton::clicked, this, &SettingsPage2::readSettingsRequested);
    connect(cmbTxData2_, &QPushButton::clicked, this, &SettingsPage2::writeSettingsRequested);

    connect(&document_, &zq::model::Document::settingsChanged, this, [this] {
        if (!loading_) reloadSettings();
    });
    connect(&document_, &zq::model::Document::dialTextsChanged, this, [this] {
        if (!loading_) reloadDialTexts();
    });
}

bool SettingsPage2::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto found = std::find(txtDial_.begin(), txtDial_.end(), watched);
    if (found == txtDial_.end()) return QWidget::eventFilter(watched, event);
    const int box = int(found - txtDial_.begin());
    auto* key = static_cast<QKeyEvent*>(event);

    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        txtDial_[zq::model::NextDialBox(box)]->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (key->key() == Qt::Key_Backspace) return false;
    // Editing, moving and shortcut keys (paste among them) are no typed characters.
    const QString text = key->text();
    if (text.size() != 1 || !text.at(0).isPrint() || (key->modifiers() & Qt::ControlModifier)) return false;

    const zq::model::DialKeyResult result = zq::model::FilterDialKey(text.at(0));
    if (result.action != zq::model::DialKeyAction::Accept) return true;
    if (result.character == text.at(0)) return false;
    txtDial_[box]->insert(QString(result.character));
    return true;
}

void SettingsPage2::storeDialText(int box, const QString& text) {
    if (loading_) return;
    loading_ = true;
    document_.setDialText(box, text, model::Document::Mark::Edit);
    loading_ = false;
}

void SettingsPage2::storeChoice(int model::RadioSettings::*value, int index) {
    // Choosing a list entry changes the value but does not count as an edit.
    store([&](model::RadioSettings& s) { s.*value = index; }, false);
}

void SettingsPage2::storeTyped(int model::RadioSettings::*value, int index) {
    // A typed text that names no entry leaves the value as it was.
    store(
        [&](model::RadioSettings& s) {
            if (index >= 0) s.*value = index;
        },
        true);
}

void SettingsPage2::store(const std::function<void(model::RadioSettings&)>& change, bool edit) {
    if (loading_) return;
    // The page itself is already up to date: the announcement is for the other views.
    loading_ = true;
    document_.changeSettings(change, edit ? model::Document::Mark::Edit : model::Document::Mark::Quiet);
    loading_ = false;
}

void SettingsPage2::applyChannelModeEnabled() {
    // The access flags keep their ticks; only whether they can be changed follows the mode.
    const bool enabled = chkChannel_->isChecked();
    frmChannel_->setEnabled(enabled);
    for (QCheckBox* box :
         {chkScanEn_, chkPowerEn_, chkLockEn_, chkMoniEn_, chkToneEn_, chkBurstEn_, chkNameEn_})
        box->setEnabled(enabled);
}

void SettingsPage2::reload() {
    reloadSettings();
    reloadDialTexts();
}

void SettingsPage2::reloadSettings() {
    const auto& s = document_.settings();
    loading_ = true;
    showComboIndex(cmbDWait_, s.dtmfWait);
    showComboIndex(cmbDFirst_, s.dtmfFirst);
    showComboIndex(cmbDBurst_, s.dtmfInterval);
    chkChannel_->setChecked(s.channelMode);
    chkScanEn_->setChecked(s.scanEnable);
    chkPowerEn_->setChecked(s.powerEnable);
    chkLockEn_->setChecked(s.lockEnable);
    chkMoniEn_->setChecked(s.monitorEnable);
    chkToneEn_->setChecked(s.toneEnable);
    chkBurstEn_->setChecked(s.burstEnable);
    chkNameEn_->setChecked(s.nameEnable);
    applyChannelModeEnabled();
    loading_ = false;
}

void SettingsPage2::reloadDialTexts() {
    loading_ = true;
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        if (txtDial_[k]->text() != document_.dialTexts()[k]) txtDial_[k]->setText(document_.dialTexts()[k]);
    }
    loading_ = false;
}

} // namespace zq::ui
