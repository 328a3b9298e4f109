// The icon of the program, drawn by code.
// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

namespace studio {

/// A square of `side` pixels.
QImage app_icon(int side);

}  // namespace studio
