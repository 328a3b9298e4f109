// The control: owns the document and its view, and is what every member works on.
// SPDX-License-Identifier: MIT
#include "control/cpixvane.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

namespace pixvane {

void CPixvane::Repaint() {
    const bool hasWindow = store_.view.client_width() > 0 && store_.view.client_height() > 0;
    if (updatesSuspended_ || !hasWindow) return;
    window_.frame_ready();
}

void CPixvane::NewImage(std::int32_t width, std::int32_t height) {
    if (!ImageStore::accepts_new_size(width, height)) return;
    store_.NewImage(width, height);
    Repaint();
}

bool CPixvane::LoadImage(std::string_view fileName) {
    if (!store_.LoadImage(std::string(fileName))) return false;
    Repaint();
    return true;
}

bool CPixvane::LoadFromImageArray(MaybeBytes array, std::int32_t width, std::int32_t height) {
    if (!array) return false;
    if (width >= 1 && height >= 1) {
        const auto needed = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
        if (array->size() / sizeof(Pixel) < needed) return false;
    }
    const bool loaded = store_.load_array(array->data(), width, height);
    Repaint();
    return loaded;
}

void CPixvane::Empty() {
    store_.Empty();
    Repaint();
}

bool CPixvane::SaveImage(std::string_view fileName, std::int32_t type) {
    return store_.SaveImage(std::string(fileName), type);
}

bool CPixvane::IsImageFile(std::string_view fileName) { return store_.IsImageFile(std::string(fileName)); }

std::optional<ByteBuffer> CPixvane::Picture() {
    ByteBuffer file;
    if (!store_.encode_picture(file)) return std::nullopt;
    return file;
}

void CPixvane::put_Picture(MaybeBytes file) {
    DecodedImage image;
    if (file && store_.decode_picture(*file, image)) {
        const ConstPixelBuffer picture = std::as_const(*image.bitmap).pixels();
        // A picture too small for a document is drawn into the one that is there.
        store_.NewImage(picture.width, picture.height);
        store_.draw_over_current(picture);
        if (picture.width >= store_.view.client_width() || picture.height >= store_.view.client_height())
            store_.view.ZoomToFit();
    }
    Repaint();
}

Color CPixvane::GetPixel(std::int32_t x, std::int32_t y) {
    const ConstPixelBuffer picture = store_.current();
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) return {};
    return to_color(picture.row(y)[x]);
}

std::optional<filters::Histogram> CPixvane::histogram(filters::Channel channel) {
    if (store_.is_empty()) return std::nullopt;
    return filters::channel_histogram(store_.current(), channel);
}

std::optional<filters::Histogram> CPixvane::GetLHistogram() {
    if (store_.is_empty()) return std::nullopt;
    return filters::luminance_histogram(store_.current());
}

void CPixvane::Undo() {
    store_.Undo();
    Repaint();
}

void CPixvane::Redo() {
    store_.Redo();
    Repaint();
}

void CPixvane::put_HistoryStates(std::int32_t count) {
    if (count >= 2 && count <= ImageStore::kSlots) store_.set_kept_states(count);
}

void CPixvane::put_JpegQuality(std::int32_t quality) { store_.JpegQuality = std::clamp(quality, 0, 100); }

void CPixvane::put_color(Pixel& setting, Color color) {
    setting = to_pixel(color);
    Repaint();
}

void CPixvane::put_ScrollWindowVisible(bool visible) {
    scrollWindow_.visible = visible;
    Repaint();
}

void CPixvane::put_ScrollWindowColor(Color color) {
    scrollWindow_.set_color(color);
    if (scrollWindow_.visible) Repaint();
}

void CPixvane::EndUpdate() {
    updatesSuspended_ = false;
    Repaint();
}

void CPixvane::ZoomIn() {
    store_.view.ZoomIn();
    Repaint();
}

void CPixvane::ZoomOut() {
    store_.view.ZoomOut();
    Repaint();
}

void CPixvane::ActialSize() {
    store_.view.ActialSize();
    Repaint();
}

void CPixvane::ZoomToFit() {
    store_.view.ZoomToFit();
    Repaint();
}

void CPixvane::window_resized(std::int32_t width, std::int32_t height) {
    store_.view.resize(width, height, autoResize_);
    Repaint();
}

void CPixvane::window_zoom_at(std::int32_t steps, WindowPoint at) {
    if (store_.is_empty()) return;
    store_.view.zoom_at(steps, at);
    Repaint();
}

void CPixvane::window_pan(std::int32_t dx, std::int32_t dy) {
    if (store_.view.pan(dx, dy)) Repaint();
}

void CPixvane::file_dropped(std::string_view path) {
    const Value argument = Value::string(path);
    events_.fire("OnDropFile", {&argument, 1});
}

}  // namespace pixvane
