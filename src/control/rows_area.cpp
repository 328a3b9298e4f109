// The table's rows of what looks at the neighbours of a pixel: kernels, means, edges.
// SPDX-License-Identifier: MIT
#include "control/kernel_edits.h"
#include "control/member_table.h"

namespace pixvane {

std::vector<Row> area_rows() { return {}; }

}  // namespace pixvane
