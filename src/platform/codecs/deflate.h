// A compressor made for the rows of pictures: as fast as memory where nothing repeats, small where much does.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstring>
#include <vector>

#include "platform/codecs/deflate_matches.h"
#include "platform/codecs/huffman.h"
#include "platform/codecs/output.h"

namespace pixvane::codecs {

/// Packs words of bits, first bit lowest.
class BitPacker {
public:
    /// At most 57 bits may wait between two calls of flush().
    void put(std::uint64_t bits, std::uint32_t count) {
        waiting_ |= bits << count_;
        count_ += count;
    }
    /// Stores the whole bytes; touches up to 8 bytes from `p` on. Returns where the next ones go.
    std::uint8_t* flush(std::uint8_t* p) {
        std::memcpy(p, &waiting_, sizeof waiting_);
        const std::uint32_t bytes = count_ / 8;
        waiting_ = bytes == 8 ? 0 : waiting_ >> (8 * bytes);
        count_ %= 8;
        return p + bytes;
    }
    void fill_byte() { count_ = (count_ + 7) / 8 * 8; }

private:
    std::uint64_t waiting_ = 0;
    std::uint32_t count_ = 0;
};

/// Makes a zlib stream, block by block.
class Deflater {
public:
    static constexpr std::size_t kSlack = 64;

    /// No block will have more than `mostInput` bytes.
    explicit Deflater(std::size_t mostInput);

    /// Writes the start of the stream.
    static void begin(Output& output);
    /// Where the next block's bytes are to be put. Up to kSlack bytes behind the largest block may be
    /// touched.
    std::uint8_t* input();
    /// Compresses the `size` bytes that were put there.
    void add(std::size_t size, bool last, Output& output);
    /// Writes the end of the stream; the last block has been added.
    void end(Output& output);

private:
    static constexpr std::size_t kLiterals = 286;  // with the lengths
    static constexpr std::size_t kDistances = 30;

    void count(const std::uint8_t* bytes);
    std::uint64_t coded_bits() const;
    void write_coded(const std::uint8_t* bytes, bool last, Output& output);
    void write_stored(ByteSpan bytes, bool last, Output& output);
    std::uint8_t* write_codes(std::uint8_t* p);
    std::uint8_t* write_steps(const std::uint8_t* bytes, std::uint8_t* p);

    std::vector<std::uint8_t> window_;
    std::size_t history_ = 0;  // bytes of earlier blocks at the window's front
    MatchFinder finder_;
    std::vector<DeflateStep> steps_;
    std::array<std::uint32_t, kLiterals> literalCounts_{};
    std::array<std::uint32_t, kDistances> distanceCounts_{};
    std::array<CodeWord, kLiterals> literals_{};
    std::array<CodeWord, kDistances> distances_{};
    BitPacker bits_;
    std::uint32_t check_ = 1;
};

}  // namespace pixvane::codecs
