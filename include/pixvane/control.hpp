// Pixvane for C++ hosts: what stands behind the typed face in pixvane.hpp. Header only, over the C interface.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "pixvane/pixvane.h"

namespace pixvane {

/// A call that the control refused: its status, and what() with the member's name and the reason.
class Error : public std::runtime_error {
public:
    Error(pixvane_status status, const std::string& doing)
        : std::runtime_error(doing + ": " + pixvane_status_text(status)), status_(status) {}
    pixvane_status status() const noexcept { return status_; }

private:
    pixvane_status status_;
};

/// A colour as the control takes it, 0x00BBGGRR, from its channels 0..255.
constexpr std::uint32_t rgb(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}

/// Elements that the caller keeps: a vector, an array, a span, a pointer and a length, or nullptr for none.
template <class T>
class View {
public:
    View(std::nullptr_t) noexcept {}
    View(const T* data, std::size_t size) noexcept : data_(data), size_(size), isNull_(false) {}
    template <class Container,
              class = std::enable_if_t<
                  std::is_convertible_v<decltype(std::declval<const Container&>().data()), const T*>>,
              class = decltype(std::declval<const Container&>().size())>
    View(const Container& elements) noexcept : View(elements.data(), elements.size()) {}

    const T* data() const noexcept { return data_; }
    std::size_t size() const noexcept { return size_; }
    bool is_null() const noexcept { return isNull_; }

private:
    const T* data_ = nullptr;
    std::size_t size_ = 0;
    bool isNull_ = true;
};

/// A picture of one of the control's own cursors: bytes B, G, R, A with straight alpha, rows top first.
struct CursorImage {
    std::vector<std::uint8_t> pixels;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t hotX = 0;
    std::int32_t hotY = 0;
};

/// A composed frame: bytes B, G, R, X, rows top first.
struct Frame {
    std::vector<std::uint8_t> pixels;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// Throws Error for a number that names none of them; the arrow, 0, is the system's.
inline CursorImage cursor_image(std::int32_t cursor) {
    CursorImage image;
    const auto ask = [&] {
        const pixvane_status status =
            pixvane_cursor_image(cursor, image.pixels.empty() ? nullptr : image.pixels.data(),
                                 image.pixels.size(), &image.width, &image.height, &image.hotX, &image.hotY);
        if (status != PIXVANE_OK) throw Error(status, "cursor_image");
    };
    ask();
    image.pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * 4);
    ask();
    return image;
}

/// Owns one control of the library. It can be moved, not copied, and must not end within one of its own
/// call-backs. What an event handler throws is thrown again by the call that made the event fire.
class Control {
public:
    using Handler = std::function<void(const pixvane_value* arguments, std::size_t count)>;

    /// A control without a window: its client size is 0 x 0 until it is resized.
    Control() : Control(nullptr) {}
    /// A control whose host takes over what `host` offers call-backs for. They must not throw.
    explicit Control(const pixvane_host* host) : state_(std::make_unique<State>()) {
        check(pixvane_create(host, &handle_), "Control");
    }
    Control(Control&& other) noexcept
        : handle_(std::exchange(other.handle_, nullptr)), state_(std::move(other.state_)) {}
    Control& operator=(Control&& other) noexcept {
        if (this != &other) {
            release();
            handle_ = std::exchange(other.handle_, nullptr);
            state_ = std::move(other.state_);
        }
        return *this;
    }
    ~Control() { release(); }

    /// The control for functions of the C interface; null after it was moved from.
    pixvane_control* handle() const noexcept { return handle_; }

    /// Calls `handler` whenever `event` fires, in the order of subscription. Returns a number for off().
    std::int32_t on(const char* event, Handler handler) {
        auto subscription =
            std::make_shared<Subscription>(Subscription{state_.get(), std::move(handler), {}});
        subscription->self = subscription;
        std::int32_t id = 0;
        run(event,
            [&] { return pixvane_subscribe(handle_, event, &Control::dispatch, subscription.get(), &id); });
        state_->subscriptions[id] = std::move(subscription);
        return id;
    }
    void off(std::int32_t subscription) {
        run("off", [&] { return pixvane_unsubscribe(handle_, subscription); });
        state_->subscriptions.erase(subscription);
    }

