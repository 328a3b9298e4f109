// The adjustments that choose a tone by the mean of the channels.
// SPDX-License-Identifier: MIT
#include <cstddef>

#include "filters/adjust/adjust.h"

namespace pixvane::filters {
namespace {

std::uint32_t to_channel(double value) { return static_cast<std::uint32_t>(value); }

}  // namespace

MeanPalette hue_palette(std::int32_t red, std::int32_t green, std::int32_t blue) {
    MeanPalette palette;
    const std::int32_t mean = (red + green + blue) / 3;
    // From black up to the colour, which stands at its own mean; and from there towards white. Both ramps
    // have an entry at the mean, the second one counts.
    for (std::int32_t i = 0; i < mean; ++i) {
        const double t = i * (1.0 / mean);
        palette.pixels[static_cast<std::size_t>(i)] =
            make_pixel(0xFF, to_channel(red * t), to_channel(green * t), to_channel(blue * t));
    }
    for (std::int32_t k = 0; k <= 255 - mean; ++k) {
        const double s = k * (1.0 / (256 - mean));
        const auto lightened = [=](std::int32_t channel) {
            return to_channel((1.0 - s) * channel + s * 255.0);
        };
        palette.pixels[static_cast<std::size_t>(mean + k)] =
            make_pixel(0xFF, lightened(red), lightened(green), lightened(blue));
    }
    return palette;
}

MeanPalette bw_levels_palette(std::int32_t levels) {
    MeanPalette palette;
    const double bandWidth = 255.0 / levels;
    const double greyStep = 255.0 / (levels - 1);
    const auto bound = [=](std::int32_t k) { return static_cast<std::int32_t>(k * bandWidth); };
    // The bands follow each other without gaps from 0 on, but the last one ends at 255 or, by truncation,
    // at 254: a mean that none of them holds is kept.
    for (std::int32_t k = 0; k < levels; ++k) {
        const std::uint32_t grey = to_channel(k * greyStep) & 0xFF;
        for (std::int32_t mean = bound(k); mean < bound(k + 1); ++mean)
            palette.pixels[static_cast<std::size_t>(mean)] = make_pixel(0xFF, grey, grey, grey);
    }
    palette.keptFrom = bound(levels);
    return palette;
}

void hue(ConstPixelBuffer source, PixelBuffer target, std::int32_t red, std::int32_t green,
         std::int32_t blue) {
    apply_mean_palette(source, target, hue_palette(red, green, blue));
}

void bw_levels(ConstPixelBuffer source, PixelBuffer target, std::int32_t levels) {
    apply_mean_palette(source, target, bw_levels_palette(levels));
}

}  // namespace pixvane::filters
