// Every kind of picture file comes out as the picture that was put in.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <zlib.h>

#include "codecs/odd_files.h"
#include "platform/codecs/codecs.h"
#include "support/instruction_sets.h"

namespace pixvane::test {
namespace {

void expect_frames(const OddFile& file) {
    SCOPED_TRACE(file.name);
    EXPECT_TRUE(image_codec().is_image(file.bytes));
    const auto count = static_cast<std::int32_t>(file.frames.size());
    for (std::int32_t i = 0; i < count; ++i) {
        SCOPED_TRACE("frame " + std::to_string(i));
        DecodedImage image;
        ASSERT_TRUE(image_codec().decode(file.bytes, i, image));
        EXPECT_EQ(image.frameCount, count);
        EXPECT_TRUE(
            same_pixels(file.frames[static_cast<std::size_t>(i)], image.bitmap->pixels(), file.tolerance));
    }
    DecodedImage untouched;
    EXPECT_FALSE(image_codec().decode(file.bytes, count, untouched));
    EXPECT_FALSE(image_codec().decode(file.bytes, -1, untouched));
    EXPECT_EQ(untouched.bitmap, nullptr);
}

void expect_all(const std::vector<OddFile>& files) {
    for (const OddFile& file : files) expect_frames(file);
}

TEST(Decode, Bmp) { expect_all(bmp_files()); }
TEST(Decode, Gif) { expect_all(gif_files()); }
TEST(Decode, Icons) { expect_all(icon_files()); }
TEST(Decode, Jpeg) { expect_all(jpeg_files()); }
TEST(Decode, Tiff) { expect_all(tiff_files()); }
TEST(Decode, Webp) { expect_all(webp_files()); }
TEST(Decode, OtherFormats) { expect_all(other_files()); }

TEST(Decode, PngWithEveryInstructionSet) {
    const std::vector<OddFile> files = png_files();
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        SCOPED_TRACE(scope.name());
        expect_all(files);
    }
}

TEST(Decode, RefusesWhatIsNoPicture) {
    DecodedImage image;
    for (const Bytes& bytes :
         {Bytes{}, Bytes{0xFF}, text("no picture at all, only words"), text("BM"), text("GIF89a"),
          Bytes{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'}, Bytes(4096, 0)}) {
        EXPECT_FALSE(image_codec().is_image(bytes));
        EXPECT_FALSE(image_codec().decode(bytes, 0, image));
    }
    EXPECT_EQ(image.bitmap, nullptr);
}

/// The first `part` of the file's bytes.
bool decode_part(const Bytes& file, double part, DecodedImage& image) {
    const auto size = static_cast<std::size_t>(static_cast<double>(file.size()) * part);
    return image_codec().decode(ByteSpan(file).first(size), 0, image);
}

// Half of the rows must be there, the others as documented.
TEST(Decode, CutFilesGiveTheRowsThatAreThere) {
    const Picture picture = random_opaque_picture(120, 200, 14);
    for (const SaveType type : {SaveType::Png, SaveType::Jpeg}) {
        ByteBuffer whole;
        ASSERT_TRUE(image_codec().encode(picture.view(), type, {}, whole));
        DecodedImage all;
        DecodedImage cut;
        const Bytes file(whole.data(), whole.data() + whole.size());
        ASSERT_TRUE(decode_part(file, 1.0, all));
        ASSERT_TRUE(decode_part(file, 0.6, cut));
        const ConstPixelBuffer a = all.bitmap->pixels();
        const ConstPixelBuffer b = cut.bitmap->pixels();
        EXPECT_TRUE(same_pixels(a.rows(0, 90), b.rows(0, 90)));
        EXPECT_FALSE(same_pixels(a.rows(150, 200), b.rows(150, 200)));
        if (type == SaveType::Png) {
            EXPECT_EQ(b.row(199)[119], 0u);
        }
    }
    // Interlaced: the rows that come last, the odd ones, are those that are missing.
    const OddFile gif = gif_files().front();
    DecodedImage cut;
    ASSERT_TRUE(decode_part(gif.bytes, 0.7, cut));
    const ConstPixelBuffer rows = cut.bitmap->pixels();
    for (std::int32_t y = 0; y < rows.height; y += 2)
        EXPECT_TRUE(same_pixels(gif.frames[0].view().rows(y, y + 1), rows.rows(y, y + 1)));
    EXPECT_EQ(rows.row(25)[30], 0u);
}

// A header alone must not make the decoder allocate, or work, for the size that it announces.
TEST(Decode, RefusesGiantsBeforeTheyAreAllocated) {
    const std::uint64_t before = PixelMemory::instance().in_use();
    Bytes bmp = bmp_files().front().bytes;
    bmp[18] = bmp[19] = bmp[22] = bmp[23] = 0xFF;
    Bytes png = png_of(Picture(3, 3));
    png[18] = png[22] = 0xEA;
    const uLong sum = crc32(0, png.data() + 12, 17);
    for (std::size_t i = 0; i < 4; ++i) png[29 + i] = static_cast<std::uint8_t>(sum >> (24 - 8 * i));
    Bytes jpeg = jpeg_files().front().bytes;
    for (std::size_t i = 0; i + 9 < jpeg.size(); ++i)
        if (jpeg[i] == 0xFF && jpeg[i + 1] == 0xC0)
            for (std::size_t k = 5; k < 9; ++k) jpeg[i + k] = 0xFF;
    Bytes gif = gif_files().front().bytes;
    gif[6] = gif[7] = gif[8] = gif[9] = 0xFF;
    const Bytes ppm = text("P6\n60000 60000\n255\n0");
    for (const Bytes& file : {bmp, png, jpeg, gif, ppm}) {
        DecodedImage image;
        EXPECT_FALSE(image_codec().decode(file, 0, image));
        EXPECT_FALSE(image_codec().is_image(file)) << "a size that no picture has";
    }
    EXPECT_EQ(PixelMemory::instance().in_use(), before);
}

TEST(Decode, KeepsWithinTheMemoryLimit) {
    const std::uint64_t limit = PixelMemory::instance().limit();
    PixelMemory::instance().trim();
    PixelMemory::instance().set_limit(PixelMemory::instance().in_use() + 4096);
    for (const OddFile& file : all_odd_files()) {
        DecodedImage image;
        if (file.frames.front().view().bytes() <= 4096) continue;
        EXPECT_FALSE(image_codec().decode(file.bytes, 0, image)) << file.name;
    }
    PixelMemory::instance().set_limit(limit);
}

}  // namespace
}  // namespace pixvane::test
