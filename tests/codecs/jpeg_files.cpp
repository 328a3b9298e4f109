// JPEG files of every kind.
// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>
#include <functional>

#include <jpeglib.h>

#include "codecs/odd_files.h"

namespace pixvane::test {
namespace {

constexpr std::int32_t kWidth = 83;
constexpr std::int32_t kHeight = 61;
constexpr int kTolerance = 6;

struct Kind {
    const char* name;
    J_COLOR_SPACE input;
    J_COLOR_SPACE stored;
    std::function<void(jpeg_compress_struct&)> change = [](jpeg_compress_struct&) {};
};

void put_pixel(Bytes& row, Pixel p, const jpeg_compress_struct& info) {
    const auto add = [&](std::uint32_t value) { row.push_back(static_cast<std::uint8_t>(value)); };
    if (info.in_color_space == JCS_GRAYSCALE) return add(green_of(p));
    if (info.in_color_space == JCS_RGB) {
        add(red_of(p)), add(green_of(p)), add(blue_of(p));
        return;
    }
    // Inks with all the black that there can be; Adobe's files hold 255 less the ink.
    const std::uint32_t light = std::max({red_of(p), green_of(p), blue_of(p), 1u});
    const std::uint32_t flip = info.write_Adobe_marker ? 0 : 255;
    for (const std::uint32_t c : {red_of(p), green_of(p), blue_of(p)})
        add(((c * 255 + light / 2) / light) ^ flip);
    add(light ^ flip);
}

Bytes compress(const Picture& picture, const Kind& kind) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &memory, &size);
    info.image_width = static_cast<JDIMENSION>(picture.width);
    info.image_height = static_cast<JDIMENSION>(picture.height);
    info.in_color_space = kind.input;
    info.input_components = kind.input == JCS_GRAYSCALE ? 1 : kind.input == JCS_CMYK ? 4 : 3;
    jpeg_set_defaults(&info);
    jpeg_set_colorspace(&info, kind.stored);
    jpeg_set_quality(&info, 98, TRUE);
    kind.change(info);
    jpeg_start_compress(&info, TRUE);
    for (std::int32_t y = 0; y < picture.height; ++y) {
        Bytes row;
        for (std::int32_t x = 0; x < picture.width; ++x) put_pixel(row, picture.at(x, y), info);
        JSAMPROW pointer = row.data();
        jpeg_write_scanlines(&info, &pointer, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    Bytes file(memory, memory + size);
    std::free(memory);
    return file;
}

void sample(jpeg_compress_struct& info, int across, int down) {
    info.comp_info[0].h_samp_factor = across;
    info.comp_info[0].v_samp_factor = down;
}

}  // namespace

std::vector<OddFile> jpeg_files() {
    const std::vector<Kind> kinds{
        {"JPEG, 4:2:0", JCS_RGB, JCS_YCbCr},
        {"JPEG, 4:4:4", JCS_RGB, JCS_YCbCr, [](auto& info) { sample(info, 1, 1); }},
        {"JPEG, 4:1:1", JCS_RGB, JCS_YCbCr, [](auto& info) { sample(info, 4, 1); }},
        {"JPEG, 4:4:0", JCS_RGB, JCS_YCbCr, [](auto& info) { sample(info, 1, 2); }},
        {"JPEG, RGB", JCS_RGB, JCS_RGB},
        {"JPEG, progressive", JCS_RGB, JCS_YCbCr, [](auto& info) { jpeg_simple_progression(&info); }},
        {"JPEG, restarts", JCS_RGB, JCS_YCbCr, [](auto& info) { info.restart_interval = 3; }},
        {"JPEG, arithmetic", JCS_RGB, JCS_YCbCr, [](auto& info) { info.arith_code = TRUE; }},
        {"JPEG, grey", JCS_GRAYSCALE, JCS_GRAYSCALE},
        {"JPEG, grey, progressive", JCS_GRAYSCALE, JCS_GRAYSCALE,
         [](auto& info) { jpeg_simple_progression(&info); }},
        {"JPEG, CMYK, Adobe", JCS_CMYK, JCS_CMYK, [](auto& info) { info.write_Adobe_marker = TRUE; }},
        {"JPEG, CMYK, plain", JCS_CMYK, JCS_CMYK, [](auto& info) { info.write_Adobe_marker = FALSE; }},
        {"JPEG, YCCK", JCS_CMYK, JCS_YCCK},
    };
    std::vector<OddFile> files;
    const Picture color = smooth_picture(kWidth, kHeight);
    const Picture grey = grey_of(color);
    for (const Kind& kind : kinds) {
        const Picture& picture = kind.input == JCS_GRAYSCALE ? grey : color;
        files.push_back({kind.name, compress(picture, kind), {picture}, kTolerance});
    }
    return files;
}

}  // namespace pixvane::test
