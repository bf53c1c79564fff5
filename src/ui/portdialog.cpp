#include "portdialog.h"

#include "link/portnumbers.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zq::ui {

PortDialog::PortDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("dlgCOM"));
    setWindowTitle(QStringLiteral("COM Port Setup"));
    setModal(true);

    auto* grid = new QGridLayout;
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < int(options_.size()); ++i) {
        auto* option = new QRadioButton(link::PortCaption(i + 1), this);
        option->setObjectName(QStringLiteral("opbCom_%1").arg(i));
        option->setProperty("index", i);
        // monospaced so that "COM  1" and "COM 10" line up as intended
        QFont font = option->font();
        font.setFamily(QStringLiteral("monospace"));
        font.setStyleHint(QFont::Monospace);
        option->setFont(font);
        group->addButton(option, i);
        auto* device = new QLabel(this);
        device->setObjectName(QStringLiteral("lblComDevice_%1").arg(i));
        device->setEnabled(false);
        const int column = (i / 7) * 2;
        grid->addWidget(option, i % 7, column);
        grid->addWidget(device, i % 7, column + 1);
        options_[i] = option;
        devices_[i] = device;
    }

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    layout->addLayout(buttons);
}

int PortDialog::ask(QWidget* parent, int current) {
    PortDialog dialog(parent);
    dialog.setPortNumber(current, link::ListedPortDevices());
    dialog.exec();
    return dialog.portNumber();
}

void PortDialog::setPortNumber(int number, const QStringList& listedDevices) {
    for (int i = 0; i < int(options_.size()); ++i) {
        const QString device = link::DeviceForPortNumber(i + 1, listedDevices);
        devices_[i]->setText(device.isEmpty() ? QString() : device);
    }
    if (number >= link::kFirstPortNumber && number <= link::kLastPortNumber)
        options_[number - 1]->setChecked(true);
}

int PortDialog::portNumber() const {
    for (int i = 0; i < int(options_.size()); ++i)
        if (options_[i]->isChecked()) return i + 1;
    return 1;
}

} // namespace zq::ui
