#include "channelkeyfilter.h"

#include "model/channelentry.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace zq::ui {

namespace {

// Keys that move the focus, the cursor or close the dialog never reach the character filters.
bool isCharacterKey(const QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Delete:
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return false;
    default:
        return !(event->key() >= Qt::Key_F1 && event->key() <= Qt::Key_F35);
    }
}

// The single character a key types, or a null QChar when it types none or several.
QChar typedChar(const QKeyEvent* event) {
    const QString text = event->text();
    return text.size() == 1 ? text.at(0) : QChar();
}

} // namespace

ChannelKeyFilter::ChannelKeyFilter(const Boxes& boxes, QObject* parent) : QObject(parent), boxes_(boxes) {
    for (QLineEdit* box : {boxes_.mhz, boxes_.fraction, boxes_.offsetMhz, boxes_.offsetFraction, boxes_.name})
        box->installEventFilter(this);
}

bool ChannelKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (forwarding_ || event->type() != QEvent::KeyPress) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    if (!isCharacterKey(key)) return false;
    if (watched == boxes_.name) return filterNameKey(key);
    return filterNumericKey(static_cast<QLineEdit*>(watched), key);
}

void ChannelKeyFilter::forwardKey(QObject* target, QKeyEvent* event) {
    forwarding_ = true;
    QCoreApplication::sendEvent(target, event);
    forwarding_ = false;
}

bool ChannelKeyFilter::filterNumericKey(QLineEdit* box, QKeyEvent* event) {
    const bool backspace = event->key() == Qt::Key_Backspace;
    const bool ctrl = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!backspace && (ctrl || !model::IsEntryDigit(typedChar(event)))) return true;

    // The key still lands in the box it was typed into before typing runs on in the next one.
    if (box == boxes_.mhz && box->text().size() == 2) {
        forwardKey(box, event);
        boxes_.fraction->setFocus(Qt::OtherFocusReason);
        boxes_.fraction->selectAll();
        return true;
    }
    if (box == boxes_.offsetMhz && box->text().size() == 1) {
        forwardKey(box, event);
        boxes_.offsetFraction->setFocus(Qt::OtherFocusReason);
        // The selection length follows the frequency fraction box; both hold four digits.
        boxes_.offsetFraction->setSelection(0, int(boxes_.fraction->text().size()));
        return true;
    }
    return false;
}

bool ChannelKeyFilter::filterNameKey(QKeyEvent* event) {
    if (event->key() == Qt::Key_Backspace) return false;
    // Control chords never type a name character; Ctrl+Alt together is AltGr on some systems.
    const Qt::KeyboardModifiers mods = event->modifiers();
    const bool altGr = (mods & Qt::ControlModifier) && (mods & Qt::AltModifier);
    if (!altGr && (mods & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) return true;
    const QChar typed = typedChar(event);
    if (typed.isNull()) return true;
    const std::optional<QChar> entered = model::NameKeyCharacter(typed);
    if (!entered) return true;
    if (*entered == typed) return false;
    QKeyEvent raised(QEvent::KeyPress, event->key(), event->modifiers() & ~Qt::ShiftModifier,
                     QString(*entered), event->isAutoRepeat(), ushort(event->count()));
    forwardKey(boxes_.name, &raised);
    return true;
}

} // namespace zq::ui
