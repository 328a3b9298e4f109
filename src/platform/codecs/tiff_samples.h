// TIFF pictures whose samples are read as they are stored, so that straight alpha stays exact.
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "core/pixel_buffer.h"
#include "platform/codecs/tiff_handle.h"

namespace pixvane::codecs {

struct TiffSamples {
    std::size_t perPixel = 0;
    std::size_t colors = 0;  ///< 1 or 3, at the front
    std::size_t alpha = 0;   ///< index of the alpha sample; 0 if there is none
    bool premultiplied = false;
    bool whiteIsZero = false;
    bool planes = false;    ///< each sample in a plane of its own
    std::size_t bytes = 1;  ///< of a sample, 1 or 2
};

/// How the current page's samples lie, if they are 8 or 16 bits of grey or RGB; nothing for other kinds.
std::optional<TiffSamples> plain_tiff_samples(const TiffHandle& tiff);

/// Fills the target, which has the page's size. False if any of the data can't be had.
bool decode_tiff_samples(const TiffHandle& tiff, const TiffSamples& samples, PixelBuffer target);

}  // namespace pixvane::codecs
