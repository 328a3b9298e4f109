// Text of a canvas.
// SPDX-License-Identifier: MIT
#include "draw/canvas.h"
#include "draw/coverage.h"
#include "draw/tiles.h"

namespace pixvane {

void Canvas::text(std::string_view text, const Font& font, std::int32_t x, std::int32_t y, Pixel color) {
    for_each_tile({0, 0, target_.width, target_.height}, [&](PixelRect tile) {
        blend_mask(target_, rasterizer_.text(text, font, x, y, tile), Paint(color), rasterizer_.scratch);
    });
}

}  // namespace pixvane
