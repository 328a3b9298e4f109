// Filters whose output pixel depends on a neighbourhood: kernels, means, edges.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/pixel_buffer.h"
#include "filters/area/radius.h"

// Source and target have the same size and are different memory. Every function writes rows first..last of
// the target and reads what it needs of the whole source, so that a picture may be done in bands; how it is
// cut makes no difference. Beyond its edges a picture repeats its edge pixels. Alpha is never read, and is
// 255 in what is written, except where a pixel is kept: then it is copied whole.
// `scratch` is memory for the time of the call, aligned to BandScratch::kAlignment, of the size that the
// function of the same name with _scratch tells; its content doesn't matter before or after.
namespace pixvane::filters {

/// Square weights, 3 x 3 or 5 x 5, column by column, each column from its top.
struct Kernel {
    std::int32_t side = 3;
    std::array<std::int32_t, 25> weights{};
};

/// c -> clamp(T / S), T being the weighted sum of the neighbours' channel and S the sum of the weights; the
/// division truncates toward zero, and is left out if S is 0.
void convolve(ConstPixelBuffer source, PixelBuffer target, const Kernel& kernel, std::int32_t first,
              std::int32_t last);

/// Twice the centre less the mean of the diagonal neighbours.
Kernel sharpen_kernel();
/// The centre against its four neighbours.
Kernel laplas_kernel();
/// The centre against its eight neighbours.
Kernel contour_kernel();
/// 0: right minus left, 1: left minus right, 2: bottom minus top, others: top minus bottom.
Kernel sobel_kernel(std::int32_t type);
/// Light from one side, turned by 45 degrees for each step of `direction`; the weights add up to about 1000.
Kernel relief_kernel(std::int32_t direction);

/// A square mean whose centre counts `centreWeight` times.
struct BoxMean {
    std::int32_t radius = 1;  ///< 0..kMaxWindowRadius
    std::int32_t centreWeight = 1;
};

/// c -> clamp(T / S), T being the sum over the square of 2 radius + 1 pixels a side with its centre weighted,
/// S the sum of the weights. The division truncates toward zero, and is left out if S is 0.
void box_mean(ConstPixelBuffer source, PixelBuffer target, const BoxMean& mean, std::int32_t first,
              std::int32_t last, std::byte* scratch);
std::size_t box_mean_scratch(std::int32_t width);

/// A kernel whose weights depend on the ring, the larger of the distances along x and y; written as the sum
/// of boxes around the centre, each with what its ring has more than the next one out.
struct RingWeights {
    struct Box {
        std::int32_t radius;
        std::int64_t weight;
    };
    std::vector<Box> boxes;  ///< from the smallest to the largest; one for each change of the weights
    std::int64_t sum = 0;    ///< of the weights of the kernel
};

/// Ring c has the weight (radius^2 fallOff + 1) / (c^2 fallOff + 1), a whole number. radius
/// is 1..kMaxWindowRadius, fallOff at least 1, radius^2 fallOff at most kMaxRingWeight.
RingWeights ring_weights(std::int32_t radius, std::int32_t fallOff);
constexpr std::int64_t kMaxRingWeight = std::int64_t{1} << 50;

/// The weighted mean, truncated.
void ring_blur(ConstPixelBuffer source, PixelBuffer target, const RingWeights& weights, std::int32_t first,
               std::int32_t last, std::byte* scratch);
std::size_t ring_blur_scratch(std::int32_t width, const RingWeights& weights);

// The local range is the smallest of the three channels' ranges (maximum minus minimum) over a square.

/// The mean over a square of `radius` (1..kMaxWindowRadius) where the local range over it is at most `level`;
/// other pixels are kept.
void smart_blur(ConstPixelBuffer source, PixelBuffer target, std::int32_t radius, std::int32_t level,
                std::int32_t first, std::int32_t last, std::byte* scratch);
/// `rows` is the largest number of rows that it will be called for at once.
std::size_t smart_blur_scratch(std::int32_t width, std::int32_t rows, std::int32_t radius);

/// sharpen_kernel() where the local range of radius 1 is at least `level`; other pixels are kept.
void sharpen_edge(ConstPixelBuffer source, PixelBuffer target, std::int32_t level, std::int32_t first,
                  std::int32_t last);

/// (c - c' + 255) / 2 with c' of the pixel dx to the right and dy below.
void emboss(ConstPixelBuffer source, PixelBuffer target, std::int32_t dx, std::int32_t dy, std::int32_t first,
            std::int32_t last);

}  // namespace pixvane::filters
