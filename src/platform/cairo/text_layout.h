// Text as Pango lays it out.
// SPDX-License-Identifier: MIT
#pragma once

#include <pango/pangocairo.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "draw/rasterizer.h"

namespace pixvane {

struct PangoDelete {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};

/// One text at a time. Fonts are looked for at the first one: a control that shows no text pays nothing.
class TextLayout {
public:
    /// The text laid out; what was laid out last is not laid out again.
    PangoLayout* lay_out(std::string_view text, const Font& font);

private:
    void start();
    void set_font(const Font& font);

    // A font map of its own, since one may be used by one thread at a time only.
    std::unique_ptr<PangoFontMap, PangoDelete> fonts_;
    std::unique_ptr<PangoContext, PangoDelete> context_;
    std::unique_ptr<PangoLayout, PangoDelete> layout_;
    std::string text_;
    std::string family_;
    Font font_;
    bool isLaidOut_ = false;
};

/// Names of all families of the machine, sorted; asked for once in the life of the process.
const std::vector<std::string>& font_families();

}  // namespace pixvane
