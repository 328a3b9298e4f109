// TIFF pictures whose samples are read as they are stored, so that straight alpha stays exact.
// SPDX-License-Identifier: MIT
#include "platform/codecs/tiff_samples.h"

#include <algorithm>
#include <array>

#include "core/compose.h"
#include "platform/codecs/pixel_rows.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

constexpr std::uint16_t kMostSamples = 16;
// Tiles are small in earnest files, whatever the picture's size.
constexpr std::uint64_t kLargestTile = std::uint64_t{256} << 20;

void find_alpha(const TiffHandle& tiff, TiffSamples& samples) {
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    if (TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_EXTRASAMPLES, &count, &kinds) != 1) return;
    for (std::size_t i = 0; i < count && samples.colors + i < samples.perPixel; ++i) {
        if (kinds[i] != EXTRASAMPLE_ASSOCALPHA && kinds[i] != EXTRASAMPLE_UNASSALPHA) continue;
        samples.alpha = samples.colors + i;
        samples.premultiplied = kinds[i] == EXTRASAMPLE_ASSOCALPHA;
        return;
    }
}

/// Where in the bytes of a pixel a sample goes: B, G, R, A. Extra samples that are not alpha go nowhere.
struct Channels {
    std::size_t first;
    std::size_t count;
};

Channels channels_of(const TiffSamples& samples, std::size_t sample) {
    if (samples.alpha != 0 && sample == samples.alpha) return {3, 1};
    if (sample >= samples.colors) return {0, 0};
    return samples.colors == 1 ? Channels{0, 3} : Channels{2 - sample, 1};
}

std::uint8_t byte_of(const std::uint8_t* sample, std::size_t bytes) {
    if (bytes == 1) return *sample;
    std::uint16_t wide;
    std::memcpy(&wide, sample, sizeof wide);
    return static_cast<std::uint8_t>((wide * 255u + 32767u) / 65535u);
}

/// One sample of each pixel; `step` bytes lie between the pixels.
void scatter(const std::uint8_t* from, std::size_t step, const TiffSamples& samples, Channels channels,
             Pixel* pixels, std::size_t count) {
    auto* bytes = reinterpret_cast<std::uint8_t*>(pixels);
    for (std::size_t i = 0; i < count; ++i, from += step, bytes += 4) {
        const std::uint8_t value = byte_of(from, samples.bytes);
        for (std::size_t c = 0; c < channels.count; ++c) bytes[channels.first + c] = value;
    }
}

/// A stretch of pixels, or of one plane of them.
void store(const std::uint8_t* from, const TiffSamples& samples, std::size_t plane, Pixel* pixels,
           std::size_t count) {
    if (samples.planes) {
        scatter(from, samples.bytes, samples, channels_of(samples, plane), pixels, count);
        return;
    }
    const std::size_t known = samples.colors + (samples.alpha == samples.colors ? 1 : 0);
    if (samples.bytes == 1 && samples.perPixel == known) {
        expand_pixels(from, samples.perPixel, pixels, count);
        return;
    }
    std::fill_n(pixels, count, kOpaque);
    for (std::size_t s = 0; s < samples.perPixel; ++s)
        scatter(from + s * samples.bytes, samples.perPixel * samples.bytes, samples, channels_of(samples, s),
                pixels, count);
}

std::size_t step_of(const TiffSamples& samples) {
    return samples.planes ? samples.bytes : samples.perPixel * samples.bytes;
}

bool read_rows(const TiffHandle& tiff, const TiffSamples& samples, std::size_t plane, PixelBuffer target) {
    const std::uint64_t size = TIFFScanlineSize64(tiff.get());
    if (size < static_cast<std::uint64_t>(target.width) * step_of(samples)) return false;
    const Scratch row(size);
    if (row.data() == nullptr) return false;
    for (std::int32_t y = 0; y < target.height; ++y) {
        if (TIFFReadScanline(tiff.get(), row.data(), static_cast<std::uint32_t>(y),
                             static_cast<std::uint16_t>(plane)) != 1)
            return false;
        store(row.data(), samples, plane, target.row(y), static_cast<std::size_t>(target.width));
    }
    return true;
}

