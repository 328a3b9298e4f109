// A macro's steps one by one, for whoever shows them.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "control/step_codec.h"
#include "macros/macro_script.h"

namespace pixvane {

struct ListedStep {
    std::int32_t code = 0;
    const Row* row = nullptr;  ///< of the player; null: the code is unknown
    std::size_t offset = 0;    ///< of its arguments in the stream
    std::size_t size = 0;      ///< bytes of its arguments that are there
    bool isComplete = true;    ///< false: the stream ends within the arguments, and the run before this step
};

/// Finds each step's place once for each state of the macro.
class StepListing {
public:
    /// The steps as the player would take them; after one that isn't complete, none is.
    const std::vector<ListedStep>& steps(const MacroScript& script);
    /// Reads a step's arguments, those that are whole.
    void read(const MacroScript& script, const ListedStep& step, StepArguments& arguments) const;

private:
    std::vector<ListedStep> steps_;
    std::uint64_t revision_ = 0;
};

}  // namespace pixvane
