// Prefix codes as deflate uses them.
// SPDX-License-Identifier: MIT
#include "platform/codecs/huffman.h"

#include <algorithm>
#include <array>

namespace pixvane::codecs {
namespace {

constexpr std::size_t kMostSymbols = 512;
constexpr std::size_t kMostBits = 32;

struct Symbol {
    std::uint32_t count;
    std::uint32_t index;
};

/// How many words there are of each length in the best code for sorted counts, however long they get; those
/// beyond `longest` are counted as that long.
std::array<std::uint32_t, kMostBits> count_lengths(std::span<const Symbol> sorted, std::uint32_t longest) {
    // Two queues, both in rising order: the leaves, and the nodes made of them.
    std::array<std::uint64_t, kMostSymbols> weights;
    std::array<std::uint16_t, 2 * kMostSymbols> parents;
    const std::size_t leaves = sorted.size();
    std::size_t leaf = 0;
    std::size_t node = 0;
    const auto take = [&](std::size_t made, std::uint64_t& weight) {
        if (leaf < leaves && (node == made || sorted[leaf].count <= weights[node])) {
            weight += sorted[leaf].count;
            return leaf++;
        }
        weight += weights[node];
        return leaves + node++;
    };
    for (std::size_t made = 0; made + 1 < leaves; ++made) {
        std::uint64_t weight = 0;
        const std::size_t first = take(made, weight);
        const std::size_t second = take(made, weight);
        parents[first] = parents[second] = static_cast<std::uint16_t>(leaves + made);
        weights[made] = weight;
    }
    std::array<std::uint32_t, kMostBits> counts{};
    std::array<std::uint16_t, 2 * kMostSymbols> depths;
    const std::size_t root = 2 * leaves - 2;
    depths[root] = 0;
    for (std::size_t i = root; i-- > 0;) {
        depths[i] = static_cast<std::uint16_t>(depths[parents[i]] + 1);
        if (i < leaves) ++counts[std::min<std::uint32_t>(depths[i], longest)];
    }
    return counts;
}

/// Cutting words to `longest` bits used up more room than there is: lengthen others until all fits.
void make_room(std::array<std::uint32_t, kMostBits>& counts, std::uint32_t longest) {
    std::uint64_t used = 0;
    for (std::uint32_t length = 1; length <= longest; ++length)
        used += std::uint64_t{counts[length]} << (longest - length);
    while (used > std::uint64_t{1} << longest) {
        // The longest word that can still grow makes room for the one that shares its place.
        std::uint32_t length = longest - 1;
        while (counts[length] == 0) --length;
        --counts[length];
        counts[length + 1] += 2;
        --counts[longest];
        --used;
    }
}

std::uint16_t reversed(std::uint32_t word, std::uint32_t length) {
    std::uint32_t result = 0;
    for (std::uint32_t i = 0; i < length; ++i) result |= (word >> i & 1) << (length - 1 - i);
    return static_cast<std::uint16_t>(result);
}

/// Words of one length follow each other in the order of their symbols.
void number_words(std::span<CodeWord> words, const std::array<std::uint32_t, kMostBits>& counts) {
    std::array<std::uint32_t, kMostBits + 1> next{};
    for (std::size_t length = 1; length < kMostBits; ++length)
        next[length + 1] = (next[length] + counts[length]) << 1;
    for (CodeWord& word : words)
        if (word.length != 0) word.bits = reversed(next[word.length]++, word.length);
}

}  // namespace

void make_prefix_code(std::span<const std::uint32_t> counts, std::uint32_t longest,
                      std::span<CodeWord> words) {
    std::array<Symbol, kMostSymbols> symbols;
    std::size_t size = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        words[i] = {};
        if (counts[i] != 0) symbols[size++] = {counts[i], static_cast<std::uint32_t>(i)};
    }
    if (size < 2) {
        if (size == 1) words[symbols[0].index] = {0, 1};
        return;
    }
    std::sort(symbols.begin(), symbols.begin() + static_cast<std::ptrdiff_t>(size),
              [](const Symbol& a, const Symbol& b) {
                  return a.count != b.count ? a.count < b.count : a.index < b.index;
              });
    std::array<std::uint32_t, kMostBits> lengths = count_lengths({symbols.data(), size}, longest);
    make_room(lengths, longest);
    // The rarest symbols get the longest words.
    std::size_t at = 0;
    for (std::uint32_t length = longest; length > 0; --length)
        for (std::uint32_t i = 0; i < lengths[length]; ++i)
            words[symbols[at++].index].length = static_cast<std::uint16_t>(length);
    number_words(words, lengths);
}

}  // namespace pixvane::codecs
