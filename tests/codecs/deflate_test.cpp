// The compressor's streams are read by others as the bytes that went in, and its codes are codes.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "codecs/odd_files.h"
#include "platform/codecs/deflate.h"

namespace pixvane::test {
namespace {

using namespace codecs;

using Counts = std::vector<std::uint32_t>;

std::vector<CodeWord> code_for(const Counts& counts, std::uint32_t longest) {
    std::vector<CodeWord> words(counts.size());
    make_prefix_code(counts, longest, words);
    return words;
}

std::uint64_t cost(const Counts& counts, const std::vector<CodeWord>& words) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) bits += std::uint64_t{counts[i]} * words[i].length;
    return bits;
}

/// Every used symbol has a word, no word begins another (first bit lowest), and no room is wasted.
void expect_complete(const Counts& counts, const std::vector<CodeWord>& words, std::uint32_t longest) {
    double room = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        ASSERT_EQ(words[i].length != 0, counts[i] != 0);
        ASSERT_LE(words[i].length, longest);
        if (words[i].length == 0) continue;
        room += std::ldexp(1.0, -static_cast<int>(words[i].length));
        for (std::size_t k = 0; k < words.size(); ++k) {
            if (k == i || words[k].length < words[i].length) continue;
            const std::uint32_t mask = (1u << words[i].length) - 1;
            ASSERT_NE(words[k].bits & mask, words[i].bits) << i << " begins " << k;
        }
    }
    ASSERT_EQ(room, 1.0);
}

TEST(Deflate, CodesAreCompleteAndAsShortAsTheLimitAllows) {
    Counts fibonacci{1, 1};
    while (fibonacci.size() < 24)
        fibonacci.push_back(fibonacci[fibonacci.size() - 1] + fibonacci[fibonacci.size() - 2]);
    // Without a limit the longest word would have 23 bits; such words have lengths, but no room for bits.
    const std::vector<CodeWord> longWords = code_for(fibonacci, 23);
    EXPECT_EQ(longWords[0].length, 23);
    for (const std::uint32_t longest : {15u, 14u, 7u, 5u}) {
        const std::vector<CodeWord> words = code_for(fibonacci, longest);
        expect_complete(fibonacci, words, longest);
        EXPECT_LE(cost(fibonacci, words), cost(fibonacci, longWords) * (longest >= 14 ? 101 : 140) / 100);
    }
    TestRandom random(8);
    for (int round = 0; round < 50; ++round) {
        Counts counts(286);
        for (std::uint32_t& count : counts)
            count = random.below(3) == 0 ? 0 : 1 + random.below(1u << random.below(20));
        expect_complete(counts, code_for(counts, 14), 14);
    }
    EXPECT_EQ(code_for({0, 5, 0}, 7)[1].length, 1);
    EXPECT_EQ(code_for({0, 0}, 7)[0].length, 0);
}

Bytes deflated_in_blocks(const Bytes& bytes, std::size_t blockSize) {
    Output output(100);
    Deflater deflater(blockSize);
    Deflater::begin(output);
    for (std::size_t at = 0; at < bytes.size(); at += blockSize) {
        const std::size_t size = std::min(blockSize, bytes.size() - at);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), size, deflater.input());
        deflater.add(size, at + size == bytes.size(), output);
    }
    deflater.end(output);
    return {output.data(), output.data() + output.size()};
}

Bytes inflated(const Bytes& stream, std::size_t size) {
    Bytes bytes(size + 1);
    uLongf got = static_cast<uLongf>(bytes.size());
    EXPECT_EQ(uncompress(bytes.data(), &got, stream.data(), static_cast<uLong>(stream.size())), Z_OK);
    bytes.resize(got);
    return bytes;
}

TEST(Deflate, OthersReadWhatWasWritten) {
    TestRandom random(4);
    std::vector<Bytes> streams{{7}, Bytes(300'000, 0), Bytes(259, 1), Bytes(260, 1), Bytes(517, 2)};
    Bytes noise(200'000);
    for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random.next());
    streams.push_back(noise);
    // Copies of every length and many distances, up to and beyond the window.
    Bytes copies(noise.begin(), noise.begin() + 1000);
    for (std::uint32_t length = 3; copies.size() < 400'000; length = length % 600 + 1) {
        const std::size_t distance =
            1 + random.below(static_cast<std::uint32_t>(std::min<std::size_t>(copies.size(), 40'000)));
        for (std::uint32_t i = 0; i < length; ++i) copies.push_back(copies[copies.size() - distance]);
        copies.push_back(static_cast<std::uint8_t>(random.next()));
    }
    streams.push_back(copies);
    // So uneven that words must be cut to their limit.
    Bytes uneven;
    std::uint32_t next = 1;
    for (std::uint32_t count = 1, symbol = 0; symbol < 24; ++symbol) {
        uneven.insert(uneven.end(), count, static_cast<std::uint8_t>(symbol * 37));
        count = std::exchange(next, count + next);
    }
    for (std::size_t i = uneven.size(); i > 1; --i)
        std::swap(uneven[i - 1], uneven[random.below(static_cast<std::uint32_t>(i))]);
    streams.push_back(uneven);
    for (const Bytes& bytes : streams)
        for (const std::size_t blockSize : {std::size_t{1} << 17, std::size_t{5000}, std::size_t{400'000}}) {
            const Bytes stream = deflated_in_blocks(bytes, blockSize);
            ASSERT_EQ(inflated(stream, bytes.size()), bytes) << bytes.size() << " in blocks of " << blockSize;
            EXPECT_LE(stream.size(), bytes.size() + bytes.size() / 100 + 100);
        }
    EXPECT_LT(deflated_in_blocks(streams[1], 1 << 17).size(), 600u);
    EXPECT_LT(deflated_in_blocks(copies, 1 << 17).size(), copies.size() / 10);
}

}  // namespace
}  // namespace pixvane::test
