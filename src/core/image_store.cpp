// The document: a ring of sixteen bitmaps, its settings, and what its file carried.
// SPDX-License-Identifier: MIT
#include "core/image_store.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "core/compose.h"

namespace pixvane {
namespace {

constexpr std::int32_t kSmallestNewSide = 4;
constexpr std::int32_t kSmallestArraySide = 2;

/// A file that takes more memory than there is fails like one that can't be read.
template <class Work>
bool false_without_memory(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace

ConstPixelBuffer ImageStore::current() const {
    if (is_empty()) return {};
    return std::as_const(slot()).pixels();
}

std::shared_ptr<const Bitmap> ImageStore::current_bitmap() const {
    return is_empty() ? nullptr : slots_[static_cast<std::size_t>(current_)];
}

void ImageStore::Empty() {
    preview_.reset();
    viewBeforePreview_.reset();
    for (auto& bitmap : slots_) bitmap.reset();
    current_ = -1;
    used_ = 0;
    redoCount_ = 0;
    modified_ = false;
    frameCount_ = 0;
    ++version_;
    extras_ = {};
    view.set_image_size(0, 0);
}

void ImageStore::begin_document(std::shared_ptr<Bitmap> bitmap) {
    slots_[0] = std::move(bitmap);
    current_ = 0;
    used_ = 1;
    frameCount_ = 1;
    ++version_;
    view.set_image_size(width(), height());
    view.lay_out_document();
}

bool ImageStore::accepts_new_size(std::int64_t width, std::int64_t height) {
    return width >= kSmallestNewSide && height >= kSmallestNewSide && is_picture_size(width, height);
}

bool ImageStore::NewImage(std::int64_t width, std::int64_t height) {
    if (!accepts_new_size(width, height)) return false;
    Empty();
    auto bitmap = Bitmap::create(width, height);
    if (bitmap == nullptr) return false;
    fill(bitmap->pixels(), BitmapBackColor);
    begin_document(std::move(bitmap));
    return true;
}

bool ImageStore::LoadImage(const std::string& path) {
    Empty();
    DecodedImage image;
    return read_picture(path, image) && load_decoded(std::move(image));
}

bool ImageStore::read_picture(const std::string& path, DecodedImage& image) const {
    return false_without_memory([&] {
        ByteBuffer file;
        return files_.read(path, file) && codec_.decode(file, 0, image);
    });
}

bool ImageStore::load_decoded(DecodedImage&& image) {
    if (image.bitmap == nullptr) return false;
    begin_document(std::move(image.bitmap));
    frameCount_ = std::max(image.frameCount, 1);
    extras_ = std::move(image.extras);
    return true;
}

bool ImageStore::load_array(const std::uint8_t* pixels, std::int64_t width, std::int64_t height) {
    Empty();
    if (width < kSmallestArraySide || height < kSmallestArraySide) return false;
    auto bitmap = Bitmap::create(width, height);
    if (bitmap == nullptr) return false;
    std::memcpy(bitmap->pixels().data, pixels, bitmap->pixels().bytes());
    begin_document(std::move(bitmap));
    return true;
}

void ImageStore::draw_over_current(ConstPixelBuffer picture) {
    if (is_empty()) return;
    draw_over(slot().pixels(), picture, 0, 0);
    ++version_;
}

bool ImageStore::SaveImage(const std::string& path, std::int32_t type) {
    if (is_empty() || type < static_cast<std::int32_t>(SaveType::Bmp) ||
        type > static_cast<std::int32_t>(SaveType::Png))
        return false;
    const bool saved = false_without_memory([&] {
        ByteBuffer file;
        const EncodeOptions options{JpegQuality, &extras_};
        return codec_.encode(current(), static_cast<SaveType>(type), options, file) &&
               files_.write_whole(path, file);
    });
    if (saved) modified_ = false;
    return saved;
}

bool ImageStore::IsImageFile(const std::string& path) const {
    return false_without_memory([&] {
        ByteBuffer file;
        return files_.read(path, file) && codec_.is_image(file);
    });
}

bool ImageStore::decode_picture(ByteSpan file, DecodedImage& image) const {
    return false_without_memory([&] { return codec_.decode(file, 0, image); });
}

bool ImageStore::encode_picture(ByteBuffer& file) const {
    if (is_empty()) return false;
    // Over white every pixel is opaque, and an opaque picture is written with 24 bits.
    auto flat = Bitmap::create(width(), height());
    if (flat == nullptr) return false;
    flatten(flat->pixels(), current(), 0xFFFFFFFF);
    return codec_.encode(flat->pixels(), SaveType::Bmp, {}, file);
}

// The ring keeps no record of which slot is oldest: an undo stops after fifteen steps or at a slot that was
// never filled, so it may pass into slots that an abandoned line of edits left behind.
bool ImageStore::can_undo() const {
    return used_ > 0 && redoCount_ < kSlots - 1 &&
           slots_[static_cast<std::size_t>(previous_index())] != nullptr;
}

void ImageStore::Undo() {
    if (!can_undo()) return;
    ++redoCount_;
    step_to(previous_index());
}

void ImageStore::Redo() {
    if (!can_redo()) return;
    --redoCount_;
    step_to((current_ + 1) % used_);
}

void ImageStore::step_to(std::int32_t index) {
    const std::int32_t oldWidth = width();
    const std::int32_t oldHeight = height();
    current_ = index;
    ++version_;
    if (width() != oldWidth || height() != oldHeight) show_size(current());
}

void ImageStore::show_size(ConstPixelBuffer picture) {
    view.set_image_size(picture.width, picture.height);
    view.recompute_layout();
}

std::shared_ptr<const Bitmap> ImageStore::GetImageArray() {
    Edit edit(*this);
    if (!edit) return nullptr;
    copy(edit.target(), edit.source());
    edit.commit();
    auto bitmap = current_bitmap();
    Undo();
    return bitmap;
}

void ImageStore::set_kept_states(std::int32_t count) {
    keptStates_ = count;
    if (keptStates_ < kSlots && drop_old_states(keptStates_)) redoCount_ = 0;
}

/// Empties all slots but the current one and the `kept` - 1 before it; whether there was anything in them. In
/// the ring, what comes after the current slot is also what is oldest.
bool ImageStore::drop_old_states(std::int32_t kept) {
    bool dropped = false;
    for (std::int32_t age = kept; age < kSlots; ++age) {
        auto& slot = slots_[static_cast<std::size_t>((current_ - age + kSlots) % kSlots)];
        dropped = dropped || slot != nullptr;
        slot.reset();
    }
    return dropped;
}

std::shared_ptr<Bitmap> ImageStore::open_step(std::int64_t width, std::int64_t height) {
    if (is_empty() || !is_picture_size(width, height)) return nullptr;
    if (!editsSuppressed_ && !previewing_) {
        // With the new one there will be as many as are kept. What a slot held is gone, so it can't be redone
        // either; its memory serves the new bitmap.
        if (drop_old_states(keptStates_ - 1)) redoCount_ = 0;
    }
    return Bitmap::create(width, height);
}

void ImageStore::close_step(std::shared_ptr<Bitmap> bitmap) {
    if (previewing_) return show_preview(std::move(bitmap));
    const bool sameSize = bitmap->width() == width() && bitmap->height() == height();
    if (!editsSuppressed_) {
        current_ = (current_ + 1) % kSlots;
        used_ = std::max(used_, current_ + 1);
        redoCount_ = 0;
    }
    slots_[static_cast<std::size_t>(current_)] = std::move(bitmap);
    modified_ = true;
    ++version_;
    if (!sameSize) show_size(current());
}

ConstPixelBuffer ImageStore::shown() const { return preview_ ? preview_->pixels() : current(); }

void ImageStore::start_preview() {
    drop_preview();
    viewAtStart_ = view;
    previewing_ = true;
}

void ImageStore::finish_preview() {
    previewing_ = false;
    if (view != viewAtStart_) viewBeforePreview_ = viewAtStart_;
}

void ImageStore::show_preview(std::shared_ptr<Bitmap> bitmap) {
    const ConstPixelBuffer before = shown();
    preview_ = std::move(bitmap);
    ++version_;
    if (shown().width != before.width || shown().height != before.height) show_size(shown());
}

void ImageStore::drop_preview() {
    if (preview_ != nullptr) ++version_;
    preview_.reset();
    if (!viewBeforePreview_) return;
    const Viewport& before = *viewBeforePreview_;
    const bool sameWindow =
        before.client_width() == view.client_width() && before.client_height() == view.client_height();
    if (sameWindow && before.zoom() == view.zoom())
        view = before;
    else
        show_size(current());
    viewBeforePreview_.reset();
}

Edit::Edit(ImageStore& store) : Edit(store, store.width(), store.height()) {}

Edit::Edit(ImageStore& store, std::int64_t width, std::int64_t height)
    : store_(store), target_(store.open_step(width, height)) {}

Edit::~Edit() = default;

ConstPixelBuffer Edit::source() const { return store_.current(); }

void Edit::commit() { store_.close_step(std::move(target_)); }

}  // namespace pixvane
