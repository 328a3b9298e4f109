// The control's settings that need more than a field: fonts of the machine, and the texture.
// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "control/cpixvane.h"
#include "control/member_table.h"

namespace pixvane {
namespace {

/// The number of a family; -1 if there is none of this name.
std::int32_t family_index(Rasterizer& rasterizer, std::string_view name) {
    const std::span<const std::string> families = rasterizer.families();
    const auto found = std::ranges::find(families, name);
    return found == families.end() ? -1 : static_cast<std::int32_t>(found - families.begin());
}

}  // namespace

std::int32_t CPixvane::FontCount() { return static_cast<std::int32_t>(rasterizer_.families().size()); }

std::string CPixvane::FontName(std::int32_t index) {
    if (index < 0 || index >= FontCount()) return {};
    return rasterizer_.families()[static_cast<std::size_t>(index)];
}

std::int32_t CPixvane::default_font_index() {
    for (const char* family : {"Arial", "Liberation Sans", "DejaVu Sans"})
        if (const std::int32_t index = family_index(rasterizer_, family); index >= 0) return index;
    return 0;
}

void CPixvane::SetupFontByName(std::string_view name) {
    Value index;
    index.kind = Kind::Int32;
    index.i = family_index(rasterizer_, name);
    if (index.i < 0) return;
    static const Row& setting = *find_member("FontIndex");
    detail::put_setting(setting, *this, {&index, 1});
}

void CPixvane::put_TextureFileName(std::string_view fileName) {
    DecodedImage image;
    if (!store_.read_picture(std::string(fileName), image)) return;
    settings_.brush.texture = std::move(image.bitmap);
    settings_.brush.textureFileName = fileName;
    static const Row& setting = *find_member("TextureFileName");
    setting.snapshot(setting, *this);
    Repaint();
}

}  // namespace pixvane
