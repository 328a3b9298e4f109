// The control's own cursors, drawn by characters.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/geometry.h"
#include "core/pixel_buffer.h"

namespace pixvane {

constexpr std::int32_t kCrossCursor = 202;
constexpr std::int32_t kRingCursor = 206;
/// Its paint reaches kBucketTip beyond the hot spot, where the fill starts.
constexpr std::int32_t kBucketCursor = 208;
constexpr WindowPoint kBucketTip{11, 22};

struct CursorImage {
    std::int32_t width;
    std::int32_t height;
    WindowPoint hotSpot;
    std::vector<Pixel> pixels;  ///< straight alpha, rows top first
};

/// Nothing for the arrow and for numbers that name no cursor.
std::optional<CursorImage> cursor_image(std::int32_t cursor);

}  // namespace pixvane
