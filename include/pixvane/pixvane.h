/* Pixvane, an image-editing control for host programs: the C interface.
 * SPDX-License-Identifier: MIT
 *
 * A control owns one picture, its history of sixteen states and its view. A host creates a control, tells it
 * the size of the window it is shown in, and invokes members by name or by handle:
 *
 *     pixvane_control* control;
 *     pixvane_create(NULL, &control);
 *     pixvane_window_resize(control, 800, 600);
 *     pixvane_value name = pixvane_string("photo.jpg");
 *     pixvane_value loaded;
 *     pixvane_invoke(control, "LoadImage", &name, 1, &loaded);
 *     pixvane_free(control);
 *
 * A control is used by one thread at a time: a call from a second thread while one is inside is refused with
 * PIXVANE_E_BUSY. Any number of controls may live side by side. Call-backs and event handlers run on the
 * calling thread and may call the control back. All strings are UTF-8.
 */
#ifndef PIXVANE_H
#define PIXVANE_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#ifdef PIXVANE_BUILD
#define PIXVANE_API __declspec(dllexport)
#else
#define PIXVANE_API __declspec(dllimport)
#endif
#else
#define PIXVANE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status ------------------------------------------------------------------------------------------- */

typedef int32_t pixvane_status;

enum {
    PIXVANE_OK = 0,        /* the call was made; whether the member did anything is its result's business */
    PIXVANE_E_NULL = 1,    /* a pointer that must not be null is */
    PIXVANE_E_MEMBER = 2,  /* no member of this name or handle */
    PIXVANE_E_COUNT = 3,   /* wrong number of arguments */
    PIXVANE_E_TYPE = 4,    /* an argument of the wrong kind */
    PIXVANE_E_RANGE = 5,   /* a size or number that the function can't take */
    PIXVANE_E_BUSY = 6,    /* another thread, or a call further up this one's stack, is inside the control */
    PIXVANE_E_MEMORY = 7,  /* out of memory */
    PIXVANE_E_INTERNAL = 8 /* an error of the engine; the control is still usable */
};

/* A sentence in English that explains a status. Never null; valid for ever. */
PIXVANE_API const char* pixvane_status_text(pixvane_status status);

/* ---- Values ------------------------------------------------------------------------------------------- */

/* The kind of a value. */
enum {
    PIXVANE_NULL = 0,
    PIXVANE_INT32 = 1,       /* i */
    PIXVANE_DOUBLE = 2,      /* d */
    PIXVANE_BOOL = 3,        /* i: 0 is false, anything else true; results are -1 or 0 */
    PIXVANE_STRING = 4,      /* data: UTF-8, size bytes, no terminator needed */
    PIXVANE_BYTES = 5,       /* data: size bytes */
    PIXVANE_INT32_ARRAY = 6, /* data: size numbers of type int32_t */
    PIXVANE_POINTS = 7,      /* data: size points, each two int32_t: x, y */
    PIXVANE_COLOR = 8,       /* i: 0x00BBGGRR; where a colour is wanted an INT32 fits as well */
    PIXVANE_VALUES = 9       /* no kind of a value: a last argument that stands for any number of values */
};

typedef struct pixvane_value {
    int32_t kind;
    int32_t i;
    double d;
    const void* data;
    size_t size;
} pixvane_value;

