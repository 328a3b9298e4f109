// A host in C++: takes a picture, corrects it, goes back and forth in its history, saves it.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <exception>
#include <pixvane/pixvane.hpp>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 320, kHeight = 240;
constexpr int kPng = 4;

/// A dull picture: reds grow to the right, greens downwards.
std::vector<std::uint8_t> dull_pixels() {
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            pixels.push_back(80);
            pixels.push_back(static_cast<std::uint8_t>(60 + y * 100 / (kHeight - 1)));
            pixels.push_back(static_cast<std::uint8_t>(40 + x * 120 / (kWidth - 1)));
            pixels.push_back(255);
        }
    }
    return pixels;
}

/// Where the histogram of luminance peaks.
void print_peak(pixvane::IPixvane& control, const char* when) {
    const std::vector<std::int32_t> bins = control.GetLHistogram();
    const auto peak = std::max_element(bins.begin(), bins.end());
    if (peak == bins.end()) return;
    std::printf("%-18s most pixels at luminance %d: %d\n", when, static_cast<int>(peak - bins.begin()),
                static_cast<int>(*peak));
}

void correct(pixvane::IPixvane& control) {
    print_peak(control, "as it came");
    control.Autolevels();
    print_peak(control, "Autolevels");
    control.Saturate(130);
    print_peak(control, "Saturate 130");
    control.Undo();
    print_peak(control, "undone");
    control.Redo();
    print_peak(control, "redone");
    control.AddSimpleBorder(8, pixvane::rgb(255, 255, 255));
}

int run(const std::vector<std::string>& texts) {
    if (texts.empty() || texts.size() > 2) {
        std::fprintf(stderr, "Usage: correct OUT.png [IN]\n");
        return 2;
    }
    pixvane::IPixvane control;
    // A control fits a picture into its window when the picture comes.
    control.resize(800, 600);
    bool loaded = false;
    // A host with a window hands it what is dropped there, and decides itself what to do with it.
    control.on_OnDropFile([&](std::string_view path) { loaded = control.LoadImage(path); });
    if (texts.size() == 2)
        control.drop({texts[1]});
    else
        loaded = control.LoadFromImageArray(dull_pixels(), kWidth, kHeight);
    if (!loaded) {
        std::fprintf(stderr, "correct: no picture to work on\n");
        return 1;
    }
    correct(control);
    if (!control.SaveImage(texts[0], kPng)) {
        std::fprintf(stderr, "correct: can't write %s\n", texts[0].c_str());
        return 1;
    }
    return 0;
}

}  // namespace

int main(int count, char** texts) {
    try {
        return run({texts + 1, texts + count});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "correct: %s\n", error.what());
        return 1;
    }
}
