/* The smallest host: makes a picture, edits it and goes back.
 * SPDX-License-Identifier: MIT */
#include <pixvane/pixvane.h>
#include <stdio.h>

static int fails(pixvane_control* control, const char* member, const pixvane_value* arguments, size_t count,
                 int32_t expected) {
    pixvane_value result;
    const pixvane_status status = pixvane_invoke(control, member, arguments, count, &result);
    if (status == PIXVANE_OK && result.i == expected) return 0;
    fprintf(stderr, "%s: %s, result %d\n", member, pixvane_status_text(status), (int)result.i);
    return 1;
}

int main(void) {
    pixvane_control* control = NULL;
    if (pixvane_create(NULL, &control) != PIXVANE_OK) return 1;
    const pixvane_value size[] = {pixvane_int32(16), pixvane_int32(12)};
    const pixvane_value border[] = {pixvane_int32(2), pixvane_color(0xFF)};
    const int failures = fails(control, "NewImage", size, 2, 0) ||
                         fails(control, "AddSimpleBorder", border, 2, 0) ||
                         fails(control, "ImageWidth", NULL, 0, 20) || fails(control, "Undo", NULL, 0, 0) ||
                         fails(control, "ImageWidth", NULL, 0, 16);
    return failures || pixvane_free(control) != PIXVANE_OK;
}
