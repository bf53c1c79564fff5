#pragma once
// "COM Port Setup": fourteen port choices and an OK button; there is no cancel.
#include "link/portnumbers.h"

#include <QDialog>
#include <QStringList>
#include <array>

class QRadioButton;
class QLabel;

namespace zq::ui {

class PortDialog : public QDialog {
    Q_OBJECT
public:
    explicit PortDialog(QWidget* parent = nullptr);
    // Shows the dialog modally with port `current` ticked; the port ticked when OK closes it.
    static int ask(QWidget* parent, int current);

    // Ticks the option of port `number` (1..14) and shows beside each caption the device it stands for.
    void setPortNumber(int number, const QStringList& listedDevices);
    // The first ticked option, in index order, plus one.
    int portNumber() const;

private:
    std::array<QRadioButton*, link::kLastPortNumber> options_{};
    std::array<QLabel*, link::kLastPortNumber> devices_{};
};

} // namespace zq::ui
