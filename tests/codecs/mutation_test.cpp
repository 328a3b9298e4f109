// Broken files give false or a picture, never anything worse.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>

#include "codecs/odd_files.h"
#include "platform/codecs/codecs.h"

namespace pixvane::test {
namespace {

constexpr std::uint64_t kLimit = std::uint64_t{256} << 20;
constexpr int kMutations = 2000;

class Mutator {
public:
    explicit Mutator(const std::vector<OddFile>& seeds) : seeds_(seeds) {}

    Bytes next(std::string& what) {
        const OddFile& seed = pick();
        what = seed.name;
        Bytes file = seed.bytes;
        const std::uint32_t changes = 1 + random_.below(4);
        for (std::uint32_t i = 0; i < changes && !file.empty(); ++i) change(file, what);
        return file;
    }

private:
    const OddFile& pick() { return seeds_[random_.below(static_cast<std::uint32_t>(seeds_.size()))]; }
    std::size_t place(const Bytes& file) { return random_.below(static_cast<std::uint32_t>(file.size())); }

    void change(Bytes& file, std::string& what) {
        switch (random_.below(7)) {
            case 0:
                what += ", bits flipped";
                return flip_bits(file);
            case 1:
                what += ", cut";
                return file.resize(place(file));
            case 2:
                what += ", header changed";
                return change_field(file, std::min<std::size_t>(file.size(), 64));
            case 3:
                what += ", field changed";
                return change_field(file, file.size());
            case 4:
                what += ", spliced";
                return splice(file);
            case 5:
                what += ", piece repeated";
                return repeat(file);
            default:
                what += ", piece removed";
                return remove(file);
        }
    }

    void flip_bits(Bytes& file) {
        const std::uint32_t count = 1 + random_.below(8);
        for (std::uint32_t i = 0; i < count; ++i) {
            std::uint8_t& byte = file[place(file)];
            byte = static_cast<std::uint8_t>(byte ^ 1u << random_.below(8));
        }
    }

    /// Values that sizes, counts and offsets get wrong.
    void change_field(Bytes& file, std::size_t within) {
        constexpr std::uint32_t kValues[]{0,          1,          2,          255,     256,
                                          0x7FFF,     0x8000,     0xFFFF,     0x10000, 0x7FFFFFFF,
                                          0x80000000, 0xFFFFFFFF, 0xFFFFFF00, 4097};
        const std::uint32_t value = kValues[random_.below(std::size(kValues))];
        const std::size_t size = std::size_t{1} << random_.below(3);
        const bool bigEndian = random_.below(2) != 0;
        const std::size_t at = random_.below(static_cast<std::uint32_t>(within));
        for (std::size_t i = 0; i < size && at + i < file.size(); ++i)
            file[at + i] = static_cast<std::uint8_t>(value >> 8 * (bigEndian ? size - 1 - i : i));
    }

    void splice(Bytes& file) {
        const Bytes& other = pick().bytes;
        file.resize(place(file));
        file.insert(file.end(), other.begin() + static_cast<std::ptrdiff_t>(place(other)), other.end());
    }

    void repeat(Bytes& file) {
        const std::size_t from = place(file);
        const Bytes piece(
            file.begin() + static_cast<std::ptrdiff_t>(from),
            file.begin() + static_cast<std::ptrdiff_t>(std::min(file.size(), from + 1 + random_.below(300))));
        file.insert(file.begin() + static_cast<std::ptrdiff_t>(place(file)), piece.begin(), piece.end());
    }

    void remove(Bytes& file) {
        const auto from = file.begin() + static_cast<std::ptrdiff_t>(place(file));
        file.erase(from, from + std::min<std::ptrdiff_t>(file.end() - from, 1 + random_.below(100)));
    }

    const std::vector<OddFile>& seeds_;
    TestRandom random_{20240611};
};

/// Reads every byte, so that a sanitizer sees what isn't there.
Pixel touch(ConstPixelBuffer picture) {
    Pixel all = 0;
    for (std::size_t i = 0; i < picture.count(); ++i) all ^= picture.data[i];
    return all;
}

TEST(Mutation, BrokenFilesGiveFalseOrAPicture) {
    const std::uint64_t limit = PixelMemory::instance().limit();
    PixelMemory::instance().set_limit(kLimit);
    const std::vector<OddFile> seeds = all_odd_files();
    Mutator mutator(seeds);
    int pictures = 0;
    Pixel seen = 0;
    for (int i = 0; i < kMutations; ++i) {
        std::string what;
        const Bytes file = mutator.next(what);
        SCOPED_TRACE(std::to_string(i) + ": " + what);
        image_codec().is_image(file);
        for (const std::int32_t frame : {0, 1}) {
            DecodedImage image;
            const bool decoded = image_codec().decode(file, frame, image);
            ASSERT_EQ(decoded, image.bitmap != nullptr);
            if (!decoded) continue;
            ++pictures;
            ASSERT_TRUE(is_picture_size(image.bitmap->width(), image.bitmap->height()));
            ASSERT_LE(image.bitmap->pixels().bytes(), kLimit);
            ASSERT_GT(image.frameCount, frame);
            seen ^= touch(image.bitmap->pixels());
        }
        ASSERT_EQ(PixelMemory::instance().in_use(), 0u);
    }
    PixelMemory::instance().set_limit(limit);
    // If nearly all were refused at their first bytes, the test would show nothing.
    EXPECT_GT(pictures, kMutations / 5) << seen;
    EXPECT_LT(pictures, kMutations * 2);
}

}  // namespace
}  // namespace pixvane::test
