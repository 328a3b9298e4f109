// The patterns of hatched brushes.
// SPDX-License-Identifier: MIT
#include "draw/hatch_patterns.h"

#include <array>

namespace pixvane {
namespace {

/// The pixels that a rule picks.
template <class Rule>
constexpr std::uint64_t where(Rule rule) {
    std::uint64_t bits = 0;
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            if (rule(x, y)) bits |= std::uint64_t{1} << (8 * y + x);
    return bits;
}

constexpr std::uint64_t drawn(const char (&rows)[65]) {
    return where([&](int x, int y) { return rows[8 * y + x] == '#'; });
}

/// Sixteenths of the pixels, spread as evenly as an ordered dither does.
constexpr std::uint64_t share(int sixteenths) {
    constexpr int kOrder[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    return where([=](int x, int y) { return kOrder[y % 4][x % 4] < sixteenths; });
}

/// Lines of a width, one every `step` pixels.
constexpr std::uint64_t upright(int step, int width) {
    return where([=](int x, int) { return x % step < width; });
}
constexpr std::uint64_t level(int step, int width) {
    return where([=](int, int y) { return y % step < width; });
}
constexpr std::uint64_t downward(int step, int width) {
    return where([=](int x, int y) { return (x - y + 8) % step < width; });
}
constexpr std::uint64_t upward(int step, int width) {
    return where([=](int x, int y) { return (x + y + 1) % step < width; });
}
constexpr std::uint64_t checks(int side) {
    return where([=](int x, int y) { return (x / side + y / side) % 2 == 0; });
}

constexpr std::uint64_t kLowerHalf = where([](int, int y) { return y >= 4; });
constexpr std::uint64_t kEven = where([](int x, int y) { return x % 2 == 0 && y % 2 == 0; });
constexpr std::uint64_t kDiamond =
    where([](int x, int y) { return (x - y + 8) % 8 == 0 || (x + y) % 8 == 0; });

constexpr std::array<std::uint64_t, kHatchStyles> kPatterns = {
    level(8, 1),
    upright(8, 1),
    downward(8, 1),
    upward(8, 1),
    level(8, 1) | upright(8, 1),
    downward(8, 1) | upward(8, 1),
    // 6 to 17: 5, 10, 20, 25, 30, 40, 50, 60, 70, 75, 80 and 90 percent, to the nearest sixteenth
    share(1),
    share(2),
    share(3),
    share(4),
    share(5),
    share(6),
    share(8),
    share(10),
    share(11),
    share(12),
    share(13),
    share(14),
    // 18 to 23: light, dark and wide diagonals, down and up
    downward(4, 1),
    upward(4, 1),
    downward(4, 2),
    upward(4, 2),
    downward(8, 3),
    upward(8, 3),
    // 24 to 29: light, narrow and dark, upright and level
    upright(4, 1),
    level(4, 1),
    upright(2, 1),
    level(2, 1),
    upright(4, 2),
    level(4, 2),
    // 30 to 33: dashed, down, up, level and upright
    downward(4, 1) & ~kLowerHalf,
    upward(4, 1) & ~kLowerHalf,
    where([](int x, int y) { return y % 4 == 0 && (x < 4) == (y < 4); }),
    where([](int x, int y) { return x % 4 == 0 && (y < 4) == (x < 4); }),
    // 34, 35: small and large confetti
    drawn("#......."
          "....#..."
          ".#......"
          "......#."
          "...#...."
          ".......#"
          "..#....."
          ".....#.."),
    drawn("#.##...#"
          "..##...."
          "......##"
          "##.##.##"
          "##.##..."
          "......##"
          "..##..##"
          "#.##...#"),
    // 36, 37: zigzag, wave
    where([](int x, int y) { return y % 4 == (x < 4 ? x : 7 - x); }),
    drawn("........"
          "...##..."
          "..#..#.#"
          "##......"
          "........"
          "...##..."
          "..#..#.#"
          "##......"),
    // 38, 39: diagonal and level brick
    where([](int x, int y) { return x + y == 7 || (x == y && y >= 4); }),
    where([](int x, int y) { return y % 4 == 0 || x == (y < 4 ? 0 : 4); }),
    // 40 to 42: weave, plaid, divot
    drawn("#...#..."
          ".#.#.#.."
          "..#...#."
          ".#...#.#"
          "#...#..."
          "...#.#.."
          "..#...#."
          "##...#.#"),
    (checks(1) & ~kLowerHalf) | where([](int x, int y) { return y >= 4 && x < 4; }),
    drawn("........"
          "...#...."
          "....#..."
          "...#...."
          "........"
          ".......#"
          "#......."
          ".......#"),
    // 43, 44: dotted grid and diamond
    (level(8, 1) | upright(8, 1)) & kEven,
    kDiamond& kEven,
    // 45 to 47: shingle, trellis, sphere
    drawn("......##"
          "#....#.."
          ".#..#..."
          "..##...."
          "...##..."
          "....#..."
          ".....#.."
          "......#."),
    where([](int x, int y) { return y % 2 == 0 || (x + 1) % 4 / 2 == (y % 4 == 1 ? 1 : 0); }),
    drawn(".###.###"
          "#...#..#"
          "#...####"
          "#...####"
          ".###.###"
          "#..##..."
          "#####..."
          "#####..."),
    // 48 to 50: small grid, small and large checker board
    level(4, 1) | upright(4, 1),
    checks(2),
    checks(4),
    // 51, 52: outlined and solid diamond
    kDiamond,
    where([](int x, int y) { return (x < 3 ? 3 - x : x - 3) + (y < 3 ? 3 - y : y - 3) <= 3; }),
};

}  // namespace

std::uint64_t hatch_pattern(std::int32_t style) { return kPatterns[static_cast<std::size_t>(style)]; }

}  // namespace pixvane
