// Finds out what a file is and hands it to the code that reads or writes that format.
// SPDX-License-Identifier: MIT
#include "platform/codecs/codecs.h"

#include <array>

#include "platform/codecs/format.h"

namespace pixvane {
namespace {

using namespace codecs;

constexpr std::array kReaders{&kJpegReader, &kPngReader, &kGifReader, &kTiffReader,
                              &kWebpReader, &kBmpReader, &kIcoReader};

const Reader* reader_of(ByteSpan file) {
    for (const Reader* reader : kReaders)
        if (reader->recognises(file)) return reader;
    return nullptr;
}

/// Whether gdk-pixbuf is to try. The first bytes of icons and cursors are those of some Targa files too; but
/// a file whose entries make sense is an icon.
bool may_be_another(const Reader* reader, ByteSpan file) {
    PictureSize size;
    return reader == nullptr || (reader == &kIcoReader && !reader->measure(file, size));
}

class Codecs final : public ImageCodec {
public:
    bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) override {
        if (file.empty() || frame < 0) return false;
        const Reader* reader = reader_of(file);
        if (may_be_another(reader, file)) reader = &kPixbufReader;
        return reader->decode(file, frame, image);
    }

    bool is_image(ByteSpan file) override {
        if (file.empty()) return false;
        const Reader* reader = reader_of(file);
        if (may_be_another(reader, file)) reader = &kPixbufReader;
        PictureSize size;
        return reader->measure(file, size) && is_picture_size(size.width, size.height);
    }

    bool encode(ConstPixelBuffer picture, SaveType type, const EncodeOptions& options,
                ByteBuffer& file) override {
        if (picture.data == nullptr || !is_picture_size(picture.width, picture.height)) return false;
        switch (type) {
            case SaveType::Bmp:
                return encode_bmp(picture, options, file);
            case SaveType::Jpeg:
                return encode_jpeg(picture, options, file);
            case SaveType::Gif:
                return encode_gif(picture, options, file);
            case SaveType::Tiff:
                return encode_tiff(picture, options, file);
            case SaveType::Png:
                return encode_png(picture, options, file);
        }
        return false;
    }
};

}  // namespace

ImageCodec& image_codec() {
    static auto* codec = new Codecs;
    return *codec;
}

}  // namespace pixvane
