// The port through which pictures come out of files and go into them.
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "core/bitmap.h"
#include "core/byte_buffer.h"

namespace pixvane {

/// What SaveImage can write; the numbers are its nType.
enum class SaveType : std::int32_t { Bmp = 0, Jpeg = 1, Gif = 2, Tiff = 3, Png = 4 };

/// What a picture file carries beside its pixels and is written back with them where the format can hold it.
struct FileExtras {
    std::vector<std::uint8_t> iccProfile;  ///< an RGB profile; empty if there is none (others are dropped)
    double dotsPerInchX = 0;               ///< 0 if the file doesn't say
    double dotsPerInchY = 0;
};

struct DecodedImage {
    std::shared_ptr<Bitmap> bitmap;
    std::int32_t frameCount = 1;  ///< frames, pages or entries in the file
    FileExtras extras;
};

struct EncodeOptions {
    std::int32_t jpegQuality = 90;  ///< 0..100
    const FileExtras* extras = nullptr;
};

/// Implementations throw nothing but std::bad_alloc, whatever the bytes are, and keep within kMaxSide,
/// kMaxPixels and the limit of PixelMemory: a header is never believed for an allocation beyond those.
class ImageCodec {
public:
    virtual ~ImageCodec() = default;
    /// Decodes one frame (0 is the first). False, and `image` untouched, if the bytes are no picture that
    /// can be decoded or have no such frame.
    virtual bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) = 0;
    /// Whether the bytes are a picture with a width and a height; reads as little as it can.
    virtual bool is_image(ByteSpan file) = 0;
    /// The bytes of a file with the picture in it. False if it can't be encoded.
    virtual bool encode(ConstPixelBuffer picture, SaveType type, const EncodeOptions& options,
                        ByteBuffer& file) = 0;
};

}  // namespace pixvane
