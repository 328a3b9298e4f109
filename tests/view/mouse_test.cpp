// The mouse: its modes, and the way of its messages against a model on random ones.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/pictures.h"
#include "view/cursors.h"
#include "view/mouse_dispatch.h"

namespace pixvane::test {
namespace {

using Lines = std::vector<std::string>;
using What = MouseMessage::What;

template <class... Parts>
std::string line(const std::string& head, Parts... numbers) {
    std::string text = head;
    ((text += " " + std::to_string(numbers)), ...);
    return text;
}

bool is_tool(std::int32_t mode) { return mode >= 1 && mode <= 26; }

/// The order in which tools are reset, said once more.
constexpr std::int32_t kResetOrder[] = {1, 25, 2,  4,  3,  6,  13, 17, 18, 19, 23, 5,  8,
                                        9, 10, 11, 24, 12, 21, 14, 16, 15, 7,  20, 22, 26};

/// What both sides have: a picture, a view, a panel, and a list of what was done.
struct Scene {
    Viewport view;
    ScrollWindow panel;
    std::int32_t width = 0, height = 0;
    Lines lines;

    void say(const std::string& text) { lines.push_back(text); }
    void show() {
        panel.update(view);
        say("show");
    }
    void take_picture(std::int32_t w, std::int32_t h) {
        width = w;
        height = h;
        view.set_image_size(w, h);
        view.recompute_layout();
    }
};

struct World final : Scene, MouseHost, HostWindow {
    std::vector<ToolMode> rows;
    std::size_t made = 0;
    static World* current;

    World() : rows(probes()), mouse(*this, view, panel, *this, rows) {}

    std::vector<ToolMode> probes();

    ConstPixelBuffer current_picture() const override { return {nullptr, width, height}; }
    const DrawSettings& draw_settings() const override { throw std::logic_error("no probe draws"); }
    void run_command(std::string_view, std::span<const Value>) override {}
    void fire_event(std::string_view event, std::span<const Value> arguments) override {
        std::string text(event);
        for (const Value& value : arguments) text += " " + std::to_string(value.i);
        say(text);
    }
    void Repaint() override { show(); }

    void frame_ready() override {}
    void start_timer(std::int32_t id, std::int32_t milliseconds) override {
        say(line("start", id, milliseconds));
    }
    void stop_timer(std::int32_t id) override { say(line("stop", id)); }
    void set_capture(bool captured) override { say(line("capture", int{captured})); }
    void set_cursor(std::int32_t cursor) override { say(line("cursor", cursor)); }

    MouseDispatch mouse;
};
World* World::current = nullptr;

/// A tool that captures the mouse for its gesture, fires now and then, and in mode 20 leaves its mode.
class Probe final : public MouseTool {
public:
    Probe(World& world, std::int32_t mode) : world_(world), mode_(mode) {}
    void Reset() override {
        say("reset");
        busy_ = false;
    }
    void MouseDown(ToolHost& host, MouseButton button, WindowPoint p) override {
        say("down", static_cast<int>(button), p.x, p.y);
        if (button != MouseButton::Left) return;
        busy_ = true;
        host.set_capture(true);
        if (p.x % 3 == 0) host.fire("OnColorChanged", {});
    }
    bool MouseMove(ToolHost&, WindowPoint p) override {
        say("move", p.x, p.y);
        return p.x % 2 == 0;
    }
    void MouseUp(ToolHost& host, WindowPoint p) override {
        say("up", p.x, p.y);
        if (busy_) host.set_capture(false);
        busy_ = false;
        if (mode_ != 20 || p.y % 2 != 0) return;
        host.fire("OnHitCancelRotate", {});
        host.set_mode(0);
    }
    bool Tick(ToolHost& host) override {
        say("tick", host.pointer().x);
        return true;
    }
    bool is_idle() const override { return !busy_; }

private:
    template <class... Numbers>
    void say(const std::string& what, Numbers... numbers) {
        world_.say(line("tool " + std::to_string(mode_) + " " + what, numbers...));
    }

