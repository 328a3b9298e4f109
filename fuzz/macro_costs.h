// What a macro would cost to play, so that a fuzzer keeps to what is quick.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "control/step_listing.h"
#include "macros/macro_script.h"

namespace pixvane::fuzz {

/// The macro without the steps that would take too long on a picture of this size, judged by their arguments,
/// in a machine where all bitmaps together may take `limit` bytes. What is not complete stays at its end.
MacroScript without_costly_steps(const MacroScript& script, std::int64_t width, std::int64_t height,
                                 std::int64_t limit);

}  // namespace pixvane::fuzz
