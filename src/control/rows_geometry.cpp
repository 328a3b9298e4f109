// The table's rows of what changes the size or orientation of the picture, or its whole canvas.
// SPDX-License-Identifier: MIT
#include "control/kernel_edits.h"
#include "control/member_table.h"
#include "core/compose.h"
#include "filters/geometry.h"

namespace pixvane {
namespace {

void clear_image(ImageStore& store) {
    const Pixel background = store.BitmapBackColor;
    edit_whole(store, [=](auto, auto target) { fill(target, background); });
}

void set_new_size(ImageStore& store, std::int32_t width, std::int32_t height) {
    const Pixel background = store.BitmapBackColor;
    edit_canvas(store, width, height,
                [=](auto source, auto target) { place(target, source, 0, 0, background); });
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

}  // namespace

std::vector<Row> geometry_rows() {
    const char* canvas = "Canvas";
    const Range sides{1, kMaxSide};
    return {
        command("ClearImage", 150, clear_image, canvas, "Fills the picture with BitmapBackColor."),
        command("SetNewSize", 63, set_new_size, canvas,
                "Cuts or enlarges the canvas on the right and at the bottom, without scaling.",
                {{.name = "Width", .slider = {1, 8000}, .initial = 800, .accepts = sides},
                 {.name = "Height", .slider = {1, 8000}, .initial = 600, .accepts = sides}}),
        command("RotateFlip", 37, rotate_flip, canvas,
                "Turns clockwise by nType quarter turns; from 4 on, then flips left to right.",
                {{.name = "nType", .slider = {0, 7}, .initial = 1, .accepts = {0, 7}}}),
        command("AddSimpleBorder", 138, add_simple_border, canvas, "Adds a border of one colour.",
                {{.name = "Width", .slider = {1, 200}, .initial = 16, .accepts = {1, kMaxSide}},
                 {.name = "Color", .initial = 0xFFFFFF}}),
    };
}

}  // namespace pixvane
