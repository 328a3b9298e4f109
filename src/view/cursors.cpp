// The control's own cursors, drawn by characters.
// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include <cstring>
#include <span>

namespace pixvane {
namespace {

// '#' black, 'o' white, '+' paint. Around all of it runs a white rim, so that it shows on any picture.
constexpr const char* kCross[] = {
    "...................", ".........#.........", ".........#.........", ".........#.........",
    ".........#.........", ".........#.........", ".........#.........", "...................",
    "...................", ".######..#..######.", "...................", "...................",
    ".........#.........", ".........#.........", ".........#.........", ".........#.........",
    ".........#.........", ".........#.........", "...................",
};

constexpr const char* kRing[] = {
    "...................", "...................", ".......#####.......", ".....##.....##.....",
    "....#.........#....", "...#...........#...", "...#...........#...", "..#.............#..",
    "..#.............#..", "..#......#......#..", "..#.............#..", "..#.............#..",
    "...#...........#...", "...#...........#...", "....#.........#....", ".....##.....##.....",
    ".......#####.......", "...................", "...................",
};

constexpr const char* kBucket[] = {
    "..........................", "..........##..............", ".........#..#.............",
    ".........#..#.............", ".........#.##.............", ".........##oo##...........",
    "........#o#oooo##.........", ".......#oo#ooooo##........", "......#ooo#oooo#++#.......",
    ".....#oooo##oo#++++#......", "....#ooooo##o#+++++#......", "...#oooooooo#o#++++#......",
    "..#ooooooooooo###++#......", "...#ooooooooo#..#++#......", "....#ooooooo#...#++#......",
    ".....#ooooo#....#+#.......", "......#ooo#.....#+#.......", ".......#o#......###.......",
    "........#.................", "................#.........", "...............#+#........",
    "..............#+++#.......", "..............#+++#.......", "...............#+#........",
    "................#.........", "..........................",
};

constexpr Pixel kBlack = 0xFF000000;
constexpr Pixel kWhite = 0xFFFFFFFF;
constexpr Pixel kPaint = 0xFF2878D8;
constexpr Pixel kRim = 0xE0FFFFFF;

using Art = std::span<const char* const>;

char at(Art art, std::int32_t x, std::int32_t y) {
    const auto height = static_cast<std::int32_t>(art.size());
    const auto width = static_cast<std::int32_t>(std::strlen(art[0]));
    if (x < 0 || y < 0 || x >= width || y >= height) return '.';
    return art[static_cast<std::size_t>(y)][x];
}

bool touches_ink(Art art, std::int32_t x, std::int32_t y) {
    for (std::int32_t dy = -1; dy <= 1; ++dy)
        for (std::int32_t dx = -1; dx <= 1; ++dx)
            if (at(art, x + dx, y + dy) != '.') return true;
    return false;
}

Pixel pixel_of(Art art, std::int32_t x, std::int32_t y) {
    switch (at(art, x, y)) {
        case '#':
            return kBlack;
        case 'o':
            return kWhite;
        case '+':
            return kPaint;
        default:
            return touches_ink(art, x, y) ? kRim : 0;
    }
}

CursorImage drawn(Art art, WindowPoint hotSpot) {
    CursorImage image{
        static_cast<std::int32_t>(std::strlen(art[0])), static_cast<std::int32_t>(art.size()), hotSpot, {}};
    for (std::int32_t y = 0; y < image.height; ++y)
        for (std::int32_t x = 0; x < image.width; ++x) image.pixels.push_back(pixel_of(art, x, y));
    return image;
}

}  // namespace

std::optional<CursorImage> cursor_image(std::int32_t cursor) {
    switch (cursor) {
        case kCrossCursor:
            return drawn(kCross, {9, 9});
        case kRingCursor:
            return drawn(kRing, {9, 9});
        case kBucketCursor:
            return drawn(kBucket, {16 - kBucketTip.x, 24 - kBucketTip.y});
        default:
            return std::nullopt;
    }
}

}  // namespace pixvane
