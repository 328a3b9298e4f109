// A bitmap: the owner of one picture's pixels.
// SPDX-License-Identifier: MIT
#include "core/bitmap.h"

#include <new>

namespace pixvane {

std::shared_ptr<Bitmap> Bitmap::create(std::int64_t width, std::int64_t height) noexcept {
    if (!is_picture_size(width, height)) return nullptr;
    const auto bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * sizeof(Pixel);
    const PixelMemory::Block block = PixelMemory::instance().acquire(bytes);
    if (block.data == nullptr) return nullptr;
    try {
        return std::make_shared<Bitmap>(block, static_cast<std::int32_t>(width),
                                        static_cast<std::int32_t>(height));
    } catch (const std::bad_alloc&) {
        PixelMemory::instance().release(block);
        return nullptr;
    }
}

}  // namespace pixvane
