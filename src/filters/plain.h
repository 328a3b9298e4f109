// The plain versions of the kernels, straight from their formulas: what the fast versions must equal to the
// bit. They run where there is no vector unit, and in tests.
// SPDX-License-Identifier: MIT
#pragma once

#include "filters/adjust/adjust.h"
#include "filters/adjust/histogram.h"
#include "filters/geometry/geometry.h"

namespace pixvane::filters::plain {

void apply_tables(ConstPixelBuffer source, PixelBuffer target, const ChannelTables& tables);
void brightness(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
                std::int32_t blue);
void invert(ConstPixelBuffer source, PixelBuffer target);
void desaturate(ConstPixelBuffer source, PixelBuffer target);
void saturate(ConstPixelBuffer source, PixelBuffer target, std::int32_t percent);
void monochrome(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, Pixel above, Pixel below);
void apply_mean_palette(ConstPixelBuffer source, PixelBuffer target, const MeanPalette& palette);
void noise(ConstPixelBuffer source, PixelBuffer target, bool sameForAll, std::int32_t amount,
           RandomGenerator& random);
ChannelHistograms channel_histograms(ConstPixelBuffer source);
Histogram channel_histogram(ConstPixelBuffer source, Channel channel);
Histogram luminance_histogram(ConstPixelBuffer source);
ChannelRanges channel_ranges(ConstPixelBuffer source);
void rotate_flip_rows(ConstPixelBuffer source, PixelBuffer target, std::int32_t type, std::int32_t first,
                      std::int32_t last);

}  // namespace pixvane::filters::plain
