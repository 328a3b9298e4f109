// GIF files: interlaced, animated, with every kind of disposal.
// SPDX-License-Identifier: MIT
#include <gif_lib.h>

#include "codecs/odd_files.h"

namespace pixvane::test {
namespace {

constexpr std::uint8_t kHole = 7;  // the transparent index where there is one

struct Frame {
    std::int32_t left;
    std::int32_t top;
    std::int32_t width;
    std::int32_t height;
    std::vector<std::uint8_t> indices;
    int disposal = DISPOSAL_UNSPECIFIED;
    bool transparent = false;
    bool interlaced = false;
    std::uint32_t localPalette = 0;  ///< a seed; 0 for the file's palette
};

std::vector<Pixel> palette_from(std::uint32_t seed) { return random_opaque_picture(8, 1, seed).pixels; }

ColorMapObject* color_map(std::uint32_t seed) {
    std::vector<GifColorType> colors;
    for (const Pixel p : palette_from(seed))
        colors.push_back({static_cast<GifByteType>(red_of(p)), static_cast<GifByteType>(green_of(p)),
                          static_cast<GifByteType>(blue_of(p))});
    return GifMakeMapObject(static_cast<int>(colors.size()), colors.data());
}

void write_frame(GifFileType* gif, Frame frame) {
    const GraphicsControlBlock control{frame.disposal, false, 5,
                                       frame.transparent ? kHole : NO_TRANSPARENT_COLOR};
    GifByteType extension[4];
    EGifGCBToExtension(&control, extension);
    EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, extension);
    ColorMapObject* map = frame.localPalette != 0 ? color_map(frame.localPalette) : nullptr;
    EGifPutImageDesc(gif, frame.left, frame.top, frame.width, frame.height, frame.interlaced, map);
    if (map != nullptr) GifFreeMapObject(map);
    using Passes = std::vector<std::pair<std::int32_t, std::int32_t>>;
    for (const auto& [first, step] :
         frame.interlaced ? Passes{{0, 8}, {4, 8}, {2, 4}, {1, 2}} : Passes{{0, 1}})
        for (std::int32_t y = first; y < frame.height; y += step)
            EGifPutLine(gif, frame.indices.data() + y * frame.width, frame.width);
}

Bytes gif_file(std::int32_t width, std::int32_t height, const std::vector<Frame>& frames) {
    Bytes file;
    GifFileType* gif = EGifOpen(
        &file,
        [](GifFileType* g, const GifByteType* bytes, int size) {
            auto* out = static_cast<Bytes*>(g->UserData);
            out->insert(out->end(), bytes, bytes + size);
            return size;
        },
        nullptr);
    EGifSetGifVersion(gif, true);
    ColorMapObject* map = color_map(1);
    EGifPutScreenDesc(gif, width, height, 8, 3, map);
    GifFreeMapObject(map);
    for (const Frame& frame : frames) write_frame(gif, frame);
    EGifCloseFile(gif, nullptr);
    return file;
}

std::vector<std::uint8_t> random_indices(std::int32_t width, std::int32_t height, std::uint32_t seed) {
    TestRandom random(seed);
    std::vector<std::uint8_t> indices(static_cast<std::size_t>(width * height));
    for (std::uint8_t& index : indices) index = static_cast<std::uint8_t>(random.below(8));
    return indices;
}

/// What the frames give, drawn one after the other, by the rules of the format.
std::vector<Picture> play(std::int32_t width, std::int32_t height, const std::vector<Frame>& frames) {
    std::vector<Picture> pictures;
    Picture canvas(width, height);
    for (const Frame& frame : frames) {
        const Picture before = canvas;
        const std::vector<Pixel> palette = palette_from(frame.localPalette != 0 ? frame.localPalette : 1);
        const auto each = [&](auto work) {
            for (std::int32_t y = 0; y < frame.height; ++y)
                for (std::int32_t x = 0; x < frame.width; ++x)
                    if (frame.left + x < width && frame.top + y < height)
                        work(canvas.view().row(frame.top + y)[frame.left + x],
                             frame.indices[static_cast<std::size_t>(y * frame.width + x)]);
        };
        each([&](Pixel& p, std::uint8_t index) {
            if (!frame.transparent || index != kHole) p = palette[index];
        });
        pictures.push_back(canvas);
        if (frame.disposal == DISPOSE_BACKGROUND) each([](Pixel& p, std::uint8_t) { p = 0; });
        if (frame.disposal == DISPOSE_PREVIOUS) canvas = before;
    }
    return pictures;
}

OddFile gif(const std::string& name, std::int32_t width, std::int32_t height,
            const std::vector<Frame>& frames) {
    return {name, gif_file(width, height, frames), play(width, height, frames)};
}

}  // namespace

std::vector<OddFile> gif_files() {
    const auto frame = [](std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height,
                          std::uint32_t seed, int disposal) {
        return Frame{left, top, width, height, random_indices(width, height, seed), disposal};
    };
    Frame interlaced = frame(0, 0, 31, 27, 2, DISPOSAL_UNSPECIFIED),
          low = frame(0, 0, 5, 3, 3, DISPOSAL_UNSPECIFIED);
    interlaced.interlaced = low.interlaced = true;
    std::vector<Frame> animation{
        frame(0, 0, 20, 16, 4, DISPOSE_DO_NOT),     frame(3, 2, 9, 8, 5, DISPOSE_PREVIOUS),
        frame(10, 5, 8, 8, 6, DISPOSE_BACKGROUND),  frame(1, 1, 12, 12, 7, DISPOSE_DO_NOT),
        frame(15, 10, 10, 10, 8, DISPOSE_PREVIOUS), frame(0, 8, 20, 4, 9, DISPOSAL_UNSPECIFIED),
    };
    for (std::size_t i = 1; i < animation.size(); ++i) animation[i].transparent = i % 2 != 0;
    animation.back().localPalette = 99;
    animation[3].interlaced = true;
    return {gif("GIF, interlaced", 31, 27, {interlaced}), gif("GIF, interlaced, few rows", 5, 3, {low}),
            gif("GIF, animated", 20, 16, animation),
            gif("GIF, frame smaller than the screen", 12, 12, {frame(4, 3, 5, 6, 10, DISPOSE_DO_NOT)})};
}

}  // namespace pixvane::test
