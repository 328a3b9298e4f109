// Actions, menus and the toolbar of the window.
// SPDX-License-Identifier: MIT
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QToolBar>
#include <QToolButton>

#include "command_menu.h"
#include "icons.h"
#include "main_window.h"

namespace studio {
namespace {

/// What the view shows besides the picture: properties that are on or off.
struct ViewSwitch {
    const char* property;
    const char* title;
    bool isOnAtFirst;
};
constexpr ViewSwitch kViewSwitches[] = {
    {"ScrollWindowVisible", QT_TRANSLATE_NOOP("studio::MainWindow", "&Overview"), true},
    {"ShowBorder", QT_TRANSLATE_NOOP("studio::MainWindow", "&Frame"), true},
    {"ShowDetails", QT_TRANSLATE_NOOP("studio::MainWindow", "&Details"), false},
    {"SmoothMode", QT_TRANSLATE_NOOP("studio::MainWindow", "&Smooth lines"), true},
    {"AutoResize", QT_TRANSLATE_NOOP("studio::MainWindow", "Fit with the &window"), true},
};

}  // namespace

QAction* MainWindow::add_action(Icon which, const QString& text, const QKeySequence& keys,
                                void (MainWindow::*slot)()) {
    auto* action = new QAction(icon(which), text, this);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
    return action;
}

void MainWindow::make_actions() {
    open_ = add_action(Icon::Open, tr("&Open…"), QKeySequence::Open, &MainWindow::open_file);
    save_ = add_action(Icon::Save, tr("&Save"), QKeySequence::Save, &MainWindow::save);
    saveAs_ = add_action(Icon::Save, tr("Save &as…"), QKeySequence(tr("Ctrl+Shift+S")), &MainWindow::save_as);
    close_ = add_action(Icon::Clear, tr("&Close"), QKeySequence::Close, &MainWindow::close_picture);
    undo_ = add_action(Icon::Undo, tr("&Undo"), QKeySequence::Undo, &MainWindow::undo);
    redo_ = add_action(Icon::Redo, tr("&Redo"), {}, &MainWindow::redo);
    redo_->setShortcuts({QKeySequence(tr("Ctrl+Shift+Z")), QKeySequence(tr("Ctrl+Y"))});
    zoomIn_ = add_action(Icon::ZoomIn, tr("Zoom &in"), {}, &MainWindow::zoom_in);
    zoomIn_->setShortcuts({QKeySequence(tr("Ctrl++")), QKeySequence(tr("Ctrl+="))});
    zoomOut_ = add_action(Icon::ZoomOut, tr("Zoom &out"), QKeySequence(tr("Ctrl+-")), &MainWindow::zoom_out);
    actualSize_ = add_action(Icon::ActualSize, tr("&Actual size"), QKeySequence(tr("Ctrl+0")),
                             &MainWindow::actual_size);
    fit_ = add_action(Icon::Fit, tr("&Fit"), QKeySequence(tr("Ctrl+9")), &MainWindow::zoom_to_fit);
    quit_ = new QAction(tr("&Quit"), this);
    quit_->setShortcut(QKeySequence(tr("Ctrl+Q")));
    connect(quit_, &QAction::triggered, this, &QWidget::close);
}

void MainWindow::make_menus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(open_);
    file->addMenu(recent_);
    file->addSeparator();
    file->addActions({save_, saveAs_});
    file->addSeparator();
    file->addActions({close_, quit_});

    menuBar()->addMenu(tr("&Edit"))->addActions({undo_, redo_});
    commandMenu_ = menuBar()->addMenu(tr("&Picture"));
    commands_ = add_command_menus(*commandMenu_, [this](const Member& command) { start_command(command); });
    menuBar()->addMenu(tr("&Macro"))->addActions(macro_->actions_of_menu());
    make_view_menu();
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    connect(help->addAction(tr("&About Pixvane Studio")), &QAction::triggered, this, &MainWindow::about);
}

void MainWindow::make_view_menu() {
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    menu->addActions({zoomIn_, zoomOut_, actualSize_, fit_});
    menu->addSeparator();
    for (const ViewSwitch& entry : kViewSwitches) {
        const Member* property = find_member(QString::fromLatin1(entry.property));
        if (property == nullptr) continue;
        QAction* action = menu->addAction(tr(entry.title));
        action->setObjectName(QLatin1String(entry.property));
        action->setCheckable(true);
        action->setToolTip(help_of(*property));
        const QString key = QStringLiteral("view/") + QLatin1String(entry.property);
        connect(action, &QAction::toggled, this, [this, property, key](bool on) {
            const bool isNumber = property->result == PIXVANE_INT32;
            picture_->call(*property, {isNumber ? QVariant(on ? 1 : 0) : QVariant(on)});
            QSettings().setValue(key, on);
            settings_->refresh();
        });
        // It may have been put elsewhere.
        connect(menu, &QMenu::aboutToShow, action, [this, property, action] {
            const QSignalBlocker quiet(action);
            action->setChecked(picture_->call(*property).toInt() == 1);
        });
        action->setChecked(QSettings().value(key, entry.isOnAtFirst).toBool());
        if (qstrcmp(entry.property, "ScrollWindowVisible") == 0) overview_ = action;
    }
    overview_->setIcon(icon(Icon::Overview));
    overview_->setIconVisibleInMenu(false);
    menu->addSeparator();
    menu->addMenu(panelMenu_);
    make_theme_menu(*menu->addMenu(tr("&Theme")));
}

void MainWindow::make_theme_menu(QMenu& menu) {
    const QString key = QStringLiteral("theme");
    const std::pair<Theme, QString> themes[] = {
        {Theme::System, tr("As the &system")}, {Theme::Light, tr("&Light")}, {Theme::Dark, tr("&Dark")}};
    const int kept = QSettings().value(key, static_cast<int>(Theme::System)).toInt();
    auto* group = new QActionGroup(this);
    for (const auto& [theme, title] : themes) {
        QAction* action = group->addAction(title);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, key, theme = theme] {
            theme_.set_theme(theme);
            QSettings().setValue(key, static_cast<int>(theme));
        });
        if (static_cast<int>(theme) == kept) {
            action->setChecked(true);
            theme_.set_theme(theme);
        }
    }
    menu.addActions(group->actions());
}

void MainWindow::make_tool_bar() {
    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setMovable(false);
    bar->setIconSize({22, 22});
    bar->addActions({open_, save_});
    bar->addSeparator();
    bar->addActions({undo_, redo_});
    bar->addSeparator();
    bar->addActions({zoomOut_, zoomIn_, actualSize_, fit_, overview_});
    bar->addSeparator();
    for (QAction* action : commandMenu_->actions()) {
        auto* button = new QToolButton;
        button->setIcon(action->icon());
        button->setToolTip(action->text());
        button->setAccessibleName(action->text());
        button->setMenu(action->menu());
        button->setPopupMode(QToolButton::InstantPopup);
        bar->addWidget(button);
    }
    auto* space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    bar->addActions(panelMenu_->actions());
    panelMenu_->addSeparator();
    panelMenu_->addAction(bar->toggleViewAction());
}

}  // namespace studio