    // ---- The window, as its host moves it. Points are client pixels; buttons PIXVANE_LEFT and so on. ----

    /// 0..65535 a side. Resize before you load: a picture is fitted when it comes.
    void resize(std::int32_t width, std::int32_t height) {
        run("resize", [&] { return pixvane_window_resize(handle_, width, height); });
    }
    void mouse_down(std::int32_t button, std::int32_t x, std::int32_t y) {
        mouse(PIXVANE_MOUSE_DOWN, button, x, y, 0);
    }
    void mouse_up(std::int32_t button, std::int32_t x, std::int32_t y) {
        mouse(PIXVANE_MOUSE_UP, button, x, y, 0);
    }
    /// `held` is a sum of PIXVANE_HELD_LEFT and the like.
    void mouse_move(std::int32_t x, std::int32_t y, std::int32_t held = 0) {
        mouse(PIXVANE_MOUSE_MOVE, 0, x, y, held);
    }
    void double_click(std::int32_t button, std::int32_t x, std::int32_t y) {
        mouse(PIXVANE_DOUBLE_CLICK, button, x, y, 0);
    }
    void wheel(std::int32_t notches, std::int32_t x, std::int32_t y) {
        run("wheel", [&] { return pixvane_window_wheel(handle_, notches, x, y); });
    }
    void timer(std::int32_t id) {
        run("timer", [&] { return pixvane_window_timer(handle_, id); });
    }
    /// Fires OnDropFile with the first path; loads nothing.
    void drop(const std::vector<std::string>& paths) {
        std::vector<const char*> pointers;
        for (const std::string& path : paths) pointers.push_back(path.c_str());
        run("drop", [&] { return pixvane_window_drop(handle_, pointers.data(), pointers.size()); });
    }
    void zoom_at(std::int32_t steps, std::int32_t x, std::int32_t y) {
        run("zoom_at", [&] { return pixvane_window_zoom_at(handle_, steps, x, y); });
    }
    void pan(std::int32_t dx, std::int32_t dy) {
        run("pan", [&] { return pixvane_window_pan(handle_, dx, dy); });
    }
    /// The last composed frame; 0 x 0 as long as none was.
    Frame frame() {
        Frame frame;
        run("frame", [&] { return pixvane_window_frame(handle_, nullptr, 0, &frame.width, &frame.height); });
        frame.pixels.resize(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height) *
                            4);
        run("frame", [&] {
            return pixvane_window_frame(handle_, frame.pixels.data(), frame.pixels.size(), &frame.width,
                                        &frame.height);
        });
        return frame;
    }
    /// The timers that a control in no window wants: milliseconds by their ids.
    std::map<std::int32_t, std::int32_t> timers() {
        std::size_t count = 0;
        run("timers", [&] { return pixvane_window_timers(handle_, nullptr, nullptr, 0, &count); });
        std::vector<std::int32_t> ids(count), milliseconds(count);
        run("timers", [&] {
            return pixvane_window_timers(handle_, ids.data(), milliseconds.data(), ids.size(), &count);
        });
        std::map<std::int32_t, std::int32_t> timers;
        for (std::size_t i = 0; i < ids.size() && i < count; ++i) timers[ids[i]] = milliseconds[i];
        return timers;
    }
    bool captured() {
        std::int32_t captured = 0;
        run("captured", [&] { return pixvane_window_captured(handle_, &captured); });
        return captured != 0;
    }
    std::int32_t cursor() {
        std::int32_t cursor = 0;
        run("cursor", [&] { return pixvane_window_cursor(handle_, &cursor); });
        return cursor;
    }

protected:
    // ---- For the members in pixvane.hpp ----

