// The menus of commands: every command of the table, by its category.
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <functional>

#include "members.h"

class QAction;
class QMenu;

namespace studio {

/// Fills a menu with one submenu for each category. Returns the actions, in the order of the table; `start`
/// is called with the command that is chosen.
QList<QAction*> add_command_menus(QMenu& menu, const std::function<void(const Member&)>& start);

}  // namespace studio
