#pragma once
// frmSplash: the picture shown while the main window loads.
#include <QPixmap>
#include <QSplashScreen>

namespace zq::ui {

QPixmap SplashPicture();

class SplashScreen : public QSplashScreen {
    Q_OBJECT
public:
    SplashScreen();
};

} // namespace zq::ui
