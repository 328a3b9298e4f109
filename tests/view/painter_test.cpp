// Frames against pictures that the tests make, pixel by pixel.
// SPDX-License-Identifier: MIT
#include "view/painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "core/compose.h"
#include "core/parallel_rows.h"
#include "core/scaling/scaled_picture.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "support/allocations.h"
#include "support/instruction_sets.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

constexpr Pixel kBackground = 0xFF10203F;
constexpr Pixel kBorder = 0xFFD0A010;

class Painters : public ::testing::Test {
protected:
    void show(const Picture& picture, std::int32_t clientWidth, std::int32_t clientHeight) {
        picture_ = picture;
        ++version_;
        view.SetClientSize(clientWidth, clientHeight);
        view.set_image_size(picture.width, picture.height);
        view.lay_out_document();
    }
    FrameContent content() {
        FrameContent c{{std::as_const(picture_).view(), version_}, view};
        c.background = kBackground;
        c.frameColor = kBorder;
        return c;
    }
    Picture frame(const FrameContent& content) {
        EXPECT_TRUE(painter.compose(content, [](Canvas&) {}));
        return Picture(painter.frame());
    }
    Picture frame() { return frame(content()); }
    Picture frame_with_overview() {
        panel.visible = true;
        panel.update(view);
        FrameContent c = content();
        c.overview = &panel;
        return frame(c);
    }

    /// Background, the picture as the plain version scales it, its border.
    Picture model(bool border = true) {
        const WindowRect r = view.ImageRect();
        Picture scaled(std::max(r.width, 0), std::max(r.height, 0));
        if (!scaled.pixels.empty()) {
            const PlainScope plain;
            draw_scaled(scaled.view(), std::as_const(picture_).view(), {0, 0, r.width, r.height}, {}, memory,
                        true);
        }
        const WindowRect frame{r.x - 2, r.y - 2, r.width + 4, r.height + 4};
        return picture_of(view.client_width(), view.client_height(), [&](std::int32_t x, std::int32_t y) {
            if (r.contains({x, y})) return source_over(kBackground, scaled.at(x - r.x, y - r.y));
            return border && frame.contains({x, y}) ? kBorder : kBackground;
        });
    }

    Viewport view;
    ScrollWindow panel;
    std::unique_ptr<Rasterizer> rasterizer = make_cairo_rasterizer();
    Painter painter{*rasterizer};

    Picture picture_;
    std::uint64_t version_ = 0;
    Scaling memory;
};

TEST_F(Painters, show_background_picture_and_border) {
    TestRandom random(5);
    const auto some = [&](std::int32_t limit) { return random.between(0, limit - 1); };
    for (std::uint64_t seed = 0; seed < 150; ++seed) {
        const std::int32_t width = 1 + some(300), height = 1 + some(200);
        show(seed % 3 == 0 ? random_picture(width, height, seed) : random_opaque_picture(width, height, seed),
             16 + some(260), 16 + some(160));
        for (std::int32_t i = some(12); i > 0; --i) seed % 2 == 0 ? view.ZoomIn() : view.ZoomOut();
        // Zooms that are not quite 1 are shown as 1; here they would be shown as they are.
        if (seed % 5 == 0) view.ActialSize();
        view.UpdateOverflow();
        view.pan(some(61) - 30, some(61) - 30);
        FrameContent c = content();
        c.showBorder = seed % 4 != 0;
        ASSERT_TRUE(same_pixels(model(c.showBorder), frame(c))) << "seed " << seed << " zoom " << view.zoom();
    }
}

