// A palette for a picture, and the picture in its colours.
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "core/pixel_buffer.h"

namespace pixvane::codecs {

/// Pixels with less alpha have no colour in a picture with a palette.
constexpr std::uint32_t kLeastVisibleAlpha = 128;

struct QuantizedPicture {
    std::vector<Pixel> palette;          ///< opaque colours, 1 to 256 with the transparent entry
    std::int32_t transparentIndex = -1;  ///< -1 if every pixel is visible
};

/// At most 256 colours, the transparent one included: the picture's own if it has no more, else a palette
/// made for it and the rounding errors diffused to the neighbours. `indices` has room for every pixel.
QuantizedPicture quantize(ConstPixelBuffer picture, std::uint8_t* indices);

}  // namespace pixvane::codecs
