// The docks of the window, and where they lay when the program was left.
// SPDX-License-Identifier: MIT
#include <QDockWidget>
#include <QMenu>
#include <QSettings>

#include "docks/event_log.h"
#include "icons.h"
#include "main_window.h"

namespace studio {
namespace {

// Another number when docks come or go: a layout that was kept before is then left aside.
constexpr int kLayout = 1;

}  // namespace

QDockWidget* MainWindow::add_dock(Qt::DockWidgetArea area, const char* name, const QString& title, Icon which,
                                  QWidget* inside) {
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(QString::fromLatin1(name));
    dock->setWidget(inside);
    addDockWidget(area, dock);
    QAction* action = dock->toggleViewAction();
    action->setIcon(icon(which));
    action->setIconVisibleInMenu(false);
    panelMenu_->addAction(action);
    return dock;
}

void MainWindow::make_docks() {
    panelMenu_ = new QMenu(tr("&Panels"), this);
    setTabPosition(Qt::RightDockWidgetArea, QTabWidget::North);
    histogram_ = new HistogramView(*picture_);
    settings_ = new SettingsPanel(*picture_);
    macro_ = new MacroPanel(*runner_);
    constexpr auto kRight = Qt::RightDockWidgetArea;
    add_dock(kRight, "histogramDock", tr("Histogram"), Icon::Histogram, histogram_);
    QDockWidget* pen = add_dock(kRight, "penDock", tr("Pen and brush"), Icon::Pen, settings_);
    QDockWidget* macro = add_dock(kRight, "macroDock", tr("Macro"), Icon::Macro, macro_);
    QDockWidget* log =
        add_dock(Qt::BottomDockWidgetArea, "eventDock", tr("Events"), Icon::Log, new EventLog(*picture_));
    tabifyDockWidget(pen, macro);
    pen->raise();
    log->hide();
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
}

void MainWindow::restore_layout() {
    QSettings settings;
    resize(1240, 800);
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("layout")).toByteArray(), kLayout);
}

void MainWindow::keep_layout() {
    QSettings settings;
    settings.setValue(QStringLiteral("geometry"), saveGeometry());
    settings.setValue(QStringLiteral("layout"), saveState(kLayout));
}

}  // namespace studio
