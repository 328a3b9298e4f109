// The widget beside a control without a toolkit: what Qt sends arrives in pixels, what is composed is shown.
// Every test here holds at any device pixel ratio.
// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include "support/widgets.h"

namespace pixvane::test {
namespace {

/// A widget that doesn't begin where its window begins, nor at a whole pixel of the screen at most ratios.
class Widgets : public testing::Test {
protected:
    void SetUp() override {
        window_.resize(437, 331);
        picture_.setParent(&window_);
        picture_.setGeometry(35, 21, 397, 303);
        line_.setGeometry(1, 1, 200, 18);
    }
    void show_picture(int width, int height) {
        show(window_);
        ASSERT_TRUE(picture_.LoadFromImageArray(patterned_pixels(width, height), width, height));
    }
    void press(Qt::MouseButton button, int x, int y) {
        send_mouse(picture_, QEvent::MouseButtonPress, button, button, x, y);
    }
    void drag(Qt::MouseButton held, int x, int y) {
        send_mouse(picture_, QEvent::MouseMove, Qt::NoButton, held, x, y);
    }
    void release(Qt::MouseButton button, int x, int y) {
        send_mouse(picture_, QEvent::MouseButtonRelease, button, Qt::NoButton, x, y);
    }

    QWidget window_;
    QLineEdit line_{&window_};
    PixvaneWidget picture_;
};

/// The frame of the model, and the part of the screen that the widget has.
void expect_shown(PixvaneWidget& widget, Model& model) {
    settle();
    const QImage composed = frame_of(model.handle());
    ASSERT_EQ(composed.size(), pixels_of(widget));
    EXPECT_EQ(frame_of(widget.control()), composed);
    const double ratio = widget.devicePixelRatioF();
    const QPointF corner = QPointF(widget.mapTo(widget.window(), QPoint(0, 0))) * ratio;
    const QImage screen = widget.window()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    const QImage shown = screen.copy(static_cast<int>(corner.x() + 1e-3), static_cast<int>(corner.y() + 1e-3),
                                     composed.width(), composed.height());
    // Where the widget ends within a pixel, that pixel may be its window's.
    const QRect whole(1, 1, composed.width() - 2, composed.height() - 2);
    EXPECT_EQ(shown.copy(whole), composed.copy(whole));
}

TEST_F(Widgets, APixelOfThePictureIsAPixelOfTheScreen) {
    show_picture(200, 150);
    Model model(picture_);
    EXPECT_EQ(picture_.Zoom(), 1.0);
    expect_shown(picture_, model);
    picture_.Invert();
    model.Invert();
    expect_shown(picture_, model);
    picture_.resize(300, 290);
    const QSize size = pixels_of(picture_);
    model.resize(size.width(), size.height());
    expect_shown(picture_, model);
}

TEST_F(Widgets, APictureThatWasLoadedBeforeIsFittedWhenTheWidgetIsFirstShown) {
    for (const QSize& size : {QSize(90, 60), QSize(3000, 200), QSize(500, 2500), QSize(40000, 10)}) {
        PixvaneWidget early(&window_);
        early.setGeometry(35, 21, 397, 303);
        EXPECT_TRUE(early.LoadFromImageArray(patterned_pixels(size.width(), size.height()), size.width(),
                                             size.height()));
        show(window_);
        early.show();
        settle();
        Model model(early);
        EXPECT_EQ(early.Zoom(), model.Zoom()) << size.width();
        // Later sizes leave the zoom alone, unless AutoResize says otherwise.
        early.resize(200, 100);
        settle();
        EXPECT_EQ(early.Zoom(), model.Zoom());
    }
}

TEST_F(Widgets, TheMouseArrivesInPixels) {
    show_picture(1500, 1200);
    Model model(picture_);
    EventLog told(picture_), expected(model);
    const auto both = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held, int x, int y) {
        send_mouse(picture_, type, button, held, x, y);
        const int number = button == Qt::LeftButton ? 0 : button == Qt::MiddleButton ? 1 : 2;
        int bits = 0;
        if (held & Qt::LeftButton) bits |= PIXVANE_HELD_LEFT;
        if (held & Qt::RightButton) bits |= PIXVANE_HELD_RIGHT;
        if (type == QEvent::MouseButtonPress) model.mouse_down(number, x, y);
        if (type == QEvent::MouseButtonRelease) model.mouse_up(number, x, y);
        if (type == QEvent::MouseMove) model.mouse_move(x, y, bits);
        if (type == QEvent::MouseButtonDblClick) model.double_click(number, x, y);
    };
    for (int round = 0; round < 2; ++round) {
        for (const QPoint at : {QPoint(0, 0), QPoint(17, 31), QPoint(301, 207), QPoint(-9, 500)}) {
            both(QEvent::MouseMove, Qt::NoButton, Qt::NoButton, at.x(), at.y());
            for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
                both(QEvent::MouseButtonPress, button, button, at.x(), at.y());
                both(QEvent::MouseMove, Qt::NoButton, button, at.x() + 5, at.y() - 4);
                both(QEvent::MouseButtonRelease, button, Qt::NoButton, at.x() + 5, at.y() - 4);
                both(QEvent::MouseButtonDblClick, button, button, at.x(), at.y());
                both(QEvent::MouseButtonRelease, button, Qt::NoButton, at.x(), at.y());
            }
        }
        const std::vector<std::string> lines = told.take();
        EXPECT_EQ(lines.size(), 4u * 11u);
        EXPECT_EQ(lines, expected.take());
        // The drags have moved the picture, both alike.
        expect_shown(picture_, model);
        // Once more at 100 %.
        picture_.ActialSize();
        model.ActialSize();
    }
}

