// Whether pixels are opaque.
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "core/pixel_buffer.h"

namespace pixvane::codecs {

inline bool is_opaque(const Pixel* pixels, std::size_t count) {
    Pixel all = kOpaque;
    for (std::size_t i = 0; i < count; ++i) all &= pixels[i];
    return all >= kOpaque;
}

/// Stops at the first stretch that is not.
inline bool is_opaque(ConstPixelBuffer picture) {
    constexpr std::size_t kStretch = 4096;
    for (std::size_t i = 0; i < picture.count(); i += kStretch)
        if (!is_opaque(picture.data + i, std::min(kStretch, picture.count() - i))) return false;
    return true;
}

}  // namespace pixvane::codecs
