// The table's rows of what looks at the neighbours of a pixel: kernels, means, edges.
// SPDX-License-Identifier: MIT
#include <algorithm>

#include "control/kernel_edits.h"
#include "control/member_table.h"
#include "core/pixel_rows.h"
#include "filters/area/area.h"
#include "filters/area/band_scratch.h"

namespace pixvane {
namespace {

// Estimates for the division among threads, in nanoseconds a pixel.
constexpr double kPass = 0.5;
constexpr double kMean = 1.5;
constexpr double kRange = 2.5;
constexpr double kEachBox = 0.5;

// What a window's first row takes, in rows: adding up the rows above and below, which is a part of the work
// that a row makes, and of ranges most of it.
double lead_of_sums(std::int32_t radius) { return 0.5 * radius; }
double lead_of_ranges(std::int32_t radius) { return radius; }
// All boxes of a kernel grow out of the smallest one.
double lead_of_rings(std::int32_t radius, std::size_t boxes) {
    return 1 + radius / static_cast<double>(boxes);
}

bool is_radius(std::int32_t value) { return value >= 1 && value <= filters::kMaxWindowRadius; }

void convolve(ImageStore& store, const filters::Kernel& kernel) {
    edit_area(store, kPass, [&](auto source, auto target, std::int32_t first, std::int32_t last) {
        filters::convolve(source, target, kernel, first, last);
    });
}

/// A kernel that works in scratch memory of scratch_bytes(width, height).
template <class ScratchBytes, class Kernel>
void edit_in_scratch(ImageStore& store, double nanosecondsPerPixel, double leadRows,
                     ScratchBytes scratch_bytes, Kernel kernel) {
    const ConstPixelBuffer now = store.current();
    if (now.count() == 0) return;
    filters::BandScratch scratch(scratch_bytes(now.width, now.height));
    edit_area(
        store, nanosecondsPerPixel,
        [&](auto source, auto target, std::int32_t first, std::int32_t last) {
            const filters::BandScratch::Block block(scratch);
            kernel(source, target, first, last, block.data());
        },
        leadRows);
}

void box_mean(ImageStore& store, const filters::BoxMean& mean) {
    edit_in_scratch(
        store, kMean, lead_of_sums(mean.radius),
        [&](std::int32_t width, std::int32_t) { return filters::box_mean_scratch(width); },
        [&](auto source, auto target, std::int32_t first, std::int32_t last, std::byte* scratch) {
            filters::box_mean(source, target, mean, first, last, scratch);
        });
}

void blur(ImageStore& store, std::int32_t radius) {
    if (is_radius(radius)) box_mean(store, {radius, 1});
}

void average(ImageStore& store, std::int32_t centreWeight, std::int32_t radius) {
    if (radius < -8 || radius > filters::kMaxWindowRadius) return;
    if (radius >= 0) return box_mean(store, {radius, centreWeight});
    // A square of no size at all is black.
    edit_rows(store, kPass, [](auto, auto target) { fill_row(target.data, target.count(), kOpaque, false); });
}

void smart_blur(ImageStore& store, std::int32_t radius, std::int32_t level) {
    if (!is_radius(radius)) return;
    edit_in_scratch(
        store, kRange, lead_of_ranges(radius),
        [=](std::int32_t width, std::int32_t height) {
            return filters::smart_blur_scratch(width, height, radius);
        },
        [=](auto source, auto target, std::int32_t first, std::int32_t last, std::byte* scratch) {
            filters::smart_blur(source, target, radius, level, first, last, scratch);
        });
}

void gaussian_blur(ImageStore& store, std::int32_t radius, std::int32_t fallOff) {
    if (!is_radius(radius) || fallOff < 1) return;
    if (std::int64_t{radius} * radius * fallOff > filters::kMaxRingWeight) return;
    const filters::RingWeights weights = filters::ring_weights(radius, fallOff);
    edit_in_scratch(
        store, kMean + kEachBox * static_cast<double>(weights.boxes.size()),
        lead_of_rings(radius, weights.boxes.size()),
        [&](std::int32_t width, std::int32_t) { return filters::ring_blur_scratch(width, weights); },
        [&](auto source, auto target, std::int32_t first, std::int32_t last, std::byte* scratch) {
            filters::ring_blur(source, target, weights, first, last, scratch);
        });
}

void sharpen(ImageStore& store) { convolve(store, filters::sharpen_kernel()); }

void sharpen_edge(ImageStore& store, std::int32_t level) {
    edit_area(store, kPass, [=](auto source, auto target, std::int32_t first, std::int32_t last) {
        filters::sharpen_edge(source, target, level, first, last);
    });
}

void laplas(ImageStore& store) { convolve(store, filters::laplas_kernel()); }

void contour(ImageStore& store) { convolve(store, filters::contour_kernel()); }

void sobel(ImageStore& store, std::int32_t type) { convolve(store, filters::sobel_kernel(type)); }

void relief(ImageStore& store, std::int32_t direction) { convolve(store, filters::relief_kernel(direction)); }

bool user_effect(ImageStore& store, MaybeNumbers weights) {
    if (!weights || (weights->size() != 9 && weights->size() != 25)) return false;
    Edit edit(store);
    if (!edit) return false;
    filters::Kernel kernel;
    kernel.side = weights->size() == 9 ? 3 : 5;
    std::copy(weights->begin(), weights->end(), kernel.weights.begin());
    const ConstPixelBuffer source = edit.source();
    const PixelBuffer target = edit.target();
    parallel_rows(source.height, source.width * kMean, [&](std::int32_t first, std::int32_t last) {
        filters::convolve(source, target, kernel, first, last);
    });
    edit.commit();
    return true;
}

void emboss(ImageStore& store, std::int32_t distance, std::int32_t direction) {
    if (distance < -10 || distance > 10) return;
    constexpr std::int32_t kStepX[] = {0, 1, 1, 1, 0, -1, -1, -1};
    constexpr std::int32_t kStepY[] = {-1, -1, 0, 1, 1, 1, 0, -1};
    const std::int32_t i = direction >= 0 && direction <= 7 ? direction : 7;
    const std::int32_t dx = kStepX[i] * distance;
    const std::int32_t dy = kStepY[i] * distance;
    edit_area(store, kPass, [=](auto source, auto target, std::int32_t first, std::int32_t last) {
        filters::emboss(source, target, dx, dy, first, last);
    });
}

}  // namespace

std::vector<Row> area_rows() {
    const char* blurs = "Blur and sharpen";
    const char* edges = "Edges";
    const char* surface = "Surface";
    const Range radii{1, 50};
    const Range levels{0, 255};
    const Range anyRadius{1, filters::kMaxWindowRadius};
    return {
        command("Blur", 11, blur, blurs, "Mean over a square around each pixel.",
                {{.name = "nVal", .slider = radii, .initial = 3, .accepts = anyRadius}}),
        command(
            "Average", 15, average, blurs,
            "Mean over a square whose centre has a weight of its own; black for radii below 0.",
            {{.name = "nAverage", .slider = {-20, 20}, .initial = 1},
             {.name = "nVal", .slider = {0, 50}, .initial = 2, .accepts = {-8, filters::kMaxWindowRadius}}}),
        command("SmartBlur", 44, smart_blur, blurs,
                "Blurs flat areas and keeps those whose range is above the level.",
                {{.name = "nVal", .slider = radii, .initial = 2, .accepts = anyRadius},
                 {.name = "Level", .slider = levels, .initial = 30}}),
        command("GaussianBlur", 28, gaussian_blur, blurs,
                "Blur with weights that fall with the distance, the steeper the larger B.",
                {{.name = "nVal", .slider = radii, .initial = 5, .accepts = anyRadius},
                 {.name = "B", .slider = {1, 100}, .initial = 1, .accepts = {1, kUnbounded}}}),
        command("Sharpen", 18, sharpen, blurs, "Sharpens against the diagonal neighbours."),
        command("SharpenEdge", 47, sharpen_edge, blurs,
                "Sharpens where the range of the neighbours is at least the level.",
                {{.name = "Level", .slider = levels, .initial = 30}}),
        command("UserEffect", 38, user_effect, blurs,
                "Applies a kernel of 3 x 3 or 5 x 5 weights, column by column.", {{.name = "ppArray"}}),
        command("Laplas", 17, laplas, edges, "Light edges on black, by four neighbours."),
        command("Contour", 146, contour, edges, "Light edges on black, by eight neighbours."),
        command("Sobel", 35, sobel, edges,
                "Gradient: 0 right less left, 1 left less right, 2 bottom less top, 3 top less bottom.",
                {{.name = "nType", .slider = {0, 3}, .initial = 0}}),
        command("Emboss", 6, emboss, surface,
                "Grey relief of the difference to a neighbour, in one of eight directions.",
                {{.name = "nValue", .slider = {-10, 10}, .initial = 1, .accepts = {-10, 10}},
                 {.name = "Direction", .slider = {0, 7}, .initial = 3}}),
        command("Relief", 143, relief, surface,
                "Lights the picture from one side, turned by 45 degrees for each step.",
                {{.name = "nVal", .slider = {0, 7}, .initial = 1}}),
    };
}

}  // namespace pixvane
