#include "localiseform.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolBar>

namespace zq::ui {

namespace {

// The numeric value of a design-time id; 0 when the text holds none.
int idOf(const QVariant& value) {
    bool ok = false;
    const int id = value.toString().trimmed().toInt(&ok);
    return ok ? id : 0;
}

std::optional<QString> lookup(const StringTable& strings, const QVariant& idText) {
    const int id = idOf(idText);
    if (id <= 0) return std::nullopt;
    return strings.text(id);
}

bool isTextBox(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QTextEdit*>(widget) ||
           qobject_cast<const QPlainTextEdit*>(widget);
}

void localiseTabs(QTabBar* bar, const StringTable& strings) {
    for (int i = 0; i < bar->count(); ++i) {
        if (const auto text = lookup(strings, bar->tabData(i))) bar->setTabText(i, *text);
        if (const auto tip = lookup(strings, bar->tabToolTip(i))) bar->setTabToolTip(i, *tip);
    }
}

void localiseOther(QWidget* widget, const StringTable& strings) {
    const QVariant tag = widget->property("tag");
    if (idOf(tag) > 0) {
        if (const auto text = strings.text(idOf(tag))) {
            if (auto* button = qobject_cast<QAbstractButton*>(widget))
                button->setText(*text);
            else if (auto* group = qobject_cast<QGroupBox*>(widget))
                group->setTitle(*text);
            else
                widget->setWindowTitle(*text);
        }
    }
    if (idOf(widget->toolTip()) >= 1)
        if (const auto tip = strings.text(idOf(widget->toolTip()))) widget->setToolTip(*tip);
}

} // namespace

void LocaliseForm(QWidget* window, const StringTable& strings) {
    if (!window) return;
    if (const auto caption = lookup(strings, window->property("tag"))) window->setWindowTitle(*caption);

    // The font comes from ids 20 and 21, which the table does not hold: the designed font stays.
    QFont font = window->font();
    if (const auto name = strings.text(20)) font.setFamily(*name);
    if (const auto size = strings.text(21)) {
        bool ok = false;
        const double points = size->toDouble(&ok);
        if (ok && points > 0) font.setPointSizeF(points);
    }
    window->setFont(font);

    const auto widgets = window->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (isTextBox(widget)) continue;
        if (qobject_cast<QMenu*>(widget)) continue; // menus are handled with their entries
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            if (const auto text = lookup(strings, label->property("tag"))) label->setText(*text);
        } else if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
            localiseTabs(tabs->tabBar(), strings);
        } else if (auto* bar = qobject_cast<QTabBar*>(widget)) {
            if (!qobject_cast<QTabWidget*>(bar->parentWidget())) localiseTabs(bar, strings);
        } else if (auto* toolbar = qobject_cast<QToolBar*>(widget)) {
            for (QAction* action : toolbar->actions())
                if (const auto tip = lookup(strings, action->toolTip())) action->setToolTip(*tip);
        } else {
            localiseOther(widget, strings);
        }
    }

    // Menu entries: the design-time caption is the id.
    const auto actions = window->findChildren<QAction*>();
    for (QAction* action : actions) {
        if (action->isSeparator() || !action->objectName().startsWith(QLatin1String("mnu"))) continue;
        if (const auto text = lookup(strings, action->text())) action->setText(*text);
    }
}

} // namespace zq::ui