static inline pixvane_value pixvane_null(void) {
    pixvane_value v = {PIXVANE_NULL, 0, 0.0, NULL, 0};
    return v;
}
static inline pixvane_value pixvane_int32(int32_t number) {
    pixvane_value v = {PIXVANE_INT32, 0, 0.0, NULL, 0};
    v.i = number;
    return v;
}
static inline pixvane_value pixvane_double(double number) {
    pixvane_value v = {PIXVANE_DOUBLE, 0, 0.0, NULL, 0};
    v.d = number;
    return v;
}
static inline pixvane_value pixvane_bool(int truth) {
    pixvane_value v = {PIXVANE_BOOL, 0, 0.0, NULL, 0};
    v.i = truth ? -1 : 0;
    return v;
}
static inline pixvane_value pixvane_color(uint32_t bgr) {
    pixvane_value v = {PIXVANE_COLOR, 0, 0.0, NULL, 0};
    v.i = (int32_t)bgr;
    return v;
}
/* The memory behind the following is only referred to and must last for the call. */
static inline pixvane_value pixvane_string_n(const char* text, size_t size) {
    pixvane_value v = {PIXVANE_STRING, 0, 0.0, NULL, 0};
    v.data = text;
    v.size = size;
    return v;
}
static inline pixvane_value pixvane_string(const char* text) {
    size_t size = 0;
    while (text && text[size]) ++size;
    return pixvane_string_n(text, size);
}
static inline pixvane_value pixvane_bytes(const void* bytes, size_t size) {
    pixvane_value v = {PIXVANE_BYTES, 0, 0.0, NULL, 0};
    v.data = bytes;
    v.size = size;
    return v;
}
static inline pixvane_value pixvane_int32_array(const int32_t* numbers, size_t count) {
    pixvane_value v = {PIXVANE_INT32_ARRAY, 0, 0.0, NULL, 0};
    v.data = numbers;
    v.size = count;
    return v;
}
static inline pixvane_value pixvane_points(const int32_t* coordinates, size_t points) {
    pixvane_value v = {PIXVANE_POINTS, 0, 0.0, NULL, 0};
    v.data = coordinates;
    v.size = points;
    return v;
}

/* ---- Controls ----------------------------------------------------------------------------------------- */

typedef struct pixvane_control pixvane_control;

/* What a host offers a control. Every call-back may be null; then the control keeps what it would have told
 * (pixvane_window_timers and the like tell it), or does without. */
typedef struct pixvane_host {
    size_t struct_size; /* sizeof(pixvane_host) */
    void* user;         /* handed to every call-back */
    /* The view has changed: show pixvane_window_frame. Called after every repaint. */
    void (*frame_ready)(void* user);
    /* Call pixvane_window_timer(control, id) every `milliseconds`, until stop_timer. Starting a timer that
     * runs changes its interval. */
    void (*start_timer)(void* user, int32_t id, int32_t milliseconds);
    void (*stop_timer)(void* user, int32_t id);
    /* Send all mouse messages to the control, wherever the pointer is (1), or no longer (0). */
    void (*set_capture)(void* user, int32_t captured);
    /* 0 the arrow; the other numbers are cursors of the control's own (pixvane_cursor_image). */
    void (*set_cursor)(void* user, int32_t cursor);
    /* Put the bytes of a BMP file on the clipboard; returns 0 if that fails. */
    int32_t (*offer_clipboard)(void* user, const void* bmp, size_t size);
    /* Hand a picture file that is on the clipboard to `deliver`, once; returns 0 if there is none. */
    int32_t (*request_clipboard)(void* user, void (*deliver)(void* receiver, const void* file, size_t size),
                                 void* receiver);
} pixvane_host;

/* Creates a control without a picture, in a window of size 0 x 0. `host` may be null. */
PIXVANE_API pixvane_status pixvane_create(const pixvane_host* host, pixvane_control** control);

/* Frees a control; null is fine. What it holds of the window, a timer and the mouse, it gives back first, by
 * the call-backs of its host. Legal from any thread while no call is inside, else PIXVANE_E_BUSY (so also
 * from within one of the control's own call-backs). */
PIXVANE_API pixvane_status pixvane_free(pixvane_control* control);

/* ---- Members ------------------------------------------------------------------------------------------ */

/* Calls a method, gets a property (no argument) or puts it (one argument). `result` may be null. A result of
 * kind STRING, BYTES, INT32_ARRAY or POINTS comes with its size and data == NULL: fetch it by
 * pixvane_take_result. A member without a result, and one that has nothing to return, gives PIXVANE_NULL. */
PIXVANE_API pixvane_status pixvane_invoke(pixvane_control* control, const char* member,
                                          const pixvane_value* arguments, size_t count,
                                          pixvane_value* result);

/* Copies the result of the last invoke into `buffer`, which holds `capacity` bytes (its elements take 1 byte
 * each, 4 for INT32_ARRAY, 8 for POINTS); PIXVANE_E_RANGE if that is too few. It can be taken once. */
PIXVANE_API pixvane_status pixvane_take_result(pixvane_control* control, void* buffer, size_t capacity);

