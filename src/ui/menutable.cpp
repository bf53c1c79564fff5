#include "menutable.h"

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QMenuBar>

namespace zq::ui {

void BuildMenus(QMenuBar* bar, std::initializer_list<MenuRow> rows) {
    QHash<QString, QMenu*> menus;
    for (const MenuRow& row : rows) {
        const QString name = QLatin1String(row.name);
        const QString caption = QString::number(row.id);
        QMenu* parent = row.parent ? menus.value(QLatin1String(row.parent)) : nullptr;
        Q_ASSERT(row.parent == nullptr || parent);
        if (row.kind == MenuRow::Kind::Menu) {
            QMenu* menu = parent ? parent->addMenu(caption) : bar->addMenu(caption);
            menu->setObjectName(name);
            menu->menuAction()->setObjectName(name);
            menus.insert(name, menu);
            continue;
        }
        if (row.kind == MenuRow::Kind::Separator) {
            parent->addSeparator()->setObjectName(name);
            continue;
        }
        QAction* action = parent->addAction(caption);
        action->setObjectName(name);
        if (row.kind == MenuRow::Kind::Toggle) {
            action->setCheckable(true);
            action->setChecked(true);
            if (row.run) QObject::connect(action, &QAction::toggled, action, row.run);
        } else if (row.run) {
            QObject::connect(action, &QAction::triggered, action, row.run);
        }
    }
}

} // namespace zq::ui
