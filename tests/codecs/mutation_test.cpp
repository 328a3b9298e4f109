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

/// Breaks files in the ways in which files get broken.
class Mutator {
public:
    explicit Mutator(const std::vector<OddFile>& seeds) : seeds_(seeds) {}

    Bytes next(std::string& what) {
        const OddFile& seed = random_.one_of(seeds_);
        what = seed.name;
        Bytes file = seed.bytes;
        using Way = std::pair<const char*, void (Mutator::*)(Bytes&)>;
        constexpr Way kWays[] = {{"bits flipped", &Mutator::flip_bits},
                                 {"cut", &Mutator::cut},
                                 {"header changed", &Mutator::change_header},
                                 {"field changed", &Mutator::change_field},
                                 {"spliced", &Mutator::splice},
                                 {"piece repeated", &Mutator::repeat},
                                 {"piece removed", &Mutator::remove}};
        for (std::uint32_t i = random_.below(4) + 1; i > 0 && !file.empty(); --i) {
            const auto& [name, change] = random_.one_of(kWays);
            what += std::string(", ") + name;
            (this->*change)(file);
        }
        return file;
    }

private:
    std::size_t below(std::size_t limit) { return random_.below(static_cast<std::uint32_t>(limit)); }
    Bytes::iterator place(Bytes& file) {
        return file.begin() + static_cast<std::ptrdiff_t>(below(file.size()));
    }
    /// From a place on, so many bytes or what is left.
    Bytes::iterator after(Bytes& file, Bytes::iterator from, std::size_t most) {
        return from +
               std::min<std::ptrdiff_t>(file.end() - from, static_cast<std::ptrdiff_t>(1 + below(most)));
    }

    void flip_bits(Bytes& file) {
        for (std::size_t count = 1 + below(8); count > 0; --count)
            *place(file) ^= static_cast<std::uint8_t>(1 << below(8));
    }
    void cut(Bytes& file) { file.resize(below(file.size())); }
    void change_header(Bytes& file) { change(file, std::min<std::size_t>(file.size(), 64)); }
    void change_field(Bytes& file) { change(file, file.size()); }
    /// Values that sizes, counts and offsets get wrong.
    void change(Bytes& file, std::size_t within) {
        constexpr std::uint32_t kValues[]{0,          1,          2,          255,     256,
                                          0x7FFF,     0x8000,     0xFFFF,     0x10000, 0x7FFFFFFF,
                                          0x80000000, 0xFFFFFFFF, 0xFFFFFF00, 4097};
        const std::uint32_t value = random_.one_of(kValues);
        const std::size_t size = std::size_t{1} << below(3), at = below(within);
        const bool bigEndian = below(2) != 0;
        for (std::size_t i = 0; i < size && at + i < file.size(); ++i)
            file[at + i] = static_cast<std::uint8_t>(value >> 8 * (bigEndian ? size - 1 - i : i));
    }
    void splice(Bytes& file) {
        Bytes other = random_.one_of(seeds_).bytes;
        cut(file);
        file.insert(file.end(), place(other), other.end());
    }
    void repeat(Bytes& file) {
        const auto from = place(file);
        const Bytes piece(from, after(file, from, 300));
        file.insert(place(file), piece.begin(), piece.end());
    }
    void remove(Bytes& file) {
        const auto from = place(file);
        file.erase(from, after(file, from, 100));
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
