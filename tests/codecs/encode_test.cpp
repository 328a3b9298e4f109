// Pictures survive being written and read again, as far as each format can hold them.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <png.h>

#include "codecs/odd_files.h"
#include "platform/codecs/codecs.h"
#include "support/instruction_sets.h"

namespace pixvane::test {
namespace {

Bytes encoded(const Picture& picture, SaveType type, const EncodeOptions& options = {}) {
    ByteBuffer file;
    EXPECT_TRUE(image_codec().encode(picture.view(), type, options, file));
    return {file.data(), file.data() + file.size()};
}

DecodedImage decoded(const Bytes& file) {
    DecodedImage image;
    EXPECT_TRUE(image_codec().decode(file, 0, image));
    if (image.bitmap == nullptr) image.bitmap = Bitmap::create(1, 1);
    return image;
}

/// Decibels; colours only.
double psnr(ConstPixelBuffer a, ConstPixelBuffer b) {
    double squares = 0;
    for (std::size_t i = 0; i < a.count(); ++i)
        for (int shift = 0; shift < 24; shift += 8) {
            const double d = double(a.data[i] >> shift & 255) - double(b.data[i] >> shift & 255);
            squares += d * d;
        }
    return 10 * std::log10(255.0 * 255.0 * 3.0 * static_cast<double>(a.count()) / std::max(squares, 1e-9));
}

/// Slow waves of colour, some texture, and noise.
Picture natural_picture(std::int32_t width, std::int32_t height) {
    TestRandom random(3);
    return picture_of(width, height, [&](std::int32_t x, std::int32_t y) {
        const double texture = 12 * std::sin(x * 0.9) * std::cos(y * 0.7) + random.below(9) - 4.0;
        const auto channel = [&](double phase) {
            return static_cast<std::uint32_t>(std::clamp(128 + 70 * std::sin(phase) + texture, 0.0, 255.0));
        };
        return make_pixel(255, channel(x * 0.011), channel(y * 0.013 + 1), channel((x + y) * 0.007 + 2));
    });
}

/// Flat areas, repeated patterns and sharp edges, as in drawings; long matches and runs.
Picture drawn_picture(std::int32_t width, std::int32_t height) {
    return picture_of(width, height, [](std::int32_t x, std::int32_t y) {
        if (y % 40 < 9 && (x * 7 % 13 + y % 3) % 4 == 0) return 0xFF101010u;
        return (x / 17 + y / 23) % 5 == 0 ? 0xFF2060C0u : 0xFFF0F0F0u;
    });
}

/// What comes back of a picture that is written and read.
Picture reread(const Picture& picture, SaveType type) {
    return Picture(decoded(encoded(picture, type)).bitmap->pixels());
}

TEST(Encode, LosslessFormatsKeepEveryPixel) {
    std::vector<Picture> pictures{natural_picture(640, 420), drawn_picture(700, 500),
                                  Picture(300, 400, 0x40123456u)};
    for (const auto& [width, height] : odd_sizes()) {
        pictures.push_back(random_picture(width, height, 1));
        pictures.push_back(random_opaque_picture(width, height, 2));
    }
    // Long rows, and more data than one block holds.
    pictures.push_back(random_picture(50000, 3, 4));
    pictures.push_back(drawn_picture(60000, 2));
    pictures.push_back(random_picture(3, 20000, 5));
    for (const std::int64_t target : available_targets()) {
        const TargetScope scope(target);
        SCOPED_TRACE(scope.name());
        for (const SaveType type : {SaveType::Bmp, SaveType::Tiff, SaveType::Png})
            for (const Picture& picture : pictures)
                EXPECT_TRUE(same_pixels(picture, reread(picture, type))) << static_cast<int>(type);
    }
}

// Our own reader and writer could agree on a mistake; others' must see the same.
TEST(Encode, OtherReadersSeeTheSamePixels) {
    for (const Picture& picture :
         {random_picture(301, 200, 6), natural_picture(640, 480), drawn_picture(500, 411)}) {
        const Bytes png = encoded(picture, SaveType::Png);
        png_image reader{};
        reader.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_memory(&reader, png.data(), png.size()));
        reader.format = PNG_FORMAT_BGRA;
        Picture read(picture.width, picture.height);
        ASSERT_TRUE(png_image_finish_read(&reader, nullptr, read.pixels.data(), 0, nullptr))
            << reader.message;
        EXPECT_EQ(reader.warning_or_error, 0u) << reader.message;
        EXPECT_TRUE(same_pixels(picture, read));
    }
    const Picture picture = random_picture(77, 50, 6);
    const Bytes bmp = encoded(picture, SaveType::Bmp);
    GdkPixbufLoader* loader = gdk_pixbuf_loader_new();
    ASSERT_TRUE(gdk_pixbuf_loader_write(loader, bmp.data(), bmp.size(), nullptr));
    ASSERT_TRUE(gdk_pixbuf_loader_close(loader, nullptr));
    const GdkPixbuf* read = gdk_pixbuf_loader_get_pixbuf(loader);
    ASSERT_EQ(gdk_pixbuf_get_n_channels(read), 4);
    const Picture seen = picture_of(picture.width, picture.height, [&](std::int32_t x, std::int32_t y) {
        const guint8* p = gdk_pixbuf_read_pixels(read) + y * gdk_pixbuf_get_rowstride(read) + x * 4;
        return make_pixel(p[3], p[0], p[1], p[2]);
    });
    EXPECT_TRUE(same_pixels(picture, seen));
    g_object_unref(loader);
}

TEST(Encode, BmpHasAlphaOnlyWhereThePictureHas) {
    EXPECT_EQ(encoded(random_opaque_picture(10, 10, 1), SaveType::Bmp)[28], 24);
    EXPECT_EQ(encoded(random_picture(10, 10, 1), SaveType::Bmp)[28], 32);
}

TEST(Encode, JpegIsCloseAndFollowsItsQuality) {
    const Picture picture = natural_picture(400, 300);
    std::size_t lastSize = 0;
    for (const auto& [quality, least] : {std::pair{0, 15.0}, {30, 26.0}, {90, 32.0}, {100, 40.0}}) {
        EncodeOptions options;
        options.jpegQuality = quality;
        const Bytes file = encoded(picture, SaveType::Jpeg, options);
        EXPECT_GT(psnr(picture, decoded(file).bitmap->pixels()), least) << quality;
        EXPECT_GT(file.size(), lastSize);
        lastSize = file.size();
    }
}

TEST(Encode, JpegIsWrittenOverWhite) {
    Picture picture(64, 64, 0x00FF0000u);
    std::fill(picture.pixels.begin() + 64 * 32, picture.pixels.end(), 0x80000000u);
    const Picture read = reread(picture, SaveType::Jpeg);
    EXPECT_EQ(read.at(8, 8), 0xFFFFFFFFu);
    EXPECT_NEAR(green_of(read.at(8, 56)), 127, 2);
}

TEST(Encode, GifOfFewColorsIsExact) {
    const auto square = [](auto i) { return kOpaque | static_cast<Pixel>(i * i % 256 * 0x010305); };
    // With a transparent entry there are 255 left.
    const auto holed = [](auto i) {
        return i % 7 == 0 ? 0 : kOpaque | static_cast<Pixel>(i % 254 * 0x010305);
    };
    for (const Picture& picture : {picture_of(80, 60, [&](auto x, auto y) { return square(y * 80 + x); }),
                                   picture_of(80, 60, [&](auto x, auto y) { return holed(y * 80 + x); }),
                                   Picture(5, 5, 0u), Picture(5, 5, 0xFF123456u)})
        EXPECT_TRUE(same_pixels(picture, reread(picture, SaveType::Gif)));
}

TEST(Encode, GifChoosesItsColorsWell) {
    const Picture picture = natural_picture(400, 300), read = reread(picture, SaveType::Gif);
    EXPECT_GT(psnr(picture, read), 28.0);
    // Error diffusion keeps the mean of an area whatever the palette.
    double difference = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        difference += double(red_of(picture.pixels[i])) - red_of(read.pixels[i]);
    EXPECT_NEAR(difference / 120000, 0, 0.5);
}

TEST(Encode, GifIsTransparentBelowHalfAlpha) {
    Picture picture = natural_picture(200, 100);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = (picture.pixels[i] & 0xFFFFFF) | static_cast<Pixel>(i % 256) << 24;
    const Picture read = reread(picture, SaveType::Gif);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        ASSERT_EQ(alpha_of(read.pixels[i]), i % 256 < 128 ? 0u : 255u) << i;
}

Bytes profile_for(const char* space) {
    Bytes profile(3000);
    for (std::size_t i = 128; i < profile.size(); ++i) profile[i] = static_cast<std::uint8_t>(i * i / 7);
    std::copy_n(space, 4, profile.begin() + 16);
    std::copy_n("acsp", 4, profile.begin() + 36);
    return profile;
}

TEST(Encode, ProfileAndResolutionAreKeptWhereTheFormatCan) {
    FileExtras extras;
    extras.iccProfile = profile_for("RGB ");
    extras.dotsPerInchX = 300;
    extras.dotsPerInchY = 150;
    EncodeOptions options;
    options.extras = &extras;
    for (const Picture& picture : {random_opaque_picture(20, 20, 1), random_picture(20, 20, 1)})
        for (const SaveType type : {SaveType::Bmp, SaveType::Jpeg, SaveType::Tiff, SaveType::Png}) {
            SCOPED_TRACE(static_cast<int>(type));
            const DecodedImage image = decoded(encoded(picture, type, options));
            EXPECT_EQ(image.extras.iccProfile, extras.iccProfile);
            EXPECT_NEAR(image.extras.dotsPerInchX, 300, 0.02);
            EXPECT_NEAR(image.extras.dotsPerInchY, 150, 0.02);
            if (type != SaveType::Jpeg) {
                EXPECT_TRUE(same_pixels(picture, image.bitmap->pixels()));
            }
            // What isn't known isn't made up.
            const DecodedImage plain = decoded(encoded(picture, type));
            EXPECT_TRUE(plain.extras.iccProfile.empty());
            EXPECT_EQ(plain.extras.dotsPerInchX, 0);
        }
    const DecodedImage gif = decoded(encoded(Picture(4, 4, kOpaque), SaveType::Gif, options));
    EXPECT_TRUE(gif.extras.iccProfile.empty());
}

TEST(Encode, ProfilesForOtherColorsAreDropped) {
    constexpr std::string_view kMark = "acsp";
    FileExtras extras;
    extras.iccProfile = profile_for("CMYK");
    EncodeOptions options;
    options.extras = &extras;
    for (const SaveType type : {SaveType::Bmp, SaveType::Jpeg, SaveType::Tiff, SaveType::Png}) {
        const Bytes file = encoded(Picture(4, 4, kOpaque), type, options);
        EXPECT_EQ(std::search(file.begin(), file.end(), kMark.begin(), kMark.end()), file.end());
    }
    // Four letters in a file that holds one as it is: the reader drops it.
    extras.iccProfile = profile_for("RGB ");
    for (const SaveType type : {SaveType::Bmp, SaveType::Jpeg, SaveType::Tiff}) {
        Bytes file = encoded(Picture(4, 4, kOpaque), type, options);
        const auto found = std::search(file.begin(), file.end(), kMark.begin(), kMark.end());
        ASSERT_NE(found, file.end());
        std::copy_n("CMYK", 4, found - 20);
        EXPECT_TRUE(decoded(file).extras.iccProfile.empty());
    }
}

// Chosen so that a wrong filter, block or match length would show.
TEST(Encode, PngIsSmallForPhotographsAndDrawings) {
    const Picture photo = natural_picture(640, 480);
    const Picture drawing = drawn_picture(640, 480);
    EXPECT_LT(encoded(photo, SaveType::Png).size(), photo.view().bytes() / 2);
    EXPECT_LT(encoded(drawing, SaveType::Png).size(), drawing.view().bytes() / 40);
}

}  // namespace
}  // namespace pixvane::test
