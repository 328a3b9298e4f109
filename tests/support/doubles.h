// Ports for tests: files in memory, a picture format of three numbers and pixels, a window that counts.
// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>
#include <map>
#include <string>

#include "core/file_system.h"
#include "core/image_codec.h"
#include "draw/rasterizer.h"
#include "support/pictures.h"
#include "view/host_window.h"

namespace pixvane::test {

class MemoryFiles final : public FileSystem {
public:
    std::map<std::string, std::string> files;
    bool diskFull = false;

    bool read(const std::string& path, ByteBuffer& bytes) override {
        const auto found = files.find(path);
        if (found == files.end()) return false;
        bytes = ByteBuffer(found->second.size());
        std::memcpy(bytes.data(), found->second.data(), bytes.size());
        return true;
    }
    bool write_whole(const std::string& path, ByteSpan bytes) override {
        if (diskFull) return false;
        files[path].assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return true;
    }
};

/// Files of width, height and number of frames, each 32 bits, then the pixels.
class RawCodec final : public ImageCodec {
public:
    SaveType lastType = SaveType::Bmp;
    std::int32_t lastQuality = -1;

    static std::string file_of(const Picture& picture, std::int32_t frames = 1) {
        const std::int32_t head[] = {picture.width, picture.height, frames};
        std::string file(reinterpret_cast<const char*>(head), sizeof head);
        return file.append(reinterpret_cast<const char*>(picture.pixels.data()), picture.view().bytes());
    }

    bool decode(ByteSpan file, std::int32_t, DecodedImage& image) override {
        std::int32_t head[3];
        if (!is_image(file)) return false;
        std::memcpy(head, file.data(), sizeof head);
        auto bitmap = Bitmap::create(head[0], head[1]);
        if (bitmap == nullptr || file.size() != sizeof head + bitmap->pixels().bytes()) return false;
        std::memcpy(bitmap->pixels().data, file.data() + sizeof head, bitmap->pixels().bytes());
        image.bitmap = std::move(bitmap);
        image.frameCount = head[2];
        return true;
    }
    bool is_image(ByteSpan file) override { return file.size() > 12; }
    bool encode(ConstPixelBuffer picture, SaveType type, const EncodeOptions& options,
                ByteBuffer& file) override {
        lastType = type;
        lastQuality = options.jpegQuality;
        Picture copy(picture.width, picture.height);
        std::memcpy(copy.pixels.data(), picture.data, picture.bytes());
        const std::string bytes = file_of(copy);
        file = ByteBuffer(bytes.size());
        std::memcpy(file.data(), bytes.data(), bytes.size());
        return true;
    }
};

/// Counts frames and keeps what it was told.
class CountingWindow final : public HostWindow {
public:
    int frames = 0;
    std::map<std::int32_t, std::int32_t> timers;
    bool captured = false;
    std::int32_t cursor = 0;

    void frame_ready() override { ++frames; }
    void start_timer(std::int32_t id, std::int32_t milliseconds) override { timers[id] = milliseconds; }
    void stop_timer(std::int32_t id) override { timers.erase(id); }
    void set_capture(bool taken) override { captured = taken; }
    void set_cursor(std::int32_t number) override { cursor = number; }
};

/// Covers nothing, for controls whose pictures are looked at but not their view.
class NullRasterizer final : public Rasterizer {
public:
    Mask fill(const Path&, bool, PixelRect) override { return {}; }
    Mask stroke(const Path&, double, bool, PixelRect) override { return {}; }
    Mask text(std::string_view, const Font&, std::int32_t, std::int32_t, PixelRect) override { return {}; }
    TextSize measure(std::string_view, const Font&) override { return {}; }
    std::span<const std::string> families() override { return names; }

    std::vector<std::string> names = {"Courier", "DejaVu Sans", "Liberation Sans"};
};

}  // namespace pixvane::test