/* A handle that spares the search by name: the same for all controls of the process; negative if there is no
 * such method or property. */
PIXVANE_API int32_t pixvane_find_member(const char* name);
PIXVANE_API pixvane_status pixvane_invoke_handle(pixvane_control* control, int32_t member,
                                                 const pixvane_value* arguments, size_t count,
                                                 pixvane_value* result);

enum { PIXVANE_METHOD = 0, PIXVANE_PROPERTY = 1, PIXVANE_EVENT = 2 };

typedef struct pixvane_argument_info {
    const char* name;
    int32_t kind;
    int32_t has_range; /* whether minimum and maximum mean anything */
    double minimum;    /* the member does nothing for values outside; infinite where there is no end */
    double maximum;
    int32_t has_slider; /* whether the range of a dialog's slider is given */
    double slider_minimum;
    double slider_maximum;
    int32_t has_default;
    double default_value; /* what a dialog shows first */
} pixvane_argument_info;

typedef struct pixvane_member_info {
    const char* name;
    int32_t type; /* PIXVANE_METHOD, PIXVANE_PROPERTY or PIXVANE_EVENT */
    const char* category;
    const char* help;   /* one line */
    int32_t result;     /* kind of the result, or of the property; PIXVANE_NULL if there is none */
    int32_t writable;   /* of a property */
    int32_t edits;      /* whether it changes the picture by a step that Undo takes back */
    int32_t macro_code; /* the code of its macro step, or -1 */
    int32_t argument_count;
    const pixvane_argument_info* arguments; /* of a writable property: the one argument of its put */
} pixvane_member_info;

/* The list of all members: methods, properties, events. */
PIXVANE_API size_t pixvane_member_count(void);
PIXVANE_API const pixvane_member_info* pixvane_member_at(size_t index); /* null beyond the end */

/* ---- Macros ------------------------------------------------------------------------------------------- */

/* Macros are recorded, saved, loaded and played by members (BeginMacros and the like); these functions show
 * what is in one. */

typedef struct pixvane_macro_step {
    int32_t code;
    const char* member; /* the member, or what else plays the step; null: the code is unknown */
    size_t offset;      /* of its arguments in the macro's stream */
    size_t size;        /* bytes of its arguments that are there */
    int32_t complete;   /* 0: the stream ends within its arguments or before; the run ends before this step */
    int32_t argument_count; /* of those that are whole */
    const char* const* names;
    const pixvane_value* arguments;
} pixvane_macro_step;

PIXVANE_API pixvane_status pixvane_macro_step_count(pixvane_control* control, size_t* count);
/* The step at `index`; PIXVANE_E_RANGE beyond the end. What it points to lasts until the macro changes or
 * this function is called again for the control. */
PIXVANE_API pixvane_status pixvane_macro_step_at(pixvane_control* control, size_t index,
                                                 pixvane_macro_step* step);

/* ---- Events ------------------------------------------------------------------------------------------- */

/* The arguments last for the call only. */
typedef void (*pixvane_event_handler)(void* user, const pixvane_value* arguments, size_t count);

/* Calls `handler` whenever the event fires, in the order of subscription. */
PIXVANE_API pixvane_status pixvane_subscribe(pixvane_control* control, const char* event,
                                             pixvane_event_handler handler, void* user,
                                             int32_t* subscription);
PIXVANE_API pixvane_status pixvane_unsubscribe(pixvane_control* control, int32_t subscription);

/* ---- The window --------------------------------------------------------------------------------------- */

enum { PIXVANE_LEFT = 0, PIXVANE_MIDDLE = 1, PIXVANE_RIGHT = 2 };
enum { PIXVANE_MOUSE_DOWN = 0, PIXVANE_MOUSE_UP = 1, PIXVANE_MOUSE_MOVE = 2, PIXVANE_DOUBLE_CLICK = 3 };
enum { PIXVANE_HELD_LEFT = 1, PIXVANE_HELD_MIDDLE = 2, PIXVANE_HELD_RIGHT = 4 };

/* The client size, 0..65535 a side. */
PIXVANE_API pixvane_status pixvane_window_resize(pixvane_control* control, int32_t width, int32_t height);
/* What the mouse does, in client coordinates, which are taken as 16 bits with a sign. `button` counts for all
 * but moves, `held` (a sum of PIXVANE_HELD_...) for moves. */
