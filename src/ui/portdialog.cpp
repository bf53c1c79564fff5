#include "portdialog.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zq::ui {

namespace {

QLabel* Heading(const char* text, QWidget* parent) {
    auto* label = new QLabel(QLatin1String(text), parent);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

} // namespace

PortDialog::PortDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("dlgCOM"));
    setWindowTitle(QStringLiteral("COM Port Setup"));
    setModal(true);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    int column = 1;
    for (const char* heading : {"Device", "USB", "Adapter", "Status"})
        grid->addWidget(Heading(heading, this), 0, column++);
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < int(rows_.size()); ++i) {
        Row& row = rows_[i];
        row.option = new QRadioButton(link::PortCaption(i + 1), this);
        row.option->setObjectName(QStringLiteral("opbCom_%1").arg(i));
        row.option->setProperty("index", i);
        // monospaced so that "COM  1" and "COM 10" line up as intended
        QFont mono = row.option->font();
        mono.setFamily(QStringLiteral("monospace"));
        mono.setStyleHint(QFont::Monospace);
        row.option->setFont(mono);
        group->addButton(row.option, i);
        const auto label = [this, i](const char* name) {
            auto* label = new QLabel(this);
            label->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
            label->setTextInteractionFlags(Qt::TextSelectableByMouse);
            return label;
        };
        row.device = label("lblComDevice");
        row.usb = label("lblComUsb");
        row.adapter = label("lblComAdapter");
        row.status = label("lblComStatus");
        column = 0;
        for (QWidget* cell :
             std::initializer_list<QWidget*>{row.option, row.device, row.usb, row.adapter, row.status})
            grid->addWidget(cell, i + 1, column++);
    }
    grid->setColumnStretch(3, 1);

    listing_ = new QLabel(this);
    listing_->setObjectName(QStringLiteral("lblPortListing"));
    listing_->setWordWrap(true);
    listing_->hide();
    adapterNote_ = new QLabel(this);
    adapterNote_->setObjectName(QStringLiteral("lblAdapterNote"));
    adapterNote_->setWordWrap(true);
    adapterNote_->hide();

    auto* other = new QHBoxLayout;
    auto* otherLabel = new QLabel(QStringLiteral("&Other device:"), this);
    otherDevice_ = new QLineEdit(this);
    otherDevice_->setObjectName(QStringLiteral("txtOtherDevice"));
    otherDevice_->setPlaceholderText(QStringLiteral("/dev/ttyUSB0: wins over the number for this run"));
    otherDevice_->setClearButtonEnabled(true);
    otherDevice_->setMinimumWidth(
        otherDevice_->fontMetrics().horizontalAdvance(otherDevice_->placeholderText()) +
        4 * otherDevice_->fontMetrics().averageCharWidth());
    otherLabel->setBuddy(otherDevice_);
    other->addWidget(otherLabel);
    other->addWidget(otherDevice_, 1);

    // Whichever the user touched last counts: ticking a number empties the entry.
    for (const Row& row : rows_)
        connect(row.option, &QRadioButton::clicked, otherDevice_, &QLineEdit::clear);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(listing_);
    layout->addWidget(adapterNote_);
    layout->addLayout(other);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    layout->addLayout(buttons);
}

PortChoice PortDialog::ask(QWidget* parent, const PortSettings& settings,
                           const QList<link::SerialPortDetails>& listed) {
    PortDialog dialog(parent);
    dialog.showPorts(link::NumberPorts(listed), listed);
    dialog.setAdapterNote(settings.adapterNote(listed));
    dialog.setChoice({settings.number(), settings.deviceOverride()});
    dialog.exec();
    return dialog.choice();
}

void PortDialog::showPorts(const QList<link::NumberedPort>& numbered,
                           const QList<link::SerialPortDetails>& listed) {
    for (Row& row : rows_) {
        for (QLabel* label : {row.device, row.usb, row.adapter, row.status}) {
            label->clear();
            label->setToolTip(QString());
            label->setEnabled(false);
        }
        row.device->setText(QStringLiteral("-"));
    }
    for (const link::NumberedPort& entry : numbered) {
        if (entry.number < link::kFirstPortNumber || entry.number > link::kLastPortNumber) continue;
        const Row& row = rows_[entry.number - 1];
        if (entry.port.device.isEmpty()) continue;
        row.device->setText(entry.port.device);
        if (!entry.port.stableId.isEmpty()) row.device->setToolTip(entry.port.stableId);
        row.usb->setText(entry.port.usbIds());
        row.adapter->setText(entry.port.description);
        row.status->setText(link::AccessSummary(entry.probe));
        if (entry.probe.access != link::PortAccess::Usable)
            row.status->setToolTip(link::AccessAdvice(entry.probe));
        for (QLabel* label : {row.device, row.usb, row.adapter, row.status})
            label->setEnabled(true);
    }

    QString listing;
    if (listed.isEmpty()) {
        listing = QStringLiteral("The system lists no serial port. Plug in the cable and open this dialog "
                                 "again, or enter the device below.");
    } else if (listed.size() > link::kLastPortNumber) {
        QStringList beyond;
        for (qsizetype i = link::kLastPortNumber; i < listed.size(); ++i)
            beyond << listed.at(i).device;
        listing = QStringLiteral("Beyond COM 14 (enter one below to use it): %1")
                      .arg(beyond.join(QStringLiteral(", ")));
    }
    listing_->setText(listing);
    listing_->setVisible(!listing.isEmpty());
}

void PortDialog::setAdapterNote(const QString& note) {
    adapterNote_->setText(note);
    adapterNote_->setVisible(!note.isEmpty());
}

void PortDialog::setChoice(const PortChoice& choice) {
    if (choice.number >= link::kFirstPortNumber && choice.number <= link::kLastPortNumber)
        rows_[choice.number - 1].option->setChecked(true);
    otherDevice_->setText(choice.otherDevice);
}

PortChoice PortDialog::choice() const {
    PortChoice choice;
    for (int i = 0; i < int(rows_.size()); ++i) {
        if (rows_[i].option->isChecked()) {
            choice.number = i + 1;
            break;
        }
    }
    choice.otherDevice = otherDevice_->text().trimmed();
    return choice;
}

} // namespace zq::ui