bool read_tiles(const TiffHandle& tiff, const TiffSamples& samples, std::size_t plane, PixelBuffer target) {
    const std::uint64_t across = tiff.field<std::uint32_t>(TIFFTAG_TILEWIDTH, 0);
    const std::uint64_t down = tiff.field<std::uint32_t>(TIFFTAG_TILELENGTH, 0);
    const std::uint64_t size = TIFFTileSize64(tiff.get());
    if (across == 0 || down == 0 || across > kLargestTile || down > kLargestTile || size > kLargestTile ||
        size < across * down * step_of(samples))
        return false;
    const Scratch tile(size);
    if (tile.data() == nullptr) return false;
    const auto width = static_cast<std::uint64_t>(target.width);
    const auto height = static_cast<std::uint64_t>(target.height);
    for (std::uint64_t top = 0; top < height; top += down) {
        for (std::uint64_t left = 0; left < width; left += across) {
            if (TIFFReadTile(tiff.get(), tile.data(), static_cast<std::uint32_t>(left),
                             static_cast<std::uint32_t>(top), 0, static_cast<std::uint16_t>(plane)) < 0)
                return false;
            const std::uint64_t rows = std::min(down, height - top);
            for (std::uint64_t y = 0; y < rows; ++y)
                store(tile.data() + y * across * step_of(samples), samples, plane,
                      target.row(static_cast<std::int32_t>(top + y)) + left,
                      static_cast<std::size_t>(std::min(across, width - left)));
        }
    }
    return true;
}

}  // namespace

std::optional<TiffSamples> plain_tiff_samples(const TiffHandle& tiff) {
    const auto bits = tiff.field<std::uint16_t>(TIFFTAG_BITSPERSAMPLE, 1);
    const auto perPixel = tiff.field<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL, 1);
    const auto format = tiff.field<std::uint16_t>(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    const auto compression = tiff.field<std::uint16_t>(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    std::uint16_t photometric = 0;
    if (TIFFGetField(tiff.get(), TIFFTAG_PHOTOMETRIC, &photometric) != 1) return {};
    if ((bits != 8 && bits != 16) || format != SAMPLEFORMAT_UINT || perPixel > kMostSamples) return {};
    // What lies in these is for libtiff to put together.
    if (compression == COMPRESSION_OJPEG || compression == COMPRESSION_JPEG) return {};
    const bool grey = photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
    if (!grey && photometric != PHOTOMETRIC_RGB) return {};

    TiffSamples samples;
    samples.perPixel = perPixel;
    samples.colors = grey ? 1 : 3;
    samples.bytes = bits / 8u;
    samples.whiteIsZero = photometric == PHOTOMETRIC_MINISWHITE;
    samples.planes = perPixel > 1 && tiff.field<std::uint16_t>(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) ==
                                         PLANARCONFIG_SEPARATE;
    if (samples.perPixel < samples.colors) return {};
    find_alpha(tiff, samples);
    return samples;
}

bool decode_tiff_samples(const TiffHandle& tiff, const TiffSamples& samples, PixelBuffer target) {
    const bool tiled = TIFFIsTiled(tiff.get()) != 0;
    if (samples.planes) fill(target, kOpaque);
    // The planes one after the other: going to and fro between them would unpack each strip again and again.
    const std::size_t planes = samples.planes ? samples.perPixel : 1;
    for (std::size_t plane = 0; plane < planes; ++plane) {
        if (samples.planes && channels_of(samples, plane).count == 0) continue;
        if (!(tiled ? read_tiles(tiff, samples, plane, target) : read_rows(tiff, samples, plane, target)))
            return false;
    }
    if (samples.whiteIsZero)
        for (std::size_t i = 0; i < target.count(); ++i) target.data[i] ^= 0x00FFFFFFu;
    if (samples.premultiplied) unpremultiply(target.data, target.count());
    return true;
}

}  // namespace pixvane::codecs
