// A palette for a picture, and the picture in its colours.
// SPDX-License-Identifier: MIT
#include "platform/codecs/quantize.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "platform/codecs/color_boxes.h"

namespace pixvane::codecs {
namespace {

bool visible(Pixel p) { return alpha_of(p) >= kLeastVisibleAlpha; }

bool has_invisible(ConstPixelBuffer picture) {
    return !std::all_of(picture.data, picture.data + picture.count(), visible);
}

/// The colours of a picture that has few, each with its index.
class FewColors {
public:
    explicit FewColors(std::size_t most) : most_(most) { slots_.fill({0, 0}); }

    /// The index of a colour, -1 if there is no room for it.
    std::int32_t index_of(Pixel opaque) {
        if (opaque == lastColor_) return lastIndex_;
        std::size_t slot = (opaque * 2654435761u) >> 22;
        // An opaque colour is never 0, which marks a free slot.
        while (slots_[slot].color != 0 && slots_[slot].color != opaque) slot = (slot + 1) % slots_.size();
        if (slots_[slot].color == 0) {
            if (colors_.size() == most_) return -1;
            slots_[slot] = {opaque, static_cast<std::int32_t>(colors_.size())};
            colors_.push_back(opaque);
        }
        lastColor_ = opaque;
        return lastIndex_ = slots_[slot].index;
    }
    std::vector<Pixel>& colors() { return colors_; }

private:
    struct Slot {
        Pixel color;
        std::int32_t index;
    };
    std::size_t most_;
    std::array<Slot, 1024> slots_;
    std::vector<Pixel> colors_;
    Pixel lastColor_ = 0;
    std::int32_t lastIndex_ = -1;
};

/// The nearest entry of a palette, remembered for each small cube of colours.
class NearestColor {
public:
    explicit NearestColor(const std::vector<Pixel>& palette) : known_(kCubes, kUnknown) {
        for (const Pixel p : palette) {
            reds_.push_back(static_cast<std::int32_t>(red_of(p)));
            greens_.push_back(static_cast<std::int32_t>(green_of(p)));
            blues_.push_back(static_cast<std::int32_t>(blue_of(p)));
        }
    }

    std::uint8_t operator()(std::int32_t r, std::int32_t g, std::int32_t b) {
        std::uint16_t& known =
            known_[static_cast<std::size_t>(r >> kShift << 12 | g >> kShift << 6 | b >> kShift)];
        if (known == kUnknown) {
            constexpr std::int32_t kMiddle = 1 << kShift >> 1;
            constexpr std::int32_t kCorner = ~((1 << kShift) - 1);
            known = search((r & kCorner) + kMiddle, (g & kCorner) + kMiddle, (b & kCorner) + kMiddle);
        }
        return static_cast<std::uint8_t>(known);
    }

private:
    static constexpr int kShift = 2;
    static constexpr std::size_t kCubes = std::size_t{1} << 18;
    static constexpr std::uint16_t kUnknown = 0xFFFF;

    std::uint16_t search(std::int32_t r, std::int32_t g, std::int32_t b) const {
        std::int32_t least = std::numeric_limits<std::int32_t>::max();
        std::size_t best = 0;
        for (std::size_t i = 0; i < reds_.size(); ++i) {
            const std::int32_t dr = reds_[i] - r;
            const std::int32_t dg = greens_[i] - g;
            const std::int32_t db = blues_[i] - b;
            const std::int32_t distance = dr * dr + dg * dg + db * db;
            if (distance >= least) continue;
            least = distance;
            best = i;
        }
        return static_cast<std::uint16_t>(best);
    }

    std::vector<std::int32_t> reds_;
    std::vector<std::int32_t> greens_;
    std::vector<std::int32_t> blues_;
    std::vector<std::uint16_t> known_;
};

/// Error diffusion after Floyd and Steinberg; rows run to and fro, so that no direction shows.
class Ditherer {
public:
    Ditherer(const QuantizedPicture& quantized, std::int32_t width)
        : quantized_(quantized),
          nearest_(quantized.palette),
          width_(width),
          here_(static_cast<std::size_t>(width) + 2),
          below_(static_cast<std::size_t>(width) + 2) {}

