// The viewport against its formulas, written out once more, on random sequences; and its known cases.
// SPDX-License-Identifier: MIT
#include "core/viewport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "support/pictures.h"

namespace pixvane::test {
namespace {

std::int32_t truncated(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<std::int32_t>(std::trunc(std::fmax(-2147483648.0, std::fmin(2147483647.0, value))));
}

/// One axis as the formulas say it. Zoom is common to both, so the model of the whole holds it.
struct Axis {
    int client = 0, anchor = 0, size = 0;
    bool overflow = false;

    int start(double zoom) const { return truncated(anchor - size * zoom * 0.5) + 1; }
    int length(double zoom) const { return truncated(size * zoom); }
    void update(double zoom) { overflow = !(start(zoom) >= 0 && start(zoom) + length(zoom) < client); }
    int to_image(double zoom, int p) const {
        if (std::abs(zoom - 1.0) < 0.01) return p - truncated(anchor - size * 0.5) - 1;
        const double left = anchor - (size / 2) * zoom - 0.5, right = anchor + (size / 2) * zoom - 0.5;
        // The one thing that the formula doesn't say: an extent of nothing.
        return right - left + 1 == 0 ? 0 : truncated(size * (p - left) / (right - left + 1) + 0.5);
    }
    int to_window(double zoom, int i) const {
        if (std::abs(zoom - 1.0) < 0.01) {
            const int parity = (client + 1) % 2 == 1 ? 1 : 0;
            return start(zoom) - parity + i + 1;
        }
        return truncated(anchor - (size / 2) * zoom + i * zoom);
    }
    void pan(double zoom, int step) {
        if (!overflow) return;
        anchor += step;
        if (!(start(zoom) < 1 && start(zoom) + length(zoom) > client)) anchor -= step;
    }
};

struct Model {
    Axis x, y;
    double zoom = 1.0, previous = 1.0;

