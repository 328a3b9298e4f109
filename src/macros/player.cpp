// Replays a macro, step by step.
// SPDX-License-Identifier: MIT
#include "macros/player.h"

namespace pixvane {

void play(const MacroScript& script, StepSink& sink) {
    StepReader arguments(script.arguments());
    for (const std::int32_t code : script.codes())
        if (!sink.apply(code, arguments)) return;
}

}  // namespace pixvane