TEST_F(Painters, show_no_picture_where_there_is_none_or_no_room) {
    show(random_opaque_picture(40, 40, 1), 15, 60);
    EXPECT_EQ(frame(), Picture(15, 60, kBackground));
    show(random_opaque_picture(40, 40, 1), 60, 15);
    EXPECT_EQ(frame(), Picture(60, 15, kBackground));
    show(random_opaque_picture(40, 40, 1), 16, 16);
    EXPECT_NE(frame(), Picture(16, 16, kBackground));
    show(Picture(), 50, 40);
    EXPECT_EQ(frame(), Picture(50, 40, kBackground));
    view.SetClientSize(0, 40);
    EXPECT_FALSE(painter.compose(content(), [](Canvas&) {}));
    EXPECT_EQ(painter.frame().width, 50) << "the last frame stays";
}

TEST_F(Painters, show_a_picture_as_it_is_after_steps_that_cancel_out) {
    show(random_opaque_picture(1001, 703, 2), 2000, 1500);
    const Picture before = frame();
    for (int steps = 1; steps < 15; ++steps) {
        for (int i = 0; i < steps; ++i) view.ZoomOut();
        for (int i = 0; i < steps; ++i) view.ZoomIn();
        ASSERT_NEAR(view.zoom(), 1.0, 1e-12);
        ASSERT_EQ(before, frame()) << steps;
    }
}

TEST_F(Painters, draw_the_tool_over_the_picture_and_under_the_panels) {
    show(random_opaque_picture(400, 300, 3), 200, 220);
    view.ActialSize();
    panel.visible = true;
    panel.update(view);
    FrameContent c = content();
    c.overview = &panel;
    c.busy = true;
    c.smooth = true;
    ASSERT_TRUE(painter.compose(c, [](Canvas& canvas) {
        EXPECT_EQ(canvas.target().width, 200);
        fill(canvas.target(), 0xFF00FF00);
    }));
    const ConstPixelBuffer made = painter.frame();
    EXPECT_EQ(made.row(100)[5], 0xFF00FF00);
    EXPECT_NE(made.row(10)[5], 0xFF00FF00) << "the banner";
    const WindowRect box = panel.layout().closeBox;
    EXPECT_EQ(made.row(box.y + 1)[box.x + 2], 0xFF8B0000);
}

TEST_F(Painters, draw_the_overview_in_its_place) {
    for (const auto& [width, height] : {std::pair{900, 500}, std::pair{300, 800}, std::pair{20, 1900}}) {
        show(random_picture(width, height, 4), 300, 240);
        view.ActialSize();
        panel.color = 0x8C406080;
        const Picture plain = frame();
        const Picture shown = frame_with_overview();
        const ScrollWindowLayout& at = panel.layout();
        Picture thumbnail(at.thumbnail.width, at.thumbnail.height);
        draw_scaled(thumbnail.view(), std::as_const(picture_).view(),
                    {0, 0, thumbnail.width, thumbnail.height}, {}, memory, true);
        const WindowRect frame = panel.frame(), box = at.closeBox;
        const std::int32_t captionTop = at.thumbnail.y + at.thumbnail.height + 2;
        const auto on_ring = [](const WindowRect& r, std::int32_t x, std::int32_t y) {
            return r.contains({x, y}) &&
                   (x == r.x || y == r.y || x == r.x + r.width - 1 || y == r.y + r.height - 1);
        };
        int white = 0;
        for (const auto& [x, y] : places(shown.width, shown.height)) {
            const WindowPoint p{x, y};
            const Pixel pixel = shown.at(x, y);
            const Pixel ground = source_over(plain.at(x, y), panel.color);
            const bool corner = !at.body.contains(p) && !at.tab.contains(p);
            if (frame.width > 0 && on_ring(frame, x, y)) {
                ASSERT_EQ(pixel, 0xFFD3D3D3);
            } else if (at.thumbnail.contains(p)) {
                const Pixel small = thumbnail.at(x - at.thumbnail.x, y - at.thumbnail.y);
                const Pixel expected = source_over(plain.at(x, y), source_over(panel.color, small));
                for (int shift = 0; shift < 32; shift += 8)
                    ASSERT_NEAR(pixel >> shift & 0xFF, expected >> shift & 0xFF, 1);
            } else if (box.contains(p)) {
                const std::int32_t dx = x - box.x, dy = y - box.y;
                const bool cross = dx >= 3 && dx <= 6 && (dx == dy || dx + dy == 9);
                ASSERT_EQ(pixel, cross || on_ring(box, x, y) ? 0xFFD3D3D3 : 0xFF8B0000);
            } else if (at.body.contains(p) && y >= captionTop) {
                white += pixel == 0xFFFFFFFF ? 1 : 0;
            } else if (!corner) {
                ASSERT_EQ(pixel, ground) << x << ", " << y;
            } else {
                // Of the corners a part is covered, and nothing else is touched.
                ASSERT_TRUE(pixel == plain.at(x, y) || (pixel == ground && x >= at.tab.x && y >= at.body.y &&
                                                        x < at.body.x && y < at.body.y + at.body.height));
            }
        }
        EXPECT_GT(white, 60) << "the caption";
        EXPECT_EQ(shown.at(at.tab.x, at.body.y), plain.at(at.tab.x, at.body.y)) << "rounded";
        EXPECT_EQ(shown.at(at.body.x - 1, at.body.y),
                  source_over(plain.at(at.body.x - 1, at.body.y), panel.color));
    }
}

