// The table's rows of what drawing uses. Settings stand in the order in which a macro starts with them.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "control/member_table.h"
#include "core/integer_math.h"

namespace pixvane {
namespace {

/// A setting that is a plain field, found by way of members.
template <auto... Path>
struct At {
    static auto& field(CPixvane& control) { return (control.settings().*....*Path); }
    using T = std::remove_reference_t<decltype(field(std::declval<CPixvane&>()))>;
    static T get(CPixvane& control) { return field(control); }
    static void set(CPixvane& control, T value) { field(control) = value; }
};

Pixel with_alpha(Pixel pixel, std::uint8_t alpha) { return (pixel & ~kOpaque) | Pixel{alpha} << 24; }
Pixel with_color(Pixel pixel, Color color) { return (pixel & kOpaque) | (to_pixel(color) & ~kOpaque); }

/// A colour whose alpha is another setting's.
template <auto... Path>
struct ColorAt {
    static Color get(CPixvane& control) {
        const Pixel pixel = At<Path...>::get(control);
        return {to_color(pixel).bgr | (pixel & kOpaque)};
    }
    static void set(CPixvane& control, Color color) {
        Pixel& pixel = At<Path...>::field(control);
        pixel = with_color(pixel, color);
    }
};

template <std::int32_t style>
struct FontBit {
    static bool get(CPixvane& control) { return (control.settings().font.style & style) != 0; }
    static void set(CPixvane& control, bool isOn) {
        std::int32_t& bits = control.settings().font.style;
        bits = isOn ? bits | style : bits & ~style;
    }
};

using S = DrawSettings;
using PenStyleAt = At<&S::pen, &PenSettings::style>;
using PenColorAt = ColorAt<&S::pen, &PenSettings::color>;
using BrushStyleAt = At<&S::brush, &BrushSettings::style>;
using HatchAt = At<&S::brush, &BrushSettings::hatchStyle>;
using TilingAt = At<&S::brush, &BrushSettings::textureStyle>;
using GradientAt = At<&S::brush, &BrushSettings::gradientStyle>;
using BrushColor1At = ColorAt<&S::brush, &BrushSettings::color1>;
using BrushColor2At = ColorAt<&S::brush, &BrushSettings::color2>;
using FontSizeAt = At<&S::font, &FontSettings::size>;
using StampStyleAt = At<&S::stamp, &StampSettings::style>;
using Transparency1At = At<&S::stamp, &StampSettings::transparency1>;
using Transparency2At = At<&S::stamp, &StampSettings::transparency2>;
using MaskColorAt = ColorAt<&S::stamp, &StampSettings::maskColor>;
using UseMaskAt = At<&S::stamp, &StampSettings::useMaskColor>;

// A macro may have put a width that no integer rounds to.
std::int32_t pen_width(CPixvane& control) { return trunc_to_int32(std::round(control.settings().pen.width)); }
void set_pen_width(CPixvane& control, std::int32_t width) {
    control.settings().pen.width = static_cast<float>(width);
}

std::uint8_t pen_alpha(CPixvane& control) {
    return static_cast<std::uint8_t>(alpha_of(control.settings().pen.color));
}
void set_pen_alpha(CPixvane& control, std::uint8_t alpha) {
    Pixel& color = control.settings().pen.color;
    color = with_alpha(color, alpha);
}

std::uint8_t brush_alpha(CPixvane& control) {
    return static_cast<std::uint8_t>(alpha_of(control.settings().brush.color1));
}
void set_brush_alpha(CPixvane& control, std::uint8_t alpha) {
    BrushSettings& brush = control.settings().brush;
    brush.color1 = with_alpha(brush.color1, alpha);
    brush.color2 = with_alpha(brush.color2, alpha);
}

std::int32_t font_index(CPixvane& control) {
    const auto& index = control.settings().font.index;
    return index ? *index : control.default_font_index();
}
void set_font_index(CPixvane& control, std::int32_t index) { control.settings().font.index = index; }
std::int32_t font_count(CPixvane& control) { return control.FontCount(); }

/// What a macro does; what a host puts is a file's name.
bool set_texture(CPixvane& control, std::int32_t width, std::int32_t height, MaybeBytes pixels) {
    const std::shared_ptr<Bitmap> texture = Bitmap::create(width, height);
    if (texture == nullptr || !pixels || pixels->size() != texture->pixels().bytes()) return false;
    std::memcpy(texture->pixels().data, pixels->data(), pixels->size());
    control.settings().brush.texture = texture;
    return true;
}

void record_texture(const Row& row, CPixvane& control) {
    const auto& texture = control.settings().brush.texture;
    if (texture == nullptr) return;
    const ConstPixelBuffer pixels = texture->pixels();
    const Value values[] = {{Kind::Int32, pixels.width, 0, nullptr, 0},
                            {Kind::Int32, pixels.height, 0, nullptr, 0},
                            {Kind::Bytes, 0, 0, pixels.data, pixels.bytes()}};
    control.record(row, values);
}

Row texture_row(const char* category) {
    Row row = property("TextureFileName", &CPixvane::TextureFileName, &CPixvane::put_TextureFileName,
                       category, "Picture file of the texture; one that can't be read changes nothing.");
    const Row pixels =
        step("", 194, set_texture, {{.name = "Width"}, {.name = "Height"}, {.name = "Pixels"}});
    row.macroCode = pixels.macroCode;
    row.stepFields = pixels.arguments;
    row.run = pixels.run;
    row.apply = pixels.apply;
    row.snapshot = record_texture;
    return row;
}

constexpr Range kBytes{0, 255};

Arg number(Range slider, double initial, Range accepts = {}) {
    return {.name = "Value", .slider = slider, .initial = initial, .accepts = accepts};
}
Arg only(Range range, double initial) { return number(range, initial, range); }
Arg flag() { return {.name = "Value", .initial = 0}; }
Arg color(double initial) { return {.name = "Value", .initial = initial}; }

template <class Field>
Row setting_at(const char* name, std::int32_t code, const char* category, const char* help, Arg value,
               SettingRules rules = {}) {
    return setting(name, code, Field::get, Field::set, category, help, value, rules);
}

}  // namespace

std::vector<Row> settings_rows() {
    using C = CPixvane;
    const char* pen = "Pen";
    const char* brush = "Brush";
    const char* fonts = "Font";
    const char* tools = "Tools";
    const char* stamp = "Image stamp";
    const SettingRules withTool{.repaints = Repaints::WithTool};
    const SettingRules givenWithTool{.refused = Refused::RecordsGiven, .repaints = Repaints::WithTool};
    const SettingRules checked{.comesBackChecked = true};
    return {
        setting("PenWidth", 171, pen_width, set_pen_width, pen, "Width of outlines in pixels.",
                only({1, 8}, 1), {.refused = Refused::Nothing}),
        setting_at<PenStyleAt>("PenStyle", 172, pen, "Outlines: 0 solid, 1 to 4 dashed, others none.",
                               number({0, 4}, 0)),
        setting_at<PenColorAt>("PenColor", 173, pen, "Colour of outlines; keeps their alpha.", color(0)),
        setting("PenTransparency", 174, pen_alpha, set_pen_alpha, pen,
                "Alpha of outlines: 0 invisible, 255 opaque.", only(kBytes, 255)),
        setting_at<At<&S::smoothMode>>(
            "SmoothMode", 211, tools, "1: lines and shapes are smooth; others: their pixels are all or none.",
            number({0, 2}, 0)),
        setting("FontIndex", 175, font_index, set_font_index, fonts,
                "Family of texts by its number, below FontCount.",
                {.name = "Value", .accepts = {0, kUnbounded}}, {.count = font_count}),
        setting_at<FontBit<kItalic>>("FontStyleItalic", 176, fonts, "Whether texts are italic.", flag()),
        setting_at<FontBit<kBold>>("FontStyleBold", 177, fonts, "Whether texts are bold.", flag()),
        setting_at<FontBit<kUnderline>>("FontStyleUnderline", 178, fonts, "Whether texts are underlined.",
                                        flag()),
        setting_at<FontBit<kStrikeout>>("FontStyleStrikeout", 179, fonts, "Whether texts are struck out.",
                                        flag()),
        setting_at<FontSizeAt>("FontSize", 180, fonts, "Height of texts in pixels.", only({6, 255}, 16)),
        setting_at<BrushStyleAt>("BrushStyle", 190, brush,
                                 "Fillings: 0 solid, 1 gradient, 2 hatch, 3 texture, from 4 on none.",
                                 number({0, 3}, 0, {0, kUnbounded}), withTool),
        setting_at<HatchAt>("BrushHatchStyle", 191, brush, "Pattern of a hatch.", only({0, 52}, 0),
                            givenWithTool),
        setting_at<TilingAt>(
            "BrushTextureStyle", 192, brush,
            "Tiles of a texture: 0 alike, 1 every other one flipped in x, 2 in y, 3 in both.",
            only({0, 3}, 0), givenWithTool),
        setting_at<GradientAt>("BrushGradientStyle", 193, brush,
                               "Gradients: 0 to the right, 1 down, 2 and 3 along the diagonals.",
                               only({0, 3}, 0), givenWithTool),
        setting("BrushTransparency", 195, brush_alpha, set_brush_alpha, brush,
                "Alpha of fillings: 0 invisible, 255 opaque.", only(kBytes, 255)),
        texture_row(brush),
        setting_at<At<&S::sprayRadius>>("SprayRadius", 200, tools, "Radius of the spray in pixels.",
                                        only({8, 50}, 20), {.repaints = Repaints::Never}),
        setting_at<At<&S::toolBrushSize>>("ToolBrushSize", 201, tools, "Size of the brush.", only({1, 11}, 5),
                                          checked),
        setting_at<At<&S::toolBrushStyle>>("ToolBrushStyle", 202, tools, "Tip of the brush.", only({0, 5}, 0),
                                           checked),
        setting_at<At<&S::eraserSize>>("EraserSize", 203, tools, "Size of the eraser.", only({1, 11}, 5),
                                       checked),
        setting_at<StampStyleAt>("ImageStyle", 204, stamp, "How a picture is stamped into the picture.",
                                 only({0, 6}, 0), checked),
        setting_at<Transparency1At>("ImageTransparency1", 205, stamp, "First alpha of a stamped picture.",
                                    only(kBytes, 255)),
        setting_at<Transparency2At>("ImageTransparency2", 206, stamp, "Second alpha of a stamped picture.",
                                    only(kBytes, 255)),
        setting_at<MaskColorAt>("ImageMaskColor", 207, stamp,
                                "Colour that a stamped picture leaves out while UseImageMaskColor is on.",
                                color(0xFFFFFF)),
        setting_at<UseMaskAt>("UseImageMaskColor", 208, stamp, "Whether ImageMaskColor is left out.", flag()),
        setting_at<BrushColor1At>("BrushColor1", 209, brush,
                                  "Colour of fillings, start of a gradient, ground of a hatch.",
                                  color(0xFFFFFF)),
        setting_at<BrushColor2At>("BrushColor2", 210, brush, "End of a gradient, lines of a hatch.",
                                  color(0)),

        property("FontCount", &C::FontCount, fonts, "How many families of fonts the machine has."),
        method("FontName", &C::FontName, fonts, "Name of a family; empty if there is none of this number.",
               {{.name = "Index", .accepts = {0, kUnbounded}}}),
        method("SetupFontByName", &C::SetupFontByName, fonts,
               "Chooses a family by its name; nothing if there is none.", {{.name = "Name"}}),
    };
}

}  // namespace pixvane
