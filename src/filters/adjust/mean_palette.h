// Adjustments that choose a pixel by the mean of the three channels.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

/// An opaque pixel for each mean trunc((R + G + B) / 3) below `keptFrom`; pixels of other means are copied,
/// alpha included.
struct MeanPalette {
    std::array<Pixel, 256> pixels{};
    std::int32_t keptFrom = 256;
};

/// Source and target have the same size and may be the same memory.
void apply_mean_palette(ConstPixelBuffer source, PixelBuffer target, const MeanPalette& palette);

// The palettes of the adjustments of the same names in filters/adjust/adjust.h.
MeanPalette hue_palette(std::int32_t red, std::int32_t green, std::int32_t blue);
MeanPalette bw_levels_palette(std::int32_t levels);

}  // namespace pixvane::filters
