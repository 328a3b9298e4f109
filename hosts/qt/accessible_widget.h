// What the widget tells people who can't see it.
// SPDX-License-Identifier: MIT
#pragma once

/// From now on, widgets have a name and tell what they show. Any number of calls do the same as one.
void install_accessible_pixvane_widget();