    World& world_;
    std::int32_t mode_;
    bool busy_ = false;
};

std::vector<ToolMode> World::probes() {
    current = this;
    std::vector<ToolMode> list(tool_modes().begin(), tool_modes().end());
    for (ToolMode& row : list)
        row.make = []() -> std::unique_ptr<MouseTool> {
            return std::make_unique<Probe>(*current, kResetOrder[current->made++]);
        };
    return list;
}

/// What is to happen, told step by step.
struct Model : Scene {
    std::int32_t mode = 0, cursor = 0;
    bool captured = false, panning = false, busy = false;
    WindowPoint panAt, pointer;

    bool overflows() const { return view.overflow_x() || view.overflow_y(); }
    bool panel_shown() const { return overflows() && panel.visible && mode != 20; }
    void capture(bool take) {
        if (captured) say("capture 0");
        captured = take;
        if (take) say("capture 1");
    }
    void end_gestures() {
        panning = false;
        panel.end_drag();
        capture(false);
    }
    template <class... Numbers>
    void tool(const std::string& what, Numbers... numbers) {
        if (is_tool(mode)) say(line("tool " + std::to_string(mode) + " " + what, numbers...));
    }
    void event(const std::string& name, std::int32_t button, WindowPoint p) {
        const ImagePoint at = view.WindowToImage(view.zoom(), p);
        say(line(name, button, at.x, at.y));
    }
    void set_mode(std::int32_t next) {
        const std::map<std::int32_t, std::int32_t> cursors = {{12, 202}, {3, 206}, {22, 208}};
        const auto ticks = [](std::int32_t m) { return m == 7 || m == 18; };
        const std::int32_t last = mode;
        mode = next;
        end_gestures();
        if (last != next) {
            if (ticks(last)) say("stop 1");
            if (cursor != 0) say("cursor 0");
            if (ticks(next)) say("start 1 50");
            cursor = cursors.contains(next) ? cursors.at(next) : 0;
            if (cursor != 0) say(line("cursor", cursor));
        }
        for (const std::int32_t m : kResetOrder) say("tool " + std::to_string(m) + " reset");
        busy = false;
    }
    void tool_down(WindowPoint p) {
        if (!is_tool(mode)) return;
        tool("down", 0, p.x, p.y);
        busy = true;
        capture(true);
    }
    void after_down(WindowPoint p) {
        if (is_tool(mode) && p.x % 3 == 0) say("OnColorChanged");
    }
    void left_down(WindowPoint p) {
        if (mode == 26) {
            tool_down(p);
            show();
            after_down(p);
        }
        if (width == 0) return;
        event("OnMouseDown", 0, p);
        if (panel_shown()) {
            if (panel.hits_close_box(p)) return say("OnHitCloseScrollWindow");
            if (panel.hits_frame(p)) {
                panel.begin_drag(p);
                capture(true);
                return show();
            }
        }
        if (mode == 0) {
            view.UpdateOverflow();
            if (!overflows()) return;
            panning = true;
            panAt = p;
            capture(true);
        } else if (mode != 26) {
            tool_down(p);
            after_down(p);
        }
    }
    void right_down(WindowPoint p) {
        event("OnMouseDown", 2, p);
        if (mode != 2 && mode != 4 && mode != 5 && mode != 10 && mode != 13) return;
        tool("down", 2, p.x, p.y);
        show();
    }
    void move(WindowPoint p, std::int32_t held) {
        if (mode == 26) {
            tool("move", p.x, p.y);
            if (p.x % 2 == 0) show();
        }
        if (width == 0) return;
        event("OnMouseMove", (held & 1) != 0 ? 0 : (held & 4) != 0 ? 2 : (held & 2) != 0 ? 1 : -1, p);
        if (panel.is_dragging()) {
            if (!panel_shown()) return end_gestures();
            view.ScrollTo(panel.drag_to(p));
            return show();
        }
        if (panning) {
            if (!overflows()) return;
            view.pan(p.x - panAt.x, p.y - panAt.y);
            panAt = p;
            return show();
        }
        if (!is_tool(mode) || mode == 26) return;
        tool("move", p.x, p.y);
        if (p.x % 2 == 0 || mode == 12 || mode == 15) show();
    }
    void tool_up(WindowPoint p) {
        if (!is_tool(mode)) return;
        tool("up", p.x, p.y);
        if (busy) capture(false);
        busy = false;
        if (mode != 20 || p.y % 2 != 0) return;
        set_mode(0);
        show();
        say("OnHitCancelRotate");
    }
    void left_up(WindowPoint p) {
        if (mode == 26) {
            tool_up(p);
            show();
        }
        if (width == 0) {
            // Nothing is left to be held on to.
            if (captured && mode != 26) {
                tool("reset");
                busy = false;
            }
            return end_gestures();
        }
        event("OnMouseUp", 0, p);
        if (panel.is_dragging()) {
            end_gestures();
            return show();
        }
        if (panel_shown() && panel.hits_close_box(p) && !panning && !busy) return;
        if (mode == 0)
            end_gestures();
        else if (mode != 26)
            tool_up(p);
    }
    void handle(const MouseMessage& m) {
        pointer = m.at;
        const auto button = static_cast<std::int32_t>(m.button);
        if (m.what == What::Move) return move(m.at, m.held);
        if (m.button == MouseButton::Left && m.what == What::Down) return left_down(m.at);
        if (m.button == MouseButton::Left && m.what == What::Up) return left_up(m.at);
        if (width == 0) return;
        if (m.button == MouseButton::Right && m.what == What::Down) return right_down(m.at);
        event(m.what == What::Down ? "OnMouseDown"
              : m.what == What::Up ? "OnMouseUp"
                                   : "OnDblClick",
              button, m.at);
    }
    void tick(std::int32_t timer) {
        if (width == 0 || timer != 1 || (mode != 7 && mode != 18)) return;
        tool("tick", pointer.x);
        show();
    }
};

class RandomRun {
public:
    explicit RandomRun(std::uint64_t seed) : random_(seed) {
        both([](Scene& s) {
            s.view.SetClientSize(300, 200);
            s.panel.visible = true;
        });
    }

