// A mountain lake in the late afternoon: a picture with what photographs have, from soft gradients to grain.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace sample {

struct Rgb {
    float r = 0, g = 0, b = 0;
};

/// The scene at one size. Every pixel depends on nothing but its place, so rows may be rendered in any order.
class Scene {
public:
    Scene(int width, int height);

    /// Writes row `y` as bytes B, G, R, A.
    void render_row(int y, std::uint8_t* bytes) const;

private:
    /// A range of mountains: its crest for every column, in heights of the picture from the top.
    struct Range {
        std::vector<float> crest;
        Rgb shade, light;
        float haze;   ///< how much of the air's colour lies over it
        float scale;  ///< of its texture
        float snow;   ///< above this height there is snow
        std::uint32_t seed;
    };

    void add_range(const Range& look, float base, float height, float roughness);
    void add_forest();
    Rgb sky(float u, float v) const;
    Rgb mountains(int x, float u, float v) const;
    void paint_range(const Range& range, int x, float u, float v, Rgb& color) const;
    void paint_forest(int x, float u, float v, Rgb& color) const;
    Rgb lake(int x, float u, float v) const;
    void paint_meadow(int x, float u, float v, Rgb& color) const;
    Rgb developed(Rgb color, int x, int y, float u, float v) const;

    int width_, height_;
    float pixel_;  ///< side of a pixel in heights of the picture
    float aspect_;
    std::vector<Range> ranges_;  ///< far ones first
    std::vector<float> forest_;  ///< the tips of the trees
    std::vector<float> meadow_;  ///< the edge of the near shore
};

}  // namespace sample
