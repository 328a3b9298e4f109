// The plain versions of the effects: see plain.h.
// SPDX-License-Identifier: MIT
#pragma once

#include "filters/effects/effects.h"

namespace pixvane::filters::plain {

void minimal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last);
void maximal(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
             std::int32_t last);
void median(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
            std::int32_t last);
void anti_noise(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                std::int32_t last);
void diffuse(ConstPixelBuffer source, PixelBuffer target, std::int32_t reach, const RandomGenerator& start,
             std::int32_t first, std::int32_t last);
void mosaic(ConstPixelBuffer source, PixelBuffer target, TileColor color, std::int32_t half,
            std::int32_t first, std::int32_t last);
void textile(ConstPixelBuffer source, PixelBuffer target, std::int32_t opacity, RandomGenerator& random);
void focal_bw(ConstPixelBuffer source, PixelBuffer target, const Focus& focus, std::int32_t first,
              std::int32_t last);
void soft_focus_weights(PixelBuffer weights, const Focus& focus, std::int32_t first, std::int32_t last);
bool soft_focus(ConstPixelBuffer source, PixelBuffer target, ConstPixelBuffer weights, const Focus& focus,
                std::int32_t first, std::int32_t last);

}  // namespace pixvane::filters::plain