    void step() {
        const std::uint32_t kind = random_.below(40);
        if (kind < 30)
            message();
        else if (kind < 33)
            set_mode();
        else if (kind < 35)
            tick();
        else
            change_view(random_.below(6));
        world_.lines.push_back("end");
        model_.lines.push_back("end");
    }
    void compare() {
        ASSERT_EQ(model_.lines, world_.lines);
        ASSERT_EQ(model_.view, world_.view);
        ASSERT_EQ(model_.mode, world_.mouse.mode());
        world_.lines.clear();
        model_.lines.clear();
    }

private:
    template <class Change>
    void both(Change change) {
        change(static_cast<Scene&>(world_));
        change(static_cast<Scene&>(model_));
    }
    std::int32_t between(std::int32_t low, std::int32_t high) { return random_.between(low, high); }
    WindowPoint point() {
        const std::uint32_t where = random_.below(8);
        const WindowRect box = where == 0 ? model_.panel.layout().closeBox : model_.panel.frame();
        if (where < 3) return {box.x + between(0, 9), box.y + between(0, 9)};
        // A drag goes on from where the pointer is, over the window's edges.
        if (where < 6) return {model_.pointer.x + between(-30, 30), model_.pointer.y + between(-30, 30)};
        return {between(-60, 360), between(-60, 260)};
    }
    void message() {
        constexpr MouseButton kButtons[] = {MouseButton::Left, MouseButton::Left, MouseButton::Middle,
                                            MouseButton::Right};
        constexpr What kWhats[] = {What::Down, What::Up,   What::Move,
                                   What::Move, What::Move, What::DoubleClick};
        const MouseMessage m{random_.one_of(kWhats), random_.one_of(kButtons), point(), between(0, 7)};
        world_.mouse.handle(m);
        model_.handle(m);
    }
    void set_mode() {
        // Often those with a timer or a cursor, also one after the other.
        constexpr std::int32_t kModes[] = {0, 0, 7, 18, 12, 3, 22, 26};
        for (std::uint32_t times = 1 + random_.below(2); times > 0; --times) {
            const std::int32_t mode = random_.below(2) == 0 ? random_.one_of(kModes) : between(-1, 28);
            world_.mouse.SetToolMode(mode);
            world_.mouse.ResetTools();
            model_.set_mode(mode);
        }
    }
    void tick() {
        const std::int32_t timer = between(0, 3);
        world_.mouse.tick(timer);
        model_.tick(timer);
    }
    void change_view(std::uint32_t how) {
        const std::int32_t w = between(0, 5) == 0 ? 0 : between(1, 900), h = w == 0 ? 0 : between(1, 900);
        const bool visible = random_.below(4) != 0;
        both([&](Scene& s) {
            if (how == 0) s.take_picture(w, h);
            if (how == 1) s.panel.visible = visible;
            if (how == 2) s.view.ZoomIn();
            if (how == 3) s.view.ZoomOut();
            if (how == 4) s.view.ZoomToFit();
            if (how == 5) s.view.resize(w / 2, h / 2, visible);
            s.show();
        });
    }

