#include "screenshots.h"

#include "mainwindow.h"
#include "pagestrip.h"

#include <QDir>

namespace zq::ui {

QStringList SaveScreenshots(MainWindow& window, const QString& dir) {
    QStringList written;
    QDir().mkpath(dir);
    PageStrip& pages = window.pages();
    const QStringList names = {QStringLiteral("page1-settings1.png"), QStringLiteral("page2-settings2.png"),
                               QStringLiteral("page3-memorys.png")};
    for (int i = 0; i < pages.count() && i < names.size(); ++i) {
        pages.setCurrentIndex(i);
        const QString path = QDir(dir).filePath(names.at(i));
        if (window.grab().save(path)) written.append(path);
    }
    pages.setCurrentIndex(0);
    return written;
}

} // namespace zq::ui
