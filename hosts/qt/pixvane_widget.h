// The control as a Qt widget.
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <memory>

#include "pixvane/pixvane.h"
#include "pixvane_members.h"

/// An image-editing control in a form. Its members are those of PixvaneMembers, by their published names:
///
///     auto* picture = new PixvaneWidget(this);
///     connect(picture, &PixvaneWidget::OnDropFile, picture, &PixvaneWidget::LoadImage);
///     picture->LoadImage("photo.jpg");
///
/// One pixel of the picture at 100 % is one pixel of the screen, whatever the device pixel ratio. The wheel
/// zooms at the pointer; the middle button, or the left one while the space bar is held, moves the picture in
/// any mode; files dropped on the widget fire OnDropFile. While it has the focus, the arrow keys move the
/// picture,
/// + and - zoom, Ctrl+0 shows it at 100 %, Ctrl+9 fits it, Ctrl+Z undoes, Ctrl+Shift+Z does again.
///
/// Slots may call the widget back, and even delete it. What they throw leaves through the call that made the
/// signal fire.
class PIXVANE_QT_API PixvaneWidget : public PixvaneMembers {
    Q_OBJECT
    Q_PROPERTY(bool keyboardEnabled READ keyboardEnabled WRITE setKeyboardEnabled)

public:
    /// Throws std::bad_alloc if no control can be made.
    explicit PixvaneWidget(QWidget* parent = nullptr);
    ~PixvaneWidget() override;

    /// Whether the keys do what they do (the space bar, too); true at first.
    bool keyboardEnabled() const;

    /// The control, for functions of the C interface. It belongs to the widget. The widget must not be
    /// deleted by a slot within a call that was made this way, unless an event loop runs afterwards.
    pixvane_control* control() const;

    /// Calls a method, gets a property (no argument) or puts it (one argument) by its name; variants are
    /// turned into what the member takes: colours also from 0x00BBGGRR, lists of integers also from lists of
    /// variants. Gives an invalid variant if the member returns nothing, or was refused: `status` tells.
    QVariant invoke(const QString& member, const QVariantList& arguments = {},
                    pixvane_status* status = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void setKeyboardEnabled(bool enabled);

Q_SIGNALS:
    /// The control has composed a frame: the picture, the view or a tool's overlay has changed. Sent within
    /// the call that changed it, once for each repaint.
    void frameChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    class Window;
    std::unique_ptr<Window> window_;
};
