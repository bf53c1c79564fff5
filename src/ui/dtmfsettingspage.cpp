#include "dtmfsettingspage.h"

#include "settingscontrols.h"

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
using model::RadioSettings;

namespace {

// The channel-mode access flags, in the order of the page.
const struct {
    const char* name;
    const char* caption;
    bool RadioSettings::*value;
} kAccessFlags[] = {
    {"chkScanEn", "Scan Start", &RadioSettings::scanEnable},
    {"chkPowerEn", "TX Power", &RadioSettings::powerEnable},
    {"chkLockEn", "Key Lock", &RadioSettings::lockEnable},
    {"chkMoniEn", "Monitor Function", &RadioSettings::monitorEnable},
    {"chkToneEn", "CTCSS / DCS", &RadioSettings::toneEnable},
    {"chkBurstEn", "Tone Burst Output", &RadioSettings::burstEnable},
    {"chkNameEn", "Name Opration", &RadioSettings::nameEnable},
};

} // namespace

DtmfSettingsPage::DtmfSettingsPage(zq::model::Document& document, QWidget* parent)
    : SettingsPage(document, QStringLiteral("SettingsPage2"), parent) {
    static_assert(std::size(kAccessFlags) == std::tuple_size_v<decltype(accessChecks_)>);
    buildControls();
    connectControls();
    reload();
}

void DtmfSettingsPage::buildControls() {
    // DTMF timing.
    const QStringList bursts{QStringLiteral("  60"), QStringLiteral("  80"), QStringLiteral(" 160"),
                             QStringLiteral(" 200")};
    dtmfWait_ = makeCombo(
        this, QStringLiteral("cmbDWait"),
        {QStringLiteral(" 100"), QStringLiteral(" 400"), QStringLiteral(" 700"), QStringLiteral("1000")});
    dtmfFirst_ = makeCombo(this, QStringLiteral("cmbDFirst"), bursts);
    dtmfInterval_ = makeCombo(this, QStringLiteral("cmbDBurst"), bursts);
    auto* dtmfFrame = new QGroupBox(QStringLiteral("DTMF"), this);
    auto* dtmfGrid = new QGridLayout(dtmfFrame);
    const std::array<std::pair<QString, QComboBox*>, 3> dtmfRows{
        {{QStringLiteral("Wait Time"), dtmfWait_},
         {QStringLiteral("First Burst"), dtmfFirst_},
         {QStringLiteral("Interval"), dtmfInterval_}}};
    for (int row = 0; row < int(dtmfRows.size()); ++row) {
        dtmfGrid->addWidget(makeLabel(dtmfFrame, dtmfRows[row].first), row, 0);
        dtmfGrid->addWidget(dtmfRows[row].second, row, 1);
        dtmfGrid->addWidget(makeLabel(dtmfFrame, QStringLiteral("(msec)")), row, 2);
    }

    // Channel mode and what it allows.
    channelMode_ = makeCheck(this, QStringLiteral("chkChannel"), QStringLiteral("Channel Mode"));
    accessFrame_ = new QGroupBox(QStringLiteral("Allow the access to :"), this);
    accessFrame_->setObjectName(QStringLiteral("frmChannel"));
    auto* accessColumn = new QVBoxLayout(accessFrame_);
    accessColumn->setSpacing(2);
    for (int i = 0; i < int(accessChecks_.size()); ++i) {
        accessChecks_[i] = makeCheck(accessFrame_, QLatin1String(kAccessFlags[i].name),
                                     QLatin1String(kAccessFlags[i].caption));
        accessColumn->addWidget(accessChecks_[i]);
    }

    auto* left = new QVBoxLayout;
    left->addWidget(dtmfFrame);
    left->addWidget(channelMode_);
    left->addWidget(accessFrame_);
    left->addStretch(1);

    // Auto dialer memories 0..8.
    auto* dialFrame = new QGroupBox(QStringLiteral("Auto Dialer"), this);
    auto* dialGrid = new QGridLayout(dialFrame);
    dialGrid->setVerticalSpacing(3);
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        QLabel* label = makeLabel(dialFrame, QString::number(k));
        nameArrayMember(label, QStringLiteral("Label17"), k);
        dialBoxes_[k] = new QLineEdit(dialFrame);
        nameArrayMember(dialBoxes_[k], QStringLiteral("txtDial"), k);
        dialBoxes_[k]->setMaxLength(zq::model::kDialMaxLength);
        dialBoxes_[k]->setMinimumWidth(
            dialBoxes_[k]->fontMetrics().horizontalAdvance(QString(17, QLatin1Char('8'))));
        dialBoxes_[k]->installEventFilter(this);
        label->setBuddy(dialBoxes_[k]);
        dialGrid->addWidget(label, k, 0);
        dialGrid->addWidget(dialBoxes_[k], k, 1);
    }
    auto* middle = new QVBoxLayout;
    middle->addWidget(dialFrame);
    middle->addStretch(1);

    // The note and the transfer buttons.
    auto* noteHeading = makeLabel(this, QStringLiteral("NOTE:"), QStringLiteral("Label18"));
    auto* note = makeLabel(this,
                           QStringLiteral("The Auto Dialer and the DTMF functions cannot be used "
                                          "with the ZQ-318 A."),
                           QStringLiteral("Label1"));
    note->setWordWrap(true);
    makeTransferButtons(2);
    auto* right = new QVBoxLayout;
    right->addWidget(noteHeading);
    right->addWidget(note);
    right->addStretch(1);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(readButton_);
    buttons->addWidget(writeButton_);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch(1);
    buttonRow->addLayout(buttons);
    right->addLayout(buttonRow);

    auto* page = new QHBoxLayout(this);
    page->addLayout(left);
    page->addLayout(middle);
    page->addLayout(right, 1);
}

