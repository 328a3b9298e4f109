// Pictures on a canvas.
// SPDX-License-Identifier: MIT
#include "core/scaling/scaled_picture.h"
#include "draw/canvas.h"
#include "draw/rotated_picture.h"

namespace pixvane {

void Canvas::picture(ConstPixelBuffer picture, PixelRect area) {
    draw_scaled(target_, picture, area, {Ground::Kind::Target, 0}, rasterizer_.scratch.scaling);
}

void Canvas::rotated_picture(ConstPixelBuffer picture, DrawPoint center, double scale, double degrees) {
    draw_rotated(target_, picture, center, scale, degrees, rasterizer_.scratch.rotation);
}

}  // namespace pixvane
