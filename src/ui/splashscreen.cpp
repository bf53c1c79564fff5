#include "splashscreen.h"

#include "aboutbox.h"
#include "model/tables.h"

#include <QLinearGradient>
#include <QPainter>

namespace zq::ui {

QPixmap SplashPicture() {
    QPixmap picture(420, 220);
    QPainter painter(&picture);
    QLinearGradient sky(0, 0, 0, picture.height());
    sky.setColorAt(0, QColor(0x1d, 0x3b, 0x5c));
    sky.setColorAt(1, QColor(0x0b, 0x16, 0x24));
    painter.fillRect(picture.rect(), sky);
    painter.setPen(QColor(0xf0, 0xc0, 0x40));
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));

    QFont font = painter.font();
    font.setPointSize(22);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRect(0, 40, picture.width(), 50), Qt::AlignCenter, QStringLiteral("ZQ-318"));
    font.setPointSize(12);
    font.setBold(false);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 100, picture.width(), 30), Qt::AlignCenter, model::AppTitle());
    painter.drawText(QRect(0, 150, picture.width(), 30), Qt::AlignCenter, AboutBox::VersionText());
    return picture;
}

SplashScreen::SplashScreen() : QSplashScreen(SplashPicture()) {
    setObjectName(QStringLiteral("frmSplash"));
}

} // namespace zq::ui
