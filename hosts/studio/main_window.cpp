// The window of the studio: the view, menus, a toolbar, docks and the status bar around it.
// SPDX-License-Identifier: MIT
#include "main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QStackedWidget>

#include "app_icon.h"

namespace studio {

MainWindow::MainWindow()
    : stack_(new QStackedWidget),
      view_(new PixvaneWidget),
      picture_(new Picture(*view_, this)),
      runner_(new CommandRunner(*picture_, this)),
      document_(new Document(*runner_, *this)),
      status_(new StatusLine(*picture_)),
      recent_(new RecentFiles(this)) {
    setObjectName(QStringLiteral("studio"));
    setWindowIcon(QIcon(QPixmap::fromImage(app_icon(128))));
    setAcceptDrops(true);
    setDockNestingEnabled(true);
    view_->setObjectName(QStringLiteral("view"));
    view_->setMouseTracking(true);
    make_actions();
    welcome_ = new WelcomePage(*open_);
    welcome_->set_recent(RecentFiles::paths());
    stack_->addWidget(welcome_);
    stack_->addWidget(view_);
    setCentralWidget(stack_);
    setStatusBar(status_);
    make_docks();
    make_menus();
    make_tool_bar();
    connect_parts();
    apply_theme();
    restore_layout();
    picture_changed();
}

MainWindow::~MainWindow() {
    // Both use the view, which goes before they do: the dialog's preview, and what listens while it is seen.
    delete dialog_;
    hide();
}

void MainWindow::connect_parts() {
    connect(picture_, &Picture::changed, this, &MainWindow::picture_changed);
    connect(document_, &Document::renamed, this, &MainWindow::refresh_actions);
    connect(document_, &Document::told, this,
            [this](const QString& line) { status_->showMessage(line, 8000); });
    connect(document_, &Document::opened, recent_, &RecentFiles::add);
    connect(document_, &Document::failed, recent_, &RecentFiles::forget);
    connect(runner_, &CommandRunner::waits, status_, &StatusLine::show_waiting);
    connect(recent_, &RecentFiles::chosen, this, &MainWindow::drop_file);
    connect(welcome_, &WelcomePage::chosen, this, &MainWindow::drop_file);
    // Not from within the control's call: opening asks questions.
    connect(view_, &PixvaneWidget::OnDropFile, this, &MainWindow::drop_file, Qt::QueuedConnection);
    connect(view_, &PixvaneWidget::OnMouseMove, this,
            [this](int, int x, int y) { status_->show_pixel(x, y); });
    // A tool may have edited the picture.
    connect(view_, &PixvaneWidget::OnMouseUp, this, [this] {
        if (view_->PaintStatus() != 0) QTimer::singleShot(0, picture_, &Picture::announce);
    });
    connect(view_, &PixvaneWidget::OnHitCloseScrollWindow, overview_,
            [this] { overview_->setChecked(false); });
    connect(&theme_, &ThemeKeeper::changed, this, &MainWindow::apply_theme);
    connect(macro_, &MacroPanel::played, settings_, &SettingsPanel::refresh);
    viewChanged_.setSingleShot(true);
    connect(&viewChanged_, &QTimer::timeout, this, [this] {
        status_->refresh();
        refresh_actions();
    });
    connect(view_, &PixvaneWidget::frameChanged, this, [this] {
        if (!viewChanged_.isActive()) viewChanged_.start(0);
    });
    view_->installEventFilter(this);
}

void MainWindow::open_when_seen(const QString& path) {
    // A window that starts minimised or covered is not painted.
    constexpr int kLongestWait = 500;
    pending_ = path;
    stack_->setCurrentWidget(view_);
    opensPending_.setSingleShot(true);
    connect(&opensPending_, &QTimer::timeout, this, [this] {
        if (!document_->open(std::exchange(pending_, {}))) picture_changed();
    });
    opensPending_.start(kLongestWait);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_ && event->type() == QEvent::Paint && opensPending_.isActive())
        opensPending_.start(0);
    if (watched == view_ && event->type() == QEvent::Leave) status_->forget_pixel();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::drop_file(const QString& path) {
    if (dialog_ != nullptr) dialog_->reject();
    document_->open(path);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.front().isLocalFile()) return;
    event->acceptProposedAction();
    // The program that the file comes from waits until the drop is over.
    QTimer::singleShot(0, this, [this, path = urls.front().toLocalFile()] { drop_file(path); });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (dialog_ != nullptr) dialog_->reject();
    if (!document_->may_be_left()) return event->ignore();
    keep_layout();
    event->accept();
}

void MainWindow::start_command(const Member& command) {
    if (picture_->is_empty() || dialog_ != nullptr) return;
    if (command.argument_count == 0) return runner_->run(command);
    dialog_ = new CommandDialog(*runner_, command, this);
    connect(dialog_, &QDialog::finished, this, [this] {
        dialog_ = nullptr;
        refresh_actions();
    });
    refresh_actions();
    dialog_->adjustSize();
    // In a corner of the view, so that most of the picture stays in sight.
    const QRect area(view_->mapToGlobal(QPoint()), view_->size());
    dialog_->move(area.right() - dialog_->width() - 24, area.top() + 24);
    dialog_->show();
}

void MainWindow::picture_changed() {
    const bool isEmpty = picture_->is_empty();
    QWidget* page = isEmpty && pending_.isEmpty() ? static_cast<QWidget*>(welcome_) : view_;
    if (stack_->currentWidget() != page) {
        stack_->setCurrentWidget(page);
        if (!isEmpty) view_->ZoomToFit();
    }
    if (isEmpty) welcome_->set_recent(RecentFiles::paths());
    status_->refresh();
    histogram_->refresh();
    macro_->refresh();
    refresh_actions();
}

void MainWindow::refresh_actions() {
    const bool isEmpty = picture_->is_empty();
    const bool isFree = dialog_ == nullptr;
    const QString title = document_->title();
    setWindowTitle(title.isEmpty() ? tr("Pixvane Studio")
                                   : title + QStringLiteral("[*] – ") + tr("Pixvane Studio"));
    setWindowModified(document_->is_modified());
    for (QAction* action : {zoomIn_, zoomOut_, actualSize_, fit_}) action->setEnabled(!isEmpty);
    for (QAction* action : {save_, saveAs_, close_}) action->setEnabled(!isEmpty && isFree);
    for (QAction* action : std::as_const(commands_)) action->setEnabled(!isEmpty && isFree);
    open_->setEnabled(isFree);
    recent_->setEnabled(isFree && !RecentFiles::paths().isEmpty());
    undo_->setEnabled(isFree && view_->UndoEnable());
    redo_->setEnabled(isFree && view_->RedoEnable());
    macro_->setEnabled(isFree);
    settings_->setEnabled(isFree);
}

void MainWindow::apply_theme() {
    view_->setBackColor1(theme_.surround());
    view_->setFrameColor(theme_.frame_line());
}

void MainWindow::undo() {
    view_->Undo();
    picture_->announce();
}

void MainWindow::redo() {
    view_->Redo();
    picture_->announce();
}

void MainWindow::about() {
    QMessageBox box(this);
    box.setWindowTitle(tr("About Pixvane Studio"));
    box.setIconPixmap(QPixmap::fromImage(app_icon(64)));
    box.setText(tr("<b>Pixvane Studio %1</b>").arg(QString::fromLatin1(pixvane_version())));
    box.setInformativeText(tr("Edits pictures with the Pixvane control. MIT licence."));
    box.exec();
}

}  // namespace studio
