// Measures how soon the picture is seen, and how fluid it is moved.
// SPDX-License-Identifier: MIT
#pragma once

#include "main_window.h"

namespace studio {

/// Prints the milliseconds from the start of the process to the window's first frame and to the first one
/// with a picture, then quits. With `drags`, also frames per second while the picture is dragged at its
/// actual size.
void measure_start(MainWindow& window, bool drags);

}  // namespace studio