TEST_F(Painters, renew_the_overview_with_what_it_shows) {
    show(random_opaque_picture(900, 500, 4), 300, 240);
    view.ActialSize();
    const Picture first = frame_with_overview();
    // Other pixels under the same version can't be known of; under another they show.
    std::fill(picture_.pixels.begin(), picture_.pixels.end(), 0xFF00C000);
    const WindowRect at = panel.layout().thumbnail;
    EXPECT_EQ(frame_with_overview().at(at.x + 1, at.y + 1), first.at(at.x + 1, at.y + 1));
    ++version_;
    EXPECT_EQ(frame_with_overview().at(at.x + 1, at.y + 1), 0xFF00C000);
    const auto caption = [&] {
        const Picture made = frame_with_overview();
        const WindowRect body = panel.layout().body;
        std::vector<Pixel> rows;
        for (std::int32_t y = at.y + at.height + 2; y < body.y + body.height; ++y)
            rows.insert(rows.end(), made.view().row(y) + body.x, made.view().row(y) + body.x + body.width);
        return rows;
    };
    const auto at100 = caption();
    EXPECT_EQ(caption(), at100);
    view.ZoomIn();
    view.SetClientSize(300, 240);
    EXPECT_NE(caption(), at100);
}

TEST_F(Painters, tell_of_a_scan_and_its_files) {
    show(Picture(), 400, 120);
    const Picture band = picture_of(400, 120, [](std::int32_t, std::int32_t y) {
        const auto grey = static_cast<std::uint32_t>(0x78 + (0xFF - 0x78) * (y + 0.5) / 64 + 0.5);
        if (y < 64) return source_over(kBackground, make_pixel(0xC8, grey, grey, grey));
        return y < 66 ? 0xFFFFFFFF : kBackground;
    });
    FrameContent c = content();
    c.busy = true;
    const Picture scanning = frame(c);
    EXPECT_NE(scanning, band) << "Scanning...";

    const Picture preview = random_opaque_picture(200, 100, 6);
    const Picture tall = random_opaque_picture(50, 100, 7);
    for (const auto& [file, area, kilobytes] : {std::tuple{&preview, PixelRect{16, 16, 64, 32}, "2 Kb"},
                                                std::tuple{&tall, PixelRect{36, 8, 24, 48}, "1 Kb"}}) {
        Picture expected = band;
        Canvas canvas(expected.view(), *rasterizer, false);
        canvas.picture(file->view(), area);
        Font font;
        font.family = "Arial";
        font.size = 11;
        font.bold = true;
        canvas.text("...\\a file.jpg", font, 96, 8, 0xFF000000);
        font.bold = false;
        canvas.text(std::to_string(file->width) + "x" + std::to_string(file->height), font, 96, 24,
                    0xFF000000);
        canvas.text(kilobytes, font, 96, 40, 0xFF000000);
        const ScannedFile scanned{file->view(), "a file.jpg", file == &preview ? 3071u : 1023u};
        c.scanned = &scanned;
        EXPECT_TRUE(same_pixels(expected, frame(c)));
    }
    c.scanned = nullptr;
    EXPECT_EQ(frame(c), scanning);
}

