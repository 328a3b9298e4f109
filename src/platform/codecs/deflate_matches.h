// Finds what occurred before in the last 32 KB of a stream.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace pixvane::codecs {

/// Some bytes as they are, then a copy of `length` bytes from `distance` before; length 0 if there is none.
struct DeflateStep {
    std::uint32_t literals;
    std::uint16_t length;
    std::uint16_t distance;
};

constexpr std::size_t kDeflateWindow = 32768;
constexpr std::size_t kLongestMatch = 258;
constexpr std::size_t kShortestMatch = 3;

/// One look at the latest place where a few bytes were the same, and fewer and fewer looks where that finds
/// nothing: what a photograph leaves to be found isn't worth more.
class MatchFinder {
public:
    MatchFinder();

    /// The steps for window[start..end), which follows on what came before. What lies before `start` in the
    /// window came right before it, as far as the format's window reaches.
    void find(const std::uint8_t* window, std::size_t start, std::size_t end,
              std::vector<DeflateStep>& steps);

private:
    static constexpr std::size_t kTableBits = 14;

    // Positions in the stream, counted from where nothing can reach back to 0.
    std::unique_ptr<std::uint32_t[]> latest_;
    std::uint32_t position_ = kDeflateWindow + 1;
};

}  // namespace pixvane::codecs
