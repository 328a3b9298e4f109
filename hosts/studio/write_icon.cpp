// Writes the icon of the program to a file: pixvane-studio-icon SIDE FILE.
// SPDX-License-Identifier: MIT
#include <cstdio>

#include "app_icon.h"

int main(int count, char** arguments) {
    const int side = count == 3 ? QString::fromLocal8Bit(arguments[1]).toInt() : 0;
    if (side < 1 || side > 4096) {
        std::fprintf(stderr, "Usage: pixvane-studio-icon SIDE FILE\n");
        return 2;
    }
    if (!studio::app_icon(side).save(QString::fromLocal8Bit(arguments[2]), "PNG")) {
        std::fprintf(stderr, "pixvane-studio-icon: %s can't be written\n", arguments[2]);
        return 1;
    }
    return 0;
}
