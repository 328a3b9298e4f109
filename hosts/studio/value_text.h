// Values of the control as a person reads them.
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "pixvane/pixvane.h"

namespace studio {

/// Numbers, #RRGGBB, "text"; long arrays by their length.
QString text_of(const pixvane_value& value);

}  // namespace studio
