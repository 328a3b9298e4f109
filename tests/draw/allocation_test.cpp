// A canvas in steady state takes no memory.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "draw/canvas.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "support/allocations.h"
#include "support/pictures.h"

namespace pixvane::test {
namespace {

TEST(CanvasMemory, is_taken_once) {
    const auto rasterizer = make_cairo_rasterizer();
    Picture picture(200, 150, 0xFF808080);
    const PixelPoint points[] = {{3, 4}, {190, 20}, {70, 140}, {-500, 60}};
    BrushSettings hatch, gradient;
    hatch.style = 2;
    gradient.style = 1;
    const auto paint = [&] {
        for (const bool smooth : {false, true}) {
            Canvas canvas(picture.view(), *rasterizer, smooth);
            for (std::int32_t style = 0; style < 5; ++style)
                for (const float width : {1.f, 3.f}) {
                    const PenSettings pen{width, style, 0x80204080};
                    canvas.line(pen, points[0], points[1]);
                    canvas.polygon(pen, points);
                    canvas.ellipse(pen, {5, 6, 100, 80});
                    canvas.rectangle(pen, {5, 6, 100, 80});
                    canvas.spline(pen, points, true);
                }
            canvas.fill_rectangle(hatch, {0, 0, 200, 150});
            canvas.fill_polygon(gradient, points);
            canvas.text("Details", {.family = "DejaVu Sans", .size = 11}, 1, 130, 0xFF90EE90);
        }
    };
    paint();
    const int before = new_calls();
    EXPECT_GT(before, 0);
    for (int frame = 0; frame < 5; ++frame) paint();
    EXPECT_EQ(new_calls(), before);
}

}  // namespace
}  // namespace pixvane::test
