// The control as a Qt widget.
// SPDX-License-Identifier: MIT
#include "pixvane_widget.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHash>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>

#include "accessible_widget.h"
#include "qt_values.h"
#include "widget_window.h"

PixvaneWidget::PixvaneWidget(QWidget* parent)
    : PixvaneMembers(parent), window_(std::make_unique<Window>(*this, link())) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    install_accessible_pixvane_widget();
}

PixvaneWidget::~PixvaneWidget() = default;

bool PixvaneWidget::keyboardEnabled() const { return window_->keyboardEnabled; }

void PixvaneWidget::setKeyboardEnabled(bool enabled) {
    window_->keyboardEnabled = enabled;
    if (!enabled) window_->let_go();
}

pixvane_control* PixvaneWidget::control() const { return link().control(); }

QSize PixvaneWidget::sizeHint() const { return {640, 480}; }

QSize PixvaneWidget::minimumSizeHint() const { return {64, 64}; }

// ---- Members by name -------------------------------------------------------------------------------------

namespace {

const pixvane_member_info* find_member(const QString& name) {
    static const QHash<QString, const pixvane_member_info*> members = [] {
        QHash<QString, const pixvane_member_info*> made;
        for (std::size_t i = 0; i < pixvane_member_count(); ++i) {
            const pixvane_member_info* info = pixvane_member_at(i);
            if (info->type != PIXVANE_EVENT) made.insert(QString::fromUtf8(info->name), info);
        }
        return made;
    }();
    return members.value(name);
}

}  // namespace

QVariant PixvaneWidget::invoke(const QString& member, const QVariantList& arguments, pixvane_status* status) {
    const pixvane_member_info* info = find_member(member);
    const int count = info == nullptr ? 0 : info->argument_count;
    QList<pixvane::Argument> converted;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const int kind = i < count ? info->arguments[i].kind : static_cast<int>(PIXVANE_VALUES);
        converted.append(pixvane::Argument::from_variant(arguments[i], kind));
    }
    const QByteArray name = member.toUtf8();
    return pixvane::call_member(link(), name.constData(), converted, status).variant();
}

// ---- What Qt sends ---------------------------------------------------------------------------------------

// A slot may have deleted the widget when a call of window_ comes back: nothing is touched behind one.

bool PixvaneWidget::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate) window_->let_go();
    return PixvaneMembers::event(event);
}

void PixvaneWidget::paintEvent(QPaintEvent*) { window_->paint(); }

void PixvaneWidget::resizeEvent(QResizeEvent*) { window_->follow_size(); }

void PixvaneWidget::showEvent(QShowEvent*) { window_->follow_size(); }

void PixvaneWidget::hideEvent(QHideEvent*) { window_->let_go(); }

void PixvaneWidget::focusOutEvent(QFocusEvent*) { window_->let_go(); }

void PixvaneWidget::mousePressEvent(QMouseEvent* event) {
    window_->mouse_pressed(*event, PIXVANE_MOUSE_DOWN);
}

void PixvaneWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    window_->mouse_pressed(*event, PIXVANE_DOUBLE_CLICK);
}

void PixvaneWidget::mouseReleaseEvent(QMouseEvent* event) { window_->mouse_released(*event); }

void PixvaneWidget::mouseMoveEvent(QMouseEvent* event) { window_->mouse_moved(*event); }

void PixvaneWidget::wheelEvent(QWheelEvent* event) { window_->wheel_turned(*event); }

void PixvaneWidget::keyPressEvent(QKeyEvent* event) { event->setAccepted(window_->key_pressed(*event)); }

void PixvaneWidget::keyReleaseEvent(QKeyEvent* event) { event->setAccepted(window_->key_released(*event)); }

void PixvaneWidget::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl& url : urls)
        if (url.isLocalFile()) return event->acceptProposedAction();
}

void PixvaneWidget::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    window_->files_dropped(event->mimeData()->urls());
}
