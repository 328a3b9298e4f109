// Writes TIFF files.
// SPDX-License-Identifier: MIT
#include <tiffio.h>

#include <algorithm>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/opacity.h"
#include "platform/codecs/pixel_rows.h"
#include "platform/codecs/scratch.h"
#include "platform/codecs/tiff_handle.h"

namespace pixvane::codecs {
namespace {

constexpr int kEffort = 3;  // beyond it files hardly shrink and saving takes much longer
constexpr std::size_t kStripBytes = 262144;

template <class... Values>
bool set(const TiffHandle& tiff, ttag_t tag, Values... values) {
    return TIFFSetField(tiff.get(), tag, values...) == 1;
}

bool write_tags(const TiffHandle& tiff, ConstPixelBuffer picture, std::size_t channels,
                std::int32_t stripRows, const EncodeOptions& options) {
    bool good = set(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(picture.width)) &&
                set(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(picture.height)) &&
                set(tiff, TIFFTAG_BITSPERSAMPLE, 8) &&
                set(tiff, TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(channels)) &&
                set(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB) &&
                set(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) &&
                set(tiff, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE) &&
                set(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL) &&
                set(tiff, TIFFTAG_ZIPQUALITY, kEffort) &&
                set(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(stripRows));
    const std::uint16_t straight = EXTRASAMPLE_UNASSALPHA;
    if (channels == 4) good = good && set(tiff, TIFFTAG_EXTRASAMPLES, 1, &straight);
    const Resolution resolution = resolution_of(options);
    if (resolution.known())
        good = good && set(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH) &&
               set(tiff, TIFFTAG_XRESOLUTION, resolution.x) && set(tiff, TIFFTAG_YRESOLUTION, resolution.y);
    const ByteSpan profile = profile_of(options);
    if (!profile.empty())
        good =
            good && set(tiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(profile.size()), profile.data());
    return good;
}

bool write_strips(const TiffHandle& tiff, ConstPixelBuffer picture, std::size_t channels,
                  std::int32_t stripRows) {
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * channels;
    const Scratch strip(rowBytes * static_cast<std::size_t>(stripRows));
    if (strip.data() == nullptr) return false;
    std::uint32_t index = 0;
    for (std::int32_t y = 0; y < picture.height; y += stripRows, ++index) {
        const ConstPixelBuffer rows = picture.rows(y, std::min(y + stripRows, picture.height));
        pack_pixels(rows.data, strip.data(), channels, rows.count());
        if (TIFFWriteEncodedStrip(tiff.get(), index, strip.data(),
                                  static_cast<tmsize_t>(rowBytes * static_cast<std::size_t>(rows.height))) <
            0)
            return false;
    }
    return true;
}

}  // namespace

bool encode_tiff(ConstPixelBuffer picture, const EncodeOptions& options, ByteBuffer& file) {
    const std::size_t channels = is_opaque(picture) ? 3 : 4;
    const auto stripRows = static_cast<std::int32_t>(
        std::clamp<std::size_t>(kStripBytes / (static_cast<std::size_t>(picture.width) * channels), 1,
                                static_cast<std::size_t>(picture.height)));
    Output output(picture.count() * channels / 2);
    TiffHandle tiff(output);
    if (!tiff.valid() || !write_tags(tiff, picture, channels, stripRows, options) ||
        !write_strips(tiff, picture, channels, stripRows) || TIFFFlush(tiff.get()) != 1)
        return false;
    tiff.close();
    if (tiff.failed()) return false;
    file = output.take();
    return true;
}

}  // namespace pixvane::codecs
