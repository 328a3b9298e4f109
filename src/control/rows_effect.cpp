// The table's rows of ranks, scatter, focus and surfaces.
// SPDX-License-Identifier: MIT
#include <atomic>
#include <memory>
#include <utility>

#include "control/kernel_edits.h"
#include "control/member_table.h"
#include "core/compose.h"
#include "filters/effects/effects.h"

namespace pixvane {
namespace {

// Estimates for the division among threads, in nanoseconds a pixel.
constexpr double kExtremes = 1;
constexpr double kMedian = 5;
constexpr double kAntiNoise = 10;
constexpr double kScatter = 3;
constexpr double kTiles = 0.5;
constexpr double kFocus = 3;

// A band starts with all rows of its first window, which is most of the work for as many rows.
double lead_of_window(std::int32_t radius) { return 1.5 * radius; }
// Counting a row is a small part of what its medians take.
double lead_of_counts(std::int32_t radius) { return 0.3 * radius; }

bool is_radius(std::int32_t value, std::int32_t least) {
    return value >= least && value <= filters::kMaxWindowRadius;
}

void minimal(ImageStore& store, std::int32_t radius) {
    if (!is_radius(radius, 0)) return;
    const auto kernel = [=](auto source, auto target, auto first, auto last) {
        filters::minimal(source, target, radius, first, last);
    };
    edit_area(store, kExtremes, kernel, lead_of_window(radius));
}

void maximal(ImageStore& store, std::int32_t radius) {
    if (!is_radius(radius, 0)) return;
    const auto kernel = [=](auto source, auto target, auto first, auto last) {
        filters::maximal(source, target, radius, first, last);
    };
    edit_area(store, kExtremes, kernel, lead_of_window(radius));
}

void median(ImageStore& store, std::int32_t radius) {
    if (!is_radius(radius, 0)) return;
    const auto kernel = [=](auto source, auto target, auto first, auto last) {
        filters::median(source, target, radius, first, last);
    };
    edit_area(store, kMedian, kernel, lead_of_counts(radius));
}

void anti_noise(ImageStore& store, std::int32_t radius) {
    if (!is_radius(radius, 1)) return;
    const auto kernel = [=](auto source, auto target, auto first, auto last) {
        filters::anti_noise(source, target, radius, first, last);
    };
    edit_area(store, kAntiNoise, kernel, radius);
}

// The draws go down the columns, so no band ends where the next one starts: each jumps to its own.
void diffuse(ImageStore& store, std::int32_t reach) {
    if (reach < 1) return;
    Edit edit(store);
    if (!edit) return;
    const ConstPixelBuffer source = edit.source();
    const RandomGenerator start = thread_random();
    parallel_rows(source.height, source.width * kScatter, [&](std::int32_t first, std::int32_t last) {
        filters::diffuse(source, edit.target(), reach, start, first, last);
    });
    thread_random().jump(filters::kDiffuseDraws * std::uint64_t{source.count()});
    edit.commit();
}

void mosaic(ImageStore& store, std::int32_t type, std::int32_t half) {
    if (half < 1) return;
    const auto color = type == 0 ? filters::TileColor::Centre : filters::TileColor::Mean;
    edit_area(store, kTiles, [=](auto source, auto target, auto first, auto last) {
        filters::mosaic(source, target, color, half, first, last);
    });
}

void textile(ImageStore& store, std::int32_t opacity) {
    if (opacity < 1) return;
    edit_whole(store,
               [=](auto source, auto target) { filters::textile(source, target, opacity, thread_random()); });
}

void focal_bw(ImageStore& store, std::int32_t radius, std::int32_t transition, std::int32_t x,
              std::int32_t y) {
    const filters::Focus focus{radius, transition, x, y};
    edit_area(store, kFocus, [=](auto source, auto target, auto first, auto last) {
        filters::focal_bw(source, target, focus, first, last);
    });
}

// Passes go to and fro between the new slot and a bitmap of their own, so that the last one ends in the slot.
// Without memory for that bitmap the first pass is all.
void soft_focus(ImageStore& store, std::int32_t passes, std::int32_t radius, std::int32_t transition,
                std::int32_t x, std::int32_t y) {
    if (passes < 1 || radius < 1 || transition < 1) return;
    Edit edit(store);
    if (!edit) return;
    const ConstPixelBuffer picture = edit.source();
    const double perRow = picture.width * kFocus;
    const filters::Focus focus{radius, transition, x, y};

    // One pass needs the weights once, so they needn't be kept.
    std::shared_ptr<Bitmap> spare;
    std::shared_ptr<Bitmap> weights;
    if (passes > 1) spare = Bitmap::create(picture.width, picture.height);
    if (spare == nullptr) passes = 1;
    if (passes > 1) weights = Bitmap::create(picture.width, picture.height);
    if (weights != nullptr) {
        parallel_rows(picture.height, perRow, [&](std::int32_t first, std::int32_t last) {
            filters::soft_focus_weights(weights->pixels(), focus, first, last);
        });
    }
    const ConstPixelBuffer known = weights != nullptr ? weights->pixels() : ConstPixelBuffer();

    ConstPixelBuffer source = picture;
    PixelBuffer target = edit.target();
    PixelBuffer next = spare != nullptr ? spare->pixels() : target;
    if (passes % 2 == 0) std::swap(target, next);
    for (; passes > 0; --passes) {
        std::atomic<bool> changed = false;
        parallel_rows(picture.height, perRow, [&](std::int32_t first, std::int32_t last) {
            if (filters::soft_focus(source, target, known, focus, first, last)) changed = true;
        });
        source = target;
        // All further passes would do the same: nothing.
        if (!changed) break;
        std::swap(target, next);
    }
    if (source.data != edit.target().data) copy(edit.target(), source);
    edit.commit();
}

}  // namespace

std::vector<Row> effect_rows() {
    const char* ranks = "Noise and ranks";
    const char* focus = "Focus";
    const char* surface = "Surface";
    const Range radii{0, 50};
    const Range accepted{0, filters::kMaxWindowRadius};
    const Range positive{1, kUnbounded};
    const Range places{0, 8000};
    const Range lengths{1, 2000};
    return {
        command("Minimal", 22, minimal, ranks, "The least value of each channel within the radius.",
                {{.name = "nVal", .slider = radii, .initial = 2, .accepts = accepted}}),
        command("Maximal", 23, maximal, ranks, "The largest value of each channel within the radius.",
                {{.name = "nVal", .slider = radii, .initial = 2, .accepts = accepted}}),
        command("Median", 24, median, ranks, "The middle value of each channel within the radius.",
                {{.name = "nVal", .slider = radii, .initial = 2, .accepts = accepted}}),
        command(
            "AntiNoise", 147, anti_noise, ranks,
            "Replaces channels that stand out by their mean within the radius.",
            {{.name = "nVal", .slider = {1, 7}, .initial = 1, .accepts = {1, filters::kMaxWindowRadius}}}),
        command("Diffuse", 10, diffuse, ranks, "Takes each pixel from a random place within the radius.",
                {{.name = "nVal", .slider = {1, 50}, .initial = 3, .accepts = positive}}),
        command("Mosaic", 13, mosaic, surface,
                "Tiles of 2 nVal + 1 pixels: type 0 of their middle's colour, others of their mean.",
                {{.name = "nType", .slider = {0, 1}, .initial = 1},
                 {.name = "nVal", .slider = {1, 100}, .initial = 5, .accepts = positive}}),
        command("Textile", 142, textile, surface,
                "Draws a weave of short random strokes, black and white, of less than this alpha.",
                {{.name = "Val", .slider = {1, 256}, .initial = 40, .accepts = positive}}),
        command("SoftFocus", 61, soft_focus, focus,
                "Blurs in nVal passes outside of R1 around a point, fully from R1 + R2 on.",
                {{.name = "nVal", .slider = {1, 10}, .initial = 3, .accepts = positive},
                 {.name = "R1", .slider = lengths, .initial = 100, .accepts = positive},
                 {.name = "R2", .slider = lengths, .initial = 200, .accepts = positive},
                 {.name = "X", .slider = places, .initial = 400},
                 {.name = "Y", .slider = places, .initial = 300}}),
        command("FocalBW", 62, focal_bw, focus,
                "Keeps colour within R1 around a point and fades to grey over the next R2 pixels.",
                {{.name = "R1", .slider = {0, 2000}, .initial = 100},
                 {.name = "R2", .slider = {0, 2000}, .initial = 200},
                 {.name = "X", .slider = places, .initial = 400},
                 {.name = "Y", .slider = places, .initial = 300}}),
    };
}

}  // namespace pixvane
