// A TIFF file in memory, as libtiff sees it.
// SPDX-License-Identifier: MIT
#pragma once

#include <tiffio.h>

#include "core/byte_buffer.h"
#include "platform/codecs/output.h"

namespace pixvane::codecs {

/// libtiff over bytes to read, or over an output to write into. Says nothing on standard error.
class TiffHandle {
public:
    explicit TiffHandle(ByteSpan file);
    explicit TiffHandle(Output& output);
    ~TiffHandle() { close(); }
    TiffHandle(const TiffHandle&) = delete;
    TiffHandle& operator=(const TiffHandle&) = delete;

    TIFF* get() const { return tiff_; }
    bool valid() const { return tiff_ != nullptr; }
    void close();
    /// Whether a write found no memory.
    bool failed() const { return failed_; }

    /// A field's value, or `missing` where it has none, the format's own default counting as one.
    template <class Value>
    Value field(ttag_t tag, Value missing) const {
        Value value{};
        return TIFFGetFieldDefaulted(tiff_, tag, &value) == 1 ? value : missing;
    }

private:
    void open(const char* mode);
    tmsize_t read(void* bytes, tmsize_t size);
    tmsize_t write(const void* bytes, tmsize_t size);
    toff_t seek(toff_t offset, int whence);
    std::uint64_t size() const { return output_ != nullptr ? output_->size() : file_.size(); }

    ByteSpan file_;
    Output* output_ = nullptr;
    std::uint64_t position_ = 0;
    bool failed_ = false;
    TIFF* tiff_ = nullptr;
};

}  // namespace pixvane::codecs
