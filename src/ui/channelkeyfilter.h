#pragma once
// The key filters of the modify dialog's boxes. Each runs before the key reaches its box and drops
// what the box does not take: the frequency and offset boxes take digits only and run on into their
// fraction boxes; the name box takes the name characters, lower-case letters raised to capitals.
#include <QObject>

class QKeyEvent;
class QLineEdit;

namespace zq::ui {

class ChannelKeyFilter : public QObject {
    Q_OBJECT
public:
    struct Boxes {
        QLineEdit* mhz; // runs on into the fraction after its third digit
        QLineEdit* fraction;
        QLineEdit* offsetMhz; // runs on into the offset fraction after its second digit
        QLineEdit* offsetFraction;
        QLineEdit* name;
    };
    // Installs itself on the five boxes.
    ChannelKeyFilter(const Boxes& boxes, QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool filterNumericKey(QLineEdit* box, QKeyEvent* event);
    bool filterNameKey(QKeyEvent* event);
    // Lets a key through to its box past this filter.
    void forwardKey(QObject* target, QKeyEvent* event);

    Boxes boxes_;
    bool forwarding_ = false;
};

} // namespace zq::ui
