// One step of the history while it is being made.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/bitmap.h"

namespace pixvane {

class ImageStore;

/// Opens a history step without copying: a kernel reads source() and writes every pixel of target(). An edit
/// that is destroyed before commit() leaves the picture that was current as it was, and current.
///
///     Edit edit(store);
///     if (!edit) return;                       // empty, or no memory
///     PixelBuffer target = edit.target();
///     kernel(edit.source(), target);
///     edit.commit();
class Edit {
public:
    /// A step of the size of the current picture.
    explicit Edit(ImageStore& store);
    /// A step of another size.
    Edit(ImageStore& store, std::int64_t width, std::int64_t height);
    ~Edit();
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

    /// False if the store is empty or there is no memory: then nothing may be written or committed.
    explicit operator bool() const { return target_ != nullptr; }

    ConstPixelBuffer source() const;
    /// Undefined content until it is written; never the memory of source().
    PixelBuffer target() const { return target_->pixels(); }

    /// Makes the target the current picture: modified, nothing to redo. If the size changed, the picture is
    /// centred and the layout recomputed.
    void commit();

private:
    ImageStore& store_;
    std::shared_ptr<Bitmap> target_;
};

}  // namespace pixvane
