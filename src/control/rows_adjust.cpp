// The table's rows of colour adjustments.
// SPDX-License-Identifier: MIT
#include <cmath>

#include "control/kernel_edits.h"
#include "control/member_table.h"
#include "filters/adjust/adjust.h"

namespace pixvane {
namespace {

// Estimates for the division among threads, in nanoseconds a pixel.
constexpr double kPass = 0.4;  // as fast as memory
constexpr double kCount = 1.0;
constexpr double kDraw = 1.5;

bool is_byte(std::int32_t value) { return value >= 0 && value <= 255; }

void desaturate(ImageStore& store) { edit_rows(store, kPass, filters::desaturate); }

void saturate(ImageStore& store, std::int32_t percent) {
    edit_rows(store, kPass, [=](auto source, auto target) { filters::saturate(source, target, percent); });
}

/// A correction by statistics: gathered in a first pass, made into tables, applied in a second.
template <class Statistics>
void edit_by_statistics(ImageStore& store, Statistics (*gather)(ConstPixelBuffer),
                        filters::ChannelTables (*make_tables)(const Statistics&)) {
    Edit edit(store);
    if (!edit) return;
    const filters::ChannelTables tables = make_tables(gather_rows(
        edit.source(), kCount, gather, [](Statistics& all, const Statistics& part) { all += part; }));
    run_rows(edit, kPass, [&](auto source, auto target) { filters::apply_tables(source, target, tables); });
    edit.commit();
}

void autocolor(ImageStore& store) {
    edit_by_statistics(store, filters::channel_ranges, filters::autocolor_tables);
}

void contrast(ImageStore& store, std::int32_t percent) {
    edit_rows(store, kPass, [=](auto source, auto target) { filters::contrast(source, target, percent); });
}

void brightness(ImageStore& store, std::int32_t red, std::int32_t green, std::int32_t blue) {
    edit_rows(store, kPass,
              [=](auto source, auto target) { filters::brightness(source, target, red, green, blue); });
}

void lightness(ImageStore& store, std::int32_t red, std::int32_t green, std::int32_t blue) {
    if (red < 0 || green < 0 || blue < 0) return;
    edit_rows(store, kPass,
              [=](auto source, auto target) { filters::lightness(source, target, red, green, blue); });
}

void temperature(ImageStore& store, std::int32_t percent) {
    if (percent < -100 || percent > 100) return;
    edit_rows(store, kPass, [=](auto source, auto target) { filters::temperature(source, target, percent); });
}

// The draws follow one another through the whole picture: each band starts where the one before it will end.
void noise(ImageStore& store, std::int32_t type, std::int32_t amount) {
    Edit edit(store);
    if (!edit) return;
    const bool sameForAll = type == 0;
    const RandomGenerator start = thread_random();
    const Pixel* first = edit.source().data;
    const auto draws_before = [&](const Pixel* pixel) {
        return static_cast<std::uint64_t>(pixel - first) * filters::noise_draws(sameForAll);
    };
    run_rows(edit, kDraw, [&](auto source, auto target) {
        RandomGenerator random = start;
        random.jump(draws_before(source.data));
        filters::noise(source, target, sameForAll, amount, random);
    });
    thread_random().jump(draws_before(first + edit.source().count()));
    edit.commit();
}

void invert(ImageStore& store) { edit_rows(store, kPass, filters::invert); }

void monochrome(ImageStore& store, std::int32_t level, Color color1, Color color2) {
    edit_rows(store, kPass, [=](auto source, auto target) {
        filters::monochrome(source, target, level, to_pixel(color1), to_pixel(color2));
    });
}

void hue(ImageStore& store, std::int32_t red, std::int32_t green, std::int32_t blue) {
    if (!is_byte(red) || !is_byte(green) || !is_byte(blue)) return;
    edit_rows(store, kPass,
              [=](auto source, auto target) { filters::hue(source, target, red, green, blue); });
}

void sepia(ImageStore& store) { hue(store, 160, 133, 107); }

void bw_levels(ImageStore& store, std::int32_t colors) {
    if (colors < 2 || colors > 256) return;
    edit_rows(store, kPass, [=](auto source, auto target) { filters::bw_levels(source, target, colors); });
}

void autolevels(ImageStore& store) {
    edit_by_statistics(store, filters::channel_histograms, filters::autolevels_tables);
}

void autocontrast(ImageStore& store) {
    edit_by_statistics(store, filters::channel_histograms, filters::autocontrast_tables);
}

void gamma(ImageStore& store, double level) {
    if (!std::isfinite(level) || level < 0.02) return;
    edit_rows(store, kPass, [=](auto source, auto target) { filters::gamma(source, target, level); });
}

}  // namespace

std::vector<Row> adjust_rows() {
    const char* colors = "Colours";
    const Range byte{0, 255};
    const Range percents{0, 400};
    const Range shifts{-255, 255};
    return {
        command("Desaturate", 0, desaturate, colors, "Turns the picture grey by luma."),
        command("Saturate", 1, saturate, colors, "Colour strength in percent.",
                {{.name = "nValue", .slider = {-400, 400}, .initial = 130}}),
        command("Autocolor", 4, autocolor, colors,
                "Stretches each channel on its own, which takes a cast away."),
        command("Contrast", 5, contrast, colors, "Contrast in percent, around the middle grey.",
                {{.name = "nValue", .slider = {-400, 400}, .initial = 120}}),
        command("Brightness", 7, brightness, colors, "Adds to each channel.",
                {{.name = "nRed", .slider = shifts, .initial = 20},
                 {.name = "nGreen", .slider = shifts, .initial = 20},
                 {.name = "nBlue", .slider = shifts, .initial = 20}}),
        command("Lightness", 8, lightness, colors, "Multiplies each channel, in percent.",
                {{.name = "nRedVal", .slider = percents, .initial = 110, .accepts = {0, kUnbounded}},
                 {.name = "nGreenVal", .slider = percents, .initial = 110, .accepts = {0, kUnbounded}},
                 {.name = "nBlueVal", .slider = percents, .initial = 110, .accepts = {0, kUnbounded}}}),
        command("Temperature", 36, temperature, colors, "Warms (above 0) or cools the colours, in percent.",
                {{.name = "nVal", .slider = {-100, 100}, .initial = 10, .accepts = {-100, 100}}}),
        command("Noise", 9, noise, colors,
                "Adds random noise: type 0 the same to all channels, others to each its own.",
                {{.name = "nType", .slider = {0, 1}, .initial = 0},
                 {.name = "nVal", .slider = byte, .initial = 30}}),
        command("Invert", 12, invert, colors, "Turns the picture into its negative."),
        command("Monochrome", 14, monochrome, colors,
                "Two colours: the first where the mean of the channels is above the level.",
                {{.name = "nLevel", .slider = byte, .initial = 127},
                 {.name = "Color1", .initial = 0xFFFFFF},
                 {.name = "Color2", .initial = 0}}),
        command("Hue", 52, hue, colors, "Tones the picture by a colour.",
                {{.name = "R", .slider = byte, .initial = 160, .accepts = byte},
                 {.name = "G", .slider = byte, .initial = 133, .accepts = byte},
                 {.name = "B", .slider = byte, .initial = 107, .accepts = byte}}),
        command("Sepia", 54, sepia, colors, "Tones the picture brown like an old photograph."),
        command("BWLevels", 212, bw_levels, colors, "Grey in a number of steps.",
                {{.name = "Colors", .slider = {2, 256}, .initial = 4, .accepts = {2, 256}}}),
        command("Autolevels", 21, autolevels, colors, "Sets the levels of each channel from its histogram."),
        command("Autocontrast", 20, autocontrast, colors,
                "Sets common levels from the histogram of all channels."),
        command("Gamma", 29, gamma, colors, "Gamma curve: below 1 brightens, above 1 darkens.",
                {{.name = "Level", .slider = {0.1, 5}, .initial = 0.8, .accepts = {0.02, kUnbounded}}}),
    };
}

}  // namespace pixvane
