// Reads WebP files, still and animated.
// SPDX-License-Identifier: MIT
#include <webp/decode.h>
#include <webp/demux.h>

#include <cstring>
#include <memory>

#include "platform/codecs/extras.h"
#include "platform/codecs/format.h"
#include "platform/codecs/scratch.h"

namespace pixvane::codecs {
namespace {

bool recognises(ByteSpan file) {
    return file.size() >= 16 && starts_with(file, "RIFF") && starts_with(file.subspan(8), "WEBP");
}

bool measure(ByteSpan file, PictureSize& size) {
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(file.data(), file.size(), &features) != VP8_STATUS_OK) return false;
    size = {features.width, features.height};
    return true;
}

bool decode_still(ByteSpan file, PixelBuffer target) {
    WebPDecoderConfig config;
    if (WebPInitDecoderConfig(&config) == 0) return false;
    config.output.colorspace = MODE_BGRA;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = reinterpret_cast<std::uint8_t*>(target.data);
    config.output.u.RGBA.stride = target.width * static_cast<int>(sizeof(Pixel));
    config.output.u.RGBA.size = target.bytes();
    return WebPDecode(file.data(), file.size(), &config) == VP8_STATUS_OK;
}

using Animation = std::unique_ptr<WebPAnimDecoder, decltype(&WebPAnimDecoderDelete)>;

bool decode_animated(ByteSpan file, std::int32_t frame, PixelBuffer target, std::int32_t& frames) {
    // The decoder keeps two canvases of its own, and a frame's worth of working memory.
    if (target.bytes() > memory_left() / 3) return false;
    const WebPData data{file.data(), file.size()};
    WebPAnimDecoderOptions options;
    if (WebPAnimDecoderOptionsInit(&options) == 0) return false;
    options.color_mode = MODE_BGRA;
    const Animation animation(WebPAnimDecoderNew(&data, &options), WebPAnimDecoderDelete);
    WebPAnimInfo info;
    if (!animation || WebPAnimDecoderGetInfo(animation.get(), &info) == 0) return false;
    if (info.canvas_width != static_cast<std::uint32_t>(target.width) ||
        info.canvas_height != static_cast<std::uint32_t>(target.height) ||
        static_cast<std::uint32_t>(frame) >= info.frame_count)
        return false;
    std::uint8_t* pixels = nullptr;
    for (std::int32_t i = 0; i <= frame; ++i) {
        int when = 0;
        if (WebPAnimDecoderGetNext(animation.get(), &pixels, &when) == 0) return false;
    }
    std::memcpy(target.data, pixels, target.bytes());
    frames = static_cast<std::int32_t>(info.frame_count);
    return true;
}

void read_profile(ByteSpan file, FileExtras& extras) {
    const WebPData data{file.data(), file.size()};
    const std::unique_ptr<WebPDemuxer, decltype(&WebPDemuxDelete)> demuxer(WebPDemux(&data), WebPDemuxDelete);
    WebPChunkIterator chunk;
    if (!demuxer || WebPDemuxGetChunk(demuxer.get(), "ICCP", 1, &chunk) == 0) return;
    keep_profile({chunk.chunk.bytes, chunk.chunk.size}, extras);
    WebPDemuxReleaseChunkIterator(&chunk);
}

bool decode(ByteSpan file, std::int32_t frame, DecodedImage& image) {
    WebPBitstreamFeatures features;
    if (WebPGetFeatures(file.data(), file.size(), &features) != VP8_STATUS_OK) return false;
    if (frame != 0 && features.has_animation == 0) return false;
    auto bitmap = Bitmap::create(features.width, features.height);
    if (!bitmap) return false;
    std::int32_t frames = 1;
    const PixelBuffer target = bitmap->pixels();
    if (features.has_animation != 0 ? !decode_animated(file, frame, target, frames)
                                    : !decode_still(file, target))
        return false;
    FileExtras extras;
    read_profile(file, extras);
    image = {std::move(bitmap), frames, std::move(extras)};
    return true;
}

}  // namespace

const Reader kWebpReader{recognises, measure, decode};

}  // namespace pixvane::codecs
