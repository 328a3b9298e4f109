// The kernels of the filters that have a fixed one, and the weights of rings.
// SPDX-License-Identifier: MIT
#include <cmath>

#include "filters/area/area.h"

namespace pixvane::filters {
namespace {

/// From weights as they are seen in the picture, row by row.
Kernel from_rows(const std::array<std::int32_t, 9>& rows) {
    Kernel kernel;
    for (std::size_t x = 0; x < 3; ++x) {
        for (std::size_t y = 0; y < 3; ++y) kernel.weights[3 * x + y] = rows[3 * y + x];
    }
    return kernel;
}

}  // namespace

Kernel sharpen_kernel() { return from_rows({1, 0, 1, 0, -8, 0, 1, 0, 1}); }

Kernel laplas_kernel() { return from_rows({0, -1, 0, -1, 4, -1, 0, -1, 0}); }

Kernel contour_kernel() { return from_rows({-1, -1, -1, -1, 8, -1, -1, -1, -1}); }

Kernel sobel_kernel(std::int32_t type) {
    switch (type) {
        case 0:
            return from_rows({-1, 0, 1, -2, 0, 2, -1, 0, 1});
        case 1:
            return from_rows({1, 0, -1, 2, 0, -2, 1, 0, -1});
        case 2:
            return from_rows({-1, -2, -1, 0, 0, 0, 1, 2, 1});
        default:
            return from_rows({1, 2, 1, 0, 0, 0, -1, -2, -1});
    }
}

Kernel relief_kernel(std::int32_t direction) {
    // Cut off after these digits: the truncated weights depend on it.
    constexpr double kEighth = 0.7853981625;
    constexpr double kQuarter = 1.570796325;
    constexpr double kThreeEighths = 2.3561944875000003;
    constexpr double kHalf = 3.14159265;
    const double a = direction * kEighth;
    const auto weight = [](double angle) { return static_cast<std::int32_t>(std::cos(angle) * 1000.0); };
    Kernel kernel;
    std::size_t i = 0;
    for (const std::int32_t w :
         {weight(a + kEighth), weight(a + kQuarter), weight(a + kThreeEighths), weight(a), 1000,
          weight(a + kHalf), weight(a - kEighth), weight(a - kQuarter), weight(a - kThreeEighths)})
        kernel.weights[i++] = w;
    return kernel;
}

RingWeights ring_weights(std::int32_t radius, std::int32_t fallOff) {
    const auto weight_of = [=](std::int64_t ring) {
        return (std::int64_t{radius} * radius * fallOff + 1) / (ring * ring * fallOff + 1);
    };
    RingWeights rings;
    for (std::int32_t ring = 0; ring <= radius; ++ring) {
        const std::int64_t next = ring < radius ? weight_of(ring + 1) : 0;
        const std::int64_t weight = weight_of(ring) - next;
        if (weight == 0) continue;
        rings.boxes.push_back({ring, weight});
        const std::int64_t side = 2 * std::int64_t{ring} + 1;
        rings.sum += weight * side * side;
    }
    return rings;
}

}  // namespace pixvane::filters
