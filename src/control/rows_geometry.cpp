// The table's rows of what changes the size or orientation of the picture, or its whole canvas.
// SPDX-License-Identifier: MIT
#include <cmath>

#include "control/kernel_edits.h"
#include "control/member_table.h"
#include "core/compose.h"
#include "core/integer_math.h"
#include "core/scaling/scale.h"
#include "filters/geometry/geometry.h"
#include "filters/geometry/gradient_border.h"

namespace pixvane {
namespace {

constexpr double kCopy = 0.4;  // nanoseconds a pixel, an estimate for the division among threads

void clear_image(ImageStore& store) {
    const Pixel background = store.BitmapBackColor;
    edit_whole(store, [=](auto, auto target) { fill(target, background); });
}

void set_new_size(ImageStore& store, std::int32_t width, std::int32_t height) {
    const Pixel background = store.BitmapBackColor;
    edit_canvas(store, width, height,
                [=](auto source, auto target) { place(target, source, 0, 0, background); });
}

/// Only macros do this. Points of a gesture lie on a picture that is no more.
void resize(CPixvane& control, std::int32_t width, std::int32_t height) {
    set_new_size(control.store(), width, height);
    if (control.PaintStatus() >= 1) control.mouse().ResetTools();
}

void rotate_flip(ImageStore& store, std::int32_t type) {
    if (type < 0 || type > 7) return;
    const bool quarterTurn = type % 2 != 0;
    const std::int32_t width = quarterTurn ? store.height() : store.width();
    const std::int32_t height = quarterTurn ? store.width() : store.height();
    edit_canvas(store, width, height,
                [=](auto source, auto target) { filters::rotate_flip(source, target, type); });
}

void add_simple_border(ImageStore& store, std::int32_t width, Color color) {
    if (width < 1 || store.is_empty()) return;
    const std::int64_t both = 2 * std::int64_t{width};
    edit_canvas(store, store.width() + both, store.height() + both,
                [=](auto source, auto target) { place(target, source, width, width, to_pixel(color)); });
}

void add_gradient_border(ImageStore& store, std::int32_t width, Color color1, Color color2,
                         std::int32_t style) {
    // The sign stays: there is no mode below 0, and a border without one stays transparent.
    const std::int32_t mode = style % 4;
    if (width < 1 || store.is_empty()) return;
    const std::int64_t newWidth = store.width() + 2 * std::int64_t{width};
    const std::int64_t newHeight = store.height() + 2 * std::int64_t{width};
    edit_canvas_area(store, newWidth, newHeight, kCopy,
                     [=](auto source, auto target, std::int32_t first, std::int32_t last) {
                         if (mode < 0) {
                             place(target.rows(first, last), source, width, width - first, 0);
                             return;
                         }
                         const LinearGradient gradient{to_pixel(color1), to_pixel(color2), GradientMode{mode},
                                                       target.width, target.height};
                         filters::place_on_gradient_rows(source, target, width, width, gradient, first, last);
                     });
}

void scale_image(ImageStore& store, double scaleX, double scaleY) {
    if (!std::isfinite(scaleX) || !std::isfinite(scaleY)) return;
    const std::int32_t width = trunc_to_int32(store.width() * scaleX);
    const std::int32_t height = trunc_to_int32(store.height() * scaleY);
    if (!is_picture_size(width, height)) return;
    const Scaling scaling(store.width(), store.height(), width, height);
    edit_canvas_area(store, width, height, scaling.nanoseconds_per_pixel(),
                     [&](auto source, auto target, std::int32_t first, std::int32_t last) {
                         scale_rows(source, target, scaling, first, last);
                     });
}

}  // namespace

std::vector<Row> geometry_rows() {
    const char* canvas = "Canvas";
    const Range sides{1, kMaxSide};
    // Beyond these every picture would lose a side or become too large; where it does so within, depends on
    // it.
    const Range factors{0.00001, kMaxSide};
    return {
        command("ClearImage", 150, clear_image, canvas, "Fills the picture with BitmapBackColor."),
        recorded_only(command("SetNewSize", 63, set_new_size, canvas,
                              "Cuts or enlarges the canvas on the right and at the bottom, without scaling.",
                              {{.name = "Width", .slider = {1, 8000}, .initial = 800, .accepts = sides},
                               {.name = "Height", .slider = {1, 8000}, .initial = 600, .accepts = sides}})),
        step("Resize", 149, resize, {{.name = "Width"}, {.name = "Height"}}),
        command("RotateFlip", 37, rotate_flip, canvas,
                "Turns clockwise by nType quarter turns; from 4 on, then flips left to right.",
                {{.name = "nType", .slider = {0, 7}, .initial = 1, .accepts = {0, 7}}}),
        command("ScaleImage", 63, scale_image, canvas,
                "Scales by a factor for each side; below 0.5 by the mean of what a pixel covers.",
                {{.name = "ScaleX", .slider = {0.05, 4}, .initial = 0.5, .accepts = factors},
                 {.name = "ScaleY", .slider = {0.05, 4}, .initial = 0.5, .accepts = factors}}),
        command("AddSimpleBorder", 138, add_simple_border, canvas, "Adds a border of one colour.",
                {{.name = "Width", .slider = {1, 200}, .initial = 16, .accepts = {1, kMaxSide}},
                 {.name = "Color", .initial = 0xFFFFFF}}),
        command("AddGradientBorder", 139, add_gradient_border, canvas,
                "Adds a border of a gradient: Style 0 to the right, 1 down, 2 and 3 along the diagonals.",
                {{.name = "Width", .slider = {1, 200}, .initial = 16, .accepts = {1, kMaxSide}},
                 {.name = "Color1", .initial = 0xFFFFFF},
                 {.name = "Color2", .initial = 0x804000},
                 {.name = "Style", .slider = {0, 3}, .initial = 2}}),
    };
}

}  // namespace pixvane
