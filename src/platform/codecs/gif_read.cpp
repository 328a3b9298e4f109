// Reads GIF files: giflib unpacks the records, the frames are put together here.
// SPDX-License-Identifier: MIT
#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "core/compose.h"
#include "platform/codecs/bytes.h"
#include "platform/codecs/format.h"

namespace pixvane::codecs {
namespace {

using Palette = std::array<Pixel, 256>;

/// A frame's rectangle on the canvas, or the part of it that lies there.
struct Area {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

class GifFile {
public:
    explicit GifFile(ByteSpan file) : rest_(file), gif_(DGifOpen(this, read, nullptr)) {}
    ~GifFile() {
        if (gif_ != nullptr) DGifCloseFile(gif_, nullptr);
    }
    GifFile(const GifFile&) = delete;
    GifFile& operator=(const GifFile&) = delete;

    bool valid() const { return gif_ != nullptr; }

    /// Goes to the next frame's pixels. False at the end of the file, or where it is broken.
    bool next_frame() {
        control_ = {DISPOSAL_UNSPECIFIED, false, 0, NO_TRANSPARENT_COLOR};
        for (;;) {
            GifRecordType record = UNDEFINED_RECORD_TYPE;
            if (DGifGetRecordType(gif_, &record) != GIF_OK) return false;
            if (record == IMAGE_DESC_RECORD_TYPE) return DGifGetImageDesc(gif_) == GIF_OK;
            if (record != EXTENSION_RECORD_TYPE || !read_extension()) return false;
        }
    }

    PictureSize screen() const { return {gif_->SWidth, gif_->SHeight}; }
    Area area() const { return {gif_->Image.Left, gif_->Image.Top, gif_->Image.Width, gif_->Image.Height}; }
    bool interlaced() const { return gif_->Image.Interlace; }
    int disposal() const { return control_.DisposalMode; }
    int transparent_index() const { return control_.TransparentColor; }

    /// Indices beyond the palette are black. A file without any palette leaves the colours to us.
    Palette palette() const {
        Palette palette;
        palette.fill(kOpaque);
        const ColorMapObject* map = gif_->Image.ColorMap != nullptr ? gif_->Image.ColorMap : gif_->SColorMap;
        if (map == nullptr) {
            for (std::uint32_t i = 0; i < palette.size(); ++i) palette[i] = make_pixel(255, i, i, i);
            return palette;
        }
        for (std::size_t i = 0; i < palette.size() && i < static_cast<std::size_t>(map->ColorCount); ++i)
            palette[i] = make_pixel(255, map->Colors[i].Red, map->Colors[i].Green, map->Colors[i].Blue);
        return palette;
    }

    bool read_line(std::vector<GifPixelType>& line) {
        return DGifGetLine(gif_, line.data(), static_cast<int>(line.size())) == GIF_OK;
    }

    /// Steps over the frame's pixels. False if there are none.
    bool skip_pixels() {
        int codeSize = 0;
        GifByteType* block = nullptr;
        if (DGifGetCode(gif_, &codeSize, &block) != GIF_OK || block == nullptr) return false;
        while (block != nullptr)
            if (DGifGetCodeNext(gif_, &block) != GIF_OK) break;
        return true;
    }

private:
    static int read(GifFileType* gif, GifByteType* bytes, int size) {
        ByteSpan& rest = static_cast<GifFile*>(gif->UserData)->rest_;
        const std::size_t count =
            std::min<std::size_t>(rest.size(), size > 0 ? static_cast<std::size_t>(size) : 0);
        if (count != 0) std::memcpy(bytes, rest.data(), count);
        rest = rest.subspan(count);
        return static_cast<int>(count);
    }

    bool read_extension() {
        int code = 0;
        GifByteType* block = nullptr;
        if (DGifGetExtension(gif_, &code, &block) != GIF_OK) return false;
        if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr)
            DGifExtensionToGCB(block[0], block + 1, &control_);
        while (block != nullptr)
            if (DGifGetExtensionNext(gif_, &block) != GIF_OK) return false;
        return true;
    }

    ByteSpan rest_;
    GraphicsControlBlock control_{};
    GifFileType* gif_;
};

/// The canvas that frames are drawn on, one after the other.
class Compositor {
public:
    explicit Compositor(PixelBuffer canvas) : canvas_(canvas) { fill(canvas_, 0); }

