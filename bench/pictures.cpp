// The pictures that the benchmark works on.
// SPDX-License-Identifier: MIT
#include "pictures.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace bench {
namespace {

/// A fixed, well mixed number for three numbers.
std::uint32_t hashed(std::uint32_t x, std::uint32_t y, std::uint32_t salt) {
    std::uint32_t h = x * 0x9E3779B1u ^ y * 0x85EBCA77u ^ salt * 0xC2B2AE3Du;
    h = (h ^ h >> 15) * 0x2C1B3C6Du;
    h = (h ^ h >> 12) * 0x297A2D39u;
    return h ^ h >> 15;
}

/// Smooth noise, -1..1, one bump about every `cell` pixels: one row of it at a time.
class NoiseRow {
public:
    NoiseRow(std::int32_t width, std::int32_t cell, std::uint32_t salt)
        : cell_(cell), salt_(salt), lattice_(static_cast<std::size_t>(width / cell + 2)) {}

    void move_to(std::int32_t y) {
        const float part = smooth(static_cast<float>(y % cell_) / static_cast<float>(cell_));
        const auto row = static_cast<std::uint32_t>(y / cell_);
        for (std::uint32_t i = 0; i < lattice_.size(); ++i)
            lattice_[i] = mixed(corner(i, row), corner(i, row + 1), part);
    }
    float at(std::int32_t x) const {
        const auto i = static_cast<std::size_t>(x / cell_);
        return mixed(lattice_[i], lattice_[i + 1],
                     smooth(static_cast<float>(x % cell_) / static_cast<float>(cell_)));
    }

private:
    static float smooth(float t) { return t * t * (3 - 2 * t); }
    static float mixed(float a, float b, float part) { return a + (b - a) * part; }
    float corner(std::uint32_t x, std::uint32_t y) const {
        return static_cast<float>(hashed(x, y, salt_) & 0xFFFF) / 32767.5f - 1;
    }

    std::int32_t cell_;
    std::uint32_t salt_;
    std::vector<float> lattice_;
};

/// The noise of a sensor: nearly normal, of standard deviation 1.
float grain(std::uint32_t x, std::uint32_t y, std::uint32_t channel) {
    const std::uint32_t h = hashed(x, y, 77 + channel);
    const auto sum = static_cast<float>((h & 0xFF) + (h >> 8 & 0xFF) + (h >> 16 & 0xFF) + (h >> 24));
    return (sum - 510) / 147.8f;
}

std::uint32_t byte(float value) { return static_cast<std::uint32_t>(std::clamp(value + 0.5f, 0.0f, 255.0f)); }

}  // namespace

Picture photograph(std::int32_t width, std::int32_t height) {
    Picture picture{
        width, height,
        std::vector<std::uint32_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
    // Of strengths that make its files as large as those of real photographs: as PNG about 1.7 bytes a pixel,
    // as JPEG of quality 90 about 1.9 bits.
    constexpr std::array<std::int32_t, 9> kCells = {1024, 400, 150, 60, 23, 9, 5, 3, 2};
    constexpr std::array<float, 9> kStrengths = {46, 34, 22, 14, 13, 18, 22, 24, 21};
    std::vector<NoiseRow> light;
    for (std::uint32_t i = 0; i < kCells.size(); ++i) light.emplace_back(width, kCells[i], i);
    NoiseRow warm(width, 700, 21);
    NoiseRow tint(width, 300, 22);
    NoiseRow ridge(width, 260, 23);
    ridge.move_to(0);
    auto* pixel = picture.pixels.data();
    for (std::int32_t y = 0; y < height; ++y) {
        for (auto& row : light) row.move_to(y);
        warm.move_to(y);
        tint.move_to(y);
        const float down = static_cast<float>(y) / static_cast<float>(height);
        for (std::int32_t x = 0; x < width; ++x) {
            // Sky above the ridge is soft, the ground below it rough.
            const bool sky = down < 0.42f + 0.1f * ridge.at(x);
            float value = sky ? 175 - 60 * down : 110 - 30 * down;
            for (std::size_t i = 0; i < light.size(); ++i)
                value += kStrengths[i] * light[i].at(x) * (sky ? (i < 3 ? 0.6f : 0.13f) : 1.0f);
            const float w = 22 * warm.at(x) + (sky ? -14.0f : 8.0f);
            const float t = 14 * tint.at(x);
            const auto gx = static_cast<std::uint32_t>(x);
            const auto gy = static_cast<std::uint32_t>(y);
            const std::uint32_t red = byte(value + w + 2.2f * grain(gx, gy, 0));
            const std::uint32_t green = byte(value + t + 1.7f * grain(gx, gy, 1));
            const std::uint32_t blue = byte(value - w + 2.5f * grain(gx, gy, 2));
            *pixel++ = 0xFF000000u | red << 16 | green << 8 | blue;
        }
    }
    return picture;
}

Picture tiled(const Picture& picture, std::int32_t width, std::int32_t height) {
    const auto mirrored = [](std::int32_t i, std::int32_t size) {
        const std::int32_t turn = i % (2 * size);
        return static_cast<std::size_t>(turn < size ? turn : 2 * size - 1 - turn);
    };
    Picture result{width, height, {}};
    result.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::int32_t y = 0; y < height; ++y) {
        const std::uint32_t* row =
            picture.pixels.data() + mirrored(y, picture.height) * static_cast<std::size_t>(picture.width);
        for (std::int32_t x = 0; x < width; ++x) result.pixels.push_back(row[mirrored(x, picture.width)]);
    }
    return result;
}

}  // namespace bench
