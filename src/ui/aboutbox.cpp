#include "aboutbox.h"

#include "messageboxes.h"
#include "model/tables.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zq::ui {

AboutBox::AboutBox(MessageBoxes& boxes, QWidget* parent) : QDialog(parent), boxes_(boxes) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About ") + model::AppTitle());
    setModal(true);

    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(model::AppTitle(), this);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    title->setFont(big);
    auto* version = new QLabel(VersionText(), this);
    version->setObjectName(QStringLiteral("lblVersion"));
    layout->addWidget(title);
    layout->addWidget(version);

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    auto* sysInfo = buttons->addButton(QStringLiteral("&System Info..."), QDialogButtonBox::ActionRole);
    sysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    layout->addWidget(buttons);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(sysInfo, &QPushButton::clicked, this, &AboutBox::showSystemInformation);
}

QString AboutBox::VersionText() {
    return QStringLiteral("Version ") + QStringLiteral(ZQ_VERSION);
}

void AboutBox::showSystemInformation() {
    boxes_.show({QString::fromUtf8("この時点ではシステム情報を使用できません。"), windowTitle(),
                 MessageButtons::Ok, MessageIcon::Information, MessageAnswer::Ok});
}

} // namespace zq::ui
