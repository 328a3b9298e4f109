// The colours of a picture, sorted into as many boxes as a palette has entries.
// SPDX-License-Identifier: MIT
#include "platform/codecs/color_boxes.h"

#include <algorithm>
#include <array>
#include <limits>

namespace pixvane::codecs {
namespace {

using Cell = ColorHistogram::Cell;
constexpr std::uint32_t kSide = ColorHistogram::kSide;
constexpr int kRefinements = 4;

void add(Cell& sum, const Cell& cell, double sign = 1) {
    sum.count += sign * cell.count;
    sum.red += sign * cell.red;
    sum.green += sign * cell.green;
    sum.blue += sign * cell.blue;
    sum.squares += sign * cell.squares;
}

/// The sum of squared distances from the mean.
double error_of(const Cell& sum) {
    if (sum.count <= 0) return 0;
    const double length = sum.red * sum.red + sum.green * sum.green + sum.blue * sum.blue;
    return std::max(0.0, sum.squares - length / sum.count);
}

constexpr std::size_t cell_index(std::size_t r, std::size_t g, std::size_t b) {
    return (r * kSide + g) * kSide + b;
}

/// Cells first..last-1 on each of the axes red, green, blue.
struct Box {
    std::array<std::uint32_t, 3> first{0, 0, 0};
    std::array<std::uint32_t, 3> last{kSide, kSide, kSide};
    Cell sum;
    double error = 0;
    // The best cut, and what it saves.
    std::size_t axis = 0;
    std::uint32_t cut = 0;
    double gain = 0;
};

class Boxes {
public:
    explicit Boxes(const ColorHistogram& histogram) : cells_(histogram.cells()) {
        boxes_.push_back(measured({}));
    }

    void split(std::size_t count) {
        while (boxes_.size() < count) {
            const auto widest = std::max_element(boxes_.begin(), boxes_.end(),
                                                 [](const Box& a, const Box& b) { return a.gain < b.gain; });
            if (widest->gain <= 0) return;
            Box low = *widest;
            Box high = *widest;
            low.last[low.axis] = low.cut;
            high.first[high.axis] = high.cut;
            *widest = measured(low);
            boxes_.push_back(measured(high));
        }
    }

    const std::vector<Box>& all() const { return boxes_; }

private:
    /// Sums of the box's slices along an axis.
    std::array<Cell, kSide> slices(const Box& box, std::size_t axis) const {
        std::array<Cell, kSide> sums{};
        for (std::uint32_t r = box.first[0]; r < box.last[0]; ++r)
            for (std::uint32_t g = box.first[1]; g < box.last[1]; ++g)
                for (std::uint32_t b = box.first[2]; b < box.last[2]; ++b)
                    add(sums[axis == 0 ? r : axis == 1 ? g : b], cells_[cell_index(r, g, b)]);
        return sums;
    }

    Box measured(Box box) const {
        box.gain = 0;
        box.sum = {};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::array<Cell, kSide> sums = slices(box, axis);
            if (axis == 0) {
                for (const Cell& slice : sums) add(box.sum, slice);
                box.error = error_of(box.sum);
            }
            Cell low;
            Cell high = box.sum;
            for (std::uint32_t at = box.first[axis] + 1; at < box.last[axis]; ++at) {
                add(low, sums[at - 1]);
                add(high, sums[at - 1], -1);
                if (low.count <= 0 || high.count <= 0) continue;
                const double gain = box.error - error_of(low) - error_of(high);
                if (gain <= box.gain) continue;
                box.gain = gain;
                box.axis = axis;
                box.cut = at;
            }
        }
        return box;
    }

    const std::vector<Cell>& cells_;
    std::vector<Box> boxes_;
};

struct Color {
    float red;
    float green;
    float blue;
};

Color mean_of(const Cell& sum) {
    return {static_cast<float>(sum.red / sum.count), static_cast<float>(sum.green / sum.count),
            static_cast<float>(sum.blue / sum.count)};
}

std::size_t nearest(const std::vector<Color>& colors, Color wanted) {
    std::size_t best = 0;
    float least = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const float r = colors[i].red - wanted.red;
        const float g = colors[i].green - wanted.green;
        const float b = colors[i].blue - wanted.blue;
        const float distance = r * r + g * g + b * b;
        if (distance >= least) continue;
        least = distance;
        best = i;
    }
    return best;
}

void refine(const std::vector<Cell>& cells, std::vector<Color>& colors) {
    std::vector<Cell> sums(colors.size());
    for (const Cell& cell : cells)
        if (cell.count > 0) add(sums[nearest(colors, mean_of(cell))], cell);
    for (std::size_t i = 0; i < colors.size(); ++i)
        if (sums[i].count > 0) colors[i] = mean_of(sums[i]);
}

std::uint32_t rounded(float channel) {
    return static_cast<std::uint32_t>(std::clamp(channel + 0.5f, 0.0f, 255.0f));
}

}  // namespace

ColorHistogram::ColorHistogram(ConstPixelBuffer picture, std::uint32_t leastAlpha)
    : cells_(kSide * kSide * kSide) {
    for (std::size_t i = 0; i < picture.count(); ++i) {
        const Pixel p = picture.data[i];
        if (alpha_of(p) < leastAlpha) continue;
        const std::uint32_t r = red_of(p);
        const std::uint32_t g = green_of(p);
        const std::uint32_t b = blue_of(p);
        add(cells_[cell_index(r / 8, g / 8, b / 8)],
            {1, double(r), double(g), double(b), double(r * r + g * g + b * b)});
    }
}

std::vector<Pixel> choose_palette(const ColorHistogram& histogram, std::size_t count) {
    Boxes boxes(histogram);
    boxes.split(count);
    std::vector<Color> colors;
    for (const Box& box : boxes.all())
        if (box.sum.count > 0) colors.push_back(mean_of(box.sum));
    for (int i = 0; i < kRefinements && !colors.empty(); ++i) refine(histogram.cells(), colors);
    std::vector<Pixel> palette;
    for (const Color& color : colors)
        palette.push_back(make_pixel(255, rounded(color.red), rounded(color.green), rounded(color.blue)));
    return palette;
}

}  // namespace pixvane::codecs
