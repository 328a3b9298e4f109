// Reads icons and cursors; every entry is a frame, the largest first.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <vector>

#include "platform/codecs/dib.h"
#include "platform/codecs/png_chunks.h"

namespace pixvane::codecs {
namespace {

constexpr std::size_t kDirectoryHeader = 6;
constexpr std::size_t kDirectoryEntry = 16;
constexpr std::int32_t kMostIconSide = 32768;  // the mask doubles the height that a header says

struct Entry {
    ByteSpan data;
    PictureSize size;
    std::uint32_t bits = 0;
    bool png = false;

    std::int64_t area() const { return size.width * size.height; }
};

bool recognises(ByteSpan file) {
    return file.size() >= kDirectoryHeader + kDirectoryEntry && little16(file.data()) == 0 &&
           (file[2] == 1 || file[2] == 2) && file[3] == 0 && little16(file.data() + 4) != 0;
}

/// What the directory says of sizes and depths is often wrong, and is not there for cursors.
bool look_into(ByteSpan data, Entry& entry) {
    entry.data = data;
    entry.png = is_png(data);
    if (entry.png) {
        const std::optional<PngHeader> header = read_png_header(data);
        if (!header) return false;
        entry.size = {header->width, header->height};
        entry.bits = header->bits_per_pixel();
    } else {
        const std::optional<DibHeader> header = read_dib_header(data);
        if (!header || header->width > kMostIconSide || header->height > 2 * kMostIconSide) return false;
        entry.size = {header->width, header->height / 2};
        entry.bits = header->bitsPerPixel;
    }
    return is_picture_size(entry.size.width, entry.size.height);
}

std::vector<Entry> entries_of(ByteSpan file) {
    std::vector<Entry> entries;
    const std::size_t count = little16(file.data() + 4);
    for (std::size_t i = 0; i < count; ++i) {
        const ByteSpan line = piece(file, kDirectoryHeader + i * kDirectoryEntry, kDirectoryEntry);
        if (line.size() < kDirectoryEntry) break;
        Entry entry;
        if (look_into(piece(file, little32(line.data() + 12), little32(line.data() + 8)), entry))
            entries.push_back(entry);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.area() != b.area() ? a.area() > b.area() : a.bits > b.bits;
    });
    return entries;
}

/// One bit a pixel, bottom row first: where it is set, the screen shows through.
void apply_mask(ByteSpan mask, PixelBuffer target) {
    const std::size_t stride = (static_cast<std::size_t>(target.width) + 31) / 32 * 4;
    for (std::int32_t y = target.height - 1; y >= 0 && mask.size() >= stride; --y) {
        Pixel* const row = target.row(y);
        for (std::size_t x = 0; x < static_cast<std::size_t>(target.width); ++x)
            if ((mask[x / 8] >> (7 - x % 8) & 1) != 0) row[x] = 0;
        mask = mask.subspan(stride);
    }
}

bool has_alpha(ConstPixelBuffer picture) {
    Pixel any = 0;
    for (std::size_t i = 0; i < picture.count(); ++i) any |= picture.data[i];
    return alpha_of(any) != 0;
}

bool decode_dib_entry(const Entry& entry, DecodedImage& image) {
    std::optional<DibHeader> header = read_dib_header(entry.data);
    if (!header) return false;
    // In icons the fourth byte is alpha without any mask that says so.
    if (header->bitsPerPixel == 32) {
        header->compression = DibCompression::Bitfields;
        header->masks = {0xFF0000, 0xFF00, 0xFF, kOpaque};
    }
    const std::uint64_t stride =
        (static_cast<std::uint64_t>(entry.size.width) * header->bitsPerPixel + 31) / 32 * 4;
    const std::uint64_t size = stride * static_cast<std::uint64_t>(entry.size.height);
    const ByteSpan pixels = piece(entry.data, header->palette_end());
    if (pixels.size() < size) return false;
    auto bitmap = Bitmap::create(entry.size.width, entry.size.height);
    if (!bitmap) return false;
    const PixelBuffer target = bitmap->pixels();
    if (!decode_dib_pixels(entry.data, *header, pixels, target)) return false;

    // Old programs left the alpha of such entries empty and meant the mask to be used.
    if (header->bitsPerPixel != 32 || !has_alpha(target)) {
        for (std::size_t i = 0; i < target.count(); ++i) target.data[i] |= kOpaque;
        apply_mask(piece(pixels, size), target);
    }
    image = {std::move(bitmap), 1, {}};
    return true;
}

bool measure(ByteSpan file, PictureSize& size) {
    const std::vector<Entry> entries = entries_of(file);
    if (entries.empty()) return false;
    size = entries.front().size;
    return true;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    const std::vector<Entry> entries = entries_of(file);
    if (static_cast<std::size_t>(frame) >= entries.size()) return false;
    const Entry& entry = entries[static_cast<std::size_t>(frame)];
    DecodedImage found;
    if (!(entry.png ? kPngReader.decode(entry.data, 0, found) : decode_dib_entry(entry, found))) return false;
    found.frameCount = static_cast<std::int32_t>(entries.size());
    image = std::move(found);
    return true;
}

}  // namespace

const Reader kIcoReader{recognises, measure, decode};

}  // namespace pixvane::codecs
