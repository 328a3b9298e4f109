// Smooth noise that is the same on every machine: made from an integer hash, no state, no tables.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sample {

/// Well-mixed bits of a lattice point.
constexpr std::uint32_t hash(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    std::uint32_t h =
        static_cast<std::uint32_t>(x) * 0x9E3779B1u ^ static_cast<std::uint32_t>(y) * 0x85EBCA77u;
    h ^= seed * 0xC2B2AE3Du;
    h = (h ^ (h >> 15)) * 0x2C1B3C6Du;
    h = (h ^ (h >> 12)) * 0x297A2D39u;
    return h ^ (h >> 15);
}

/// The hash as a number from 0 up to 1.
constexpr float unit_hash(std::int32_t x, std::int32_t y, std::uint32_t seed) {
    return static_cast<float>(hash(x, y, seed) >> 8) * (1.0f / 16777216.0f);
}

/// Smooth noise from -1 to 1 with features one unit wide.
float noise(float x, float y, std::uint32_t seed);

/// `octaves` of noise, each twice as fine and half as strong as the one before; about -1 to 1.
float fractal(float x, float y, int octaves, std::uint32_t seed);

/// As fractal, but folded into sharp crests: 0 in the valleys, about 1 on the ridges.
float ridged(float x, float y, int octaves, std::uint32_t seed);

/// 0 below `from`, 1 above `to`, smooth between.
constexpr float smooth_step(float from, float to, float x) {
    float t = (x - from) / (to - from);
    t = t < 0.0f ? 0.0f : t > 1.0f ? 1.0f : t;
    return t * t * (3.0f - 2.0f * t);
}

}  // namespace sample
