// A compressor made for the rows of pictures: as fast as memory where nothing repeats, small where much does.
// SPDX-License-Identifier: MIT
#include "platform/codecs/deflate.h"

#include <libdeflate.h>

#include <algorithm>
#include <bit>

#include "platform/codecs/bytes.h"

namespace pixvane::codecs {
namespace {

constexpr std::uint32_t kLongestLiteral = 14;  // so that four of them can be packed at once
constexpr std::uint32_t kLongestDistance = 15;
constexpr std::uint32_t kLongestLengthCode = 7;
constexpr std::size_t kEndOfBlock = 256;
constexpr std::size_t kLengthCodes = 19;
constexpr std::size_t kMostStored = 65535;
// A block's head: its kind, the three counts, the code of the codes, and at worst every length by itself.
constexpr std::uint64_t kMostHeadBits = 3 + 14 + 3 * 19 + 14 * (286 + 30);

/// The symbol of a length or distance, and the bits that tell it from others of the same symbol.
struct Spread {
    std::uint32_t symbol;
    std::uint32_t extra;
    std::uint32_t extraBits;
};

std::uint32_t log2_of(std::uint32_t value) { return static_cast<std::uint32_t>(std::bit_width(value)) - 1; }

Spread spread_length(std::uint32_t length) {
    const std::uint32_t value = length - 3;
    if (length == kLongestMatch) return {285, 0, 0};
    if (value < 8) return {257 + value, 0, 0};
    const std::uint32_t bits = log2_of(value) - 2;
    return {257 + 4 * (bits + 1) + (value >> bits & 3), value & ((1u << bits) - 1), bits};
}

Spread spread_distance(std::uint32_t distance) {
    const std::uint32_t value = distance - 1;
    if (value < 4) return {value, 0, 0};
    const std::uint32_t bits = log2_of(value) - 1;
    return {2 * (bits + 1) + (value >> bits & 1), value & ((1u << bits) - 1), bits};
}

/// The lengths of both codes as a row of symbols: lengths themselves, and runs of them.
class LengthRow {
public:
    LengthRow(std::span<const CodeWord> literals, std::span<const CodeWord> distances) {
        std::array<std::uint8_t, 286 + 30> lengths;
        std::size_t count = 0;
        for (const CodeWord& word : literals) lengths[count++] = static_cast<std::uint8_t>(word.length);
        for (const CodeWord& word : distances) lengths[count++] = static_cast<std::uint8_t>(word.length);
        for (std::size_t i = 0; i < count;) {
            std::size_t run = 1;
            while (i + run < count && lengths[i + run] == lengths[i]) ++run;
            add_run(lengths[i], static_cast<std::uint32_t>(run));
            i += run;
        }
        make_prefix_code(counts_, kLongestLengthCode, words_);
    }

    std::size_t codes() const {
        std::size_t count = kLengthCodes;
        while (count > 4 && words_[kOrder[count - 1]].length == 0) --count;
        return count;
    }
    std::uint32_t length_of_code(std::size_t i) const { return words_[kOrder[i]].length; }

    std::uint8_t* write(BitPacker& bits, std::uint8_t* p) const {
        for (std::size_t i = 0; i < size_; ++i) {
            bits.put(words_[symbols_[i].symbol].bits, words_[symbols_[i].symbol].length);
            bits.put(symbols_[i].extra, symbols_[i].extraBits);
            p = bits.flush(p);
        }
        return p;
    }

private:
    // The format's order of the lengths of this code.
    static constexpr std::array<std::uint8_t, kLengthCodes> kOrder{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                   11, 4,  12, 3, 13, 2, 14, 1, 15};

    void add(Spread symbol) {
        symbols_[size_++] = symbol;
        ++counts_[symbol.symbol];
    }

    void add_run(std::uint32_t length, std::uint32_t run) {
        if (length == 0) {
            for (; run >= 11; run -= std::min(run, 138u)) add({18, std::min(run, 138u) - 11, 7});
            if (run >= 3) {
                add({17, run - 3, 3});
                run = 0;
            }
        } else {
            add({length, 0, 0});
            for (--run; run >= 3; run -= std::min(run, 6u)) add({16, std::min(run, 6u) - 3, 2});
        }
        for (; run > 0; --run) add({length, 0, 0});
    }

