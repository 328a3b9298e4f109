// The C interface: what is in a macro.
// SPDX-License-Identifier: MIT
#include "api/control_handle.h"
#include "pixvane/pixvane.h"

using namespace pixvane;

extern "C" {

pixvane_status pixvane_macro_step_count(pixvane_control* control, size_t* count) {
    if (count == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&] {
        *count = control->shownSteps.count(control->control.macro());
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_macro_step_at(pixvane_control* control, size_t index, pixvane_macro_step* step) {
    if (step == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&]() -> pixvane_status {
        const MacroScript& macro = control->control.macro();
        if (index >= control->shownSteps.count(macro)) return PIXVANE_E_RANGE;
        *step = control->shownSteps.show(macro, index);
        return PIXVANE_OK;
    });
}

}  // extern "C"
