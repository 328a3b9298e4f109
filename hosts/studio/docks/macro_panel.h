// Records, plays, loads and saves a macro, and lists its steps.
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "command_runner.h"

class QAction;
class QTreeWidget;

namespace studio {

class MacroPanel : public QWidget {
    Q_OBJECT

public:
    explicit MacroPanel(CommandRunner& runner, QWidget* parent = nullptr);

    /// Shows the steps as they are now, and what can be done.
    void refresh();
    /// Record, stop, play, load, save: for menus.
    QList<QAction*> actions_of_menu() const;

signals:
    /// A macro was played: settings may be others.
    void played();

private:
    void record();
    void stop();
    void play();
    void load();
    void save();
    void list_steps(std::size_t count);

    CommandRunner& runner_;
    QAction *record_, *stop_, *play_, *load_, *save_;
    QTreeWidget* steps_;
    std::size_t shown_ = 0;
};

}  // namespace studio
