// The overview panel as it is drawn; its parts are made once and kept until they change.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "core/pixel_buffer.h"
#include "core/scaling/scale.h"
#include "view/scroll_window.h"
#include "view/text_image.h"

namespace pixvane {

/// The picture that a view shows. Whoever shows another one, or the same with other pixels, gives it another
/// version.
struct ShownPicture {
    ConstPixelBuffer pixels;
    std::uint64_t version = 0;
};

class ScrollWindowImage {
public:
    /// `panel` was updated for the view.
    void draw(PixelBuffer target, const ScrollWindow& panel, const ShownPicture& picture, double zoom,
              Rasterizer& rasterizer, bool smooth);

private:
    /// What the image is made of.
    struct Content {
        ScrollWindowLayout layout;  ///< from the corner of the image
        Pixel color = 0;
        std::uint64_t version = 0;
        std::int32_t percent = 0;
        bool smooth = false;
        bool operator==(const Content&) const = default;
    };

    void make(const Content& content, const ShownPicture& picture, Rasterizer& rasterizer);
    void make_ground(PixelBuffer image, const Content& content, Rasterizer& rasterizer);
    void make_thumbnail(const Content& content, const ShownPicture& picture);

    Content content_;
    std::vector<Pixel> image_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    // Apart, since it costs most and outlasts many zooms.
    std::vector<Pixel> thumbnail_;
    std::uint64_t thumbnailVersion_ = 0;
    std::int32_t thumbnailWidth_ = 0;
    std::int32_t thumbnailHeight_ = 0;
    Scaling scaling_;
    TextImage caption_;
};

}  // namespace pixvane