void DtmfSettingsPage::connectControls() {
    bindList(dtmfWait_, &RadioSettings::dtmfWait);
    bindList(dtmfFirst_, &RadioSettings::dtmfFirst);
    bindList(dtmfInterval_, &RadioSettings::dtmfInterval);
    for (int i = 0; i < int(accessChecks_.size()); ++i)
        bindCheck(accessChecks_[i], kAccessFlags[i].value);
    connect(channelMode_, &QCheckBox::clicked, this, [this](bool checked) {
        store([&](RadioSettings& s) { s.channelMode = checked; }, true);
        applyChannelModeEnabled();
    });

    for (int k = 0; k < zq::model::kDialCount; ++k) {
        connect(dialBoxes_[k], &QLineEdit::textChanged, this, [this, k](const QString& text) {
            inStep([&] { document_.setDialText(k, text, model::Document::Mark::Edit); });
        });
    }

    followDocument(&model::Document::settingsChanged, [this] { reloadSettings(); });
    followDocument(&model::Document::dialTextsChanged, [this] { reloadDialTexts(); });
}

bool DtmfSettingsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto found = std::find(dialBoxes_.begin(), dialBoxes_.end(), watched);
    if (found == dialBoxes_.end()) return QWidget::eventFilter(watched, event);
    const int box = int(found - dialBoxes_.begin());
    auto* key = static_cast<QKeyEvent*>(event);

    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        dialBoxes_[zq::model::NextDialBox(box)]->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (key->key() == Qt::Key_Backspace) return false;
    // Editing, moving and shortcut keys (paste among them) are no typed characters.
    const QString text = key->text();
    if (text.size() != 1 || !text.at(0).isPrint() || (key->modifiers() & Qt::ControlModifier)) return false;

    const zq::model::DialKeyResult result = zq::model::FilterDialKey(text.at(0));
    if (result.action != zq::model::DialKeyAction::Accept) return true;
    if (result.character == text.at(0)) return false;
    dialBoxes_[box]->insert(QString(result.character));
    return true;
}

void DtmfSettingsPage::applyChannelModeEnabled() {
    // The access flags keep their ticks; only whether they can be changed follows the mode.
    const bool enabled = channelMode_->isChecked();
    accessFrame_->setEnabled(enabled);
    for (QCheckBox* box : accessChecks_)
        box->setEnabled(enabled);
}

void DtmfSettingsPage::reload() {
    reloadSettings();
    reloadDialTexts();
}

void DtmfSettingsPage::reloadSettings() {
    inStep([this] {
        const auto& s = document_.settings();
        showComboIndex(dtmfWait_, s.dtmfWait);
        showComboIndex(dtmfFirst_, s.dtmfFirst);
        showComboIndex(dtmfInterval_, s.dtmfInterval);
        channelMode_->setChecked(s.channelMode);
        for (int i = 0; i < int(accessChecks_.size()); ++i)
            accessChecks_[i]->setChecked(s.*kAccessFlags[i].value);
        applyChannelModeEnabled();
    });
}

void DtmfSettingsPage::reloadDialTexts() {
    inStep([this] {
        for (int k = 0; k < zq::model::kDialCount; ++k) {
            if (dialBoxes_[k]->text() != document_.dialTexts()[k])
                dialBoxes_[k]->setText(document_.dialTexts()[k]);
        }
    });
}

} // namespace zq::ui
