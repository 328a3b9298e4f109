// Finds what occurred before in the last 32 KB of a stream.
// SPDX-License-Identifier: MIT
#include "platform/codecs/deflate_matches.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace pixvane::codecs {
namespace {

static_assert(std::endian::native == std::endian::little);

// Shorter copies cost as much as the bytes themselves.
constexpr std::size_t kWorthwhile = 6;
// To leave a copy that would go on, for a run.
constexpr std::size_t kWorthwhileRun = kLongestMatch;
// After so many bytes without a find the steps grow by one.
constexpr int kPatienceBits = 6;

std::uint64_t load64(const std::uint8_t* p) {
    std::uint64_t value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

constexpr std::uint64_t kCompared = (std::uint64_t{1} << 8 * kWorthwhile) - 1;

/// Whether the next bytes are all as the one before them.
bool is_run(const std::uint8_t* p) { return ((load64(p - 1) ^ load64(p)) & kCompared) == 0; }

/// How far the bytes at a and b agree, up to `limit` from a.
std::size_t common_length(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* limit) {
    const std::uint8_t* const start = a;
    while (limit - a >= 8) {
        const std::uint64_t different = load64(a) ^ load64(b);
        if (different != 0)
            return static_cast<std::size_t>(a - start) +
                   static_cast<std::size_t>(std::countr_zero(different)) / 8;
        a += 8;
        b += 8;
    }
    while (a < limit && *a == *b) ++a, ++b;
    return static_cast<std::size_t>(a - start);
}

void add_match(std::vector<DeflateStep>& steps, std::size_t literals, std::size_t length,
               std::size_t distance) {
    while (length > 0) {
        std::size_t part = std::min(length, kLongestMatch);
        // What is left must be long enough for a step of its own.
        if (length != part && length - part < kShortestMatch) part = length - kShortestMatch;
        steps.push_back({static_cast<std::uint32_t>(literals), static_cast<std::uint16_t>(part),
                         static_cast<std::uint16_t>(distance)});
        length -= part;
        literals = 0;
    }
}

}  // namespace

MatchFinder::MatchFinder() : latest_(std::make_unique<std::uint32_t[]>(std::size_t{1} << kTableBits)) {}

void MatchFinder::find(const std::uint8_t* window, std::size_t start, std::size_t end,
                       std::vector<DeflateStep>& steps) {
    steps.clear();
    // Adding it to an index of the window gives the position in the stream.
    const std::uint32_t offset = position_ - static_cast<std::uint32_t>(start);
    const auto slot_of = [](std::uint64_t bytes) {
        return ((bytes << (64 - 8 * kWorthwhile)) * 0x9E3779B185EBCA87u) >> (64 - kTableBits);
    };
    std::size_t at = start;
    std::size_t pending = start;  // the first byte that is in no step yet
    while (at + 8 <= end) {
        const std::uint64_t bytes = load64(window + at);
        std::uint32_t& latest = latest_[slot_of(bytes)];
        const std::uint32_t here = static_cast<std::uint32_t>(at) + offset;
        std::uint32_t distance = here - latest;
        latest = here;
        // A run of one byte is best told as such: the nearest distance is the shortest to write.
        if (at > 0 && is_run(window + at)) distance = 1;
        if (distance > kDeflateWindow || ((load64(window + at - distance) ^ bytes) & kCompared) != 0) {
            at += 1 + ((at - pending) >> kPatienceBits);
            continue;
        }
        const std::uint8_t* const source = window + at - distance;
        std::size_t length = common_length(window + at, source, window + end);
        // A long copy goes on as a run where it can.
        const std::uint8_t* const rest = window + at + kLongestMatch;
        if (distance > 1 && length > kLongestMatch + kWorthwhileRun &&
            common_length(rest, rest - 1, rest + kWorthwhileRun) == kWorthwhileRun)
            length = kLongestMatch;
        std::size_t back = 0;
        while (at - back > pending && source - back > window && window[at - back - 1] == *(source - back - 1))
            ++back;
        add_match(steps, at - back - pending, length + back, distance);
        at += length;
        pending = at;
        if (at + 6 <= end) {
            const std::uint32_t inside = static_cast<std::uint32_t>(at - 2) + offset;
            latest_[slot_of(load64(window + at - 2))] = inside;
        }
    }
    if (pending < end) steps.push_back({static_cast<std::uint32_t>(end - pending), 0, 0});
    position_ += static_cast<std::uint32_t>(end - start);
}

}  // namespace pixvane::codecs
