/* The control in a bare X11 window: what a toolkit has to do for it, in C.
 * SPDX-License-Identifier: MIT
 *
 * The left button drags the picture, the wheel zooms, + and - zoom, the arrow keys move, f fits, 1 shows the
 * picture at 100 %, i inverts it, u undoes, q quits. */
#define _POSIX_C_SOURCE 200809L
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/cursorfont.h>
#include <X11/keysym.h>
#include <pixvane/pixvane.h>
#include <poll.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

enum { kTimers = 8, kDoubleClick = 400, kStep = 48 };

typedef struct window {
    Display* display;
    Window id;
    GC gc;
    pixvane_control* control;
    int stale; /* a newer frame is ready */
    struct timer {
        int id, interval; /* 0: stopped */
        long long due;
    } timers[kTimers];
    Time pressed; /* of the last press of a button, and where it was */
    unsigned pressedButton;
    int pressedX, pressedY;
} window;

static long long now(void) {
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

/* ---- What the control asks for ---- */

static void frame_ready(void* user) { ((window*)user)->stale = 1; }

static void stop_timer(void* user, int32_t id) {
    window* w = user;
    for (int i = 0; i < kTimers; ++i)
        if (w->timers[i].id == id) w->timers[i].interval = 0;
}

static void start_timer(void* user, int32_t id, int32_t milliseconds) {
    window* w = user;
    stop_timer(w, id);
    for (int i = 0; i < kTimers; ++i) {
        if (w->timers[i].interval != 0) continue;
        w->timers[i] = (struct timer){id, milliseconds > 0 ? milliseconds : 1, now() + milliseconds};
        return;
    }
}

static void set_cursor(void* user, int32_t cursor) {
    window* w = user;
    if (cursor == 0) {
        XUndefineCursor(w->display, w->id);
        return;
    }
    Cursor cross = XCreateFontCursor(w->display, XC_crosshair);
    XDefineCursor(w->display, w->id, cross);
    XFreeCursor(w->display, cross);
}

/* ---- What the window gets ---- */

/* Shows the last frame; 24 bits deep or more, as every screen is by now. */
static void show(window* w) {
    const void* pixels = NULL;
    int32_t width = 0, height = 0;
    w->stale = 0;
    if (pixvane_window_frame_pixels(w->control, &pixels, &width, &height) != PIXVANE_OK || !pixels) return;
    const int screen = DefaultScreen(w->display);
    XImage* image = XCreateImage(w->display, DefaultVisual(w->display, screen),
                                 (unsigned)DefaultDepth(w->display, screen), ZPixmap, 0, (char*)pixels,
                                 (unsigned)width, (unsigned)height, 32, width * 4);
    if (image == NULL) return;
    image->byte_order = LSBFirst; /* B, G, R, X */
    XPutImage(w->display, w->id, w->gc, image, 0, 0, 0, 0, (unsigned)width, (unsigned)height);
    image->data = NULL; /* the control's */
    XDestroyImage(image);
}

static void press(window* w, const XButtonEvent* event) {
    if (event->button == Button4 || event->button == Button5) {
        pixvane_window_wheel(w->control, event->button == Button4 ? 1 : -1, event->x, event->y);
        return;
    }
    if (event->button > Button3) return;
    const int again = event->button == w->pressedButton && event->time - w->pressed < kDoubleClick &&
                      abs(event->x - w->pressedX) < 4 && abs(event->y - w->pressedY) < 4;
    w->pressed = event->time;
    w->pressedButton = again ? 0 : event->button; /* a third press is a first one */
    w->pressedX = event->x;
    w->pressedY = event->y;
    pixvane_window_mouse(w->control, again ? PIXVANE_DOUBLE_CLICK : PIXVANE_MOUSE_DOWN,
                         (int32_t)event->button - 1, event->x, event->y, 0);
}

static void move(window* w, const XMotionEvent* event) {
    const int held = (event->state & Button1Mask ? PIXVANE_HELD_LEFT : 0) |
                     (event->state & Button2Mask ? PIXVANE_HELD_MIDDLE : 0) |
                     (event->state & Button3Mask ? PIXVANE_HELD_RIGHT : 0);
    pixvane_window_mouse(w->control, PIXVANE_MOUSE_MOVE, 0, event->x, event->y, held);
}

/* Returns 0 when it is time to go. */
static int type(window* w, XKeyEvent* event) {
    static const struct {
        KeySym key;
        const char* member;
    } commands[] = {
        {XK_equal, "ZoomIn"}, {XK_KP_Add, "ZoomIn"}, {XK_minus, "ZoomOut"}, {XK_KP_Subtract, "ZoomOut"},
        {XK_f, "ZoomToFit"},  {XK_1, "ActialSize"},  {XK_i, "Invert"},      {XK_u, "Undo"}};
    const KeySym key = XLookupKeysym(event, 0);
    for (size_t i = 0; i < sizeof commands / sizeof commands[0]; ++i)
        if (commands[i].key == key) pixvane_invoke(w->control, commands[i].member, NULL, 0, NULL);
    const int dx = (key == XK_Left) - (key == XK_Right), dy = (key == XK_Up) - (key == XK_Down);
    if (dx != 0 || dy != 0) pixvane_window_pan(w->control, dx * kStep, dy * kStep);
    return key != XK_q;
}

static int handle(window* w, XEvent* event, Atom close) {
    const XConfigureEvent* shape = &event->xconfigure;
    if (event->type == KeyPress) return type(w, &event->xkey);
    if (event->type == ClientMessage) return (Atom)event->xclient.data.l[0] != close;
    if (event->type == ConfigureNotify) pixvane_window_resize(w->control, shape->width, shape->height);
    if (event->type == Expose) w->stale = 1;
    if (event->type == MotionNotify) move(w, &event->xmotion);
    if (event->type == ButtonPress) press(w, &event->xbutton);
    if (event->type == ButtonRelease && event->xbutton.button <= Button3)
        pixvane_window_mouse(w->control, PIXVANE_MOUSE_UP, (int32_t)event->xbutton.button - 1,
                             event->xbutton.x, event->xbutton.y, 0);
    return 1;
}

/* Ticks what is due; how long to wait for the next tick, in milliseconds, -1 for ever. */
static int tick(window* w) {
    long long next = -1;
    for (int i = 0; i < kTimers; ++i) {
        struct timer* timer = &w->timers[i];
        if (timer->interval != 0 && timer->due <= now()) {
            timer->due = now() + timer->interval;
            pixvane_window_timer(w->control, timer->id);
        }
        if (timer->interval != 0 && (next < 0 || timer->due < next)) next = timer->due;
    }
    return next < 0 ? -1 : next > now() ? (int)(next - now()) : 0;
}

int main(int count, char** arguments) {
    window w = {.display = XOpenDisplay(NULL)};
    if (w.display == NULL || count != 2) return fprintf(stderr, "usage: window PICTURE (on a display)\n"), 2;
    w.id = XCreateSimpleWindow(w.display, DefaultRootWindow(w.display), 0, 0, 800, 600, 0, 0, 0);
    w.gc = XCreateGC(w.display, w.id, 0, NULL);
    XStoreName(w.display, w.id, "Pixvane window");
    XSelectInput(w.display, w.id,
                 ExposureMask | StructureNotifyMask | KeyPressMask | ButtonPressMask | ButtonReleaseMask |
                     PointerMotionMask);
    Atom close = XInternAtom(w.display, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(w.display, w.id, &close, 1);

    /* X11 sends the pointer here while a button is held, so there is nothing to capture. */
    const pixvane_host host = {.struct_size = sizeof host,
                               .user = &w,
                               .frame_ready = frame_ready,
                               .start_timer = start_timer,
                               .stop_timer = stop_timer,
                               .set_cursor = set_cursor};
    if (pixvane_create(&host, &w.control) != PIXVANE_OK) return 1;
    pixvane_window_resize(w.control, 800, 600);
    const pixvane_value picture = pixvane_string(arguments[1]);
    pixvane_value loaded = pixvane_null();
    pixvane_invoke(w.control, "LoadImage", &picture, 1, &loaded);
    if (loaded.i == 0) fprintf(stderr, "window: there is no picture %s\n", arguments[1]);
    XMapWindow(w.display, w.id);

    for (int running = 1; running;) {
        const int wait = tick(&w);
        if (w.stale && XPending(w.display) == 0) show(&w);
        struct pollfd connection = {.fd = ConnectionNumber(w.display), .events = POLLIN};
        if (XPending(w.display) == 0) poll(&connection, 1, wait);
        while (running && XPending(w.display) != 0) {
            XEvent event;
            XNextEvent(w.display, &event);
            running = handle(&w, &event, close);
        }
    }
    pixvane_free(w.control);
    XCloseDisplay(w.display);
    return loaded.i == 0;
}