TEST_F(Painters, tell_of_the_file_that_is_shown) {
    show(Picture(), 400, 120);
    const FileDetails details{"b.png", 640, 480};
    FrameContent c = content();
    c.details = &details;
    Picture expected(400, 120, kBackground);
    Font font;
    font.family = "Arial";
    font.size = 11;
    Canvas(expected.view(), *rasterizer, false).text("b.png  640x480", font, 1, 104, 0xFF90EE90);
    EXPECT_TRUE(same_pixels(expected, frame(c)));
}

TEST_F(Painters, take_memory_once) {
    const std::int32_t threads = worker_threads();
    set_worker_threads(1);
    const Picture picture = random_opaque_picture(1500, 1100, 8);
    const FileDetails details{"a file with a long name.png", 1500, 1100};
    for (const std::uint32_t alpha : {0xFFu, 0x80u}) {
        Picture shown = picture;
        for (Pixel& pixel : shown.pixels) pixel = (pixel & ~kOpaque) | alpha << 24;
        for (const int steps : {0, 3, -3, -7, -10, -20}) {
            show(shown, 500, 400);
            view.ActialSize();
            for (int i = 0; i < std::abs(steps); ++i) steps > 0 ? view.ZoomIn() : view.ZoomOut();
            const auto paint = [&](std::int32_t pan) {
                view.pan(pan, -pan);
                panel.visible = true;
                panel.update(view);
                FrameContent c = content();
                c.overview = &panel;
                c.busy = true;
                c.details = &details;
                painter.compose(c, [](Canvas&) {});
            };
            paint(0);
            paint(5);
            const int before = malloc_calls();
            EXPECT_GT(before, 0);
            for (std::int32_t pan = -3; pan < 3; ++pan) paint(pan);
            EXPECT_EQ(malloc_calls(), before) << "zoom " << view.zoom();
        }
    }
    set_worker_threads(threads);
}

TEST_F(Painters, preview_a_rotation_within_the_picture_s_place_or_filling_it) {
    show(Picture(120, 80, 0xFFC02010), 200, 160);
    const WindowRect place = view.ImageRect();
    FrameContent c = content();
    c.showBorder = false;
    c.pictureBackground = 0xFF0000FF;
    c.rotation.active = true;
    EXPECT_EQ(frame(c), model(false)) << "not turned";
    for (const double degrees : {-200.0, 17.0, 45.0, 90.0, 133.0}) {
        c.rotation = {true, degrees, false};
        const Picture small = frame(c);
        c.rotation.fit = true;
        const Picture fitted = frame(c);
        int shown = 0;
        for (const auto& [x, y] : places(200, 160)) {
            const bool inside = place.contains({x, y});
            if (small.at(x, y) != kBackground) {
                ASSERT_TRUE(inside) << degrees << ": " << x << ", " << y;
                ++shown;
            }
            // The outermost pixels may show what is below the smooth edge.
            const bool deep = place.contains({x - 1, y - 1}) && place.contains({x + 1, y + 1});
            if (!inside || deep) {
                ASSERT_EQ(fitted.at(x, y), inside ? 0xFFC02010 : kBackground)
                    << degrees << ": " << x << ", " << y;
            }
        }
        EXPECT_GT(shown, 120 * 80 / 4) << degrees;
        EXPECT_EQ(small.at(place.x + 60, place.y + 40), 0xFFC02010);
    }
}

}  // namespace
}  // namespace pixvane::test
