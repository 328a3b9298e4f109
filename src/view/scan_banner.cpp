// What the view tells about a folder: the banner while it is scanned, and the line about the file shown.
// SPDX-License-Identifier: MIT
#include "view/scan_banner.h"

#include <algorithm>
#include <cstdio>

#include "core/compose.h"
#include "core/integer_math.h"
#include "core/scaling/scaled_picture.h"
#include "draw/coverage.h"

namespace pixvane {
namespace {

constexpr std::int32_t kBand = 64;
constexpr std::uint32_t kBandAlpha = 0xC8;
constexpr std::uint32_t kTopGrey = 0x78, kBottomGrey = 0xFF;
constexpr Pixel kWhite = 0xFFFFFFFF;
constexpr Pixel kBlack = 0xFF000000;
constexpr Pixel kLightGreen = 0xFF90EE90;
constexpr std::int32_t kTextLeft = 96;
constexpr std::int32_t kScanningLeft = 16;
constexpr std::int32_t kLineTops[] = {8, 24, 40};
constexpr std::int32_t kDetailsAbove = 16;

/// From grey to white, seen through.
void draw_ground(PixelBuffer target, DrawScratch& scratch) {
    for (std::int32_t y = 0; y < kBand; ++y) {
        const auto middle = static_cast<std::uint32_t>(2 * y + 1);
        const std::uint32_t grey = kTopGrey + ((kBottomGrey - kTopGrey) * middle + kBand) / (2 * kBand);
        blend_area(target, {0, y, target.width, 1}, Paint(make_pixel(kBandAlpha, grey, grey, grey)), scratch);
    }
    fill_area(target, {0, kBand, target.width, 2}, kWhite);
}

/// Into a box of 64 pixels, and lower than the band.
PixelRect preview_area(ConstPixelBuffer preview) {
    double scale = 64.0 / preview.width;
    if (32 - preview.height * scale * 0.5 < 8) scale = 48.0 / preview.height;
    const double width = preview.width * scale, height = preview.height * scale;
    return {trunc_to_int32(48 - width * 0.5), trunc_to_int32(32 - height * 0.5), trunc_to_int32(width + 0.5),
            trunc_to_int32(height + 0.5)};
}

}  // namespace

void ScanBanner::draw_band(PixelBuffer target, const ScannedFile* file, Rasterizer& rasterizer) {
    draw_ground(target, rasterizer.scratch);
    if (file != nullptr) {
        draw_file(target, *file, rasterizer);
        return;
    }
    scanning_.set(rasterizer, "Scanning...", false, kBlack);
    scanning_.draw(target, kScanningLeft, kLineTops[1]);
}

void ScanBanner::draw_file(PixelBuffer target, const ScannedFile& file, Rasterizer& rasterizer) {
    if (file.preview.width > 0 && file.preview.height > 0) {
        const Ground ground{Ground::Kind::Target, 0};
        draw_scaled(target, file.preview, preview_area(file.preview), ground, scaling_);
    }
    text_.assign("...\\").append(file.name);
    lines_[0].set(rasterizer, text_, true, kBlack);
    char line[48];
    std::snprintf(line, sizeof line, "%dx%d", static_cast<int>(file.preview.width),
                  static_cast<int>(file.preview.height));
    lines_[1].set(rasterizer, line, false, kBlack);
    const unsigned long long kilobytes = std::max<std::uint64_t>(file.bytes / 1024, 1);
    std::snprintf(line, sizeof line, "%llu Kb", kilobytes);
    lines_[2].set(rasterizer, line, false, kBlack);
    for (int i = 0; i < 3; ++i) lines_[i].draw(target, kTextLeft, kLineTops[i]);
}

void ScanBanner::draw_details(PixelBuffer target, const FileDetails& file, Rasterizer& rasterizer) {
    char size[48];
    std::snprintf(size, sizeof size, "  %dx%d", static_cast<int>(file.width), static_cast<int>(file.height));
    text_.assign(file.name).append(size);
    details_.set(rasterizer, text_, false, kLightGreen);
    details_.draw(target, 1, target.height - kDetailsAbove);
}

}  // namespace pixvane
