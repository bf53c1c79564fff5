#pragma once
// frmAbout: the program's title and version, and a system-information button.
#include <QDialog>

namespace zq::ui {

class MessageBoxes;

class AboutBox : public QDialog {
    Q_OBJECT
public:
    AboutBox(MessageBoxes& boxes, QWidget* parent = nullptr);
    static QString VersionText(); // "Version 1.0.0"
    // This platform has no system-information tool to start: the box says so.
    void showSystemInformation();

private:
    MessageBoxes& boxes_;
};

} // namespace zq::ui
