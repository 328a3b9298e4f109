// What the benchmark measures: one table of rows.
// SPDX-License-Identifier: MIT
#include "rows.h"

#include "pictures.h"

namespace bench {
namespace {

constexpr std::int32_t kLargeWidth = 6000;
constexpr std::int32_t kLargeHeight = 4000;
constexpr std::int32_t kHistory = 16;
constexpr std::int32_t kClientWidth = 1920;
constexpr std::int32_t kClientHeight = 1080;

const char* const kEndings[] = {"bmp", "jpg", "gif", "tif", "png"};

pixvane_value n(std::int32_t number) { return pixvane_int32(number); }

// Weights that fall off from the centre, and ones that lighten from one side.
constexpr std::int32_t kSoft5[25] = {1,  4, 6, 4,  1,  4,  16, 24, 16, 4, 6, 24, 36,
                                     24, 6, 4, 16, 24, 16, 4,  1,  4,  6, 4, 1};
constexpr std::int32_t kLit5[25] = {-90, -70, -40, 10, 30, -70, -50, -20, 30, 50, -40, -20, 99,
                                    20,  40,  -30, 10, 20, 50,  70,  20,  30, 40, 70,  90};

pixvane_value weights(const std::int32_t (&kernel)[25]) { return pixvane_int32_array(kernel, 25); }

bool is_view(Kind kind) { return kind == Kind::View || kind == Kind::Drag; }
bool is_large(Kind kind) { return kind == Kind::Load24M || kind == Kind::Save24M || is_view(kind); }
bool is_load(Kind kind) { return kind == Kind::Load4K || kind == Kind::Load24M; }
bool is_save(Kind kind) { return kind == Kind::Save4K || kind == Kind::Save24M; }
bool is_file(Kind kind) { return is_load(kind) || is_save(kind); }

pixvane_value zoom(double factor) { return pixvane_double(factor); }

Picture of_size(const Picture* source, std::int32_t width, std::int32_t height) {
    return source != nullptr ? tiled(*source, width, height) : photograph(width, height);
}

}  // namespace

std::vector<Row> all_rows() {
    constexpr auto none = std::nullopt;
    return {
        // A turn by no quarter copies the picture into the next step and does nothing else.
        {"undo step alone (RotateFlip 0)", Kind::Edit, "RotateFlip", {n(0)}, 1.0},
        {"Invert", Kind::Edit, "Invert", {}, 0.8},
        {"Brightness 20 10 -30", Kind::Edit, "Brightness", {n(20), n(10), n(-30)}, 0.9},
        {"Contrast 130", Kind::Edit, "Contrast", {n(130)}, 0.9},
        {"Lightness 110 90 120", Kind::Edit, "Lightness", {n(110), n(90), n(120)}, 0.9},
        {"Temperature 30", Kind::Edit, "Temperature", {n(30)}, 0.9},
        {"Gamma 0.8", Kind::Edit, "Gamma", {pixvane_double(0.8)}, 0.9},
        {"Desaturate", Kind::Edit, "Desaturate", {}, 1.0},
        {"Hue 40 90 200", Kind::Edit, "Hue", {n(40), n(90), n(200)}, 1.0},
        {"Sepia", Kind::Edit, "Sepia", {}, 1.0},
        {"Saturate 130", Kind::Edit, "Saturate", {n(130)}, 1.0},
        {"Saturate 30", Kind::Edit, "Saturate", {n(30)}, 1.6},
        {"Saturate 29", Kind::Edit, "Saturate", {n(29)}, 2.6},
        {"Monochrome 127", Kind::Edit, "Monochrome", {n(127), n(0xFFFFFF), n(0)}, 0.9},
        {"BWLevels 4", Kind::Edit, "BWLevels", {n(4)}, 0.9},
        {"GetLHistogram", Kind::Read, "GetLHistogram", {}, 1.7},
        {"GetRHistogram", Kind::Read, "GetRHistogram", {}, none},
        {"Autolevels", Kind::Edit, "Autolevels", {}, 5.0},
        {"Autocontrast", Kind::Edit, "Autocontrast", {}, 5.0},
        {"Autocolor", Kind::Edit, "Autocolor", {}, 5.0},
        {"Noise 0 30 (one for all)", Kind::Edit, "Noise", {n(0), n(30)}, none},
        {"Noise 1 30 (one each)", Kind::Edit, "Noise", {n(1), n(30)}, none},
        {"Blur 3", Kind::Edit, "Blur", {n(3)}, 3.2},
        {"Blur 30", Kind::Edit, "Blur", {n(30)}, 3.2},
        {"Blur 127", Kind::Edit, "Blur", {n(127)}, 3.2},
        {"Blur 300", Kind::Edit, "Blur", {n(300)}, 6.0},
        {"Blur 3000", Kind::Edit, "Blur", {n(3000)}, 6.0},
        {"Average 5 3", Kind::Edit, "Average", {n(5), n(3)}, none},
        {"Sharpen", Kind::Edit, "Sharpen", {}, 2.0},
        {"Laplas", Kind::Edit, "Laplas", {}, 2.0},
        {"Contour", Kind::Edit, "Contour", {}, 2.0},
        {"Sobel 0", Kind::Edit, "Sobel", {n(0)}, 2.0},
        {"Relief 1", Kind::Edit, "Relief", {n(1)}, 2.0},
        {"UserEffect 5 x 5, soft", Kind::Edit, "UserEffect", {weights(kSoft5)}, 5.0},
        {"UserEffect 5 x 5, lit", Kind::Edit, "UserEffect", {weights(kLit5)}, 5.0},
        {"SmartBlur 1 30", Kind::Edit, "SmartBlur", {n(1), n(30)}, 4.5},
        {"SmartBlur 5 30", Kind::Edit, "SmartBlur", {n(5), n(30)}, 7.0},
        {"SmartBlur 50 30", Kind::Edit, "SmartBlur", {n(50), n(30)}, none},
        {"SharpenEdge 30", Kind::Edit, "SharpenEdge", {n(30)}, 2.5},
        {"GaussianBlur 5 1", Kind::Edit, "GaussianBlur", {n(5), n(1)}, 11.0},
        {"GaussianBlur 20 1", Kind::Edit, "GaussianBlur", {n(20), n(1)}, 30.0},
        {"GaussianBlur 60 1", Kind::Edit, "GaussianBlur", {n(60), n(1)}, none},
        {"GaussianBlur 100 1", Kind::Edit, "GaussianBlur", {n(100), n(1)}, none},
        {"Emboss 1 3", Kind::Edit, "Emboss", {n(1), n(3)}, 0.95},
        {"RotateFlip 2 (180)", Kind::Edit, "RotateFlip", {n(2)}, 0.9},
        {"RotateFlip 4 (left to right)", Kind::Edit, "RotateFlip", {n(4)}, 0.9},
        {"RotateFlip 6 (top to bottom)", Kind::Edit, "RotateFlip", {n(6)}, 0.9},
        {"RotateFlip 1 (90)", Kind::Edit, "RotateFlip", {n(1)}, 1.4},
        {"RotateFlip 3 (270)", Kind::Edit, "RotateFlip", {n(3)}, 1.4},
        {"AddSimpleBorder 16", Kind::Edit, "AddSimpleBorder", {n(16), n(0xFFFFFF)}, 0.8},
        {"AddGradientBorder 16",
         Kind::Edit,
         "AddGradientBorder",
         {n(16), n(0xFFFFFF), n(0x804000), n(2)},
         none},
        {"ScaleImage 0.5", Kind::Edit, "ScaleImage", {pixvane_double(0.5), pixvane_double(0.5)}, 0.9},
        {"ScaleImage 0.37", Kind::Edit, "ScaleImage", {pixvane_double(0.37), pixvane_double(0.37)}, 1.1},
        {"ScaleImage 2.0", Kind::Edit, "ScaleImage", {pixvane_double(2), pixvane_double(2)}, 5.0},
        {"SetNewSize 4000 x 2200", Kind::Edit, "SetNewSize", {n(4000), n(2200)}, none},
        {"ClearImage", Kind::Edit, "ClearImage", {}, none},
        {"Minimal 1", Kind::Edit, "Minimal", {n(1)}, 1.6},
        {"Minimal 3", Kind::Edit, "Minimal", {n(3)}, none},
        {"Minimal 5", Kind::Edit, "Minimal", {n(5)}, 2.5},
        {"Minimal 20", Kind::Edit, "Minimal", {n(20)}, 3.0},
        {"Minimal 30", Kind::Edit, "Minimal", {n(30)}, none},
        {"Minimal 300", Kind::Edit, "Minimal", {n(300)}, none},
        {"Maximal 1", Kind::Edit, "Maximal", {n(1)}, 1.6},
        {"Maximal 3", Kind::Edit, "Maximal", {n(3)}, none},
        {"Maximal 5", Kind::Edit, "Maximal", {n(5)}, 2.5},
        {"Maximal 20", Kind::Edit, "Maximal", {n(20)}, 3.0},
        {"Maximal 30", Kind::Edit, "Maximal", {n(30)}, none},
        {"Maximal 300", Kind::Edit, "Maximal", {n(300)}, none},
        {"Median 1", Kind::Edit, "Median", {n(1)}, 2.0},
        {"Median 2", Kind::Edit, "Median", {n(2)}, 7.0},
        {"Median 3", Kind::Edit, "Median", {n(3)}, none},
        {"Median 5", Kind::Edit, "Median", {n(5)}, 75.0},
        {"Median 10", Kind::Edit, "Median", {n(10)}, 80.0},
        {"Median 20", Kind::Edit, "Median", {n(20)}, 80.0},
        {"AntiNoise 1", Kind::Edit, "AntiNoise", {n(1)}, none},
        {"AntiNoise 2", Kind::Edit, "AntiNoise", {n(2)}, none},
        {"AntiNoise 5", Kind::Edit, "AntiNoise", {n(5)}, none},
        {"AntiNoise 7", Kind::Edit, "AntiNoise", {n(7)}, none},
        {"AntiNoise 10", Kind::Edit, "AntiNoise", {n(10)}, none},
        {"AntiNoise 20", Kind::Edit, "AntiNoise", {n(20)}, none},
        {"Diffuse 3", Kind::Edit, "Diffuse", {n(3)}, none},
        {"Mosaic 0 5 (centres of 11 x 11)", Kind::Edit, "Mosaic", {n(0), n(5)}, 0.7},
        {"Mosaic 1 5 (means of 11 x 11)", Kind::Edit, "Mosaic", {n(1), n(5)}, 1.3},
        {"Textile 40", Kind::Edit, "Textile", {n(40)}, none},
        {"SoftFocus 1 pass", Kind::Edit, "SoftFocus", {n(1), n(500), n(800), n(1900), n(1000)}, none},
        {"SoftFocus 5 passes", Kind::Edit, "SoftFocus", {n(5), n(500), n(800), n(1900), n(1000)}, none},
        {"FocalBW 500 800", Kind::Edit, "FocalBW", {n(500), n(800), n(1900), n(1000)}, none},
        {"load JPEG 24 MP", Kind::Load24M, "LoadImage", {n(1)}, 43.0},
        {"save JPEG 24 MP", Kind::Save24M, "SaveImage", {n(1)}, 31.0},
        {"load PNG 4K", Kind::Load4K, "LoadImage", {n(4)}, 42.0},
        {"save PNG 4K", Kind::Save4K, "SaveImage", {n(4)}, 128.0},
        {"load TIFF 4K", Kind::Load4K, "LoadImage", {n(3)}, none},
        {"save TIFF 4K", Kind::Save4K, "SaveImage", {n(3)}, none},
        {"load BMP 4K", Kind::Load4K, "LoadImage", {n(0)}, none},
        {"save BMP 4K", Kind::Save4K, "SaveImage", {n(0)}, none},
        {"load GIF 4K", Kind::Load4K, "LoadImage", {n(2)}, none},
        {"save GIF 4K", Kind::Save4K, "SaveImage", {n(2)}, none},
        {"view 24 MP at 0.1", Kind::View, "EndUpdate", {zoom(0.1), pixvane_bool(0)}, none},
        {"view 24 MP at 0.25", Kind::View, "EndUpdate", {zoom(0.25), pixvane_bool(0)}, 1.2},
        {"view 24 MP at 0.27", Kind::View, "EndUpdate", {zoom(0.27), pixvane_bool(0)}, none},
        {"view 24 MP at 0.5", Kind::View, "EndUpdate", {zoom(0.5), pixvane_bool(0)}, 0.9},
        {"view 24 MP at 0.7", Kind::View, "EndUpdate", {zoom(0.7), pixvane_bool(0)}, none},
        {"view 24 MP at 1", Kind::View, "EndUpdate", {zoom(1), pixvane_bool(0)}, 0.24},
        {"view 24 MP at 2", Kind::View, "EndUpdate", {zoom(2), pixvane_bool(0)}, 0.6},
        {"view 24 MP at 1, overview", Kind::View, "EndUpdate", {zoom(1), pixvane_bool(1)}, none},
        {"drag 24 MP by 200 steps at 1", Kind::Drag, "EndUpdate", {zoom(1), pixvane_bool(0)}, none},
        {"drag 24 MP by 200 steps at 0.5", Kind::Drag, "EndUpdate", {zoom(0.5), pixvane_bool(0)}, none},
    };
}

Control& Workplace::small() {
    if (!small_) {
        small_ = std::make_unique<Control>();
        small_->load(of_size(source_, kWidth, kHeight));
        // With the history full, every step works in memory that an older one leaves, as in steady use.
        for (std::int32_t i = 0; i < kHistory; ++i) small_->invoke("RotateFlip", {n(0)});
    }
    return *small_;
}

Control& Workplace::large() {
    if (!large_) {
        large_ = std::make_unique<Control>();
        large_->load(of_size(source_, kLargeWidth, kLargeHeight));
    }
    return *large_;
}

Control& Workplace::loader() {
    if (!loader_) loader_ = std::make_unique<Control>();
    return *loader_;
}

Control& Workplace::subject(const Row& row) {
    if (is_load(row.kind)) return loader();
    return is_large(row.kind) ? large() : small();
}

std::string Workplace::path(const Row& row) const {
    return folder_.file(std::string(is_load(row.kind) ? "load-" : "save-") +
                        (is_large(row.kind) ? "24m." : "4k.") + kEndings[row.arguments[0].i]);
}

void Workplace::prepare(const Row& row) {
    subject(row);
    if (is_view(row.kind)) show(row);
    if (!is_load(row.kind)) return;
    const std::string file = path(row);
    if (std::filesystem::exists(file)) return;
    Control& source = is_large(row.kind) ? large() : small();
    if (source.invoke("SaveImage", {pixvane_string_n(file.data(), file.size()), row.arguments[0]}).i == 0)
        throw Error("can't save " + file);
}

// A window that the picture fits with its margin of 4 pixels gives the zoom, which then stays.
void Workplace::show(const Row& row) {
    Control& control = subject(row);
    const double zoom = row.arguments[0].d;
    control.invoke("BeginUpdate");
    control.invoke("ScrollWindowVisible", {row.arguments[1]});
    control.resize(static_cast<std::int32_t>(kLargeWidth * zoom + 8),
                   static_cast<std::int32_t>(kLargeHeight * zoom + 8));
    control.invoke("ZoomToFit");
    control.resize(kClientWidth, kClientHeight);
    control.invoke("EndUpdate");
    if (control.invoke("Zoom").d != zoom) throw Error(std::string(row.label) + " has another zoom");
}

void Workplace::run(const Row& row) {
    Control& control = subject(row);
    if (row.kind == Kind::View) {
        control.invoke(member(row.member), {});
        return;
    }
    if (row.kind == Kind::Drag) {
        constexpr std::int32_t x = kClientWidth / 2, y = kClientHeight / 2;
        const std::int32_t before = control.frames();
        control.mouse(PIXVANE_MOUSE_DOWN, PIXVANE_LEFT, x, y, 0);
        for (std::int32_t i = 1; i <= kDragSteps; ++i)
            control.mouse(PIXVANE_MOUSE_MOVE, PIXVANE_LEFT, x - 2 * i, y + i, PIXVANE_HELD_LEFT);
        control.mouse(PIXVANE_MOUSE_UP, PIXVANE_LEFT, x, y, 0);
        if (control.frames() - before < kDragSteps) throw Error(std::string(row.label) + " was refused");
        return;
    }
    if (!is_file(row.kind)) {
        result_ = control.invoke(member(row.member), row.arguments);
        return;
    }
    const std::string file = path(row);
    const pixvane_value arguments[] = {pixvane_string_n(file.data(), file.size()), row.arguments[0]};
    result_ = control.invoke(member(row.member), std::span(arguments, is_load(row.kind) ? 1 : 2));
}

void Workplace::finish(const Row& row) {
    Control& control = subject(row);
    if (is_view(row.kind)) return;
    if (row.kind == Kind::Edit) {
        // A command that refused would have left a step to redo: the one that was taken back before.
        if (control.invoke("RedoEnable").i != 0) throw Error(std::string(row.label) + " made no step");
        control.invoke("Undo");
        if (control.invoke("RedoEnable").i == 0) throw Error(std::string(row.label) + " can't be taken back");
    } else if (row.kind == Kind::Read ? result_.size != 256 : result_.i == 0) {
        throw Error(std::string(row.label) + " failed");
    }
}

std::optional<std::uintmax_t> Workplace::file_size(const Row& row) const {
    if (!is_file(row.kind)) return std::nullopt;
    return std::filesystem::file_size(path(row));
}

std::optional<std::int32_t> Workplace::frames(const Row& row) const {
    if (row.kind != Kind::Drag) return std::nullopt;
    return kDragSteps;
}

}  // namespace bench
