// The menus of commands: every command of the table, by its category.
// SPDX-License-Identifier: MIT
#include "command_menu.h"

#include <QMenu>

#include "icons.h"

namespace studio {

QList<QAction*> add_command_menus(QMenu& menu, const std::function<void(const Member&)>& start) {
    QList<QAction*> actions;
    for (const Category& category : command_categories()) {
        QMenu* part = menu.addMenu(icon_of_category(category.name), title_of(category));
        part->setToolTipsVisible(true);
        for (const Member* member : category.members) {
            const QString title = title_of(*member);
            QAction* action =
                part->addAction(member->argument_count > 0 ? title + QStringLiteral("…") : title);
            action->setObjectName(QString::fromLatin1(member->name));
            action->setToolTip(help_of(*member));
            action->setStatusTip(help_of(*member));
            QObject::connect(action, &QAction::triggered, action, [start, member] { start(*member); });
            actions.append(action);
        }
    }
    return actions;
}

}  // namespace studio
