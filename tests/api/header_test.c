// The header is C: a program in C11 that makes a picture and reads a pixel.
// SPDX-License-Identifier: MIT
#include "pixvane/pixvane.h"

int32_t pixel_by_c(void) {
    pixvane_control* control = NULL;
    pixvane_value size[2];
    pixvane_value at[2];
    pixvane_value pixel = pixvane_null();
    if (pixvane_create(NULL, &control) != PIXVANE_OK) return -1;
    size[0] = size[1] = pixvane_int32(8);
    at[0] = at[1] = pixvane_int32(7);
    pixvane_invoke(control, "NewImage", size, 2, NULL);
    pixvane_invoke(control, "Invert", NULL, 0, NULL);
    pixvane_invoke(control, "Undo", NULL, 0, NULL);
    pixvane_invoke(control, "GetPixel", at, 2, &pixel);
    pixvane_free(control);
    return pixel.kind == PIXVANE_COLOR ? pixel.i : -1;
}
