// Widgets come and go, also within their own signals; what slots throw takes the way of the call.
// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QUrl>
#include <stdexcept>

#include "support/widgets.h"

namespace pixvane::test {
namespace {

using Act = std::function<void(PixvaneWidget& widget)>;

PixvaneWidget* shown_widget() {
    auto* widget = new PixvaneWidget;
    widget->resize(120, 90);
    widget->LoadFromImageArray(patterned_pixels(300, 200), 300, 200);
    show(*widget);
    widget->setFocus();
    return widget;
}

/// Deletes a widget in a slot of `signal`, which `act` makes it send; its control must be gone with it.
template <class Signal>
void expect_gone_within(Signal signal, const Act& act, int which) {
    SCOPED_TRACE(which);
    QPointer<PixvaneWidget> widget = shown_widget();
    QObject::connect(widget, signal, widget, [&] { delete widget; });
    act(*widget);
    settle();
    EXPECT_TRUE(widget.isNull());
    EXPECT_EQ(pixvane_bitmap_bytes(), 0u);
    delete widget;
}

TEST(Lifetime, ASlotMayDeleteTheWidgetWhateverIsGoingOn) {
    using W = PixvaneWidget;
    ASSERT_EQ(pixvane_bitmap_bytes(), 0u);
    const Act acts[] = {
        [](W& w) { w.Invert(); },
        [](W& w) { w.setBackColor1(Qt::red); },
        [](W& w) { w.invoke(QStringLiteral("Blur"), {3}); },
        [](W& w) { w.resize(200, 150); },
        [](W& w) { send_wheel(w, 120, 30, 30); },
        [](W& w) { QTest::keyClick(w.windowHandle(), Qt::Key_Plus); },
        [](W& w) { QTest::keyClick(w.windowHandle(), Qt::Key_0, Qt::ControlModifier); },
    };
    for (std::size_t i = 0; i < std::size(acts); ++i)
        expect_gone_within(&W::frameChanged, acts[i], static_cast<int>(i));

    const QPoint at(30, 30);
    const Act press = [&](W& w) { QTest::mousePress(w.windowHandle(), Qt::LeftButton, {}, at); };
    const Act middle = [&](W& w) { QTest::mousePress(w.windowHandle(), Qt::MiddleButton, {}, at); };
    const Act move = [](W& w) { send_mouse(w, QEvent::MouseMove, Qt::NoButton, Qt::NoButton, 30, 30); };
    const Act drop = [](W& w) { send_drop(w, {QUrl::fromLocalFile(QStringLiteral("/a"))}); };
    const Act click = [](W& w) {
        send_mouse(w, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, 30, 30);
        send_mouse(w, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, 30, 30);
    };
    const Act again = [](W& w) {
        send_mouse(w, QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton, 30, 30);
    };
    expect_gone_within(&W::OnMouseDown, press, __LINE__);
    expect_gone_within(&W::OnMouseDown, middle, __LINE__);
    expect_gone_within(&W::OnMouseMove, move, __LINE__);
    expect_gone_within(&W::OnMouseUp, click, __LINE__);
    expect_gone_within(&W::OnDblClick, again, __LINE__);
    expect_gone_within(&W::OnDropFile, drop, __LINE__);
}

TEST(Lifetime, AWidgetThatIsDeletedWithinACallPastItGoesWhenTheCallHasComeBack) {
    QPointer<PixvaneWidget> widget = shown_widget();
    QObject::connect(widget, &PixvaneWidget::frameChanged, widget, [&] { delete widget; });
    EXPECT_EQ(pixvane_invoke(widget->control(), "Invert", nullptr, 0, nullptr), PIXVANE_OK);
    EXPECT_TRUE(widget.isNull());
    EXPECT_TRUE(QTest::qWaitFor([] { return pixvane_bitmap_bytes() == 0; }));
}

TEST(Lifetime, WhatASlotThrowsLeavesThroughTheCall) {
    PixvaneWidget widget;
    show(widget);
    widget.NewImage(40, 30);
    widget.setBitmapBackColor(Qt::green);
    int frames = 0;
    const QMetaObject::Connection thrower = QObject::connect(&widget, &PixvaneWidget::frameChanged, [&] {
        // The inner call throws what its own slot throws, and nothing else.
        if (++frames == 1) {
            EXPECT_THROW(widget.Invert(), std::length_error);
            throw std::domain_error("outer");
        }
        throw std::length_error("inner");
    });
    EXPECT_THROW(widget.ClearImage(), std::domain_error);
    EXPECT_EQ(frames, 2);
    QObject::disconnect(thrower);
    EXPECT_EQ(widget.GetPixel(3, 3), QColor(255, 0, 255));
    widget.Undo();
    EXPECT_EQ(widget.GetPixel(3, 3), QColor(0, 255, 0));
}

TEST(Lifetime, AThousandWidgets) {
    const PictureFile file(64, 48);
    QWidget window;
    window.resize(300, 200);
    window.show();
    for (int i = 0; i < 1000; ++i) {
        QPointer<PixvaneWidget> widget = new PixvaneWidget(i % 3 == 0 ? nullptr : &window);
        widget->resize(100 + i % 7, 80);
        EXPECT_EQ(i % 2 == 0 && widget->LoadImage(file.path()), i % 2 == 0);
        if (i % 4 != 3) widget->show();
        if (i % 5 == 0) widget->setPaintStatus(i % 27);
        if (i % 8 == 0) QObject::connect(widget, &PixvaneWidget::OnMouseMove, widget, [&] { delete widget; });
        QCoreApplication::processEvents();
        send_mouse(*widget, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, 20, 20);
        send_mouse(*widget, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, 30, 25);
        if (widget) widget->Invert();
        if (i % 10 == 1)
            widget->deleteLater();  // by the event loop, else here
        else
            delete widget;
    }
    settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window.findChildren<PixvaneWidget*>().size(), 0);
    EXPECT_EQ(pixvane_bitmap_bytes(), 0u);
}

}  // namespace
}  // namespace pixvane::test
