// A sheet of every pen and brush.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/pixel_buffer.h"
#include "draw/rasterizer.h"

namespace pixvane {

constexpr std::int32_t kSheetWidth = 1240;
constexpr std::int32_t kSheetHeight = 1410;

void draw_sheet(PixelBuffer target, Rasterizer& rasterizer);

}  // namespace pixvane
