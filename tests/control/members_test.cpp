// Members beyond the commands: documents, settings, arrays, pictures, updates, events.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/test_control.h"

namespace pixvane::test {
namespace {

TEST(Documents, start_white_and_unmodified) {
    TestControl c;
    EXPECT_TRUE(c.is("IsEmpty"));
    c.call("NewImage", {integer(4), integer(5)});
    EXPECT_FALSE(c.is("IsEmpty"));
    EXPECT_EQ(c.number("ImageWidth"), 4);
    EXPECT_EQ(c.number("ImageHeight"), 5);
    EXPECT_EQ(c.number("FramesCount"), 1);
    EXPECT_EQ(c.picture(), Picture(4, 5, 0xFFFFFFFF));
    EXPECT_FALSE(c.is("Modified") || c.is("UndoEnable") || c.is("RedoEnable"));
    c.call("Empty");
    EXPECT_TRUE(c.is("IsEmpty"));
    EXPECT_EQ(c.number("ImageWidth") + c.number("ImageHeight") + c.number("FramesCount"), 0);
}

TEST(Documents, stay_as_they_are_when_a_new_one_is_refused) {
    TestControl c;
    c.control.window_resized(50, 50);
    c.load(random_picture(20, 20, 1));
    c.call("Invert");
    const double zoom = c.call("Zoom").value.d;
    const int frames = c.window.frames;
    for (const auto& [w, h] : {std::pair{3, 100}, {100, 3}, {-1, -1}, {65536, 4}, {65535, 65535}})
        c.call("NewImage", {integer(w), integer(h)});
    EXPECT_EQ(c.number("ImageWidth"), 20);
    EXPECT_TRUE(c.is("Modified"));
    EXPECT_TRUE(c.is("UndoEnable"));
    EXPECT_EQ(c.call("Zoom").value.d, zoom);
    EXPECT_EQ(c.window.frames, frames);
}

TEST(Documents, come_from_files_and_leave_the_control_empty_when_they_fail) {
    TestControl c;
    c.control.window_resized(100, 100);
    const Picture small = random_picture(30, 20, 1);
    const Picture large = random_picture(300, 20, 2);
    c.files.files = {{"small", RawCodec::file_of(small)}, {"large", RawCodec::file_of(large, 4)}};
    const int frames = c.window.frames;
    EXPECT_TRUE(c.is("LoadImage", {Value::string("small")}));
    EXPECT_EQ(c.window.frames, frames + 1);
    EXPECT_EQ(c.call("Zoom").value.d, 1.0);
    EXPECT_TRUE(c.is("LoadImage", {Value::string("large")}));
    EXPECT_EQ(c.call("Zoom").value.d, 92.0 / 300);
    EXPECT_EQ(c.number("FramesCount"), 4);
    EXPECT_FALSE(c.is("LoadImage", {Value::string("none")}));
    EXPECT_EQ(c.window.frames, frames + 2);
    EXPECT_TRUE(c.is("IsEmpty"));
    EXPECT_FALSE(c.is("SaveImage", {Value::string("out"), integer(4)}));
    EXPECT_TRUE(c.is("IsImageFile", {Value::string("small")}));
    EXPECT_FALSE(c.is("IsImageFile", {Value::string("none")}));
}

TEST(Arrays, go_in_and_out_unchanged) {
    TestControl c;
    const Picture picture = random_picture(33, 17, 1);
    c.load(picture);
    const Result array = c.call("GetImageArray");
    ASSERT_EQ(array.value.kind, Kind::Bytes);
    ASSERT_EQ(array.value.size, picture.view().bytes());
    EXPECT_EQ(std::memcmp(array.value.data, picture.pixels.data(), array.value.size), 0);
    EXPECT_TRUE(c.is("RedoEnable"));
    EXPECT_TRUE(c.is("LoadFromImageArray", {array.value, integer(33), integer(17)}));
    EXPECT_TRUE(same_pixels(picture, c.picture()));
    EXPECT_FALSE(c.is("Modified"));
    c.call("Empty");
    EXPECT_EQ(c.call("GetImageArray").value.kind, Kind::Null);
    EXPECT_EQ(c.call("GetLHistogram").value.kind, Kind::Null);
}

TEST(Arrays, that_do_not_fit_are_refused) {
    TestControl c;
    c.load(random_picture(9, 9, 1));
    const std::string data(64, '\x7f');
    const auto load = [&](Value array, int w, int h) {
        return c.is("LoadFromImageArray", {array, integer(w), integer(h)});
    };
    // Without an array, or with one that is too short, nothing happens.
    EXPECT_FALSE(load(Value{}, 4, 4));
    EXPECT_FALSE(load(bytes(data), 4, 5));
    EXPECT_FALSE(load(bytes(data), INT32_MAX, INT32_MAX));
    EXPECT_FALSE(load(bytes(data.data(), 0), 2, 2));
    EXPECT_EQ(c.number("ImageWidth"), 9);
    EXPECT_TRUE(load(bytes(data), 4, 4));
    EXPECT_TRUE(load(bytes(data), 2, 2));
    // A size that no array picture has empties the control.
    for (const auto& [w, h] : {std::pair{1, 1}, {0, 4}, {4, -4}, {1, 9}}) {
        c.load(random_picture(9, 9, 1));
        EXPECT_FALSE(load(bytes(data), w, h));
        EXPECT_TRUE(c.is("IsEmpty")) << w << " x " << h;
    }
}

TEST(Histograms, count_channels_and_luminance) {
    TestControl c;
    c.load(Picture(10, 10, 0x80336699));
    for (const auto& [member, bin] : {std::pair{"GetRHistogram", 0x33},
                                      {"GetGHistogram", 0x66},
                                      {"GetBHistogram", 0x99},
                                      {"GetLHistogram", 94}}) {
        std::vector<std::int32_t> expected(256);
        expected[static_cast<std::size_t>(bin)] = 100;
        const Result result = c.call(member);
        const auto* bins = static_cast<const std::int32_t*>(result.value.data);
        EXPECT_EQ(std::vector<std::int32_t>(bins, bins + result.value.size), expected) << member;
    }
}

TEST(Pixels, read_as_colours_without_alpha) {
    TestControl c;
    EXPECT_EQ(c.number("GetPixel", {integer(0), integer(0)}), 0);
    c.load(Picture(3, 2, 0x80FF0102));
    EXPECT_EQ(c.number("GetPixel", {integer(2), integer(1)}), 0x0201FF);
    for (const auto& [x, y] : {std::pair{-1, 0}, {3, 0}, {0, -1}, {0, 2}, {INT32_MAX, INT32_MIN}})
        EXPECT_EQ(c.number("GetPixel", {integer(x), integer(y)}), 0);
}

TEST(Canvas, grows_shrinks_and_shows_its_colour_through) {
    TestControl c;
    c.call("BitmapBackColor", {color(0x000000FF)});
    c.load(Picture(2, 2, {0x00123456, 0xFF000000, 0x80000000, 0xFFFFFFFF}));
    c.call("SetNewSize", {integer(3), integer(2)});
    // Half black over red: (128 * 0 + 127 * 255) / 255.
    EXPECT_EQ(c.picture(),
              Picture(3, 2, {0xFFFF0000, 0xFF000000, 0xFFFF0000, 0xFF7F0000, 0xFFFFFFFF, 0xFFFF0000}));
    c.call("Undo");
    EXPECT_EQ(c.number("ImageWidth"), 2);
    c.call("AddSimpleBorder", {integer(1), color(0xAB00FF00)});
    EXPECT_EQ(c.picture().width, 4);
    EXPECT_EQ(c.picture().at(0, 0), 0xFF00FF00);
    EXPECT_EQ(c.picture().at(1, 1), 0xFF00FF00);
    EXPECT_EQ(c.picture().at(2, 1), 0xFF000000);
    c.call("ClearImage");
    EXPECT_EQ(c.picture(), Picture(4, 4, 0xFFFF0000));
    c.call("SetNewSize", {integer(1), integer(1)});
    EXPECT_EQ(c.picture(), Picture(1, 1, 0xFFFF0000));
}

TEST(PictureProperty, takes_a_picture_as_a_document_or_draws_a_small_one) {
    TestControl c;
    c.control.window_resized(100, 100);
    EXPECT_EQ(c.call("Picture").value.kind, Kind::Null);
    // Composited over the canvas colour.
    c.call("BitmapBackColor", {color(0x0000FF)});
    c.call("Picture", {bytes(RawCodec::file_of(Picture(5, 5, 0x00FFFFFF)))});
    EXPECT_EQ(c.picture().pixels[0], 0xFFFF0000);
    EXPECT_FALSE(c.is("Modified"));
    c.call("Invert");
    const int frames = c.window.frames;
    // Below 4 x 4 it is drawn in place: no step, and modified stays as it was.
    c.call("Picture", {bytes(RawCodec::file_of(Picture(2, 3, 0xFF112233)))});
    EXPECT_EQ(c.number("ImageWidth"), 5);
    EXPECT_EQ(c.picture().at(1, 2), 0xFF112233);
    EXPECT_EQ(c.picture().at(1, 3), 0xFF00FFFF);
    EXPECT_FALSE(c.is("RedoEnable"));
    c.call("Picture", {Value{}});
    c.call("Picture", {bytes("nonsense, no picture")});
    EXPECT_EQ(c.window.frames, frames + 3);
    EXPECT_EQ(c.number("ImageWidth"), 5);
    // Out it goes over white.
    c.load(Picture(2, 2, 0x00000000));
    EXPECT_EQ(c.text("Picture"), RawCodec::file_of(Picture(2, 2, 0xFFFFFFFF)));
}

TEST(Settings, keep_what_they_are_given_within_limits) {
    TestControl c;
    EXPECT_EQ(c.number("JpegQuality"), 90);
    for (const auto& [given, kept] : {std::pair{150, 100}, {-5, 0}, {33, 33}}) {
        c.call("JpegQuality", {integer(given)});
        EXPECT_EQ(c.number("JpegQuality"), kept);
    }
    for (const auto& [member, initial] :
         {std::pair{"BackColor1", 0x8B0000}, {"FrameColor", 0xD3D3D3}, {"BitmapBackColor", 0xFFFFFF}}) {
        EXPECT_EQ(c.number(member), initial) << member;
        c.call(member, {color(0xAB123456)});
        EXPECT_EQ(c.number(member), 0x123456) << member;
    }
    EXPECT_EQ(c.control.store().BitmapBackColor, 0xFF563412);
}

TEST(Updates, are_held_back_by_a_flag_not_a_count) {
    TestControl c;
    c.call("NewImage", {integer(8), integer(8)});
    EXPECT_EQ(c.window.frames, 0) << "there is no window yet";
    c.control.window_resized(100, 100);
    c.call("BeginUpdate");
    c.call("BeginUpdate");
    const int before = c.window.frames;
    c.call("Invert");
    c.call("BackColor1", {color(1)});
    EXPECT_TRUE(c.is("Modified"));
    EXPECT_EQ(c.window.frames, before);
    c.call("EndUpdate");
    EXPECT_EQ(c.window.frames, before + 1);
    c.call("Undo");
    EXPECT_EQ(c.window.frames, before + 2);
}

TEST(View, zooms_and_refits_on_resize_when_asked_to) {
    TestControl c;
    const auto zoom = [&] { return c.call("Zoom").value.d; };
    c.control.window_resized(508, 300);
    c.call("NewImage", {integer(1000), integer(500)});
    EXPECT_EQ(zoom(), 0.5);
    EXPECT_FALSE(c.is("AutoResize"));
    c.control.window_resized(200, 200);
    EXPECT_EQ(zoom(), 0.5);
    c.call("AutoResize", {truth(true)});
    EXPECT_TRUE(c.is("AutoResize"));
    c.control.window_resized(208, 200);
    EXPECT_EQ(zoom(), 0.2);
    for (const auto& [member, expected] :
         {std::pair{"ZoomIn", 0.2 * 1.1}, {"ActialSize", 1.0}, {"ZoomToFit", 0.2}}) {
        c.call(member);
        EXPECT_EQ(zoom(), expected) << member;
    }
}

TEST(EventHandlers, may_subscribe_and_unsubscribe_while_they_are_called) {
    TestControl c;
    std::string log;
    Events& events = c.control.events();
    std::int32_t second = 0;
    const std::int32_t first = events.subscribe("OnDropFile", [&](std::span<const Value> arguments) {
        log += "1" + std::string(Wire<std::string_view>::get(arguments[0]));
        events.unsubscribe(second);
        events.subscribe("OnDropFile", [&](auto) { log += "3"; });
    });
    second = events.subscribe("OnDropFile", [&](auto) { log += "2"; });
    c.control.file_dropped("päth");
    EXPECT_EQ(log, "1päth");
    EXPECT_TRUE(events.unsubscribe(first));
    EXPECT_FALSE(events.unsubscribe(first));
    c.control.file_dropped("");
    EXPECT_EQ(log, "1päth3");
    EXPECT_TRUE(c.is("IsEmpty"));
}

}  // namespace
}  // namespace pixvane::test
