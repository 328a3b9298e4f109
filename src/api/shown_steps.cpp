// The steps of a control's macro as the C interface shows them.
// SPDX-License-Identifier: MIT
#include "api/shown_steps.h"

#include "api/values.h"

namespace pixvane {

pixvane_macro_step ShownSteps::show(const MacroScript& script, std::size_t index) {
    const ListedStep& step = listing_.steps(script)[index];
    listing_.read(script, step, arguments_);
    names_.clear();
    values_.clear();
    for (std::size_t i = 0; i < arguments_.values.size(); ++i) {
        names_.push_back(step.row->step_fields()[i].name);
        values_.push_back(to_c(arguments_.values[i]));
    }
    return {step.code,
            step.row != nullptr ? step.row->name : nullptr,
            step.offset,
            step.size,
            step.isComplete ? 1 : 0,
            static_cast<std::int32_t>(values_.size()),
            names_.data(),
            values_.data()};
}

}  // namespace pixvane
