// The C interface: controls, members, events, the window.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <span>
#include <vector>

#include "api/control_handle.h"
#include "api/values.h"
#include "control/member_table.h"
#include "core/pixel_memory.h"
#include "pixvane/pixvane.h"

using namespace pixvane;

namespace {

// No member takes more arguments; a call with more is refused before they are read.
constexpr std::size_t kMostArguments = 16;
constexpr std::int32_t kMostClientSide = 65535;

pixvane_status invoke_row(pixvane_control* handle, const Row* row, const pixvane_value* arguments,
                          std::size_t count, pixvane_value* result) {
    if (arguments == nullptr && count != 0) return PIXVANE_E_NULL;
    return guarded(handle, [&]() -> pixvane_status {
        if (row == nullptr) return PIXVANE_E_MEMBER;
        if (count > kMostArguments) return PIXVANE_E_COUNT;
        std::array<Value, kMostArguments> values;
        for (std::size_t i = 0; i < count; ++i)
            if (!from_c(arguments[i], values[i])) return PIXVANE_E_TYPE;
        handle->result = {};
        Result made;
        switch (invoke(*row, handle->control, {values.data(), count}, made)) {
            case Status::Member:
                return PIXVANE_E_MEMBER;
            case Status::Count:
                return PIXVANE_E_COUNT;
            case Status::Type:
                return PIXVANE_E_TYPE;
            case Status::Ok:
                break;
        }
        handle->result = std::move(made);
        if (result != nullptr) {
            *result = to_c(handle->result.value);
            result->data = nullptr;
        }
        return PIXVANE_OK;
    });
}

}  // namespace

