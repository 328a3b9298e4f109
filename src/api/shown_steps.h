// The steps of a control's macro as the C interface shows them.
// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "control/step_listing.h"
#include "pixvane/pixvane.h"

namespace pixvane {

/// Keeps what the step that was shown last points to.
class ShownSteps {
public:
    std::size_t count(const MacroScript& script) { return listing_.steps(script).size(); }
    /// `index` is below count().
    pixvane_macro_step show(const MacroScript& script, std::size_t index);

private:
    StepListing listing_;
    StepArguments arguments_;
    std::vector<const char*> names_;
    std::vector<pixvane_value> values_;
};

}  // namespace pixvane
