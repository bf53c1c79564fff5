#include "servicepanel.h"

#include "link/transfers.h"
#include "transfercontroller.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zq::ui {

ServicePanel::ServicePanel(TransferController& transfers, QWidget* parent)
    : QWidget(parent), transfers_(transfers) {
    auto* row = new QHBoxLayout;
    address_ = new QLineEdit(QStringLiteral("0000"), this);
    address_->setObjectName(QStringLiteral("Text1"));
    address_->setMaximumWidth(80);
    const auto button = [this, row](const char* name, const char* caption) {
        auto* b = new QPushButton(QLatin1String(caption), this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        row->addWidget(b);
        return b;
    };
    row->addWidget(new QLabel(QStringLiteral("KV~F"), this));
    row->addWidget(address_);
    readButton_ = button("Command1", "Read");
    QPushButton* clearButton = button("Command2", "Clear");
    dumpButton_ = button("Command6", "Dump");
    row->addStretch(1);
    output_ = new QPlainTextEdit(this);
    output_->setObjectName(QStringLiteral("Text2"));
    output_->setReadOnly(true);
    QFont mono = output_->font();
    mono.setFamily(QStringLiteral("monospace"));
    mono.setStyleHint(QFont::Monospace);
    output_->setFont(mono);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(output_, 1);

    connect(readButton_, &QPushButton::clicked, this, &ServicePanel::readBlock);
    connect(clearButton, &QPushButton::clicked, this, &ServicePanel::clearOutput);
    connect(dumpButton_, &QPushButton::clicked, this, &ServicePanel::dumpBlocks);
}

void ServicePanel::readBlock() {
    transfers_.runService([this](link::SerialLink& link) {
        readButton_->setEnabled(false);
        output_->clear();
        QString reply;
        const model::Result read = link::ReadServiceBlock(
            link, address_->text(), reply, [this](const QString& text) { output_->setPlainText(text); });
        return read;
    });
    readButton_->setEnabled(true); // after the failure's box, as the read's closing
}

void ServicePanel::clearOutput() {
    output_->clear();
}

void ServicePanel::dumpBlocks() {
    transfers_.runService([this](link::SerialLink& link) {
        dumpButton_->setEnabled(false);
        QString dump;
        const model::Result dumped = link::DumpBlocks(link, dump, [this](const QString& text) {
            output_->setPlainText(text);
            output_->verticalScrollBar()->setValue(output_->verticalScrollBar()->maximum());
        });
        return dumped;
    });
    dumpButton_->setEnabled(true);
}

} // namespace zq::ui
