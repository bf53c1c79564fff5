#pragma once
// frmAbout: the program's title and version, its licence and the project's pages, and a
// system-information button.
#include <QDialog>

namespace zq::ui {

class MessageBoxes;

class AboutBox : public QDialog {
    Q_OBJECT
public:
    AboutBox(MessageBoxes& boxes, QWidget* parent = nullptr);
    static QString VersionText(); // "Version 1.0.0"
    static QString LicenceText(); // names GPL-3.0-or-later
    static QString HomepageUrl(); // where the documentation and the sources are
    // This platform has no system-information tool to start: the box says so.
    void showSystemInformation();

private:
    MessageBoxes& boxes_;
};

} // namespace zq::ui