    static pixvane_value to_value(std::int32_t number) { return pixvane_int32(number); }
    static pixvane_value to_value(double number) { return pixvane_double(number); }
    static pixvane_value to_value(bool truth) { return pixvane_bool(truth ? 1 : 0); }
    static pixvane_value to_value(std::uint32_t color) { return pixvane_color(color); }
    static pixvane_value to_value(const char* text) { return pixvane_string(text); }
    static pixvane_value to_value(std::string_view text) {
        return pixvane_string_n(text.data(), text.size());
    }
    static pixvane_value to_value(View<std::uint8_t> bytes) {
        return bytes.is_null() ? pixvane_null() : pixvane_bytes(address_of(bytes), bytes.size());
    }
    static pixvane_value to_value(View<std::int32_t> numbers) {
        return numbers.is_null() ? pixvane_null() : pixvane_int32_array(address_of(numbers), numbers.size());
    }
    /// Points as coordinates x0, y0, x1, y1, ...
    static pixvane_value points_value(View<std::int32_t> coordinates) {
        return coordinates.is_null() ? pixvane_null()
                                     : pixvane_points(address_of(coordinates), coordinates.size() / 2);
    }

    static std::string_view text_of(const pixvane_value& value) {
        return value.size == 0 ? std::string_view()
                               : std::string_view(static_cast<const char*>(value.data), value.size);
    }
    template <class T>
    static View<T> view_of(const pixvane_value& value, std::size_t elements) {
        if (value.kind == PIXVANE_NULL) return nullptr;
        return {static_cast<const T*>(value.data), elements};
    }

    /// Calls a member by the handle that pixvane_find_member gave for `name`.
    template <class... Values>
    pixvane_value call(const char* name, std::int32_t member, const Values&... values) {
        // The last one is never read: an array can't be empty.
        const pixvane_value arguments[] = {values..., pixvane_null()};
        pixvane_value result = pixvane_null();
        run(name,
            [&] { return pixvane_invoke_handle(handle_, member, arguments, sizeof...(values), &result); });
        return result;
    }
    /// The array or text that `result`, of the last call, speaks of; `width` elements to one of the result.
    template <class Sequence>
    Sequence take(const char* name, const pixvane_value& result, std::size_t width = 1) {
        Sequence elements;
        if (result.kind == PIXVANE_NULL) return elements;
        elements.resize(result.size * width);
        run(name, [&] {
            return pixvane_take_result(handle_, elements.data(),
                                       elements.size() * sizeof(typename Sequence::value_type));
        });
        return elements;
    }

private:
    /// Never null: to the library an array without an address is no array, but an empty vector has none.
    template <class T>
    static const T* address_of(View<T> elements) {
        static const T none{};
        return elements.data() != nullptr ? elements.data() : &none;
    }

    struct State;
    struct Subscription {
        State* state;
        Handler handler;
        std::weak_ptr<Subscription> self;
    };
    // At an address of its own, which stays when the control is moved.
    struct State {
        std::map<std::int32_t, std::shared_ptr<Subscription>> subscriptions;
        std::exception_ptr thrown;  ///< by a handler, during the call that runs
    };

    static void check(pixvane_status status, const char* doing) {
        if (status != PIXVANE_OK) throw Error(status, doing);
    }

    /// Makes a call of the library, then throws what a handler threw within it. Calls nest.
    template <class Call>
    void run(const char* doing, Call&& call) {
        if (!state_) throw Error(PIXVANE_E_NULL, doing);
        State& state = *state_;
        std::exception_ptr outer = std::exchange(state.thrown, nullptr);
        const pixvane_status status = call();
        if (std::exception_ptr thrown = std::exchange(state.thrown, std::move(outer)))
            std::rethrow_exception(thrown);
        check(status, doing);
    }

    void mouse(std::int32_t what, std::int32_t button, std::int32_t x, std::int32_t y, std::int32_t held) {
        run("mouse", [&] { return pixvane_window_mouse(handle_, what, button, x, y, held); });
    }

    static void dispatch(void* user, const pixvane_value* arguments, std::size_t count) {
        // Its own handler may end the subscription.
        const std::shared_ptr<Subscription> subscription = static_cast<Subscription*>(user)->self.lock();
        if (!subscription) return;
        try {
            subscription->handler(arguments, count);
        } catch (...) {
            if (!subscription->state->thrown) subscription->state->thrown = std::current_exception();
        }
    }

    void release() noexcept {
        // Handlers that the library may still call must stay where they are.
        if (handle_ != nullptr && pixvane_free(handle_) != PIXVANE_OK) static_cast<void>(state_.release());
        handle_ = nullptr;
        state_.reset();
    }

    pixvane_control* handle_ = nullptr;
    std::unique_ptr<State> state_;
};

}  // namespace pixvane
