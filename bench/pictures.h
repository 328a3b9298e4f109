// The pictures that the benchmark works on.
// SPDX-License-Identifier: MIT
#pragma once

#include "control.h"

namespace bench {

/// A made-up photograph: soft light, textures at every scale, hard edges, the noise of a sensor. Always the
/// same for the same size.
Picture photograph(std::int32_t width, std::int32_t height);

/// `picture` repeated, every other time mirrored, to fill another size.
Picture tiled(const Picture& picture, std::int32_t width, std::int32_t height);

}  // namespace bench
