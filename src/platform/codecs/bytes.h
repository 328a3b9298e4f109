// Numbers in the bytes of files, and pieces of files that never reach beyond them.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>

#include "core/byte_buffer.h"

namespace pixvane::codecs {

inline std::uint32_t little16(const std::uint8_t* p) { return p[0] | std::uint32_t{p[1]} << 8; }
inline std::uint32_t little32(const std::uint8_t* p) { return little16(p) | little16(p + 2) << 16; }
inline std::uint32_t big16(const std::uint8_t* p) { return p[1] | std::uint32_t{p[0]} << 8; }
inline std::uint32_t big32(const std::uint8_t* p) { return big16(p + 2) | big16(p) << 16; }
inline std::int32_t signed_little32(const std::uint8_t* p) { return static_cast<std::int32_t>(little32(p)); }

inline void put_little16(std::uint8_t* p, std::uint32_t value) {
    p[0] = static_cast<std::uint8_t>(value);
    p[1] = static_cast<std::uint8_t>(value >> 8);
}
inline void put_little32(std::uint8_t* p, std::uint32_t value) {
    put_little16(p, value);
    put_little16(p + 2, value >> 16);
}
inline void put_big32(std::uint8_t* p, std::uint32_t value) {
    p[0] = static_cast<std::uint8_t>(value >> 24);
    p[1] = static_cast<std::uint8_t>(value >> 16);
    p[2] = static_cast<std::uint8_t>(value >> 8);
    p[3] = static_cast<std::uint8_t>(value);
}

/// The part of `bytes` from `offset` on, `size` bytes at most; what lies outside is left out.
inline ByteSpan piece(ByteSpan bytes, std::uint64_t offset, std::uint64_t size = SIZE_MAX) {
    if (offset >= bytes.size()) return {};
    const ByteSpan rest = bytes.subspan(static_cast<std::size_t>(offset));
    return size < rest.size() ? rest.first(static_cast<std::size_t>(size)) : rest;
}

template <std::size_t size>
bool starts_with(ByteSpan bytes, const char (&text)[size]) {
    return bytes.size() >= size - 1 && std::memcmp(bytes.data(), text, size - 1) == 0;
}

}  // namespace pixvane::codecs
