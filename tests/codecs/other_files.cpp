// WebP files, and the formats that gdk-pixbuf reads.
// SPDX-License-Identifier: MIT
#include <webp/encode.h>
#include <webp/mux.h>

#include <cstdio>

#include "codecs/odd_files.h"

namespace pixvane::test {
namespace {

const std::uint8_t* bgra(const Picture& picture) {
    return reinterpret_cast<const std::uint8_t*>(picture.pixels.data());
}

/// Fully transparent pixels have no colour in these files.
Picture webp_picture(std::int32_t width, std::int32_t height, std::uint64_t seed) {
    Picture picture = random_picture(width, height, seed);
    for (Pixel& p : picture.pixels)
        if (alpha_of(p) == 0) p = 0;
    return picture;
}

OddFile still_webp(bool lossless) {
    const Picture picture = lossless ? webp_picture(39, 28, 51) : smooth_picture(64, 48);
    const std::int32_t width = picture.width, height = picture.height;
    std::uint8_t* memory = nullptr;
    const std::size_t size = lossless
                                 ? WebPEncodeLosslessBGRA(bgra(picture), width, height, width * 4, &memory)
                                 : WebPEncodeBGRA(bgra(picture), width, height, width * 4, 98, &memory);
    const Bytes bytes(memory, memory + size);
    WebPFree(memory);
    return {lossless ? "WebP, lossless with alpha" : "WebP, lossy", bytes, {picture}, lossless ? 0 : 12};
}

OddFile animated_webp() {
    std::vector<Picture> frames;
    WebPAnimEncoderOptions options;
    WebPAnimEncoderOptionsInit(&options);
    options.allow_mixed = 0;
    WebPAnimEncoder* encoder = WebPAnimEncoderNew(24, 18, &options);
    WebPConfig config;
    WebPConfigInit(&config);
    WebPConfigLosslessPreset(&config, 6);
    for (int i = 0; i < 3; ++i) {
        frames.push_back(webp_picture(24, 18, 60 + static_cast<std::uint64_t>(i)));
        for (Pixel& p : frames.back().pixels) p |= kOpaque;
        WebPPicture picture;
        WebPPictureInit(&picture);
        picture.use_argb = 1;
        picture.width = 24;
        picture.height = 18;
        WebPPictureImportBGRA(&picture, bgra(frames.back()), 24 * 4);
        WebPAnimEncoderAdd(encoder, &picture, i * 100, &config);
        WebPPictureFree(&picture);
    }
    WebPAnimEncoderAdd(encoder, nullptr, 300, nullptr);
    WebPData data;
    WebPDataInit(&data);
    WebPAnimEncoderAssemble(encoder, &data);
    OddFile file{"WebP, animated", Bytes(data.bytes, data.bytes + data.size), frames};
    WebPDataClear(&data);
    WebPAnimEncoderDelete(encoder);
    return file;
}

OddFile portable_pixmap() {
    const Picture picture = random_opaque_picture(11, 9, 41);
    Bytes file = text("P6\n11 9\n255\n");
    append(file, channels(picture.pixels, "RGB"));
    return {"PPM", file, {picture}};
}

/// Its first bytes could be a cursor's.
OddFile targa() {
    const Picture picture = random_picture(14, 10, 42);
    Bytes file{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 14, 0, 10, 0, 32, 0x28};
    append(file, channels(picture.pixels, "BGRA"));
    return {"TGA, 32 bits", file, {picture}};
}

OddFile xpm() {
    const Picture picture(3, 2, {0xFFFF0000u, 0xFF00FF00u, 0u, 0xFF0000FFu, 0u, 0xFFFF0000u});
    return {"XPM",
            text("/* XPM */\nstatic char *x[] = {\n\"3 2 4 1\",\n\"r c #FF0000\",\n\"g c #00FF00\",\n"
                 "\"b c #0000FF\",\n\"- c None\",\n\"rg-\",\n\"b-r\"};\n"),
            {picture}};
}

}  // namespace

std::vector<OddFile> webp_files() { return {still_webp(true), still_webp(false), animated_webp()}; }

std::vector<OddFile> other_files() { return {portable_pixmap(), targa(), xpm()}; }

}  // namespace pixvane::test
