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
    auto* licence = new QLabel(LicenceText(), this);
    licence->setObjectName(QStringLiteral("lblLicence"));
    licence->setWordWrap(true);
    auto* homepage =
        new QLabel(QStringLiteral("<a href=\"%1\">%1</a>").arg(HomepageUrl().toHtmlEscaped()), this);
    homepage->setObjectName(QStringLiteral("lblHomepage"));
    homepage->setTextFormat(Qt::RichText);
    homepage->setOpenExternalLinks(true);
    homepage->setTextInteractionFlags(Qt::TextBrowserInteraction);
    layout->addWidget(title);
    layout->addWidget(version);
    layout->addSpacing(licence->fontMetrics().height() / 2);
    layout->addWidget(licence);
    layout->addWidget(homepage);

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

QString AboutBox::LicenceText() {
    return QStringLiteral("Free software under the GNU General Public License, version 3 or any later "
                          "version (GPL-3.0-or-later). It comes with NO WARRANTY; you may share and change "
                          "it under the licence's terms.");
}

QString AboutBox::HomepageUrl() {
    return QStringLiteral(ZQ_HOMEPAGE_URL);
}

void AboutBox::showSystemInformation() {
    boxes_.show({QString::fromUtf8("この時点ではシステム情報を使用できません。"), windowTitle(),
                 MessageButtons::Ok, MessageIcon::Information, MessageAnswer::Ok});
}

} // namespace zq::ui
