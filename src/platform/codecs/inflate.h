// Zlib streams, through libdeflate.
// SPDX-License-Identifier: MIT
#pragma once

#include <libdeflate.h>

#include <memory>
#include <new>
#include <vector>

#include "core/byte_buffer.h"

namespace pixvane::codecs {

using Decompressor = std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)>;

inline Decompressor make_decompressor() {
    Decompressor decompressor(libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    if (!decompressor) throw std::bad_alloc();
    return decompressor;
}

/// False unless the stream holds exactly `size` bytes.
inline bool inflate_exactly(ByteSpan stream, std::uint8_t* bytes, std::size_t size) {
    return libdeflate_zlib_decompress(make_decompressor().get(), stream.data(), stream.size(), bytes, size,
                                      nullptr) == LIBDEFLATE_SUCCESS;
}

/// Empty if the stream is broken or holds more than `most` bytes.
inline std::vector<std::uint8_t> inflate_unknown_size(ByteSpan stream, std::size_t most) {
    const Decompressor decompressor = make_decompressor();
    std::vector<std::uint8_t> bytes;
    for (std::size_t size = 16384;; size = size * 8 < most ? size * 8 : most) {
        bytes.resize(size);
        std::size_t got = 0;
        const libdeflate_result result = libdeflate_zlib_decompress(
            decompressor.get(), stream.data(), stream.size(), bytes.data(), bytes.size(), &got);
        if (result == LIBDEFLATE_INSUFFICIENT_SPACE && size < most) continue;
        bytes.resize(result == LIBDEFLATE_SUCCESS ? got : 0);
        return bytes;
    }
}

}  // namespace pixvane::codecs
