// Replays a macro, step by step.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "macros/macro_script.h"
#include "macros/step_reader.h"

namespace pixvane {

/// Knows what the codes mean.
class StepSink {
public:
    virtual ~StepSink() = default;
    /// Takes a step's arguments out of the stream, and nothing of a code that is not known; then applies it.
    /// False if the stream ends within the arguments.
    virtual bool apply(std::int32_t code, StepReader& arguments) = 0;
};

/// To the end, or to the first step whose arguments are not all there. The script must not change meanwhile.
void play(const MacroScript& script, StepSink& sink);

}  // namespace pixvane