    World world_;
    Model model_;
    TestRandom random_;
};

TEST(Mouse, does_what_the_model_says) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        RandomRun run(seed);
        for (int i = 0; i < 1000; ++i) {
            run.step();
            run.compare();
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Mouse, stops_the_timer_of_a_window_that_is_released) {
    World world;
    world.mouse.SetToolMode(18);
    world.lines.clear();
    world.mouse.release_window();
    EXPECT_EQ(world.lines, Lines{"stop 1"});
}

TEST(Mouse, has_coordinates_of_sixteen_bits) {
    World world;
    world.view.SetClientSize(100, 100);
    world.take_picture(10, 10);
    world.view.ZoomIn();
    for (const auto& [told, meant] : {std::pair{-5, -5}, {INT32_MAX, 32767}, {INT32_MIN, -32768}}) {
        world.lines.clear();
        world.mouse.handle({What::Move, MouseButton::Left, {told, told}, 0});
        const ImagePoint p = world.view.WindowToImage(world.view.zoom(), {meant, meant});
        EXPECT_EQ(world.lines, Lines{line("OnMouseMove", -1, p.x, p.y)});
    }
}

TEST(Mouse, carries_points_to_where_their_pixels_go) {
    Viewport before;
    before.SetClientSize(400, 300);
    before.set_image_size(1000, 800);
    before.recompute_layout();
    before.ZoomOut();
    before.pan(37, -20);
    Viewport after = before;
    after.zoom_at(3, {100, 90});
    for (const WindowPoint p : {WindowPoint{100, 90}, {20, 280}, {-50, 400}}) {
        const WindowPoint carried = PointCarrier(before, before.zoom(), after)(p);
        EXPECT_EQ(carried, after.ImageToWindow(after.zoom(), before.WindowToImage(before.zoom(), p)));
        const ImagePoint was = before.WindowToImage(before.zoom(), p);
        const ImagePoint is = after.WindowToImage(after.zoom(), carried);
        EXPECT_LE(std::abs(was.x - is.x), 1);
        EXPECT_LE(std::abs(was.y - is.y), 1);
    }
}

TEST(Cursors, are_there_for_every_mode_that_has_one) {
    for (const ToolMode& row : tool_modes()) {
        if (row.cursor == 0) continue;
        const auto image = cursor_image(row.cursor);
        ASSERT_TRUE(image);
        ASSERT_EQ(image->pixels.size(), static_cast<std::size_t>(image->width * image->height));
        EXPECT_TRUE((WindowRect{0, 0, image->width, image->height}.contains(image->hotSpot)));
    }
    EXPECT_FALSE(cursor_image(0));
    EXPECT_FALSE(cursor_image(-1));
    // The lowest ink of the bucket is where the fill starts.
    const CursorImage bucket = *cursor_image(kBucketCursor);
    WindowPoint lowest;
    for (std::int32_t y = 0; y < bucket.height; ++y)
        for (std::int32_t x = 0; x < bucket.width; ++x)
            if (bucket.pixels[static_cast<std::size_t>(y * bucket.width + x)] == 0xFF000000) lowest = {x, y};
    EXPECT_EQ(lowest.x - bucket.hotSpot.x, 11);
    EXPECT_EQ(lowest.y - bucket.hotSpot.y, 22);
}

}  // namespace
}  // namespace pixvane::test
