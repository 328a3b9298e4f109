// The mouse and the control: modes, what a new document does to them, and handlers that call back.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "control/test_control.h"

namespace pixvane::test {
namespace {

using What = MouseMessage::What;

struct Stage : TestControl {
    Stage() {
        control.window_resized(60, 50);
        load(random_picture(200, 150, 1));
        call("ActialSize");
    }
    void mouse(What what, std::int32_t x, std::int32_t y, MouseButton button = MouseButton::Left) {
        control.window_mouse({what, button, {x, y}, what == What::Move ? 1 : 0});
    }
    void mode(std::int32_t value) { call("PaintStatus", {integer(value)}); }
};

TEST(Modes, are_set_with_a_picture_only) {
    TestControl c;
    c.call("PaintStatus", {integer(7)});
    EXPECT_EQ(c.number("PaintStatus"), 0);
    c.load(random_picture(9, 9, 1));
    for (const std::int32_t mode : {7, 12, -3, 99, 26, 0}) {
        c.call("PaintStatus", {integer(mode)});
        EXPECT_EQ(c.number("PaintStatus"), mode);
    }
}

TEST(Modes, end_when_the_document_is_replaced) {
    const std::string file = RawCodec::file_of(random_picture(9, 9, 1));
    const std::vector<std::pair<std::int32_t, std::function<void(Stage&)>>> changes = {
        {0,
         [](Stage& c) {
             c.call("NewImage", {integer(5), integer(5)});
         }},
        {0, [](Stage& c) { c.call("LoadImage", {Value::string("picture")}); }},
        {0, [](Stage& c) { c.load(random_picture(5, 5, 1)); }},
        {18,
         [](Stage& c) {
             c.call("NewImage", {integer(3), integer(5)});
         }},
        {18, [](Stage& c) { c.call("LoadImage", {Value::string("none")}); }},
        {18, [&](Stage& c) { c.call("Picture", {bytes(file)}); }},
        {18, [](Stage& c) { c.call("Empty"); }},
        {18, [](Stage& c) { c.call("Undo"); }},
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        Stage c;
        c.files.files["picture"] = file;
        c.mode(18);
        changes[i].second(c);
        EXPECT_EQ(c.number("PaintStatus"), changes[i].first) << i;
        EXPECT_EQ(c.window.timers.contains(1), changes[i].first == 18) << i;
    }
}

/// What a host may think of while it is being told something.
const std::vector<std::function<void(Stage&)>> kWildThings = {
    [](Stage& c) { c.call("Empty"); },
    [](Stage& c) {
        c.call("NewImage", {integer(4), integer(4)});
    },
    [](Stage& c) { c.load(random_picture(300, 300, 2)); },
    [](Stage& c) { c.call("RotateFlip", {integer(1)}); },
    [](Stage& c) { c.call("Undo"); },
    [](Stage& c) { c.call("ZoomToFit"); },
    [](Stage& c) { c.call("ScrollWindowVisible", {truth(false)}); },
    [](Stage& c) { c.control.window_resized(0, 0); },
    [](Stage& c) { c.control.window_resized(500, 400); },
    [](Stage& c) { c.mode(0); },
    [](Stage& c) { c.mode(7); },
    [](Stage& c) { c.mode(12); },
    [](Stage& c) { c.mode(20); },
    [](Stage& c) { c.mode(26); },
    [](Stage& c) { c.mouse(What::Down, 30, 20); },
    [](Stage& c) { c.mouse(What::Up, 30, 20); },
    [](Stage& c) { c.call("BeginPreview"); },
    [](Stage& c) {
        c.call("Preview", {Value::string("RotateFlip"), integer(1)});
    },
    [](Stage& c) { c.call("EndPreview", {truth(true)}); },
};

TEST(Handlers, may_do_anything_while_the_mouse_is_told_of) {
    for (const char* event : {"OnMouseDown", "OnMouseMove", "OnMouseUp", "OnHitCloseScrollWindow"}) {
        int told = 0;
        for (std::size_t wild = 0; wild < kWildThings.size(); ++wild) {
            for (const std::int32_t mode : {0, 2, 18, 26}) {
                for (const char where : {'p', 'f', 'c'}) {
                    SCOPED_TRACE(std::string(event) + " " + std::to_string(wild) + " in mode " +
                                 std::to_string(mode) + " at " + where);
                    Stage c;
                    c.control.window_resized(160, 190);
                    c.call("ScrollWindowVisible", {truth(true)});
                    c.mode(mode);
                    bool inside = false;
                    const std::int32_t handler = c.control.events().subscribe(event, [&](auto) {
                        ++told;
                        if (inside) return;
                        inside = true;
                        kWildThings[wild](c);
                        inside = false;
                    });
                    const ScrollWindow& panel = c.control.scroll_window();
                    const WindowRect at = where == 'c'   ? panel.layout().closeBox
                                          : where == 'f' ? panel.frame()
                                                         : WindowRect{5, 5, 1, 1};
                    c.mouse(What::Down, at.x + 2, at.y + 2, MouseButton::Right);
                    c.mouse(What::Down, at.x + 2, at.y + 2);
                    c.mouse(What::Move, at.x + 9, at.y - 3);
                    c.control.window_timer(1);
                    c.mouse(What::Up, at.x + 9, at.y - 3);
                    // Once all is quiet, one more release leaves nothing held, and timer and cursor are
                    // those of the mode.
                    c.control.events().unsubscribe(handler);
                    c.mouse(What::Up, 0, 0);
                    EXPECT_FALSE(c.window.captured);
                    const std::int32_t now = c.number("PaintStatus");
                    EXPECT_EQ(c.window.timers.contains(1), now == 7 || now == 18);
                    EXPECT_EQ(c.window.cursor, now == 12 ? 202 : 0);
                }
            }
        }
        EXPECT_GT(told, 0) << event;
    }
}

}  // namespace
}  // namespace pixvane::test
