// Run-length compressed device-independent bitmaps.
// SPDX-License-Identifier: MIT
#include "platform/codecs/dib_rle.h"

#include <algorithm>

#include "platform/codecs/bytes.h"

namespace pixvane::codecs {
namespace {

class RleDecoder {
public:
    RleDecoder(ByteSpan data, std::uint32_t bitsPerPixel, bool topDown, const DibPalette& palette,
               PixelBuffer target)
        : rest_(data), nibbles_(bitsPerPixel == 4), topDown_(topDown), palette_(palette), target_(target) {}

    void run() {
        while (y_ < target_.height && rest_.size() >= 2) {
            const std::uint8_t count = rest_[0];
            const std::uint8_t value = rest_[1];
            rest_ = rest_.subspan(2);
            if (count != 0) {
                for (std::uint32_t i = 0; i < count; ++i) put(nibbles_ ? nibble(value, i) : value);
            } else if (value == kEndOfRow) {
                x_ = 0;
                ++y_;
            } else if (value == kMove) {
                if (rest_.size() < 2) return;
                x_ = std::min<std::int32_t>(x_ + rest_[0], target_.width);
                y_ += rest_[1];
                rest_ = rest_.subspan(2);
            } else if (value == kEndOfPicture || !literal(value)) {
                return;
            }
        }
    }

private:
    static constexpr std::uint8_t kEndOfRow = 0;
    static constexpr std::uint8_t kEndOfPicture = 1;
    static constexpr std::uint8_t kMove = 2;

    static std::uint8_t nibble(std::uint8_t byte, std::uint32_t index) {
        return index % 2 == 0 ? byte >> 4 : byte & 15;
    }

    void put(std::uint8_t index) {
        if (x_ < target_.width) target_.row(topDown_ ? y_ : target_.height - 1 - y_)[x_++] = palette_[index];
    }

    /// `count` pixels that stand one by one, padded to an even number of bytes.
    bool literal(std::uint32_t count) {
        const std::size_t bytes = nibbles_ ? (count + 1) / 2 : count;
        if (rest_.size() < bytes) return false;
        for (std::uint32_t i = 0; i < count; ++i) put(nibbles_ ? nibble(rest_[i / 2], i) : rest_[i]);
        rest_ = piece(rest_, bytes + bytes % 2);
        return true;
    }

    ByteSpan rest_;
    bool nibbles_;
    bool topDown_;
    const DibPalette& palette_;
    PixelBuffer target_;
    std::int32_t x_ = 0;
    std::int32_t y_ = 0;
};

}  // namespace

void decode_dib_rle(ByteSpan data, std::uint32_t bitsPerPixel, bool topDown, const DibPalette& palette,
                    PixelBuffer target) {
    RleDecoder(data, bitsPerPixel, topDown, palette, target).run();
}

}  // namespace pixvane::codecs
