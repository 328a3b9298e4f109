// A mountain lake in the late afternoon: a picture with what photographs have, from soft gradients to grain.
// SPDX-License-Identifier: MIT
#include "scene.h"

#include <algorithm>
#include <cmath>

#include "noise.h"

namespace sample {
namespace {

// Heights of the picture from the top.
constexpr float kShore = 0.60f;
constexpr float kSunX = 0.70f, kSunY = 0.30f;  // the former in widths

constexpr Rgb kAir{0.80f, 0.72f, 0.68f};

constexpr Rgb mix(const Rgb& a, const Rgb& b, float t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}
constexpr Rgb scaled(const Rgb& a, float factor) { return {a.r * factor, a.g * factor, a.b * factor}; }
constexpr Rgb added(const Rgb& a, const Rgb& b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }

}  // namespace

Scene::Scene(int width, int height)
    : width_(width),
      height_(height),
      pixel_(1.0f / static_cast<float>(height)),
      aspect_(static_cast<float>(width) / static_cast<float>(height)) {
    add_range({{}, {0.30f, 0.37f, 0.53f}, {0.80f, 0.69f, 0.62f}, 0.42f, 9.0f, 0.52f, 100}, 0.57f, 0.30f,
              1.5f);
    add_range({{}, {0.13f, 0.20f, 0.31f}, {0.58f, 0.50f, 0.42f}, 0.26f, 12.0f, 0.0f, 200}, 0.62f, 0.26f,
              2.0f);
    add_range({{}, {0.05f, 0.11f, 0.12f}, {0.34f, 0.37f, 0.20f}, 0.12f, 18.0f, 0.0f, 300}, 0.65f, 0.20f,
              2.3f);
    add_forest();
    meadow_.resize(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x) {
        const float u = (static_cast<float>(x) + 0.5f) * pixel_;
        const float slant = 0.89f - 0.10f * (1.0f - u / aspect_) * (1.0f - u / aspect_);
        meadow_[static_cast<std::size_t>(x)] =
            slant + 0.02f * fractal(u * 3.0f, 0.5f, 4, 700) + 0.006f * noise(u * 160.0f, 3.5f, 710);
    }
}

void Scene::add_range(const Range& look, float base, float height, float roughness) {
    Range range = look;
    range.crest.resize(static_cast<std::size_t>(width_));
    for (int x = 0; x < width_; ++x) {
        const float u = (static_cast<float>(x) + 0.5f) * pixel_;
        const float shape = ridged(u * roughness, 0.37f, 9, range.seed);
        range.crest[static_cast<std::size_t>(x)] = base - height * shape;
    }
    ranges_.push_back(std::move(range));
}

void Scene::add_forest() {
    constexpr float kTrees = 110.0f;  // to a height of the picture
    forest_.resize(static_cast<std::size_t>(width_));
    for (int x = 0; x < width_; ++x) {
        const float u = (static_cast<float>(x) + 0.5f) * pixel_;
        const float ground = kShore - 0.012f - 0.03f * std::max(0.0f, fractal(u * 2.2f, 9.5f, 4, 400));
        const auto tree = static_cast<std::int32_t>(std::floor(u * kTrees));
        float top = ground;
        for (std::int32_t i = tree - 2; i <= tree + 2; ++i) {
            const float centre = (static_cast<float>(i) + unit_hash(i, 1, 410)) / kTrees;
            const float tall = 0.014f + 0.030f * unit_hash(i, 2, 410);
            const float spread = tall * (0.16f + 0.10f * unit_hash(i, 3, 410));
            // A spire with ragged sides.
            const float side = std::fabs(u - centre) / spread + 0.22f * noise(u * 900.0f, 0.5f, 420);
            top = std::min(top, ground - tall * (1.0f - side));
        }
        forest_[static_cast<std::size_t>(x)] = top;
    }
}

Rgb Scene::sky(float u, float v) const {
    const float height = std::clamp((kShore - v) / kShore, 0.0f, 1.0f);
    Rgb color = mix({0.95f, 0.77f, 0.60f}, {0.46f, 0.63f, 0.83f}, smooth_step(0.0f, 0.55f, height));
    color = mix(color, {0.16f, 0.34f, 0.65f}, smooth_step(0.35f, 1.0f, height));

    const float dx = u - kSunX * aspect_, dy = v - kSunY;
    const float distance = std::sqrt(dx * dx + dy * dy);
    const float glow = std::exp(-distance * 4.5f);
    color = added(color, scaled({0.65f, 0.42f, 0.18f}, glow));

    // Clouds lie on a plane overhead: the nearer to the horizon, the smaller.
    const float away = 0.35f / (height + 0.22f);
    const float cx = (u - 0.5f * aspect_) * away * 2.4f, cy = away * 5.0f;
    const float bend = 0.6f * noise(cx * 1.3f, cy * 1.3f, 20);
    const float density = fractal(cx + bend, cy + bend, 7, 30) + 0.05f;
    const float cover = smooth_step(0.02f, 0.42f, density) * smooth_step(0.02f, 0.25f, height);
    const float lit = 0.5f + 0.5f * fractal(cx + bend - 0.12f, cy + bend + 0.12f, 4, 30) - 0.5f * density;
    const Rgb cloud =
        mix({0.62f, 0.60f, 0.68f}, {1.08f, 0.98f, 0.88f}, smooth_step(0.15f, 0.62f, lit + glow));
    color = mix(color, cloud, 0.88f * cover);

    const float disc = smooth_step(0.026f, 0.021f, distance);
    return mix(color, {1.35f, 1.22f, 1.0f}, disc * (1.0f - 0.7f * cover));
}

void Scene::paint_range(const Range& range, int x, float u, float v, Rgb& color) const {
    const float crest = range.crest[static_cast<std::size_t>(x)];
    const float cover = smooth_step(-0.7f * pixel_, 0.7f * pixel_, v - crest);
    if (cover <= 0.0f) return;
    // Ribs run down the slopes; their sunny sides are those that rise towards the right.
    const float s = range.scale, tx = u * s, ty = v * s * 0.7f;
    const float here = ridged(tx, ty, 6, range.seed + 40);
    const float beside = ridged(tx + 0.05f, ty - 0.03f, 6, range.seed + 40);
    const float sun = std::clamp(0.42f + 3.2f * (here - beside), 0.0f, 1.0f);
    Rgb rock = mix(range.shade, range.light, sun);
    if (range.snow > 0.0f) {
        const float edge = range.snow + 0.05f * fractal(u * 11.0f, v * 7.0f, 5, range.seed + 60);
        const float snow = smooth_step(edge + 0.03f, edge - 0.03f, v + 0.10f * (1.0f - here));
        rock = mix(rock, mix({0.55f, 0.60f, 0.74f}, {1.02f, 0.94f, 0.88f}, sun), snow);
    }
    // Mist rises from the lake.
    const float mist = 0.35f * smooth_step(kShore - 0.16f, kShore, v);
    color = mix(color, mix(rock, kAir, std::min(1.0f, range.haze + mist)), cover);
}

void Scene::paint_forest(int x, float u, float v, Rgb& color) const {
    const float top = forest_[static_cast<std::size_t>(x)];
    const float cover = smooth_step(-0.7f * pixel_, 0.7f * pixel_, v - top);
    if (cover <= 0.0f) return;
    const float needles = fractal(u * 240.0f, v * 120.0f, 4, 430);
    const float rim = smooth_step(0.012f, 0.0f, v - top);
    const Rgb tree = mix({0.030f, 0.060f, 0.050f}, {0.20f, 0.22f, 0.10f},
                         std::clamp(0.30f + 0.7f * needles + 0.25f * rim, 0.0f, 1.0f));
    color = mix(color, mix(tree, kAir, 0.06f), cover);
}

Rgb Scene::mountains(int x, float u, float v) const {
    Rgb color = sky(u, v);
    for (const Range& range : ranges_) paint_range(range, x, u, v, color);
    paint_forest(x, u, v, color);
    return color;
}

Rgb Scene::lake(int x, float u, float v) const {
    const float depth = v - kShore;
    const float near = depth / (1.0f - kShore);
    // Waves get longer and higher the nearer they are.
    const float rows = 1.0f / (depth + 0.02f);
    const float wave = fractal(u * rows * 1.5f, rows * 14.0f, 4, 500);
    const float sway = wave * (0.004f + 0.05f * near);
    const float mirrored = std::clamp(kShore - depth * 1.05f + sway, 0.0f, kShore);
    const int reach = static_cast<int>(sway * 0.25f * static_cast<float>(height_));
    const int column = std::clamp(x + reach, 0, width_ - 1);
    Rgb color = mountains(column, u + sway * 0.25f, mirrored);

    const Rgb water{0.05f, 0.13f, 0.17f};
    color = mix(color, water, 0.22f + 0.34f * near + 0.10f * std::clamp(wave, -1.0f, 1.0f));
    const float path = std::exp(-std::fabs(u - kSunX * aspect_) * (9.0f - 5.0f * near));
    const float glint = smooth_step(0.16f, 0.42f, wave) * path;
    color = added(color, scaled({1.0f, 0.78f, 0.48f}, 0.55f * glint));
    // The far shore ends in a thin bright line.
    return mix(color, kAir, 0.55f * smooth_step(0.006f, 0.0f, depth));
}

void Scene::paint_meadow(int x, float u, float v, Rgb& color) const {
    const float edge = meadow_[static_cast<std::size_t>(x)];
    const float cover = smooth_step(-0.004f, 0.004f, v - edge + 0.006f * noise(u * 420.0f, v * 40.0f, 705));
    if (cover <= 0.0f) return;
    const float near = std::clamp((v - edge) / 0.2f, 0.0f, 1.0f);
    const float fine = 1.0f / (0.35f + near);
    const float blades =
        fractal(u * 220.0f * fine + 2.0f * noise(u * 30.0f, v * 30.0f, 720), v * 42.0f * fine, 4, 730);
    const float patches = fractal(u * 9.0f, v * 16.0f, 4, 740);
    Rgb grass =
        mix({0.055f, 0.110f, 0.030f}, {0.46f, 0.50f, 0.14f}, std::clamp(0.42f + 0.85f * blades, 0.0f, 1.0f));
    grass = mix(grass, added(scaled(grass, 0.6f), {0.16f, 0.12f, 0.02f}), smooth_step(0.0f, 0.5f, patches));

    // Flowers stand on a lattice, each off its place by its own amount, none on most.
    const float cells = 34.0f * fine;
    const auto cx = static_cast<std::int32_t>(std::floor(u * cells)),
               cy = static_cast<std::int32_t>(std::floor(v * cells));
    if (unit_hash(cx, cy, 750) > 0.72f && patches < 0.25f) {
        const float fx = u * cells - static_cast<float>(cx) - (0.3f + 0.4f * unit_hash(cx, cy, 751));
        const float fy = v * cells - static_cast<float>(cy) - (0.3f + 0.4f * unit_hash(cx, cy, 752));
        const float bloom = smooth_step(0.17f, 0.12f, std::sqrt(fx * fx + 1.8f * fy * fy));
        const float kind = unit_hash(cx, cy, 753);
        const Rgb petal = kind < 0.4f    ? Rgb{0.90f, 0.18f, 0.12f}
                          : kind < 0.75f ? Rgb{0.95f, 0.78f, 0.16f}
                                         : Rgb{0.62f, 0.38f, 0.85f};
        grass = mix(grass, scaled(petal, 0.8f + 0.3f * blades), bloom);
    }
    color = mix(color, scaled(grass, 0.75f + 0.45f * near), cover);
}

Rgb Scene::developed(Rgb color, int x, int y, float u, float v) const {
    const float dx = u / aspect_ - 0.5f, dy = v - 0.5f;
    const float corner = 1.0f - 0.55f * (dx * dx + dy * dy);
    const auto tone = [&](float value) {
        // A soft shoulder keeps the sun from clipping.
        const float exposed = std::max(0.0f, value) * corner;
        return exposed < 0.7f ? exposed : 0.7f + 0.3f * (1.0f - std::exp(-(exposed - 0.7f) / 0.3f));
    };
    color = {tone(color.r), tone(color.g), tone(color.b)};
    // Grain is strongest in the middle tones, and mostly the same for all channels.
    const float bright = 0.3f * color.r + 0.6f * color.g + 0.1f * color.b;
    const float strength = 0.030f * (1.0f - std::fabs(2.0f * bright - 0.8f) * 0.5f);
    const auto grain = [&](std::uint32_t seed) {
        return unit_hash(x, y, seed) + unit_hash(x, y, seed + 1) - 1.0f;
    };
    const float common = grain(900);
    color.r += strength * (common + 0.4f * grain(910));
    color.g += strength * (common + 0.4f * grain(920));
    color.b += strength * (common + 0.6f * grain(930));
    return color;
}

void Scene::render_row(int y, std::uint8_t* bytes) const {
    const float v = (static_cast<float>(y) + 0.5f) * pixel_;
    const auto level = [](float value) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
    };
    for (int x = 0; x < width_; ++x) {
        const float u = (static_cast<float>(x) + 0.5f) * pixel_;
        const bool onGround = v > meadow_[static_cast<std::size_t>(x)] + 0.02f;
        Rgb color = onGround ? Rgb{} : v < kShore ? mountains(x, u, v) : lake(x, u, v);
        if (v > kShore) paint_meadow(x, u, v, color);
        color = developed(color, x, y, u, v);
        *bytes++ = level(color.b);
        *bytes++ = level(color.g);
        *bytes++ = level(color.r);
        *bytes++ = 255;
    }
}

}  // namespace sample
