// The C interface as a host sees it: statuses, results, events, threads, the window, limits of the process.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "pixvane/pixvane.h"

extern "C" std::int32_t pixel_by_c(void);

namespace {

class Control {
public:
    explicit Control(const pixvane_host* host = nullptr) {
        EXPECT_EQ(pixvane_create(host, &handle), PIXVANE_OK);
    }
    ~Control() { EXPECT_EQ(pixvane_free(handle), PIXVANE_OK); }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    pixvane_status call(const char* member, const std::vector<pixvane_value>& arguments = {},
                        pixvane_value* result = nullptr) {
        return pixvane_invoke(handle, member, arguments.data(), arguments.size(), result);
    }
    pixvane_value get(const char* member, const std::vector<pixvane_value>& arguments = {}) {
        pixvane_value result = pixvane_null();
        EXPECT_EQ(call(member, arguments, &result), PIXVANE_OK) << member;
        return result;
    }
    void make(std::int32_t width, std::int32_t height) {
        ASSERT_EQ(call("NewImage", {pixvane_int32(width), pixvane_int32(height)}), PIXVANE_OK);
    }

    pixvane_control* handle = nullptr;
};

TEST(Interface, is_usable_from_c) { EXPECT_EQ(pixel_by_c(), 0xFFFFFF); }

TEST(Interface, answers_every_mistake_with_its_status) {
    Control c;
    pixvane_value number = pixvane_int32(1);
    pixvane_value broken = number;
    broken.kind = 99;
    EXPECT_EQ(c.call("NoSuchMember"), PIXVANE_E_MEMBER);
    EXPECT_EQ(c.call("OnDropFile"), PIXVANE_E_MEMBER);
    EXPECT_EQ(c.call("Saturate"), PIXVANE_E_COUNT);
    EXPECT_EQ(c.call("Saturate", std::vector<pixvane_value>(17, number)), PIXVANE_E_COUNT);
    EXPECT_EQ(c.call("Saturate", {pixvane_double(1)}), PIXVANE_E_TYPE);
    EXPECT_EQ(c.call("Saturate", {broken}), PIXVANE_E_TYPE);
    EXPECT_EQ(c.call("ImageWidth", {number}), PIXVANE_E_COUNT);
    EXPECT_EQ(c.call("LoadImage", {pixvane_string_n(nullptr, 5)}), PIXVANE_E_TYPE);
    EXPECT_EQ(c.call("Picture", {pixvane_bytes("x", SIZE_MAX)}), PIXVANE_E_TYPE);
    EXPECT_EQ(c.call("LoadImage", {pixvane_string_n(nullptr, 0)}), PIXVANE_OK);
    EXPECT_EQ(pixvane_invoke(c.handle, "Saturate", nullptr, 1, nullptr), PIXVANE_E_NULL);
    EXPECT_EQ(pixvane_invoke(c.handle, nullptr, nullptr, 0, nullptr), PIXVANE_E_NULL);
    EXPECT_EQ(pixvane_invoke(nullptr, "Saturate", &number, 1, nullptr), PIXVANE_E_NULL);
    EXPECT_EQ(pixvane_invoke_handle(c.handle, -1, nullptr, 0, nullptr), PIXVANE_E_MEMBER);
    EXPECT_EQ(pixvane_invoke_handle(c.handle, 100000, nullptr, 0, nullptr), PIXVANE_E_MEMBER);
    EXPECT_EQ(pixvane_create(nullptr, nullptr), PIXVANE_E_NULL);
    EXPECT_EQ(pixvane_free(nullptr), PIXVANE_OK);
    EXPECT_EQ(pixvane_window_resize(c.handle, -1, 5), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_window_resize(c.handle, 5, 65536), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_window_mouse(c.handle, 9, 0, 0, 0, 0), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_window_mouse(c.handle, PIXVANE_MOUSE_DOWN, 3, 0, 0, 0), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_set_worker_threads(0), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_set_worker_threads(65), PIXVANE_E_RANGE);
    for (pixvane_status s = -1; s < 12; ++s) EXPECT_GT(std::string(pixvane_status_text(s)).size(), 5u);
}

TEST(Interface, lists_its_members_and_calls_them_by_handle) {
    ASSERT_GT(pixvane_member_count(), 40u);
    EXPECT_EQ(pixvane_member_at(pixvane_member_count()), nullptr);
    Control c;
    c.make(8, 8);
    for (std::size_t i = 0; i < pixvane_member_count(); ++i) {
        const pixvane_member_info* info = pixvane_member_at(i);
        ASSERT_NE(info, nullptr);
        const std::int32_t handle = pixvane_find_member(info->name);
        EXPECT_EQ(handle, info->type == PIXVANE_EVENT ? -1 : static_cast<std::int32_t>(i)) << info->name;
        pixvane_value value;
        if (info->type != PIXVANE_PROPERTY) continue;
        EXPECT_EQ(pixvane_invoke_handle(c.handle, handle, nullptr, 0, &value), PIXVANE_OK) << info->name;
        EXPECT_EQ(value.kind, info->result) << info->name;
        EXPECT_EQ(info->writable, info->argument_count) << info->name;
    }
    const pixvane_member_info* gamma =
        pixvane_member_at(static_cast<std::size_t>(pixvane_find_member("Gamma")));
    ASSERT_EQ(gamma->argument_count, 1);
    EXPECT_EQ(gamma->arguments[0].kind, PIXVANE_DOUBLE);
    EXPECT_EQ(gamma->arguments[0].minimum, 0.02);
    EXPECT_TRUE(std::isinf(gamma->arguments[0].maximum));
    EXPECT_EQ(gamma->macro_code, 29);
    EXPECT_EQ(pixvane_find_member(nullptr), -1);
}

TEST(Results, are_taken_once_by_a_buffer_that_is_large_enough) {
    Control c;
    const std::vector<std::uint8_t> pixels(6 * 5 * 4, 0x40);
    EXPECT_EQ(c.get("LoadFromImageArray",
                    {pixvane_bytes(pixels.data(), pixels.size()), pixvane_int32(6), pixvane_int32(5)})
                  .i,
              -1);
    const pixvane_value array = c.get("GetImageArray");
    EXPECT_EQ(array.kind, PIXVANE_BYTES);
    EXPECT_EQ(array.data, nullptr);
    ASSERT_EQ(array.size, pixels.size());
    std::vector<std::uint8_t> taken(array.size);
    EXPECT_EQ(pixvane_take_result(c.handle, taken.data(), taken.size() - 1), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_take_result(c.handle, nullptr, taken.size()), PIXVANE_E_NULL);
    // An edit between the two doesn't reach what was returned... once the pixels are out.
    EXPECT_EQ(pixvane_take_result(c.handle, taken.data(), taken.size()), PIXVANE_OK);
    EXPECT_EQ(taken, pixels);
    EXPECT_EQ(pixvane_take_result(c.handle, nullptr, 0), PIXVANE_OK) << "nothing is left to take";
    const pixvane_value histogram = c.get("GetRHistogram");
    EXPECT_EQ(histogram.kind, PIXVANE_INT32_ARRAY);
    std::vector<std::int32_t> bins(histogram.size);
    EXPECT_EQ(pixvane_take_result(c.handle, bins.data(), bins.size() * sizeof(bins[0])), PIXVANE_OK);
    EXPECT_EQ(bins[0x40], 30);
}

TEST(Threads, are_refused_while_another_is_inside) {
    Control c;
    struct Shared {
        pixvane_control* control;
        pixvane_status fromOutside = PIXVANE_OK, freed = PIXVANE_OK, nested = PIXVANE_E_BUSY;
    } shared{c.handle};
    std::int32_t subscription = 0;
    const auto handler = [](void* user, const pixvane_value*, std::size_t) {
        auto& s = *static_cast<Shared*>(user);
        std::thread([&] { s.fromOutside = pixvane_window_pan(s.control, 1, 1); }).join();
        s.nested = pixvane_invoke(s.control, "IsEmpty", nullptr, 0, nullptr);
        s.freed = pixvane_free(s.control);
    };
    ASSERT_EQ(pixvane_subscribe(c.handle, "OnDropFile", handler, &shared, &subscription), PIXVANE_OK);
    EXPECT_EQ(pixvane_subscribe(c.handle, "OnNothing", handler, &shared, nullptr), PIXVANE_E_MEMBER);
    const char* path = "first";
    EXPECT_EQ(pixvane_window_drop(c.handle, &path, 1), PIXVANE_OK);
    EXPECT_EQ(shared.fromOutside, PIXVANE_E_BUSY);
    EXPECT_EQ(shared.nested, PIXVANE_OK);
    EXPECT_EQ(shared.freed, PIXVANE_E_BUSY);
    EXPECT_EQ(pixvane_unsubscribe(c.handle, subscription), PIXVANE_OK);
    EXPECT_EQ(pixvane_unsubscribe(c.handle, subscription), PIXVANE_E_RANGE);
    // Afterwards any thread may come in.
    pixvane_status later = PIXVANE_E_BUSY;
    std::thread([&] { later = c.call("IsEmpty"); }).join();
    EXPECT_EQ(later, PIXVANE_OK);
}

TEST(Threads, may_each_work_with_a_control_of_their_own) {
    std::vector<std::thread> threads;
    std::atomic<int> right{0};
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            Control c;
            c.make(700 + i, 300);
            for (int k = 0; k < 20; ++k) c.call(k % 3 == 0 ? "Invert" : "Sepia");
            for (int k = 0; k < 15; ++k) c.call("Undo");
            if (c.get("ImageWidth").i == 700 + i && c.get("UndoEnable").i == 0) ++right;
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, 4);
}

