// Runs of pixels filled, copied and composited.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "core/pixel_buffer.h"

namespace pixvane {

// Source and target are different memory, or the same where nothing is streamed. `streaming` says that the
// run is part of so large a target that it had better be written past the caches; finish_rows() follows the
// last such run. `next` is where the next such run will be read from, if it doesn't follow in memory.

void fill_row(Pixel* to, std::size_t count, Pixel value, bool streaming);
void copy_row(Pixel* to, const Pixel* from, std::size_t count, bool streaming, const Pixel* next = nullptr);
/// Source-over of each pixel onto the one that is there.
void blend_row(Pixel* to, const Pixel* from, std::size_t count);
/// Source-over of each pixel onto one value.
void flatten_row(Pixel* to, const Pixel* from, std::size_t count, Pixel background, bool streaming,
                 const Pixel* next = nullptr);

/// Waits until what was streamed can be seen by other threads.
void finish_rows(bool streaming);

}  // namespace pixvane
