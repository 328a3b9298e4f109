// Smooth noise that is the same on every machine: made from an integer hash, no state, no tables.
// SPDX-License-Identifier: MIT
#include "noise.h"

#include <cmath>

namespace sample {
namespace {

float fade(float t) { return t * t * t * (t * (t * 6.0f - 15.0f) + 10.0f); }

/// Slope at a lattice point, one of eight directions, times the way from there.
float slope(std::int32_t x, std::int32_t y, std::uint32_t seed, float dx, float dy) {
    const std::uint32_t h = hash(x, y, seed);
    const float u = (h & 4u) != 0 ? dy : dx;
    const float v = (h & 4u) != 0 ? dx : dy;
    return ((h & 1u) != 0 ? -u : u) + ((h & 2u) != 0 ? -0.5f : 0.5f) * v;
}

}  // namespace

float noise(float x, float y, std::uint32_t seed) {
    const float floorX = std::floor(x), floorY = std::floor(y);
    const auto ix = static_cast<std::int32_t>(floorX), iy = static_cast<std::int32_t>(floorY);
    const float dx = x - floorX, dy = y - floorY;
    const float a = slope(ix, iy, seed, dx, dy), b = slope(ix + 1, iy, seed, dx - 1.0f, dy);
    const float c = slope(ix, iy + 1, seed, dx, dy - 1.0f);
    const float d = slope(ix + 1, iy + 1, seed, dx - 1.0f, dy - 1.0f);
    const float u = fade(dx), v = fade(dy);
    const float top = a + u * (b - a), bottom = c + u * (d - c);
    return 1.3f * (top + v * (bottom - top));
}

float fractal(float x, float y, int octaves, std::uint32_t seed) {
    float sum = 0.0f, strength = 0.5f;
    for (int i = 0; i < octaves; ++i) {
        sum += strength * noise(x, y, seed + static_cast<std::uint32_t>(i));
        // Turned a little at each octave, so that the lattices don't line up.
        const float turned = 1.6f * x - 1.2f * y;
        y = 1.2f * x + 1.6f * y;
        x = turned;
        strength *= 0.5f;
    }
    return sum;
}

float ridged(float x, float y, int octaves, std::uint32_t seed) {
    float sum = 0.0f, strength = 0.5f, above = 1.0f;
    for (int i = 0; i < octaves; ++i) {
        float crest = 1.0f - std::fabs(noise(x, y, seed + static_cast<std::uint32_t>(i)));
        crest *= crest;
        sum += strength * crest * above;
        above = crest;  // detail gathers on the ridges
        const float turned = 1.6f * x - 1.2f * y;
        y = 1.2f * x + 1.6f * y;
        x = turned;
        strength *= 0.5f;
    }
    return sum;
}

}  // namespace sample
