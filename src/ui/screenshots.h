#pragma once
// Pictures of the window's pages and the port dialog, for the documentation.
#include <QString>
#include <QStringList>

namespace zq::ui {

class MainWindow;

// Grabs each page of the window into DIR as page1-settings1.png, page2-settings2.png,
// page3-memorys.png, and the port dialog as port-dialog.png. Returns the files written.
QStringList SaveScreenshots(MainWindow& window, const QString& dir);

} // namespace zq::ui
