// A macro's steps one by one, for whoever shows them.
// SPDX-License-Identifier: MIT
#include "control/step_listing.h"

#include "control/member_table.h"

namespace pixvane {

const std::vector<ListedStep>& StepListing::steps(const MacroScript& script) {
    if (revision_ == script.revision()) return steps_;
    steps_.clear();
    revision_ = 0;
    StepReader reader(script.arguments());
    StepArguments arguments;
    bool isComplete = true;
    for (const std::int32_t code : script.codes()) {
        ListedStep step{code, find_step(code), reader.offset(), 0, isComplete};
        if (step.row != nullptr && isComplete) {
            isComplete = step.isComplete = read_step(*step.row, reader, arguments);
            // What is left belongs to the step that it can't fill.
            if (!isComplete) reader = StepReader(script.arguments(), script.arguments().size());
            step.size = reader.offset() - step.offset;
        }
        steps_.push_back(step);
    }
    revision_ = script.revision();
    return steps_;
}

void StepListing::read(const MacroScript& script, const ListedStep& step, StepArguments& arguments) const {
    arguments.values.clear();
    if (step.row == nullptr) return;
    StepReader reader(script.arguments(), step.offset);
    read_step(*step.row, reader, arguments);
}

}  // namespace pixvane