    /// What the last frame asked for when its time is over.
    void dispose() {
        if (disposal_ == DISPOSE_BACKGROUND)
            for_each_row([&](Pixel* row, std::size_t) { std::fill_n(row, last_.width, Pixel{0}); });
        if (disposal_ == DISPOSE_PREVIOUS && kept_)
            for_each_row([&](Pixel* row, std::size_t at) {
                std::copy_n(kept_->pixels().data + at, last_.width, row);
            });
        kept_.reset();
    }

    /// Draws the file's current frame. The number of its rows that could be read, or -1 without memory.
    std::int32_t draw(GifFile& gif) {
        const Area area = gif.area();
        last_ = clipped(area);
        disposal_ = gif.disposal();
        if (disposal_ == DISPOSE_PREVIOUS && last_.width > 0 && last_.height > 0 && !keep()) return -1;
        const Palette palette = gif.palette();
        std::vector<GifPixelType> line(static_cast<std::size_t>(area.width));
        for (std::int32_t i = 0; i < area.height; ++i) {
            if (!gif.read_line(line)) return i;
            const std::int32_t y = area.top + (gif.interlaced() ? interlaced_row(i, area.height) : i);
            if (y < canvas_.height) draw_line(line, palette, gif.transparent_index(), y);
        }
        return area.height;
    }

private:
    Area clipped(const Area& area) const {
        return {std::min(area.left, canvas_.width), std::min(area.top, canvas_.height),
                std::clamp(canvas_.width - area.left, 0, area.width),
                std::clamp(canvas_.height - area.top, 0, area.height)};
    }

    template <class Work>
    void for_each_row(Work work) {
        for (std::int32_t y = 0; y < last_.height; ++y)
            work(canvas_.row(last_.top + y) + last_.left,
                 static_cast<std::size_t>(y) * static_cast<std::size_t>(last_.width));
    }

    bool keep() {
        kept_ = Bitmap::create(last_.width, last_.height);
        if (!kept_) return false;
        for_each_row(
            [&](Pixel* row, std::size_t at) { std::copy_n(row, last_.width, kept_->pixels().data + at); });
        return true;
    }

    void draw_line(const std::vector<GifPixelType>& line, const Palette& palette, int transparent,
                   std::int32_t y) {
        Pixel* const row = canvas_.row(y) + last_.left;
        for (std::size_t x = 0; x < static_cast<std::size_t>(last_.width); ++x)
            if (line[x] != transparent) row[x] = palette[line[x]];
    }

    /// The row that is the i-th to come: every eighth, those between, then every fourth, every second.
    static std::int32_t interlaced_row(std::int32_t i, std::int32_t height) {
        constexpr std::array<std::array<std::int32_t, 2>, 4> kPasses{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
        for (const auto& [start, step] : kPasses) {
            const std::int32_t rows = (height - start + step - 1) / step;
            if (i < rows) return start + i * step;
            i -= std::max(rows, 0);
        }
        return 0;
    }

    PixelBuffer canvas_;
    std::shared_ptr<Bitmap> kept_;
    Area last_;
    int disposal_ = DISPOSAL_UNSPECIFIED;
};

bool recognises(ByteSpan file) { return starts_with(file, "GIF8"); }

/// Some files leave the screen's size out; then the first frame makes it.
PictureSize canvas_size(const GifFile& gif) {
    const PictureSize screen = gif.screen();
    if (screen.width > 0 && screen.height > 0) return screen;
    const Area area = gif.area();
    return {std::int64_t{area.left} + area.width, std::int64_t{area.top} + area.height};
}

bool measure(ByteSpan file, PictureSize& size) {
    GifFile gif(file);
    if (!gif.valid() || !gif.next_frame()) return false;
    size = canvas_size(gif);
    return true;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    GifFile gif(file);
    if (!gif.valid() || !gif.next_frame()) return false;
    const PictureSize size = canvas_size(gif);
    auto bitmap = Bitmap::create(size.width, size.height);
    if (!bitmap) return false;
    Compositor compositor(bitmap->pixels());
    std::int32_t frames = 0;
    for (bool more = true; more;) {
        if (frames <= frame) {
            const Area area = gif.area();
            if (!is_picture_size(area.width, area.height)) return false;
            compositor.dispose();
            const std::int32_t rows = compositor.draw(gif);
            more = rows == area.height;  // behind a broken frame there is nothing to be found
            if (rows <= 0 || (!more && frames < frame)) return false;
        } else if (!gif.skip_pixels()) {
            break;
        }
        ++frames;
        more = more && gif.next_frame();
    }
    if (frames <= frame) return false;
    image = {std::move(bitmap), frames, {}};
    return true;
}

}  // namespace

const Reader kGifReader{recognises, measure, decode};

}  // namespace pixvane::codecs
