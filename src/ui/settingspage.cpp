#include "settingspage.h"

#include "model/document.h"
#include "settingscontrols.h"

#include <QCheckBox>
#include <QPushButton>

namespace zq::ui {

SettingsPage::SettingsPage(model::Document& document, const QString& objectName, QWidget* parent)
    : QWidget(parent), document_(document) {
    setObjectName(objectName);
}

void SettingsPage::makeTransferButtons(int number) {
    readButton_ = new QPushButton(QStringLiteral("Read Settings"), this);
    writeButton_ = new QPushButton(QStringLiteral("Write Settings"), this);
    readButton_->setObjectName(QStringLiteral("cmbRxData%1").arg(number));
    writeButton_->setObjectName(QStringLiteral("cmbTxData%1").arg(number));
    connect(readButton_, &QPushButton::clicked, this, &SettingsPage::readSettingsRequested);
    connect(writeButton_, &QPushButton::clicked, this, &SettingsPage::writeSettingsRequested);
}

void SettingsPage::setTransferButtonsEnabled(bool enabled) {
    readButton_->setEnabled(enabled);
    writeButton_->setEnabled(enabled);
}

void SettingsPage::inStep(const std::function<void()>& step) {
    if (inStep_) return;
    inStep_ = true;
    step();
    inStep_ = false;
}

void SettingsPage::store(const std::function<void(model::RadioSettings&)>& change, bool edit) {
    inStep([&] {
        document_.changeSettings(change, edit ? model::Document::Mark::Edit : model::Document::Mark::Quiet);
    });
}

void SettingsPage::bindCheck(QCheckBox* box, bool model::RadioSettings::*value, bool marks) {
    connect(box, &QCheckBox::clicked, this, [this, value, marks](bool checked) {
        store([&](model::RadioSettings& s) { s.*value = checked; }, marks);
    });
}

void SettingsPage::bindList(QComboBox* box, int model::RadioSettings::*value) {
    settings::onComboEdits(
        this, box,
        [this, value](int index) { store([&](model::RadioSettings& s) { s.*value = index; }, false); },
        [this, value](int index) {
            store(
                [&](model::RadioSettings& s) {
                    if (index >= 0) s.*value = index;
                },
                true);
        });
}

} // namespace zq::ui
