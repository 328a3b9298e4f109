// A control as the benchmark holds it: the C interface with an owner and exceptions around it.
// SPDX-License-Identifier: MIT
#include "control.h"

namespace bench {
namespace {

void check(pixvane_status status, const std::string& what) {
    if (status != PIXVANE_OK) throw Error(what + ": " + pixvane_status_text(status));
}

}  // namespace

Control::Control() {
    pixvane_host host = {};
    host.struct_size = sizeof host;
    host.user = &frames_;
    host.frame_ready = [](void* frames) { ++*static_cast<std::int32_t*>(frames); };
    check(pixvane_create(&host, &control_), "creating a control");
}

pixvane_value Control::invoke(std::int32_t member, std::span<const pixvane_value> arguments) {
    pixvane_value result;
    check(pixvane_invoke_handle(control_, member, arguments.data(), arguments.size(), &result), "a command");
    return result;
}

pixvane_value Control::invoke(const char* member, std::initializer_list<pixvane_value> arguments) {
    pixvane_value result;
    check(pixvane_invoke(control_, member, arguments.begin(), arguments.size(), &result), member);
    return result;
}

void Control::resize(std::int32_t width, std::int32_t height) {
    check(pixvane_window_resize(control_, width, height), "resizing the window");
}

void Control::mouse(std::int32_t what, std::int32_t button, std::int32_t x, std::int32_t y,
                    std::int32_t held) {
    check(pixvane_window_mouse(control_, what, button, x, y, held), "a mouse message");
}

void Control::load(const Picture& picture) {
    const auto loaded =
        invoke("LoadFromImageArray",
               {pixvane_bytes(picture.pixels.data(), picture.pixels.size() * sizeof(std::uint32_t)),
                pixvane_int32(picture.width), pixvane_int32(picture.height)});
    if (loaded.i == 0) throw Error("there is no memory for the picture");
}

void Control::load_file(const std::string& path) {
    if (invoke("LoadImage", {pixvane_string_n(path.data(), path.size())}).i == 0)
        throw Error("can't load " + path);
}

Picture Control::picture() {
    Picture picture{invoke("ImageWidth").i, invoke("ImageHeight").i, {}};
    const pixvane_value bytes = invoke("GetImageArray");
    if (bytes.kind != PIXVANE_BYTES) throw Error("there is no memory for the picture");
    picture.pixels.resize(bytes.size / sizeof(std::uint32_t));
    check(pixvane_take_result(control_, picture.pixels.data(), bytes.size), "GetImageArray");
    return picture;
}

std::int32_t member(const char* name) {
    const std::int32_t handle = pixvane_find_member(name);
    if (handle < 0) throw Error(std::string("the library has no member ") + name);
    return handle;
}

}  // namespace bench
