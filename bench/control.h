// A control as the benchmark holds it: the C interface with an owner and exceptions around it.
// SPDX-License-Identifier: MIT
#pragma once

#include <pixvane/pixvane.h>

#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

/// What stops the benchmark; its text is for the user.
struct Error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Pixels 0xAARRGGBB, rows top first.
struct Picture {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<std::uint32_t> pixels;
};

class Control {
public:
    Control();
    ~Control() { pixvane_free(control_); }
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// Throws if the member can't be called like this; what it returns is for the caller to judge.
    pixvane_value invoke(std::int32_t member, std::span<const pixvane_value> arguments);
    pixvane_value invoke(const char* member, std::initializer_list<pixvane_value> arguments = {});

    /// The client size of the control's window.
    void resize(std::int32_t width, std::int32_t height);
    /// What the mouse does there, as pixvane_window_mouse takes it.
    void mouse(std::int32_t what, std::int32_t button, std::int32_t x, std::int32_t y, std::int32_t held);

    /// How many frames it has composed.
    std::int32_t frames() const { return frames_; }

    void load(const Picture& picture);
    void load_file(const std::string& path);
    Picture picture();

private:
    pixvane_control* control_ = nullptr;
    std::int32_t frames_ = 0;
};

/// The handle of a method or property; throws if there is none.
std::int32_t member(const char* name);

}  // namespace bench
