// WebP files, the formats that gdk-pixbuf reads, and all odd files together.
// SPDX-License-Identifier: MIT
#include <webp/encode.h>
#include <webp/mux.h>

#include <cstdio>

#include "codecs/odd_files.h"

namespace pixvane::test {
namespace {

Bytes taken(std::uint8_t* memory, std::size_t size) {
    Bytes bytes(memory, memory + size);
    WebPFree(memory);
    return bytes;
}

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

OddFile lossless_webp() {
    const Picture picture = webp_picture(39, 28, 51);
    std::uint8_t* memory = nullptr;
    const std::size_t size =
        WebPEncodeLosslessBGRA(bgra(picture), picture.width, picture.height, picture.width * 4, &memory);
    return {"WebP, lossless with alpha", taken(memory, size), {picture}};
}

OddFile lossy_webp() {
    const Picture picture = smooth_picture(64, 48);
    std::uint8_t* memory = nullptr;
    const std::size_t size =
        WebPEncodeBGRA(bgra(picture), picture.width, picture.height, picture.width * 4, 98, &memory);
    return {"WebP, lossy", taken(memory, size), {picture}, 12};
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
    for (const Pixel p : picture.pixels)
        append(file, {static_cast<std::uint8_t>(red_of(p)), static_cast<std::uint8_t>(green_of(p)),
                      static_cast<std::uint8_t>(blue_of(p))});
    return {"PPM", file, {picture}};
}

/// Its first bytes could be a cursor's.
OddFile targa() {
    const Picture picture = random_picture(14, 10, 42);
    Bytes file{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 14, 0, 10, 0, 32, 0x28};
    for (const Pixel p : picture.pixels) put32(file, p);
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

Picture smooth_picture(std::int32_t width, std::int32_t height) {
    Picture picture(width, height);
    for (std::int32_t y = 0; y < height; ++y)
        for (std::int32_t x = 0; x < width; ++x)
            picture.view().row(y)[x] =
                make_pixel(255, static_cast<std::uint32_t>(40 + 160 * x / width),
                           static_cast<std::uint32_t>(60 + 120 * y / height),
                           static_cast<std::uint32_t>(200 - 100 * (x + y) / (width + height)));
    return picture;
}

std::vector<OddFile> webp_files() { return {lossless_webp(), lossy_webp(), animated_webp()}; }

std::vector<OddFile> other_files() { return {portable_pixmap(), targa(), xpm()}; }

std::vector<OddFile> all_odd_files() {
    std::vector<OddFile> all;
    for (const auto& make :
         {bmp_files, gif_files, icon_files, jpeg_files, png_files, tiff_files, webp_files, other_files})
        for (OddFile& file : make()) all.push_back(std::move(file));
    return all;
}

}  // namespace pixvane::test
