// The window of the studio: the view, menus, a toolbar, docks and the status bar around it.
// SPDX-License-Identifier: MIT
#pragma once

#include <QActionGroup>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include "command_dialog.h"
#include "command_runner.h"
#include "docks/histogram_view.h"
#include "docks/macro_panel.h"
#include "docks/settings_panel.h"
#include "document.h"
#include "icons.h"
#include "picture.h"
#include "recent_files.h"
#include "status_line.h"
#include "theme.h"
#include "welcome_page.h"

class QStackedWidget;

namespace studio {

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    PixvaneWidget& view() { return *view_; }
    Document& document() { return *document_; }
    /// Opens a picture as soon as the window has been seen, so that a person doesn't wait for it.
    void open_when_seen(const QString& path);
    /// Runs a command: at once if it takes no arguments, else by its dialog.
    void start_command(const Member& command);
    /// Shows what the control is like now, after it was changed from outside of the window.
    void refresh() { picture_changed(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // main_window_menus.cpp
    void make_actions();
    void make_menus();
    void make_view_menu();
    void make_theme_menu(QMenu& menu);
    void make_tool_bar();
    QAction* add_action(Icon which, const QString& text, const QKeySequence& keys,
                        void (MainWindow::*slot)());
    // main_window_docks.cpp
    void make_docks();
    QDockWidget* add_dock(Qt::DockWidgetArea area, const char* name, const QString& title, Icon which,
                          QWidget* inside);
    void restore_layout();
    void keep_layout();

    void connect_parts();
    void drop_file(const QString& path);
    /// The picture, its history or its file has changed.
    void picture_changed();
    void refresh_actions();
    void apply_theme();
    void open_file() { document_->open(); }
    void save() { document_->save(); }
    void save_as() { document_->save_as(); }
    void close_picture() { document_->close(); }
    void undo();
    void redo();
    void zoom_in() { view_->ZoomIn(); }
    void zoom_out() { view_->ZoomOut(); }
    void actual_size() { view_->ActialSize(); }
    void zoom_to_fit() { view_->ZoomToFit(); }
    void about();

    ThemeKeeper theme_;
    QStackedWidget* stack_;
    PixvaneWidget* view_;
    Picture* picture_;
    CommandRunner* runner_;
    Document* document_;
    StatusLine* status_;
    RecentFiles* recent_;
    WelcomePage* welcome_ = nullptr;
    HistogramView* histogram_ = nullptr;
    SettingsPanel* settings_ = nullptr;
    MacroPanel* macro_ = nullptr;
    QAction *open_ = nullptr, *save_ = nullptr, *saveAs_ = nullptr, *close_ = nullptr, *quit_ = nullptr;
    QAction *undo_ = nullptr, *redo_ = nullptr;
    QAction *zoomIn_ = nullptr, *zoomOut_ = nullptr, *actualSize_ = nullptr, *fit_ = nullptr;
    QAction* overview_ = nullptr;
    QMenu* commandMenu_ = nullptr;
    QMenu* panelMenu_ = nullptr;
    QList<QAction*> commands_;
    QTimer viewChanged_;  ///< once for any number of repaints
    QPointer<CommandDialog> dialog_;
    QString pending_;  ///< to be opened when the window is seen
    QTimer opensPending_;
};

}  // namespace studio
