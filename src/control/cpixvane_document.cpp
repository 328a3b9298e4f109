// Members on the document: making, loading and saving, what is there, history, settings.
// SPDX-License-Identifier: MIT
#include "control/cpixvane.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "control/kernel_edits.h"

namespace pixvane {
namespace {

template <class Count>
std::optional<filters::Histogram> counted(const ImageStore& store, Count count) {
    if (store.is_empty()) return std::nullopt;
    constexpr double kCount = 0.3;  // nanoseconds a pixel
    return gather_rows(store.current(), kCount, count, filters::add);
}

}  // namespace

void CPixvane::leave_tool() {
    mouse_.SetToolMode(kNoTool);
    mouse_.ResetTools();
}

void CPixvane::NewImage(std::int32_t width, std::int32_t height) {
    if (!ImageStore::accepts_new_size(width, height)) return;
    leave_document();
    store_.NewImage(width, height);
    leave_tool();
    Repaint();
}

bool CPixvane::LoadImage(std::string_view fileName) {
    leave_document();
    if (!store_.LoadImage(std::string(fileName))) return false;
    leave_tool();
    Repaint();
    return true;
}

bool CPixvane::LoadFromImageArray(MaybeBytes array, std::int32_t width, std::int32_t height) {
    if (!array) return false;
    if (width >= 1 && height >= 1) {
        const auto needed = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
        if (array->size() / sizeof(Pixel) < needed) return false;
    }
    leave_document();
    const bool loaded = store_.load_array(array->data(), width, height);
    if (loaded) leave_tool();
    Repaint();
    return loaded;
}

void CPixvane::Empty() {
    leave_document();
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
        leave_document();
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
    return counted(store_, [=](ConstPixelBuffer rows) { return filters::channel_histogram(rows, channel); });
}

std::optional<filters::Histogram> CPixvane::GetLHistogram() {
    return counted(store_, filters::luminance_histogram);
}

void CPixvane::Undo() {
    end_preview();
    store_.Undo();
    Repaint();
}

void CPixvane::Redo() {
    end_preview();
    store_.Redo();
    Repaint();
}

void CPixvane::put_HistoryStates(std::int32_t count) {
    if (count >= 2 && count <= ImageStore::kSlots) store_.set_kept_states(count);
}

void CPixvane::put_JpegQuality(std::int32_t quality) { store_.JpegQuality = std::clamp(quality, 0, 100); }

}  // namespace pixvane
