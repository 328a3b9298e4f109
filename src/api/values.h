// Values of the C interface and of the control, one into the other.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "control/value.h"
#include "pixvane/pixvane.h"

namespace pixvane {

/// Checks the kind, and that no array is longer than memory or lacks its memory. A string or array of size 0
/// may be null.
bool from_c(const pixvane_value& from, Value& to);
pixvane_value to_c(const Value& value);
/// Bytes of the elements of a string or array.
std::size_t byte_size(const Value& value);

}  // namespace pixvane
