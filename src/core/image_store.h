// The document: a ring of sixteen bitmaps, its settings, and what its file carried.
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/bitmap.h"
#include "core/byte_buffer.h"
#include "core/color.h"
#include "core/edit.h"
#include "core/file_system.h"
#include "core/image_codec.h"
#include "core/viewport.h"

namespace pixvane {

class ImageStore {
public:
    static constexpr std::int32_t kSlots = 16;

    ImageStore(ImageCodec& codec, FileSystem& files) : codec_(codec), files_(files) {}

    // What is there.
    bool is_empty() const { return used_ < 1; }
    std::int32_t width() const { return is_empty() ? 0 : slot().width(); }
    std::int32_t height() const { return is_empty() ? 0 : slot().height(); }
    /// The current picture; of size 0 x 0 when empty.
    ConstPixelBuffer current() const;
    std::shared_ptr<const Bitmap> current_bitmap() const;
    /// Another number whenever the picture that is shown may be another one, or have other pixels.
    std::uint64_t version() const { return version_; }
    std::int32_t frame_count() const { return frameCount_; }
    bool modified() const { return modified_; }

    // New documents. Each leaves one slot, not modified, laid out anew.
    /// A side of at least 4, and a size that a picture may have.
    static bool accepts_new_size(std::int64_t width, std::int64_t height);
    /// Any other size is refused, with nothing changed. False also if there is no memory; then the store is
    /// empty.
    bool NewImage(std::int64_t width, std::int64_t height);
    void Empty();
    /// False and empty if the file is missing or can't be decoded.
    bool LoadImage(const std::string& path);
    /// False and empty if a side is below 2 or there is no memory. `pixels` holds width * height of them, as
    /// bytes B, G, R, A; it may be null where the size is refused anyway.
    bool load_array(const std::uint8_t* pixels, std::int64_t width, std::int64_t height);
    /// Draws a picture into the current one at (0, 0) without a history step.
    void draw_over_current(ConstPixelBuffer picture);

    // Files.
    /// A type outside SaveType is refused before anything is written. Clears modified when it worked.
    bool SaveImage(const std::string& path, std::int32_t type);
    bool IsImageFile(const std::string& path) const;
    /// The bytes of a 24-bit BMP file of the current picture over white; false if empty.
    bool encode_picture(ByteBuffer& file) const;
    /// The first frame of a picture file, without making it the document.
    bool read_picture(const std::string& path, DecodedImage& image) const;
    /// Whether the bytes are a picture file; decodes its first frame.
    bool decode_picture(ByteSpan file, DecodedImage& image) const;

    // History.
    void Undo();
    void Redo();
    bool can_undo() const;
    bool can_redo() const { return used_ >= 1 && redoCount_ > 0; }
    /// The current pixels by way of a copy in the next slot and one undo: modified becomes true, the copy can
    /// be redone. Null if the store is empty or there is no memory.
    std::shared_ptr<const Bitmap> GetImageArray();
    /// How many states an edit leaves, the current one included, 2..kSlots; the older ones give up their
    /// memory at once.
    void set_kept_states(std::int32_t count);
    std::int32_t kept_states() const { return keptStates_; }
    /// While set, an edit replaces the current picture instead of opening a step.
    void set_edits_suppressed(bool suppressed) { editsSuppressed_ = suppressed; }

    // A preview: what an edit would make of the current picture, to be looked at only.
    /// Until finish_preview edits touch neither the history nor modified(): what the last of them makes is
    /// shown. What an earlier preview made is dropped.
    void start_preview();
    void finish_preview();
    /// Shows the current picture again, laid out as it was.
    void drop_preview();
    /// The picture to be shown: the preview, or else the current one; of size 0 x 0 when empty.
    ConstPixelBuffer shown() const;
    std::shared_ptr<const Bitmap> shown_bitmap() const { return preview_ ? preview_ : current_bitmap(); }

    // Settings.
    Pixel BitmapBackColor = 0xFFFFFFFF;
    Pixel FrameColor = 0xFFD3D3D3;
    std::int32_t JpegQuality = 90;
    Viewport view;

private:
    friend class Edit;

    Bitmap& slot() const { return *slots_[static_cast<std::size_t>(current_)]; }
    bool drop_old_states(std::int32_t kept);
    std::int32_t previous_index() const { return current_ == 0 ? kSlots - 1 : current_ - 1; }
    void begin_document(std::shared_ptr<Bitmap> bitmap);
    bool load_decoded(DecodedImage&& image);
    void step_to(std::int32_t index);
    void show_size(ConstPixelBuffer picture);
    void show_preview(std::shared_ptr<Bitmap> bitmap);
    std::shared_ptr<Bitmap> open_step(std::int64_t width, std::int64_t height);
    void close_step(std::shared_ptr<Bitmap> bitmap);

    ImageCodec& codec_;
    FileSystem& files_;
    std::array<std::shared_ptr<Bitmap>, kSlots> slots_;
    std::int32_t current_ = -1;
    std::int32_t used_ = 0;  // slots filled since the store was last emptied
    std::int32_t redoCount_ = 0;
    std::int32_t keptStates_ = kSlots;
    bool modified_ = false;
    bool editsSuppressed_ = false;
    bool previewing_ = false;
    std::shared_ptr<const Bitmap> preview_;
    std::optional<Viewport> viewBeforePreview_;  // there if a preview changed the view
    Viewport viewAtStart_;
    std::int32_t frameCount_ = 0;
    std::uint64_t version_ = 0;
    FileExtras extras_;
};

}  // namespace pixvane
