// When results are streamed past the caches.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace pixvane {

/// Runs of at least this many bytes are written with streaming stores. What is smaller is likely to be read
/// again from the caches; a run may be one band of a larger picture, so this is far below their size.
constexpr std::size_t kStreamingBytes = std::size_t{2} << 20;

}  // namespace pixvane