TEST_F(Widgets, TheWheelZoomsAtThePointerByWholeNotches) {
    show_picture(1500, 1200);
    Model model(picture_);
    send_wheel(picture_, 240, 101, 77);
    model.wheel(2, 101, 77);
    expect_shown(picture_, model);
    // A touchpad: 119 eighths of a degree are nothing yet; turning back starts anew.
    for (const int part : {40, 40, 39, -100, 60, 59}) send_wheel(picture_, part, 201, 33);
    expect_shown(picture_, model);
    send_wheel(picture_, 1, 201, 33);
    model.wheel(1, 201, 33);
    expect_shown(picture_, model);
    for (int i = 0; i < 4; ++i) send_wheel(picture_, -90, 201, 33);
    model.wheel(-3, 201, 33);
    EXPECT_EQ(picture_.Zoom(), model.Zoom());
}

TEST_F(Widgets, TheMiddleButtonMovesThePictureInAnyMode) {
    show_picture(1500, 1200);
    for (const int mode : {0, 1}) {
        picture_.setPaintStatus(mode);
        Model model(picture_);
        model.ActialSize();
        picture_.ActialSize();
        press(Qt::MiddleButton, 50, 60);
        EXPECT_EQ(picture_.cursor().shape(), Qt::ClosedHandCursor);
        drag(Qt::MiddleButton, 73, 41);
        release(Qt::MiddleButton, 73, 41);
        EXPECT_NE(picture_.cursor().shape(), Qt::ClosedHandCursor);
        drag(Qt::NoButton, 173, 141);
        model.pan(23, -19);
        model.put_PaintStatus(mode);
        expect_shown(picture_, model);
    }
}

TEST_F(Widgets, TheSpaceBarTurnsTheLeftButtonIntoAHand) {
    show_picture(1500, 1200);
    picture_.ActialSize();
    Model model(picture_);
    model.ActialSize();
    EventLog told(picture_);
    QTest::keyPress(&picture_, Qt::Key_Space);
    EXPECT_EQ(picture_.cursor().shape(), Qt::OpenHandCursor);
    press(Qt::LeftButton, 50, 60);
    drag(Qt::LeftButton, 33, 81);
    QTest::keyRelease(&picture_, Qt::Key_Space);
    release(Qt::LeftButton, 33, 81);
    EXPECT_EQ(told.take(), std::vector<std::string>());
    model.pan(-17, 21);
    expect_shown(picture_, model);
    press(Qt::LeftButton, 33, 81);
    EXPECT_EQ(told.take().size(), 1u);
    release(Qt::LeftButton, 33, 81);
}