PIXVANE_API pixvane_status pixvane_window_mouse(pixvane_control* control, int32_t what, int32_t button,
                                                int32_t x, int32_t y, int32_t held);
/* The wheel turned by whole notches, positive away from the user: zooms at the pointer. */
PIXVANE_API pixvane_status pixvane_window_wheel(pixvane_control* control, int32_t notches, int32_t x,
                                                int32_t y);
/* A timer that the control started has ticked. */
PIXVANE_API pixvane_status pixvane_window_timer(pixvane_control* control, int32_t id);
/* Files were dropped on the window. Fires OnDropFile with the first path; nothing is loaded. */
PIXVANE_API pixvane_status pixvane_window_drop(pixvane_control* control, const char* const* paths,
                                               size_t count);
/* Zooms by whole steps (positive in, negative out), keeping the image point under (x, y) in place. */
PIXVANE_API pixvane_status pixvane_window_zoom_at(pixvane_control* control, int32_t steps, int32_t x,
                                                  int32_t y);
/* Moves the picture in the window, as far as it reaches beyond it. */
PIXVANE_API pixvane_status pixvane_window_pan(pixvane_control* control, int32_t dx, int32_t dy);

/* The last composed frame: its size, and if `buffer` is not null its pixels, bytes B, G, R, X, rows top
 * first (PIXVANE_E_RANGE if `capacity` bytes are too few). 0 x 0 as long as none was composed. */
PIXVANE_API pixvane_status pixvane_window_frame(pixvane_control* control, void* buffer, size_t capacity,
                                                int32_t* width, int32_t* height);

/* The same without a copy: `pixels` points to the frame until the control is resized, repaints or is freed,
 * which every call but these two may do. Null as long as none was composed. */
PIXVANE_API pixvane_status pixvane_window_frame_pixels(pixvane_control* control, const void** pixels,
                                                       int32_t* width, int32_t* height);

/* What a control in no window keeps: its running timers (up to `capacity` of them; `count` is how many there
 * are), whether it holds the mouse, and its cursor. Where the host takes these over, nothing is kept. */
PIXVANE_API pixvane_status pixvane_window_timers(pixvane_control* control, int32_t* ids,
                                                 int32_t* milliseconds, size_t capacity, size_t* count);
PIXVANE_API pixvane_status pixvane_window_captured(pixvane_control* control, int32_t* captured);
PIXVANE_API pixvane_status pixvane_window_cursor(pixvane_control* control, int32_t* cursor);

/* The picture of one of the control's own cursors: its size and hot spot, and if `buffer` is not null its
 * pixels, bytes B, G, R, A with straight alpha, rows top first (PIXVANE_E_RANGE if `capacity` bytes are too
 * few, or if there is no such cursor; the arrow is the system's). */
PIXVANE_API pixvane_status pixvane_cursor_image(int32_t cursor, void* buffer, size_t capacity, int32_t* width,
                                                int32_t* height, int32_t* hot_x, int32_t* hot_y);

/* ---- The process -------------------------------------------------------------------------------------- */

/* How many threads work on one command, the caller included: 1..64; at first the number of processors. The
 * result of a command never depends on it. */
PIXVANE_API pixvane_status pixvane_set_worker_threads(int32_t count);
PIXVANE_API int32_t pixvane_worker_threads(void);

/* Starts the random numbers of the calling thread anew, which the filters that scatter or add noise draw: the
 * same state gives the same picture. A thread starts with state 1. */
PIXVANE_API void pixvane_seed_random(uint32_t state);

/* The most bytes that all bitmaps of the process may take together; an allocation beyond it fails as if there
 * were no memory. At first three quarters of the machine's memory. */
PIXVANE_API pixvane_status pixvane_set_bitmap_limit(uint64_t bytes);
PIXVANE_API uint64_t pixvane_bitmap_limit(void);
/* Bytes in bitmaps now. */
PIXVANE_API uint64_t pixvane_bitmap_bytes(void);

/* "major.minor.patch". */
PIXVANE_API const char* pixvane_version(void);

#ifdef __cplusplus
}
#endif

#endif
