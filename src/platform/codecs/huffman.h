// Prefix codes as deflate uses them.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

namespace pixvane::codecs {

/// A code word, ready to be put into the stream: first bit lowest.
struct CodeWord {
    std::uint16_t bits = 0;
    std::uint16_t length = 0;
};

/// The words for symbols that occur as often as `counts` says, none longer than `longest` bits; symbols that
/// never occur get none. A code with one symbol only gives it one bit. At most 512 symbols, and no more than
/// 2^longest. Words beyond 16 bits have their lengths only.
void make_prefix_code(std::span<const std::uint32_t> counts, std::uint32_t longest,
                      std::span<CodeWord> words);

}  // namespace pixvane::codecs
