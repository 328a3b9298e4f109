// Reads TIFF files; every page is a frame.
// SPDX-License-Identifier: MIT
#include <tiffio.h>

#include <algorithm>
#include <array>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/pixel_rows.h"
#include "platform/codecs/tiff_handle.h"
#include "platform/codecs/tiff_samples.h"

namespace pixvane::codecs {
namespace {

bool recognises(ByteSpan file) {
    constexpr char kClassic[] = {'*', 0};
    constexpr char kBig[] = {'+', 0};
    if (file.size() < 8) return false;
    const bool little = starts_with(file, "II");
    if (!little && !starts_with(file, "MM")) return false;
    const std::uint32_t version = little ? little16(file.data() + 2) : big16(file.data() + 2);
    return version == static_cast<std::uint32_t>(kClassic[0]) ||
           version == static_cast<std::uint32_t>(kBig[0]);
}

PictureSize size_of(const TiffHandle& tiff) {
    return {tiff.field<std::uint32_t>(TIFFTAG_IMAGEWIDTH, 0),
            tiff.field<std::uint32_t>(TIFFTAG_IMAGELENGTH, 0)};
}

bool measure(ByteSpan file, PictureSize& size) {
    const TiffHandle tiff(file);
    if (!tiff.valid()) return false;
    size = size_of(tiff);
    return true;
}

void read_extras(const TiffHandle& tiff, FileExtras& extras) {
    std::uint32_t size = 0;
    void* profile = nullptr;
    const auto photometric = tiff.field<std::uint16_t>(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    const bool light = photometric == PHOTOMETRIC_RGB || photometric == PHOTOMETRIC_PALETTE ||
                       photometric == PHOTOMETRIC_YCBCR;
    if (light && TIFFGetField(tiff.get(), TIFFTAG_ICCPROFILE, &size, &profile) == 1)
        keep_profile({static_cast<const std::uint8_t*>(profile), size}, extras);

    const auto unit = tiff.field<std::uint16_t>(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    if (unit != RESUNIT_INCH && unit != RESUNIT_CENTIMETER) return;
    const double scale = unit == RESUNIT_CENTIMETER ? kCentimetresPerInch : 1.0;
    keep_resolution(tiff.field<float>(TIFFTAG_XRESOLUTION, 0) * scale,
                    tiff.field<float>(TIFFTAG_YRESOLUTION, 0) * scale, extras);
}

/// Every kind that libtiff can make pixels of. It hands them out multiplied by their alpha.
bool decode_exotic(const TiffHandle& tiff, PixelBuffer target) {
    std::array<char, 1024> message{};
    TIFFRGBAImage rgba;
    if (!TIFFRGBAImageOK(tiff.get(), message.data()) ||
        !TIFFRGBAImageBegin(&rgba, tiff.get(), 1, message.data()))
        return false;
    // As stored: no row or column is to be turned round.
    rgba.orientation = rgba.req_orientation = ORIENTATION_TOPLEFT;
    const bool transparent = rgba.alpha != 0;
    const bool done = TIFFRGBAImageGet(&rgba, target.data, static_cast<std::uint32_t>(target.width),
                                       static_cast<std::uint32_t>(target.height)) == 1;
    TIFFRGBAImageEnd(&rgba);
    if (!done) return false;
    for (std::size_t i = 0; i < target.count(); ++i) {
        const std::uint32_t abgr = target.data[i];
        target.data[i] =
            make_pixel(transparent ? TIFFGetA(abgr) : 255, TIFFGetR(abgr), TIFFGetG(abgr), TIFFGetB(abgr));
    }
    if (transparent) unpremultiply(target.data, target.count());
    return true;
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    const TiffHandle tiff(file);
    if (!tiff.valid()) return false;
    const auto pages = static_cast<std::int64_t>(TIFFNumberOfDirectories(tiff.get()));
    if (frame >= pages || TIFFSetDirectory(tiff.get(), static_cast<tdir_t>(frame)) == 0) return false;
    const PictureSize size = size_of(tiff);
    auto bitmap = Bitmap::create(size.width, size.height);
    if (!bitmap) return false;
    const std::optional<TiffSamples> samples = plain_tiff_samples(tiff);
    if (samples ? !decode_tiff_samples(tiff, *samples, bitmap->pixels())
                : !decode_exotic(tiff, bitmap->pixels()))
        return false;
    FileExtras extras;
    read_extras(tiff, extras);
    image = {std::move(bitmap), static_cast<std::int32_t>(std::min<std::int64_t>(pages, INT32_MAX)),
             std::move(extras)};
    return true;
}

}  // namespace

const Reader kTiffReader{recognises, measure, decode};

}  // namespace pixvane::codecs