TEST_F(Widgets, KeysWorkWhileTheWidgetHasTheFocus) {
    show_picture(1500, 1200);
    window_.activateWindow();
    const double fitted = picture_.Zoom();
    const auto type = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    line_.setFocus();
    ASSERT_EQ(QApplication::focusWidget(), &line_);
    type(Qt::Key_Plus);
    type(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(picture_.Zoom(), fitted);

    picture_.setFocus();
    ASSERT_EQ(QApplication::focusWidget(), &picture_);
    type(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(picture_.Zoom(), 1.0);
    Model model(picture_);
    model.ActialSize();
    const int step = static_cast<int>(48 * picture_.devicePixelRatioF());
    const std::pair<Qt::Key, QPoint> arrows[] = {
        {Qt::Key_Left, {1, 0}}, {Qt::Key_Up, {0, 1}}, {Qt::Key_Right, {-1, 0}}, {Qt::Key_Down, {0, -1}}};
    for (const auto& [key, direction] : arrows) {
        type(key);
        model.pan(direction.x() * step, direction.y() * step);
        expect_shown(picture_, model);
    }
    type(Qt::Key_Plus);
    EXPECT_EQ(picture_.Zoom(), 1.1);
    type(Qt::Key_Minus);
    EXPECT_EQ(picture_.Zoom(), 1.1 * 0.9090909090909091);
    type(Qt::Key_9, Qt::ControlModifier);
    EXPECT_EQ(picture_.Zoom(), fitted);
    picture_.Invert();
    type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(picture_.RedoEnable());
    type(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(picture_.RedoEnable());

    picture_.setKeyboardEnabled(false);
    type(Qt::Key_0, Qt::ControlModifier);
    type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(picture_.Zoom(), fitted);
    EXPECT_FALSE(picture_.RedoEnable());
}

TEST_F(Widgets, DroppedFilesAreTold) {
    show(window_);
    EventLog told(picture_);
    const PictureFile file(30, 20);
    EXPECT_TRUE(send_drop(
        picture_, {QUrl(QStringLiteral("https://example.org/a.png")), QUrl::fromLocalFile(file.path()),
                   QUrl::fromLocalFile(QStringLiteral("/other.png"))}));
    EXPECT_EQ(told.take(), std::vector<std::string>{"OnDropFile " + file.path().toStdString()});
    EXPECT_TRUE(picture_.IsEmpty());
    EXPECT_FALSE(send_drop(picture_, {QUrl(QStringLiteral("https://example.org/a.png"))}));
    EXPECT_EQ(told.take(), std::vector<std::string>());
    QObject::connect(&picture_, &PixvaneWidget::OnDropFile, &picture_, &PixvaneWidget::LoadImage);
    EXPECT_TRUE(send_drop(picture_, {QUrl::fromLocalFile(file.path())}));
    EXPECT_EQ(picture_.ImageWidth(), 30);
}

TEST_F(Widgets, CursorsAreTheControls) {
    show_picture(100, 100);
    picture_.setPaintStatus(12);
    std::int32_t width = 0, height = 0, hotX = 0, hotY = 0;
    ASSERT_EQ(pixvane_cursor_image(202, nullptr, 0, &width, &height, &hotX, &hotY), PIXVANE_OK);
    EXPECT_EQ(picture_.cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(picture_.cursor().pixmap().size(), QSize(width, height));
    EXPECT_EQ(picture_.cursor().hotSpot(), QPoint(hotX, hotY));
    picture_.setPaintStatus(0);
    EXPECT_FALSE(picture_.testAttribute(Qt::WA_SetCursor));
}

TEST_F(Widgets, TimersTickWhileAModeWantsThem) {
    class Ticks : public QObject {
    public:
        bool eventFilter(QObject* receiver, QEvent* event) override {
            count += event->type() == QEvent::Timer && qobject_cast<QTimer*>(receiver) != nullptr ? 1 : 0;
            return false;
        }
        int count = 0;
    } ticks;
    show_picture(100, 100);
    QCoreApplication::instance()->installEventFilter(&ticks);
    for (const int mode : {7, 18}) {
        picture_.setPaintStatus(mode);
        const int before = ticks.count;
        EXPECT_TRUE(QTest::qWaitFor([&] { return ticks.count >= before + 3; }));
        picture_.setPaintStatus(0);
        const int then = ticks.count;
        QTest::qWait(200);
        EXPECT_EQ(ticks.count, then);
    }
}

TEST_F(Widgets, ItTellsThoseWhoCannotSeeIt) {
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(&picture_);
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->role(), QAccessible::Graphic);
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty());
    const QString empty = told->text(QAccessible::Description);
    show_picture(1234, 567);
    const QString full = told->text(QAccessible::Description);
    EXPECT_NE(full, empty);
    EXPECT_TRUE(full.contains(QStringLiteral("1234")) && full.contains(QStringLiteral("567")));
    picture_.setAccessibleName(QStringLiteral("The cat"));
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("The cat"));
}

}  // namespace
}  // namespace pixvane::test
