// A TIFF file in memory, as libtiff sees it.
// SPDX-License-Identifier: MIT
#include "platform/codecs/tiff_handle.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <new>

#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

constexpr toff_t kNoPosition = static_cast<toff_t>(-1);

int say_nothing(TIFF*, void*, const char*, const char*, va_list) { return 1; }

}  // namespace

TiffHandle::TiffHandle(ByteSpan file) : file_(file) { open("r"); }

TiffHandle::TiffHandle(Output& output) : output_(&output) { open("wl"); }

void TiffHandle::open(const char* mode) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    if (options == nullptr) throw std::bad_alloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, say_nothing, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, say_nothing, nullptr);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(std::min<std::uint64_t>(
                                                     memory_left(), std::numeric_limits<tmsize_t>::max())));
    tiff_ = TIFFClientOpenExt(
        "memory", mode, this,
        [](thandle_t h, void* p, tmsize_t n) { return static_cast<TiffHandle*>(h)->read(p, n); },
        [](thandle_t h, void* p, tmsize_t n) { return static_cast<TiffHandle*>(h)->write(p, n); },
        [](thandle_t h, toff_t at, int whence) { return static_cast<TiffHandle*>(h)->seek(at, whence); },
        [](thandle_t) { return 0; },
        [](thandle_t h) { return static_cast<toff_t>(static_cast<TiffHandle*>(h)->size()); },
        [](thandle_t h, void** base, toff_t* size) {
            auto* self = static_cast<TiffHandle*>(h);
            if (self->output_ != nullptr) return 0;
            *base = const_cast<std::uint8_t*>(self->file_.data());  // libtiff only reads from it
            *size = self->file_.size();
            return 1;
        },
        [](thandle_t, void*, toff_t) {}, options);
    TIFFOpenOptionsFree(options);
}

void TiffHandle::close() {
    if (tiff_ != nullptr) TIFFClose(tiff_);
    tiff_ = nullptr;
}

tmsize_t TiffHandle::read(void* bytes, tmsize_t size) {
    if (size <= 0 || position_ >= this->size()) return 0;
    const std::uint8_t* from = output_ != nullptr ? output_->data() : file_.data();
    const std::uint64_t count =
        std::min<std::uint64_t>(static_cast<std::uint64_t>(size), this->size() - position_);
    std::memcpy(bytes, from + position_, static_cast<std::size_t>(count));
    position_ += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t TiffHandle::write(const void* bytes, tmsize_t size) {
    if (output_ == nullptr || size <= 0) return 0;
    try {
        output_->put_at(static_cast<std::size_t>(position_),
                        {static_cast<const std::uint8_t*>(bytes), static_cast<std::size_t>(size)});
    } catch (const std::bad_alloc&) {
        failed_ = true;
        return 0;
    }
    position_ += static_cast<std::uint64_t>(size);
    return size;
}

toff_t TiffHandle::seek(toff_t offset, int whence) {
    // Offsets count as signed: from the end, they usually are 0 or less.
    const std::uint64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? position_ : size();
    const std::uint64_t target = base + offset;
    if (target > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return kNoPosition;
    position_ = target;
    return position_;
}

}  // namespace pixvane::codecs
