// Writes GIF files.
// SPDX-License-Identifier: MIT
#include <gif_lib.h>

#include <array>
#include <bit>
#include <memory>
#include <new>

#include "platform/codecs/format.h"
#include "platform/codecs/output.h"
#include "platform/codecs/quantize.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

int write(GifFileType* gif, const GifByteType* bytes, int size) {
    try {
        static_cast<Output*>(gif->UserData)->append({bytes, static_cast<std::size_t>(size)});
        return size;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

struct CloseGif {
    void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
};
using Gif = std::unique_ptr<GifFileType, CloseGif>;

using ColorMap = std::unique_ptr<ColorMapObject, decltype(&GifFreeMapObject)>;

/// The format's palettes have a power of two of entries.
ColorMap make_map(const QuantizedPicture& quantized) {
    const std::size_t size = std::max<std::size_t>(2, std::bit_ceil(quantized.palette.size()));
    ColorMap map(GifMakeMapObject(static_cast<int>(size), nullptr), GifFreeMapObject);
    if (!map) throw std::bad_alloc();
    for (std::size_t i = 0; i < quantized.palette.size(); ++i) {
        const Pixel p = quantized.palette[i];
        map->Colors[i] = {static_cast<GifByteType>(red_of(p)), static_cast<GifByteType>(green_of(p)),
                          static_cast<GifByteType>(blue_of(p))};
    }
    return map;
}

bool write_picture(GifFileType* gif, ConstPixelBuffer picture, const QuantizedPicture& quantized,
                   std::uint8_t* indices) {
    const ColorMap map = make_map(quantized);
    EGifSetGifVersion(gif, true);
    if (EGifPutScreenDesc(gif, picture.width, picture.height, 8, 0, map.get()) != GIF_OK) return false;
    if (quantized.transparentIndex >= 0) {
        const GraphicsControlBlock control{DISPOSAL_UNSPECIFIED, false, 0, quantized.transparentIndex};
        std::array<GifByteType, 4> bytes;
        EGifGCBToExtension(&control, bytes.data());
        if (EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(bytes.size()), bytes.data()) !=
            GIF_OK)
            return false;
    }
    if (EGifPutImageDesc(gif, 0, 0, picture.width, picture.height, false, nullptr) != GIF_OK) return false;
    for (std::int32_t y = 0; y < picture.height; ++y)
        if (EGifPutLine(gif, indices + static_cast<std::size_t>(picture.row(y) - picture.data),
                        picture.width) != GIF_OK)
            return false;
    return true;
}

}  // namespace

bool encode_gif(ConstPixelBuffer picture, const EncodeOptions&, ByteBuffer& file) {
    const Scratch indices(picture.count());
    if (indices.data() == nullptr) return false;
    const QuantizedPicture quantized = quantize(picture, indices.data());
    Output output(picture.count() / 2);
    Gif gif(EGifOpen(&output, write, nullptr));
    if (!gif) return false;
    const bool written = write_picture(gif.get(), picture, quantized, indices.data());
    // Closing writes the end of the file.
    if (EGifCloseFile(gif.release(), nullptr) != GIF_OK || !written) return false;
    file = output.take();
    return true;
}

}  // namespace pixvane::codecs
