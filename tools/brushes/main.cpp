// Draws a sheet of every pen and brush: pixvane-brushes docs/brushes.png
// SPDX-License-Identifier: MIT
#include <cstdio>
#include <string>

#include "brushes/sheet.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "platform/codecs/codecs.h"
#include "platform/linux/linux_platform.h"

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "Usage: pixvane-brushes SHEET.png\n");
        return 2;
    }
    const auto bitmap = pixvane::Bitmap::create(pixvane::kSheetWidth, pixvane::kSheetHeight);
    if (bitmap == nullptr) return 1;
    const auto rasterizer = pixvane::make_cairo_rasterizer();
    pixvane::draw_sheet(bitmap->pixels(), *rasterizer);
    pixvane::ByteBuffer file;
    if (!pixvane::image_codec().encode(bitmap->pixels(), pixvane::SaveType::Png, {}, file) ||
        !pixvane::linux_file_system().write_whole(arguments[1], file)) {
        std::fprintf(stderr, "%s can't be written\n", arguments[1]);
        return 1;
    }
}
