// Masks by Cairo, text by Pango.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "draw/rasterizer.h"

namespace pixvane {

/// One for each control. Making it costs nothing; what it needs is made when it is first asked for.
std::unique_ptr<Rasterizer> make_cairo_rasterizer();

}  // namespace pixvane