TEST(Threads, come_back_in_a_child_after_a_fork) {
    ASSERT_EQ(pixvane_set_worker_threads(3), PIXVANE_OK);
    EXPECT_EQ(pixvane_worker_threads(), 3);
    Control c;
    c.make(2000, 1500);
    EXPECT_EQ(c.call("Invert"), PIXVANE_OK);
    const pid_t child = fork();
    if (child == 0) {
        alarm(20);  // a child that waits for the parent's threads waits for ever
        pixvane_value pixel = pixvane_null();
        const pixvane_value at[] = {pixvane_int32(1999), pixvane_int32(1499)};
        pixvane_invoke(c.handle, "Invert", nullptr, 0, nullptr);
        pixvane_invoke(c.handle, "GetPixel", at, 2, &pixel);
        _exit(pixel.i == 0xFFFFFF && pixvane_worker_threads() == 3 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(c.call("Invert"), PIXVANE_OK) << "the parent goes on";
}

TEST(Events, carry_their_arguments) {
    Control c;
    std::string path;
    const auto handler = [](void* user, const pixvane_value* arguments, std::size_t count) {
        ASSERT_EQ(count, 1u);
        *static_cast<std::string*>(user) = {static_cast<const char*>(arguments[0].data), arguments[0].size};
    };
    ASSERT_EQ(pixvane_subscribe(c.handle, "OnDropFile", handler, &path, nullptr), PIXVANE_OK);
    const char* paths[] = {"/tmp/\xC3\xA4.jpg", "other"};
    EXPECT_EQ(pixvane_window_drop(c.handle, nullptr, 0), PIXVANE_OK);
    EXPECT_EQ(path, "");
    EXPECT_EQ(pixvane_window_drop(c.handle, paths, 2), PIXVANE_OK);
    EXPECT_EQ(path, paths[0]);
    EXPECT_EQ(pixvane_window_drop(c.handle, nullptr, 2), PIXVANE_E_NULL);
}

TEST(Window, tells_a_host_of_changes_and_a_host_of_older_times_only_what_it_knows) {
    int frames = 0;
    pixvane_host host = {};
    host.struct_size = sizeof host;
    host.user = &frames;
    host.frame_ready = [](void* user) { ++*static_cast<int*>(user); };
    Control c(&host);
    EXPECT_EQ(pixvane_window_resize(c.handle, 100, 80), PIXVANE_OK);
    EXPECT_EQ(frames, 1);
    c.make(50, 50);
    c.call("Invert");
    EXPECT_EQ(frames, 3);
    host.struct_size = offsetof(pixvane_host, frame_ready);
    Control older(&host);
    EXPECT_EQ(pixvane_window_resize(older.handle, 100, 80), PIXVANE_OK);
    EXPECT_EQ(frames, 3);
}

TEST(Window, zooms_and_shows_its_frame) {
    Control c;
    std::int32_t width = -1, height = -1;
    EXPECT_EQ(pixvane_window_zoom_at(c.handle, 3, 5, 5), PIXVANE_OK);
    EXPECT_EQ(c.get("Zoom").d, 1.0) << "nothing without a picture";
    EXPECT_EQ(pixvane_window_frame(c.handle, nullptr, 0, &width, &height), PIXVANE_OK);
    EXPECT_EQ(width + height, 0);
    pixvane_window_resize(c.handle, 100, 100);
    c.make(400, 400);
    EXPECT_EQ(c.get("Zoom").d, 0.23);
    EXPECT_EQ(pixvane_window_wheel(c.handle, 2, 50, 50), PIXVANE_OK);
    EXPECT_DOUBLE_EQ(c.get("Zoom").d, 0.23 * 1.1 * 1.1);
    EXPECT_EQ(pixvane_window_pan(c.handle, 1, 0), PIXVANE_OK);
    c.call("ZoomToFit");
    std::vector<std::uint32_t> pixels(100 * 100 + 1, 7);
    EXPECT_EQ(pixvane_window_frame(c.handle, pixels.data(), 100 * 100 * 4 - 1, &width, &height),
              PIXVANE_E_RANGE);
    EXPECT_EQ(pixels[0], 7u);
    EXPECT_EQ(pixvane_window_frame(c.handle, pixels.data(), 100 * 100 * 4, &width, &height), PIXVANE_OK);
    EXPECT_EQ(width + height, 200);
    EXPECT_EQ(pixels[0], 0xFF00008Bu) << "the background";
    EXPECT_EQ(pixels[50 * 100 + 50], 0xFFFFFFFFu) << "the new picture";
    EXPECT_EQ(pixels[100 * 100], 7u);
    const void* shown = nullptr;
    EXPECT_EQ(pixvane_window_frame_pixels(c.handle, &shown, &width, &height), PIXVANE_OK);
    EXPECT_EQ(std::memcmp(shown, pixels.data(), 100 * 100 * 4), 0);
    EXPECT_EQ(pixvane_window_frame_pixels(c.handle, nullptr, &width, &height), PIXVANE_E_NULL);
}

TEST(Macros, show_their_steps_and_what_they_do_not_hold) {
    Control c;
    std::size_t count = 1;
    pixvane_macro_step step;
    EXPECT_EQ(pixvane_macro_step_count(c.handle, &count), PIXVANE_OK);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(pixvane_macro_step_count(c.handle, nullptr), PIXVANE_E_NULL);
    EXPECT_EQ(pixvane_macro_step_count(nullptr, &count), PIXVANE_E_NULL);
    EXPECT_EQ(pixvane_macro_step_at(c.handle, 0, &step), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_macro_step_at(c.handle, 0, nullptr), PIXVANE_E_NULL);
    c.call("BeginMacros");
    c.call("Gamma", {pixvane_double(0.5)});
    EXPECT_EQ(pixvane_macro_step_count(c.handle, &count), PIXVANE_OK);
    EXPECT_EQ(count, 28u);
    ASSERT_EQ(pixvane_macro_step_at(c.handle, 27, &step), PIXVANE_OK);
    EXPECT_STREQ(step.member, "Gamma");
    EXPECT_EQ(step.offset + step.size, 78u + 8);
    ASSERT_EQ(step.argument_count, 1);
    EXPECT_STREQ(step.names[0], "Level");
    EXPECT_EQ(step.arguments[0].d, 0.5);
}

TEST(Window, hands_mouse_and_timer_to_the_control_and_keeps_what_it_asks_for) {
    Control c;
    pixvane_window_resize(c.handle, 100, 100);
    c.make(400, 300);
    c.call("ActialSize");
    std::vector<std::int32_t> told;
    const auto handler = [](void* user, const pixvane_value* arguments, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            static_cast<std::vector<std::int32_t>*>(user)->push_back(arguments[i].i);
    };
    ASSERT_EQ(pixvane_subscribe(c.handle, "OnMouseDown", handler, &told, nullptr), PIXVANE_OK);
    // Whether the mouse is captured, the cursor, and each timer with its interval.
    const auto kept = [&] {
        std::int32_t captured = -1, cursor = -1, id[4], milliseconds[4];
        std::size_t timers = 0;
        EXPECT_EQ(pixvane_window_captured(c.handle, &captured), PIXVANE_OK);
        EXPECT_EQ(pixvane_window_cursor(c.handle, &cursor), PIXVANE_OK);
        EXPECT_EQ(pixvane_window_timers(c.handle, id, milliseconds, 4, &timers), PIXVANE_OK);
        std::vector<std::int32_t> all = {captured, cursor};
        for (std::size_t i = 0; i < timers; ++i) all.insert(all.end(), {id[i], milliseconds[i]});
        return all;
    };
    using Kept = std::vector<std::int32_t>;
    EXPECT_EQ(kept(), (Kept{0, 0}));
    pixvane_window_mouse(c.handle, PIXVANE_MOUSE_DOWN, PIXVANE_LEFT, 20, 30, 0);
    // The centre of the picture is that of the window, and the first pixel of the image rectangle is (0, 0).
    EXPECT_EQ(told, (std::vector<std::int32_t>{0, 20 + 150 - 1, 30 + 100 - 1}));
    EXPECT_EQ(kept(), (Kept{1, 0}));
    c.call("PaintStatus", {pixvane_int32(7)});
    EXPECT_EQ(kept(), (Kept{0, 0, 1, 50}));
    EXPECT_EQ(pixvane_window_timer(c.handle, 1), PIXVANE_OK);
    c.call("PaintStatus", {pixvane_int32(22)});
    EXPECT_EQ(kept(), (Kept{0, 208}));
}

TEST(Cursors, are_pictures_with_a_hot_spot) {
    std::int32_t w = 0, h = 0, x = 0, y = 0;
    EXPECT_EQ(pixvane_cursor_image(0, nullptr, 0, &w, &h, &x, &y), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_cursor_image(208, nullptr, 0, nullptr, &h, &x, &y), PIXVANE_E_NULL);
    ASSERT_EQ(pixvane_cursor_image(208, nullptr, 0, &w, &h, &x, &y), PIXVANE_OK);
    std::vector<unsigned char> pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 4, 77);
    EXPECT_EQ(pixvane_cursor_image(208, pixels.data(), pixels.size() - 1, &w, &h, &x, &y), PIXVANE_E_RANGE);
    EXPECT_EQ(pixvane_cursor_image(208, pixels.data(), pixels.size(), &w, &h, &x, &y), PIXVANE_OK);
    EXPECT_EQ(pixels[3], 0) << "the corner is clear";
}

TEST(Process, limits_the_bytes_of_bitmaps) {
    Control c;
    const auto pixel = [&] { return c.get("GetPixel", {pixvane_int32(5), pixvane_int32(5)}).i; };
    const std::uint64_t before = pixvane_bitmap_bytes();
    const std::uint64_t limit = pixvane_bitmap_limit();
    EXPECT_GT(limit, 100u << 20);
    ASSERT_EQ(pixvane_set_bitmap_limit(before + (10u << 20)), PIXVANE_OK);
    c.make(1000, 1000);
    EXPECT_GE(pixvane_bitmap_bytes(), before + 4000000);
    c.call("Invert");
    EXPECT_EQ(c.get("UndoEnable").i, -1);
    // There is room for two pictures: a third step fails, and the picture stays.
    c.call("Sepia");
    EXPECT_EQ(pixel(), 0);
    c.call("Undo");
    EXPECT_EQ(pixel(), 0xFFFFFF);
    c.make(2000, 2000);
    EXPECT_EQ(c.get("IsEmpty").i, -1);
    pixvane_set_bitmap_limit(limit);
}

}  // namespace
