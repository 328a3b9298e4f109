// The table's rows of ranks, scatter, focus and surfaces.
// SPDX-License-Identifier: MIT
#include "control/kernel_edits.h"
#include "control/member_table.h"

namespace pixvane {

std::vector<Row> effect_rows() { return {}; }

}  // namespace pixvane
