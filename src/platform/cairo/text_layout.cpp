// Text as Pango lays it out.
// SPDX-License-Identifier: MIT
#include "platform/cairo/text_layout.h"

#include <algorithm>

#include "platform/cairo/mask_surface.h"

namespace pixvane {
namespace {

constexpr std::size_t kMaxTextBytes = 8192;
constexpr std::int32_t kMaxFontSize = 512;

bool is_same_style(const Font& a, const Font& b) {
    return a.size == b.size && a.bold == b.bold && a.italic == b.italic && a.underline == b.underline &&
           a.strikeout == b.strikeout;
}

struct GFree {
    void operator()(char* text) const { g_free(text); }
};

/// Names come from files; GLib wants UTF-8 without zeros.
std::unique_ptr<char, GFree> valid(std::string_view text) {
    return std::unique_ptr<char, GFree>(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

}  // namespace

void TextLayout::start() {
    fonts_.reset(pango_cairo_font_map_new());
    context_.reset(pango_font_map_create_context(fonts_.get()));
    // The same on every machine, whatever its desktop says.
    const std::unique_ptr<cairo_font_options_t, CairoDelete> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_ON);
    pango_cairo_context_set_font_options(context_.get(), options.get());
    layout_.reset(pango_layout_new(context_.get()));
}

void TextLayout::set_font(const Font& font) {
    const std::unique_ptr<PangoFontDescription, PangoDelete> description(pango_font_description_new());
    pango_font_description_set_family(description.get(), valid(font.family).get());
    pango_font_description_set_absolute_size(description.get(),
                                             std::clamp(font.size, 1, kMaxFontSize) * double{PANGO_SCALE});
    if (font.bold) pango_font_description_set_weight(description.get(), PANGO_WEIGHT_BOLD);
    if (font.italic) pango_font_description_set_style(description.get(), PANGO_STYLE_ITALIC);
    pango_layout_set_font_description(layout_.get(), description.get());

    PangoAttrList* attributes = pango_attr_list_new();
    if (font.underline) pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
    if (font.strikeout) pango_attr_list_insert(attributes, pango_attr_strikethrough_new(TRUE));
    pango_layout_set_attributes(layout_.get(), attributes);
    pango_attr_list_unref(attributes);
}

PangoLayout* TextLayout::lay_out(std::string_view text, const Font& font) {
    if (layout_ == nullptr) start();
    text = text.substr(0, kMaxTextBytes);
    if (!isLaidOut_ || font.family != family_ || !is_same_style(font, font_)) {
        set_font(font);
        family_ = font.family;
        font_ = font;
        font_.family = {};
        isLaidOut_ = false;
    }
    if (!isLaidOut_ || text != text_) {
        pango_layout_set_text(layout_.get(), valid(text).get(), -1);
        text_ = text;
        isLaidOut_ = true;
    }
    return layout_.get();
}

const std::vector<std::string>& font_families() {
    static const std::vector<std::string> list = [] {
        const std::unique_ptr<PangoFontMap, PangoDelete> fonts(pango_cairo_font_map_new());
        PangoFontFamily** families = nullptr;
        int count = 0;
        pango_font_map_list_families(fonts.get(), &families, &count);
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i) names.emplace_back(pango_font_family_get_name(families[i]));
        g_free(families);
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        return names;
    }();
    return list;
}

}  // namespace pixvane
