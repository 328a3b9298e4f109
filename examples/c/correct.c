/* A host in C: takes a picture, corrects it, goes back and forth in its history, saves it.
 * SPDX-License-Identifier: MIT */
#include <pixvane/pixvane.h>
#include <stdio.h>
#include <stdlib.h>

enum { WIDTH = 320, HEIGHT = 240, PNG = 4 };

/* Calls a member; a host that knows its members is never refused, so a refusal ends the program. */
static pixvane_value call(pixvane_control* control, const char* member, const pixvane_value* arguments,
                          size_t count) {
    pixvane_value result = pixvane_null();
    const pixvane_status status = pixvane_invoke(control, member, arguments, count, &result);
    if (status != PIXVANE_OK) {
        fprintf(stderr, "correct: %s: %s\n", member, pixvane_status_text(status));
        exit(1);
    }
    return result;
}

static pixvane_value call_plain(pixvane_control* control, const char* member) {
    return call(control, member, NULL, 0);
}

/* A dull picture: reds grow to the right, greens downwards. */
static int make_picture(pixvane_control* control) {
    uint8_t* pixels = malloc((size_t)WIDTH * HEIGHT * 4);
    if (!pixels) return 0;
    for (int y = 0; y < HEIGHT; ++y) {
        for (int x = 0; x < WIDTH; ++x) {
            uint8_t* pixel = pixels + ((size_t)y * WIDTH + (size_t)x) * 4;
            pixel[0] = 80;
            pixel[1] = (uint8_t)(60 + y * 100 / (HEIGHT - 1));
            pixel[2] = (uint8_t)(40 + x * 120 / (WIDTH - 1));
            pixel[3] = 255;
        }
    }
    const pixvane_value arguments[] = {pixvane_bytes(pixels, (size_t)WIDTH * HEIGHT * 4),
                                       pixvane_int32(WIDTH), pixvane_int32(HEIGHT)};
    const int made = call(control, "LoadFromImageArray", arguments, 3).i != 0;
    free(pixels);
    return made;
}

/* Where the histogram of luminance peaks. */
static void print_peak(pixvane_control* control, const char* when) {
    int32_t bins[256];
    const pixvane_value histogram = call_plain(control, "GetLHistogram");
    if (histogram.kind != PIXVANE_INT32_ARRAY || histogram.size != 256 ||
        pixvane_take_result(control, bins, sizeof bins) != PIXVANE_OK)
        return;
    int peak = 0;
    for (int i = 1; i < 256; ++i)
        if (bins[i] > bins[peak]) peak = i;
    printf("%-18s most pixels at luminance %d: %d\n", when, peak, (int)bins[peak]);
}

static void correct(pixvane_control* control) {
    print_peak(control, "as it came");
    call_plain(control, "Autolevels");
    print_peak(control, "Autolevels");
    const pixvane_value percent = pixvane_int32(130);
    call(control, "Saturate", &percent, 1);
    print_peak(control, "Saturate 130");
    call_plain(control, "Undo");
    print_peak(control, "undone");
    call_plain(control, "Redo");
    print_peak(control, "redone");
    const pixvane_value border[] = {pixvane_int32(8), pixvane_color(0x00FFFFFF)};
    call(control, "AddSimpleBorder", border, 2);
}

int main(int count, char** texts) {
    if (count != 2 && count != 3) {
        fprintf(stderr, "Usage: correct OUT.png [IN]\n");
        return 2;
    }
    pixvane_control* control = NULL;
    if (pixvane_create(NULL, &control) != PIXVANE_OK) {
        fprintf(stderr, "correct: no memory for a control\n");
        return 1;
    }
    /* A control fits a picture into its window when the picture comes. */
    pixvane_window_resize(control, 800, 600);

    int done = 0;
    const pixvane_value in = pixvane_string(count == 3 ? texts[2] : "");
    if (count == 3 ? call(control, "LoadImage", &in, 1).i != 0 : make_picture(control)) {
        correct(control);
        const pixvane_value out[] = {pixvane_string(texts[1]), pixvane_int32(PNG)};
        done = call(control, "SaveImage", out, 2).i != 0;
        if (!done) fprintf(stderr, "correct: can't write %s\n", texts[1]);
    } else {
        fprintf(stderr, "correct: no picture to work on\n");
    }
    pixvane_free(control);
    return done ? 0 : 1;
}
