// What each format's file offers to the codec.
// SPDX-License-Identifier: MIT
#pragma once

#include "core/image_codec.h"

namespace pixvane::codecs {

/// As a file's header says it: believed only after is_picture_size.
struct PictureSize {
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// How one format is read. All of them throw nothing but std::bad_alloc, whatever the bytes are.
struct Reader {
    bool (*recognises)(ByteSpan file);
    /// Reads the header only. False if there is none.
    bool (*measure)(ByteSpan file, PictureSize& size);
    /// As ImageCodec::decode.
    bool (*decode)(ByteSpan file, std::int32_t frame, DecodedImage& image);
};

extern const Reader kBmpReader;
extern const Reader kGifReader;
extern const Reader kIcoReader;
extern const Reader kJpegReader;
extern const Reader kPixbufReader;  ///< whatever gdk-pixbuf makes of it
extern const Reader kPngReader;
extern const Reader kTiffReader;
extern const Reader kWebpReader;

bool encode_bmp(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file);
bool encode_gif(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file);
bool encode_jpeg(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file);
bool encode_png(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file);
bool encode_tiff(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file);

}  // namespace pixvane::codecs