    std::array<Spread, 286 + 30> symbols_;
    std::size_t size_ = 0;
    std::array<std::uint32_t, kLengthCodes> counts_{};
    std::array<CodeWord, kLengthCodes> words_{};
};

std::size_t used(std::span<const CodeWord> words, std::size_t atLeast) {
    std::size_t count = words.size();
    while (count > atLeast && words[count - 1].length == 0) --count;
    return count;
}

}  // namespace

Deflater::Deflater(std::size_t mostInput) : window_(kDeflateWindow + mostInput + kSlack) {}

void Deflater::begin(Output& output) {
    static constexpr std::uint8_t kHead[] = {0x78, 0x01};  // deflate with the largest window, fast
    output.append(kHead);
}

std::uint8_t* Deflater::input() { return window_.data() + history_; }

void Deflater::add(std::size_t size, bool last, Output& output) {
    const std::uint8_t* const bytes = input();
    check_ = libdeflate_adler32(check_, bytes, size);
    finder_.find(window_.data(), history_, history_ + size, steps_);
    count(bytes);
    make_prefix_code(literalCounts_, kLongestLiteral, literals_);
    make_prefix_code(distanceCounts_, kLongestDistance, distances_);
    if (coded_bits() / 8 < size)
        write_coded(bytes, last, output);
    else
        write_stored({bytes, size}, last, output);

    const std::size_t all = history_ + size;
    history_ = std::min(all, kDeflateWindow);
    std::memmove(window_.data(), window_.data() + all - history_, history_);
}

void Deflater::end(Output& output) {
    bits_.fill_byte();
    output.add(static_cast<std::size_t>(bits_.flush(output.room(8)) - output.room(8)));
    put_big32(output.room(4), check_);
    output.add(4);
}

void Deflater::count(const std::uint8_t* bytes) {
    // Four tables, since counting the same byte twice in a row would wait for the first to be stored.
    std::array<std::array<std::uint32_t, 256>, 4> counts{};
    literalCounts_.fill(0);
    distanceCounts_.fill(0);
    for (const DeflateStep& step : steps_) {
        const std::uint8_t* const end = bytes + step.literals;
        for (; end - bytes >= 4; bytes += 4) {
            ++counts[0][bytes[0]];
            ++counts[1][bytes[1]];
            ++counts[2][bytes[2]];
            ++counts[3][bytes[3]];
        }
        for (; bytes < end; ++bytes) ++counts[0][*bytes];
        bytes += step.length;
        if (step.length == 0) continue;
        ++literalCounts_[spread_length(step.length).symbol];
        ++distanceCounts_[spread_distance(step.distance).symbol];
    }
    for (std::size_t i = 0; i < 256; ++i)
        literalCounts_[i] = counts[0][i] + counts[1][i] + counts[2][i] + counts[3][i];
    literalCounts_[kEndOfBlock] = 1;
}

std::uint64_t Deflater::coded_bits() const {
    std::uint64_t bits = kMostHeadBits;
    for (std::size_t i = 0; i < kLiterals; ++i)
        bits += std::uint64_t{literalCounts_[i]} * literals_[i].length;
    for (std::size_t i = 0; i < kDistances; ++i)
        bits += std::uint64_t{distanceCounts_[i]} * distances_[i].length;
    for (const DeflateStep& step : steps_)
        if (step.length != 0)
            bits += spread_length(step.length).extraBits + spread_distance(step.distance).extraBits;
    return bits;
}

void Deflater::write_coded(const std::uint8_t* bytes, bool last, Output& output) {
    std::uint8_t* const start = output.room(static_cast<std::size_t>(coded_bits() / 8) + 16);
    bits_.put(last ? 1 : 0, 1);
    bits_.put(2, 2);
    std::uint8_t* const end = write_steps(bytes, write_codes(start));
    output.add(static_cast<std::size_t>(end - start));
}

void Deflater::write_stored(ByteSpan bytes, bool last, Output& output) {
    while (!bytes.empty()) {
        const ByteSpan part = piece(bytes, 0, kMostStored);
        bytes = bytes.subspan(part.size());
        bits_.put(last && bytes.empty() ? 1 : 0, 3);
        bits_.fill_byte();
        std::uint8_t* const start = output.room(part.size() + 16);
        std::uint8_t* p = bits_.flush(start);
        put_little16(p, static_cast<std::uint32_t>(part.size()));
        put_little16(p + 2, ~static_cast<std::uint32_t>(part.size()));
        output.add(static_cast<std::size_t>(p + 4 - start));
        output.append(part);
    }
}

std::uint8_t* Deflater::write_codes(std::uint8_t* p) {
    const std::size_t literals = used(literals_, 257);
    const std::size_t distances = used(distances_, 1);
    const LengthRow row({literals_.data(), literals}, {distances_.data(), distances});
    bits_.put(literals - 257, 5);
    bits_.put(distances - 1, 5);
    bits_.put(row.codes() - 4, 4);
    p = bits_.flush(p);
    for (std::size_t i = 0; i < row.codes(); ++i) {
        bits_.put(row.length_of_code(i), 3);
        p = bits_.flush(p);
    }
    return row.write(bits_, p);
}

std::uint8_t* Deflater::write_steps(const std::uint8_t* bytes, std::uint8_t* p) {
    BitPacker bits = bits_;  // a local one stays in registers
    const auto put = [&](const CodeWord& word) { bits.put(word.bits, word.length); };
    for (const DeflateStep& step : steps_) {
        const std::uint8_t* const end = bytes + step.literals;
        for (; end - bytes >= 4; bytes += 4) {
            put(literals_[bytes[0]]);
            put(literals_[bytes[1]]);
            put(literals_[bytes[2]]);
            put(literals_[bytes[3]]);
            p = bits.flush(p);
        }
        for (; bytes < end; ++bytes) {
            put(literals_[*bytes]);
            p = bits.flush(p);
        }
        bytes += step.length;
        if (step.length == 0) continue;
        const Spread length = spread_length(step.length);
        const Spread distance = spread_distance(step.distance);
        put(literals_[length.symbol]);
        bits.put(length.extra, length.extraBits);
        put(distances_[distance.symbol]);
        bits.put(distance.extra, distance.extraBits);
        p = bits.flush(p);
    }
    put(literals_[kEndOfBlock]);
    p = bits.flush(p);
    bits_ = bits;
    return p;
}

}  // namespace pixvane::codecs