    void centre() {
        x.anchor = x.client / 2;
        y.anchor = y.client / 2;
    }
    void update() {
        x.update(zoom);
        y.update(zoom);
    }
    void change(double to) {
        previous = zoom;
        centre();
        zoom = to;
        update();
    }
    void actual() { change(zoom < 0.1 ? 0.1 : zoom > 16.0 ? 16.0 : 1.0); }
    void resize(int width, int height, bool autoResize) {
        x.client = width;
        y.client = height;
        centre();
        update();
        if (!autoResize || x.size < 1) return;
        width > x.size + 8 && height >= y.size + 8 ? actual() : fit();
    }
    void start(int width, int height) {
        x.size = width;
        y.size = height;
        zoom = 1.0;
        centre();
        update();
        if (x.size >= x.client || y.size >= y.client) fit();
    }
    void step(bool possible, double factor) {
        if (possible) change(zoom * factor);
    }
    void pan(int dx, int dy) {
        if (x.size < 1) return;
        x.pan(zoom, dx);
        y.pan(zoom, dy);
    }
    void fit() {
        if (x.size < 1 || y.size < 1) return;
        double to = (x.client - 8.0) / x.size;
        if (y.client / 2 - y.size * to * 0.5 < 4.0) to = (y.client - 8.0) / y.size;
        change(to);
    }
};

void expect_equal(const Viewport& view, const Model& model, TestRandom& random) {
    ASSERT_EQ(view.zoom(), model.zoom);
    ASSERT_EQ(view.previous_zoom(), model.previous);
    ASSERT_EQ(view.anchor(), (WindowPoint{model.x.anchor, model.y.anchor}));
    ASSERT_EQ(view.overflow_x(), model.x.overflow);
    ASSERT_EQ(view.overflow_y(), model.y.overflow);
    ASSERT_EQ(view.ImageRect(), (WindowRect{model.x.start(model.zoom), model.y.start(model.zoom),
                                            model.x.length(model.zoom), model.y.length(model.zoom)}));
    const int px = random.between(-500, 2499), py = random.between(-500, 2499);
    for (const double zoom : {model.zoom, model.previous, 1.0, 1.009, 0.99, 7.5}) {
        ASSERT_EQ(view.WindowToImage(zoom, {px, py}),
                  (ImagePoint{model.x.to_image(zoom, px), model.y.to_image(zoom, py)}));
        ASSERT_EQ(view.ImageToWindow(zoom, {px, py}),
                  (WindowPoint{model.x.to_window(zoom, px), model.y.to_window(zoom, py)}));
    }
}

TEST(Viewport, follows_its_formulas_through_random_sequences) {
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        TestRandom random(seed);
        Viewport view;
        Model model;
        int a = 0, b = 0;
        const std::function<void()> steps[] = {
            [&] {
                const bool autoResize = random.below(2) == 0;
                view.resize(a, b, autoResize);
                model.resize(a, b, autoResize);
            },
            [&] {
                view.set_image_size(1 + a, 1 + b);
                view.lay_out_document();
                model.start(1 + a, 1 + b);
            },
            [&] { view.ZoomIn(), model.step(model.zoom < 8.0, 1.1); },
            [&] { view.ZoomIn(), model.step(model.zoom < 8.0, 1.1); },
            [&] { view.ZoomOut(), model.step(model.zoom > 0.1, 0.9090909090909091); },
            [&] { view.ZoomOut(), model.step(model.zoom > 0.1, 0.9090909090909091); },
            [&] { view.ActialSize(), model.actual(); },
            [&] { view.ZoomToFit(), model.fit(); },
            [&] { view.pan(a % 41 - 20, b % 41 - 20), model.pan(a % 41 - 20, b % 41 - 20); },
        };
        for (int step = 0; step < 120; ++step) {
            a = random.between(0, 1999);
            b = random.between(0, 1999);
            random.one_of(steps)();
            ASSERT_NO_FATAL_FAILURE(expect_equal(view, model, random)) << "seed " << seed << " step " << step;
        }
    }
}

Viewport with_picture(int width, int height, int clientWidth, int clientHeight) {
    Viewport view;
    view.SetClientSize(clientWidth, clientHeight);
    view.set_image_size(width, height);
    view.lay_out_document();
    return view;
}

TEST(Viewport, steps_within_its_limits) {
    Viewport view;
    for (int i = 0; i < 10; ++i) view.ZoomIn();
    EXPECT_NEAR(view.zoom(), 2.5937, 0.0001);
    for (int i = 0; i < 100; ++i) view.ZoomIn();
    EXPECT_TRUE(view.zoom() >= 8.0 && view.zoom() < 8.8);
    for (int i = 0; i < 100; ++i) view.ZoomOut();
    EXPECT_TRUE(view.zoom() > 0.09 && view.zoom() <= 0.1);
    view.ActialSize();
    EXPECT_EQ(view.zoom(), 0.1);
}

TEST(Viewport, fits_with_a_margin_of_four) {
    EXPECT_EQ(with_picture(1000, 500, 508, 300).zoom(), 0.5);
    EXPECT_EQ(with_picture(500, 1000, 508, 300).zoom(), 0.292);
    EXPECT_EQ(with_picture(100, 100, 508, 300).zoom(), 1.0);
    EXPECT_FALSE(with_picture(297, 100, 300, 300).overflow_x());
    EXPECT_TRUE(with_picture(298, 100, 300, 300).overflow_x()) << "it starts at 2";
    EXPECT_EQ(with_picture(300, 100, 300, 300).zoom(), 292.0 / 300) << "as wide as the window";
    Viewport view = with_picture(100, 100, 50, 50);
    for (const auto& [width, height, zoom] : {std::tuple{108, 300, 1.0}, {109, 107, 0.99}, {109, 108, 1.0}}) {
        view.resize(width, height, true);
        EXPECT_EQ(view.zoom(), zoom);
    }
}

TEST(Viewport, survives_a_window_of_size_zero_and_no_picture) {
    EXPECT_EQ(with_picture(8, 8, 0, 0).zoom(), -1.0);
    for (int size = 1; size < 40; ++size) {
        Viewport small = with_picture(size, size, 0, 0);
        for (const double zoom : {small.zoom(), -1.0 / size, 0.0, -1e300, 1e300}) {
            small.WindowToImage(zoom, {INT32_MAX, INT32_MIN});
            small.ImageToWindow(zoom, {INT32_MAX, INT32_MIN});
        }
        small.zoom_at(3, {INT32_MAX, INT32_MIN});
        small.pan(INT32_MAX, INT32_MIN);
        small.pan_toward(INT32_MIN, INT32_MAX);
        small.ScrollTo({INT32_MAX, INT32_MIN});
    }
    Viewport empty;
    empty.resize(100, 100, true);
    empty.ZoomToFit();
    EXPECT_EQ(empty.zoom(), 1.0);
    empty.zoom_at(5, {3, 3});
    EXPECT_FALSE(empty.pan(5, 5));
    EXPECT_EQ(empty.zoom(), 1.0);
}

TEST(Viewport, pans_as_far_as_single_steps_lead) {
    for (const int zooms : {0, 3, 9}) {
        Viewport far = with_picture(900, 700, 400, 300), near = far;
        for (Viewport* view : {&far, &near})
            for (int i = 0; i <= zooms; ++i) view->ZoomIn();
        for (const auto& [dx, dy] :
             {std::pair<int, int>(5, -7), {5000, 3}, {-1, 9000}, {-700, -100}, {INT32_MAX, INT32_MIN}}) {
            far.pan_toward(dx, dy);
            const auto steps = [](int by) {
                return static_cast<int>(std::min(std::abs(static_cast<double>(by)), 1e4));
            };
            for (int i = 0; i < steps(dx); ++i) near.pan(dx > 0 ? 1 : -1, 0);
            for (int i = 0; i < steps(dy); ++i) near.pan(0, dy > 0 ? 1 : -1);
            EXPECT_EQ(far.ImageRect(), near.ImageRect());
        }
    }
}

TEST(Viewport, scrolls_to_a_point_on_the_axes_that_overflow) {
    // Sizes that tell x from y, halves that are no whole numbers, a zoom of 0.5.
    for (const bool wide : {false, true}) {
        for (const bool tall : {false, true}) {
            Viewport view = with_picture(wide ? 2001 : 301, tall ? 1501 : 203, 2700, 1900);
            for (int i = 0; i < 7; ++i) view.ZoomOut();
            view.SetClientSize(400, 300);
            ASSERT_EQ(view.overflow_x(), wide);
            ASSERT_EQ(view.overflow_y(), tall);
            const WindowPoint before = view.anchor();
            view.ScrollTo({57, 33});
            const auto place = [&](int half, int first) {
                return static_cast<std::int32_t>((half - first) * view.zoom());
            };
            const bool movesX = wide || !tall;
            EXPECT_EQ(view.anchor().x, movesX ? place(wide ? 1000 : 150, 57) : before.x);
            EXPECT_EQ(view.anchor().y, tall ? place(750, 33) : before.y);
        }
    }
}

TEST(Viewport, keeps_the_point_under_the_pointer_when_zooming_at_it) {
    Viewport view = with_picture(2000, 1500, 800, 600);
    view.ActialSize();
    for (const WindowPoint at : {WindowPoint{400, 300}, {100, 80}, {700, 520}}) {
        for (const std::int32_t steps : {5, 3, -4, 2}) {
            const ImagePoint before = view.WindowToImage(view.zoom(), at);
            view.zoom_at(steps, at);
            const ImagePoint after = view.WindowToImage(view.zoom(), at);
            EXPECT_NEAR(after.x, before.x, 2);
            EXPECT_NEAR(after.y, before.y, 2);
        }
    }
    // Zooming out at a corner may not uncover background: the picture stays over the whole window.
    view.zoom_at(3, {0, 0});
    view.zoom_at(-3, {799, 599});
    const WindowRect rect = view.ImageRect();
    EXPECT_LT(rect.x, 1);
    EXPECT_LT(rect.y, 1);
    EXPECT_GT(rect.x + rect.width, 800);
    EXPECT_GT(rect.y + rect.height, 600);
}

}  // namespace
}  // namespace pixvane::test
