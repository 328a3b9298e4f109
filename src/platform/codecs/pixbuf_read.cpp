// Every other format, as far as gdk-pixbuf decodes it.
// SPDX-License-Identifier: MIT
#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <memory>

#include "platform/codecs/format.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

/// Hands the file over in pieces, so that a loader which learns the size early can be stopped early.
class PixbufLoader {
public:
    enum class Want { Size, Pixels };

    explicit PixbufLoader(Want want) : want_(want), loader_(gdk_pixbuf_loader_new()) {
        g_signal_connect(loader_, "size-prepared", G_CALLBACK(on_size), this);
    }
    ~PixbufLoader() {
        if (!closed_) gdk_pixbuf_loader_close(loader_, nullptr);
        g_object_unref(loader_);
    }
    PixbufLoader(const PixbufLoader&) = delete;
    PixbufLoader& operator=(const PixbufLoader&) = delete;

    PictureSize size() const { return size_; }

    /// False if the bytes are no picture, or one of a size that can't be.
    bool load(ByteSpan file) {
        constexpr std::size_t kPiece = 65536;
        for (std::size_t at = 0; at < file.size() && !stopped_; at += kPiece) {
            const std::size_t size = std::min(kPiece, file.size() - at);
            if (!gdk_pixbuf_loader_write(loader_, file.data() + at, size, nullptr)) break;
        }
        closed_ = true;
        const bool complete = gdk_pixbuf_loader_close(loader_, nullptr);
        return want_ == Want::Size ? size_.width > 0 : complete && !stopped_;
    }

    /// Owned by the loader; null if there is none.
    const GdkPixbuf* picture() const { return gdk_pixbuf_loader_get_pixbuf(loader_); }

private:
    static void on_size(GdkPixbufLoader* loader, int width, int height, void* self) {
        static_cast<PixbufLoader*>(self)->check_size(loader, width, height);
    }

    void check_size(GdkPixbufLoader* loader, int width, int height) {
        size_ = {width, height};
        // The decoder's copy and ours are there at the same time.
        const bool possible =
            is_picture_size(width, height) &&
            static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height) * sizeof(Pixel) <=
                memory_left();
        if (possible && want_ == Want::Pixels) return;
        stopped_ = true;
        gdk_pixbuf_loader_set_size(loader, 0, 0);  // which loaders take as: go no further
    }

    Want want_;
    GdkPixbufLoader* loader_;
    PictureSize size_;
    bool stopped_ = false;
    bool closed_ = false;
};

void copy_row(const guint8* from, std::int32_t channels, Pixel* to, std::int32_t width) {
    for (std::int32_t x = 0; x < width; ++x, from += channels)
        to[x] = make_pixel(channels == 4 ? from[3] : 255, from[0], from[1], from[2]);
}

bool measure(ByteSpan file, PictureSize& size) {
    PixbufLoader loader(PixbufLoader::Want::Size);
    if (!loader.load(file)) return false;
    size = loader.size();
    return true;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    if (frame != 0) return false;
    PixbufLoader loader(PixbufLoader::Want::Pixels);
    if (!loader.load(file)) return false;
    const GdkPixbuf* picture = loader.picture();
    if (picture == nullptr || gdk_pixbuf_get_bits_per_sample(picture) != 8) return false;
    const std::int32_t channels = gdk_pixbuf_get_n_channels(picture);
    if (channels != 3 && channels != 4) return false;
    auto bitmap = Bitmap::create(gdk_pixbuf_get_width(picture), gdk_pixbuf_get_height(picture));
    if (!bitmap) return false;
    const auto stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(picture));
    const guint8* bytes = gdk_pixbuf_read_pixels(picture);
    for (std::int32_t y = 0; y < bitmap->height(); ++y)
        copy_row(bytes + stride * static_cast<std::size_t>(y), channels, bitmap->pixels().row(y),
                 bitmap->width());
    image = {std::move(bitmap), 1, {}};
    return true;
}

}  // namespace

const Reader kPixbufReader{[](ByteSpan) { return true; }, measure, decode};

}  // namespace pixvane::codecs
