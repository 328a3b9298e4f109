// Where an effect around a point starts and where it is complete, along a row.
// SPDX-License-Identifier: MIT
#pragma once

#include "filters/effects/effects.h"

namespace pixvane::filters {

/// A row from its first to its last pixel: complete to outerFirst, growing less to innerFirst, none to
/// innerLast, growing to outerLast, complete. Each ends before the place that is named.
struct FocusSpans {
    std::int32_t outerFirst, innerFirst, innerLast, outerLast;
};

/// The spans of row y of a picture; what they say of a place is what its distance() says.
FocusSpans focus_spans(const Focus& focus, std::int32_t y, std::int32_t width);

}  // namespace pixvane::filters