extern "C" {

pixvane_status pixvane_create(const pixvane_host* host, pixvane_control** control) {
    if (control == nullptr) return PIXVANE_E_NULL;
    *control = nullptr;
    try {
        *control = new pixvane_control(host);
        return PIXVANE_OK;
    } catch (const std::bad_alloc&) {
        return PIXVANE_E_MEMORY;
    } catch (...) {
        return PIXVANE_E_INTERNAL;
    }
}

pixvane_status pixvane_free(pixvane_control* control) {
    if (control == nullptr) return PIXVANE_OK;
    std::thread::id nobody{};
    // Taken for good: whoever comes later finds it busy as long as there is anything to find.
    if (!control->owner.compare_exchange_strong(nobody, std::this_thread::get_id(),
                                                std::memory_order_acquire))
        return PIXVANE_E_BUSY;
    // Call-backs that call in must not give the control away.
    ++control->depth;
    control->control.window_destroyed();
    delete control;
    // Memory is kept for the next picture; where there is none left, nobody waits for it.
    if (PixelMemory::instance().in_use() == 0) PixelMemory::instance().trim();
    return PIXVANE_OK;
}

pixvane_status pixvane_invoke(pixvane_control* control, const char* member, const pixvane_value* arguments,
                              size_t count, pixvane_value* result) {
    if (member == nullptr) return PIXVANE_E_NULL;
    return invoke_row(control, find_member(member), arguments, count, result);
}

pixvane_status pixvane_invoke_handle(pixvane_control* control, int32_t member, const pixvane_value* arguments,
                                     size_t count, pixvane_value* result) {
    const std::span<const Row> rows = member_table();
    const bool known = member >= 0 && static_cast<std::size_t>(member) < rows.size() &&
                       rows[static_cast<std::size_t>(member)].type != MemberType::Event;
    return invoke_row(control, known ? &rows[static_cast<std::size_t>(member)] : nullptr, arguments, count,
                      result);
}

pixvane_status pixvane_take_result(pixvane_control* control, void* buffer, size_t capacity) {
    return guarded(control, [&]() -> pixvane_status {
        const Value& value = control->result.value;
        const std::size_t bytes = byte_size(value);
        if (capacity < bytes) return PIXVANE_E_RANGE;
        if (buffer == nullptr && bytes != 0) return PIXVANE_E_NULL;
        if (bytes != 0) std::memcpy(buffer, value.data, bytes);
        control->result = {};
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_subscribe(pixvane_control* control, const char* event, pixvane_event_handler handler,
                                 void* user, int32_t* subscription) {
    if (event == nullptr || handler == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&]() -> pixvane_status {
        const Row* row = find_event(event);
        if (row == nullptr) return PIXVANE_E_MEMBER;
        const std::int32_t id =
            control->control.events().subscribe(row->name, [=](std::span<const Value> arguments) {
                std::array<pixvane_value, kMostArguments> values;
                const std::size_t count = std::min(arguments.size(), values.size());
                for (std::size_t i = 0; i < count; ++i) values[i] = to_c(arguments[i]);
                handler(user, values.data(), count);
            });
        if (subscription != nullptr) *subscription = id;
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_unsubscribe(pixvane_control* control, int32_t subscription) {
    return guarded(control, [&]() -> pixvane_status {
        return control->control.events().unsubscribe(subscription) ? PIXVANE_OK : PIXVANE_E_RANGE;
    });
}

pixvane_status pixvane_window_resize(pixvane_control* control, int32_t width, int32_t height) {
    return guarded(control, [&]() -> pixvane_status {
        if (width < 0 || height < 0 || width > kMostClientSide || height > kMostClientSide)
            return PIXVANE_E_RANGE;
        control->control.window_resized(width, height);
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_mouse(pixvane_control* control, int32_t what, int32_t button, int32_t x,
                                    int32_t y, int32_t held) {
    return guarded(control, [&]() -> pixvane_status {
        const bool known = what >= PIXVANE_MOUSE_DOWN && what <= PIXVANE_DOUBLE_CLICK;
        const bool anyButton = what == PIXVANE_MOUSE_MOVE;
        if (!known || (!anyButton && (button < PIXVANE_LEFT || button > PIXVANE_RIGHT)))
            return PIXVANE_E_RANGE;
        control->control.window_mouse({static_cast<MouseMessage::What>(what),
                                       anyButton ? MouseButton::Left : static_cast<MouseButton>(button),
                                       {x, y},
                                       held});
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_wheel(pixvane_control* control, int32_t notches, int32_t x, int32_t y) {
    return pixvane_window_zoom_at(control, notches, x, y);
}

pixvane_status pixvane_window_timer(pixvane_control* control, int32_t id) {
    return guarded(control, [&] {
        control->control.window_timer(id);
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_drop(pixvane_control* control, const char* const* paths, size_t count) {
    if (paths == nullptr && count != 0) return PIXVANE_E_NULL;
    return guarded(control, [&]() -> pixvane_status {
        if (count == 0) return PIXVANE_OK;
        if (paths[0] == nullptr) return PIXVANE_E_NULL;
        control->control.file_dropped(paths[0]);
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_zoom_at(pixvane_control* control, int32_t steps, int32_t x, int32_t y) {
    return guarded(control, [&] {
        control->control.window_zoom_at(steps, {x, y});
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_pan(pixvane_control* control, int32_t dx, int32_t dy) {
    return guarded(control, [&] {
        control->control.window_pan(dx, dy);
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_frame(pixvane_control* control, void* buffer, size_t capacity, int32_t* width,
                                    int32_t* height) {
    if (width == nullptr || height == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&]() -> pixvane_status {
        const ConstPixelBuffer frame = control->control.frame();
        *width = frame.width;
        *height = frame.height;
        if (buffer == nullptr) return PIXVANE_OK;
        if (capacity < frame.bytes()) return PIXVANE_E_RANGE;
        if (frame.bytes() != 0) std::memcpy(buffer, frame.data, frame.bytes());
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_frame_pixels(pixvane_control* control, const void** pixels, int32_t* width,
                                           int32_t* height) {
    if (pixels == nullptr || width == nullptr || height == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&] {
        const ConstPixelBuffer frame = control->control.frame();
        *pixels = frame.data;
        *width = frame.width;
        *height = frame.height;
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_timers(pixvane_control* control, int32_t* ids, int32_t* milliseconds,
                                     size_t capacity, size_t* count) {
    if (count == nullptr || (capacity != 0 && (ids == nullptr || milliseconds == nullptr)))
        return PIXVANE_E_NULL;
    return guarded(control, [&] {
        std::size_t i = 0;
        for (const auto& [id, interval] : control->host.timers()) {
            if (i < capacity) {
                ids[i] = id;
                milliseconds[i] = interval;
            }
            ++i;
        }
        *count = i;
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_captured(pixvane_control* control, int32_t* captured) {
    if (captured == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&] {
        *captured = control->host.captured() ? 1 : 0;
        return PIXVANE_OK;
    });
}

pixvane_status pixvane_window_cursor(pixvane_control* control, int32_t* cursor) {
    if (cursor == nullptr) return PIXVANE_E_NULL;
    return guarded(control, [&] {
        *cursor = control->host.cursor();
        return PIXVANE_OK;
    });
}

}  // extern "C"