    void row(const Pixel* pixels, std::uint8_t* indices, bool leftward) {
        const std::int32_t step = leftward ? -1 : 1;
        std::int32_t x = leftward ? width_ - 1 : 0;
        for (std::int32_t i = 0; i < width_; ++i, x += step) {
            if (!visible(pixels[x])) {
                indices[x] = static_cast<std::uint8_t>(quantized_.transparentIndex);
                continue;
            }
            const Errors& carried = here_[static_cast<std::size_t>(x) + 1];
            const Errors wanted{shade(red_of(pixels[x]), carried[0]), shade(green_of(pixels[x]), carried[1]),
                                shade(blue_of(pixels[x]), carried[2])};
            indices[x] = nearest_(wanted[0], wanted[1], wanted[2]);
            const Pixel chosen = quantized_.palette[indices[x]];
            spread(static_cast<std::size_t>(x) + 1, step,
                   {wanted[0] - static_cast<std::int32_t>(red_of(chosen)),
                    wanted[1] - static_cast<std::int32_t>(green_of(chosen)),
                    wanted[2] - static_cast<std::int32_t>(blue_of(chosen))});
        }
        std::swap(here_, below_);
        std::fill(below_.begin(), below_.end(), Errors{});
    }

private:
    using Errors = std::array<std::int32_t, 3>;  // sixteenths when carried

    static std::int32_t shade(std::uint32_t channel, std::int32_t carried) {
        return std::clamp(static_cast<std::int32_t>(channel) + ((carried + 8) >> 4), 0, 255);
    }

    void spread(std::size_t at, std::int32_t step, const Errors& error) {
        const std::size_t next = at + static_cast<std::size_t>(step);
        const std::size_t back = at - static_cast<std::size_t>(step);
        for (std::size_t c = 0; c < 3; ++c) {
            here_[next][c] += error[c] * 7;
            below_[back][c] += error[c] * 3;
            below_[at][c] += error[c] * 5;
            below_[next][c] += error[c];
        }
    }

    const QuantizedPicture& quantized_;
    NearestColor nearest_;
    std::int32_t width_;
    std::vector<Errors> here_;
    std::vector<Errors> below_;
};

/// False if the picture has more colours than fit.
bool keep_colors(ConstPixelBuffer picture, std::size_t most, std::uint8_t* indices,
                 QuantizedPicture& result) {
    FewColors few(most);
    for (std::size_t i = 0; i < picture.count(); ++i) {
        const std::int32_t index = visible(picture.data[i]) ? few.index_of(picture.data[i] | kOpaque)
                                                            : static_cast<std::int32_t>(most);
        if (index < 0) return false;
        indices[i] = static_cast<std::uint8_t>(index);
    }
    result.palette = std::move(few.colors());
    if (result.transparentIndex < 0) return true;
    // The transparent entry stands behind the colours; until now nobody knew how many they are.
    result.transparentIndex = static_cast<std::int32_t>(result.palette.size());
    for (std::size_t i = 0; i < picture.count(); ++i)
        if (!visible(picture.data[i])) indices[i] = static_cast<std::uint8_t>(result.transparentIndex);
    result.palette.push_back(kOpaque);
    return true;
}

}  // namespace

QuantizedPicture quantize(ConstPixelBuffer picture, std::uint8_t* indices) {
    QuantizedPicture result;
    const bool transparent = has_invisible(picture);
    const std::size_t most = transparent ? 255 : 256;
    if (transparent) result.transparentIndex = 255;
    if (keep_colors(picture, most, indices, result)) return result;

    result.palette = choose_palette(ColorHistogram(picture, kLeastVisibleAlpha), most);
    result.transparentIndex = transparent ? static_cast<std::int32_t>(result.palette.size()) : -1;
    Ditherer ditherer(result, picture.width);
    for (std::int32_t y = 0; y < picture.height; ++y)
        ditherer.row(picture.row(y), indices + static_cast<std::size_t>(picture.row(y) - picture.data),
                     y % 2 != 0);
    if (transparent) result.palette.push_back(kOpaque);
    return result;
}

}  // namespace pixvane::codecs
