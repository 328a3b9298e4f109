// What the view tells about a folder: the banner while it is scanned, and the line about the file shown.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/pixel_buffer.h"
#include "core/scaling/scale.h"
#include "view/text_image.h"

namespace pixvane {

/// A file that a scan has just found: told for one frame.
struct ScannedFile {
    ConstPixelBuffer preview;
    std::string_view name;
    std::uint64_t bytes = 0;
};

/// The file of a folder's list that is shown.
struct FileDetails {
    std::string_view name;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

class ScanBanner {
public:
    /// The band along the upper edge; with `file` null it says that the scan goes on.
    void draw_band(PixelBuffer target, const ScannedFile* file, Rasterizer& rasterizer);
    /// The line at the lower edge.
    void draw_details(PixelBuffer target, const FileDetails& file, Rasterizer& rasterizer);

private:
    void draw_file(PixelBuffer target, const ScannedFile& file, Rasterizer& rasterizer);

    TextImage lines_[3];
    TextImage scanning_;
    TextImage details_;
    std::string text_;
    Scaling scaling_;
};

}  // namespace pixvane
