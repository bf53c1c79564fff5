#include "screenshots.h"

#include "mainwindow.h"
#include "pagestrip.h"
#include "portdialog.h"

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

    // The port dialog over the ports this machine lists.
    const QList<link::SerialPortDetails> listed = link::ListedPorts();
    PortDialog dialog(&window);
    dialog.showPorts(link::NumberPorts(listed), listed);
    dialog.setChoice({});
    dialog.show();
    dialog.adjustSize();
    const QString path = QDir(dir).filePath(QStringLiteral("port-dialog.png"));
    if (dialog.grab().save(path)) written.append(path);
    return written;
}

} // namespace zq::ui
