// The fast ways to a median, for median() to choose from.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/pixel_buffer.h"

namespace pixvane::filters {

constexpr std::int32_t kLargestNetwork = 5;

/// Histograms have the values of a channel in 16 segments of 16, and lists of 16 counts: of the segments, and
/// of the values in each.
constexpr std::size_t kEntries = 16;
constexpr std::size_t kSegments = 16;
constexpr std::size_t kChannels = 3;

/// median() for radius 1..kLargestNetwork.
void median_by_networks(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t first,
                        std::int32_t last);
/// median(); false if there is no memory for it, or no vector unit.
bool median_by_histograms(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius,
                          std::int32_t first, std::int32_t last);

}  // namespace pixvane::filters
