// Renders the project's own sample picture, at any size: pixvane-sample OUT.png [WIDTH HEIGHT]
// SPDX-License-Identifier: MIT
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string_view>
#include <thread>
#include <vector>

#include "pixvane/pixvane.hpp"
#include "scene.h"

namespace {

constexpr const char* kUsage =
    "Usage: pixvane-sample OUT.png [WIDTH HEIGHT]\n"
    "Renders a landscape as a PNG file, 1920 x 1280 unless told otherwise. The same size always gives the\n"
    "same pixels. Sides: 16 to 65535 pixels.\n";

bool parse_side(std::string_view text, int& side) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    return error == std::errc() && end == text.data() + text.size() && side >= 16 && side <= 65535;
}

std::vector<std::uint8_t> render(int width, int height) {
    const sample::Scene scene(width, height);
    const std::size_t stride = static_cast<std::size_t>(width) * 4;
    std::vector<std::uint8_t> pixels(stride * static_cast<std::size_t>(height));
    std::atomic<int> next{0};
    const auto work = [&] {
        for (int y = next++; y < height; y = next++)
            scene.render_row(y, pixels.data() + stride * static_cast<std::size_t>(y));
    };
    std::vector<std::thread> threads;
    for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i) threads.emplace_back(work);
    work();
    for (std::thread& thread : threads) thread.join();
    return pixels;
}

int render_to(const char* path, int width, int height) {
    pixvane::IPixvane control;
    if (!control.LoadFromImageArray(render(width, height), width, height)) {
        std::fprintf(stderr, "pixvane-sample: a picture of %d x %d pixels is too large\n", width, height);
        return 1;
    }
    constexpr int kPng = 4;
    if (!control.SaveImage(path, kPng)) {
        std::fprintf(stderr, "pixvane-sample: can't write '%s'\n", path);
        return 1;
    }
    return 0;
}

}  // namespace

int main(int count, char** texts) {
    int width = 1920, height = 1280;
    if (count == 2 && std::strcmp(texts[1], "--help") == 0) return std::fputs(kUsage, stdout), 0;
    const bool hasSize = count == 4;
    if ((count != 2 && !hasSize) ||
        (hasSize && !(parse_side(texts[2], width) && parse_side(texts[3], height))))
        return std::fputs(kUsage, stderr), 2;
    try {
        return render_to(texts[1], width, height);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pixvane-sample: %s\n", error.what());
        return 1;
    }
}
