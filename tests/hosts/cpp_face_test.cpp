// The typed C++ face: results, refusals, handlers and what they throw, moving.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "pixvane/pixvane.hpp"

namespace {

using pixvane::IPixvane;

static_assert(!std::is_copy_constructible_v<IPixvane> && !std::is_copy_assignable_v<IPixvane>);
static_assert(std::is_nothrow_move_constructible_v<IPixvane>);

const std::vector<std::uint8_t> kPixels = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

TEST(CppFace, ResultsHaveTheirTypes) {
    IPixvane control;
    EXPECT_TRUE(control.IsEmpty());
    EXPECT_EQ(control.GetImageArray(), std::nullopt);
    EXPECT_EQ(control.Picture(), std::nullopt);
    EXPECT_TRUE(control.GetRHistogram().empty());

    EXPECT_TRUE(control.LoadFromImageArray(kPixels, 2, 2));
    EXPECT_EQ(control.GetImageArray(), kPixels);
    EXPECT_EQ(control.GetPixel(1, 0), pixvane::rgb(7, 6, 5));
    EXPECT_EQ(control.GetRHistogram().size(), 256u);
    EXPECT_EQ(control.GetRHistogram()[15], 1);
    EXPECT_EQ(control.Picture().value()[0], 'B');
    control.put_JpegQuality(1000);
    EXPECT_EQ(control.JpegQuality(), 100);
    control.put_BackColor1(pixvane::rgb(0x56, 0x34, 0x12));
    EXPECT_EQ(control.BackColor1(), 0x123456u);
}

TEST(CppFace, ViewsTakeWhatHasDataAndSize) {
    IPixvane control;
    EXPECT_FALSE(control.LoadFromImageArray(nullptr, 2, 2));
    EXPECT_FALSE(control.LoadFromImageArray({kPixels.data(), 15}, 2, 2));
    EXPECT_TRUE(control.LoadFromImageArray({kPixels.data(), 16}, 2, 2));
    const std::array<std::uint8_t, 16> array{};
    EXPECT_TRUE(control.LoadFromImageArray(array, 2, 2));
    // An empty array is an array: sides below 1 empty the control. None is none: nothing happens.
    EXPECT_FALSE(control.LoadFromImageArray(nullptr, 0, 0));
    EXPECT_FALSE(control.IsEmpty());
    EXPECT_FALSE(control.LoadFromImageArray(std::vector<std::uint8_t>(), 0, 0));
    EXPECT_TRUE(control.IsEmpty());
}

TEST(CppFace, HandlersHearAndEnd) {
    IPixvane control;
    std::vector<std::string> heard;
    const auto first = control.on_OnDropFile([&](std::string_view name) { heard.emplace_back(name); });
    std::int32_t second = 0;
    // It ends itself while it runs; what it holds must live on until it is through.
    second = control.on("OnDropFile", [&, text = std::string(64, 'x')](const pixvane_value*, std::size_t) {
        control.off(second);
        heard.push_back(text);
    });
    control.drop({"/a/b", "/c"});
    control.drop({"/d"});
    control.off(first);
    control.drop({"/e"});
    EXPECT_EQ(heard, (std::vector<std::string>{"/a/b", std::string(64, 'x'), "/d"}));
}

TEST(CppFace, TheCallThrowsWhatTheFirstHandlerThrew) {
    IPixvane control, other;
    int ran = 0;
    other.on_OnDropFile([](std::string_view) { throw std::logic_error("inner"); });
    control.on_OnDropFile([&](std::string_view) {
        ++ran;
        throw std::runtime_error("first");
    });
    control.on_OnDropFile([&](std::string_view) {
        ++ran;
        control.NewImage(5, 5);  // doesn't throw what the handler before it threw
        EXPECT_THROW(other.drop({"x"}), std::logic_error);
        throw std::out_of_range("second");
    });
    try {
        control.drop({"x"});
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "first");
    }
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(control.ImageWidth(), 5);
}

TEST(CppFace, RefusalsAreErrors) {
    IPixvane control;
    const auto status_of = [](auto&& call) {
        try {
            call();
        } catch (const pixvane::Error& error) {
            EXPECT_NE(std::string(error.what()), "");
            return error.status();
        }
        return pixvane_status{PIXVANE_OK};
    };
    EXPECT_EQ(status_of([&] { control.on("OnNothing", {}); }), PIXVANE_E_MEMBER);
    EXPECT_EQ(status_of([&] { control.resize(-1, 5); }), PIXVANE_E_RANGE);
    EXPECT_EQ(status_of([&] { control.off(12345); }), PIXVANE_E_RANGE);
    EXPECT_EQ(status_of([&] { control.Temperature(1000); }), PIXVANE_OK);
}

TEST(CppFace, AMovedControlKeepsItsPictureAndHandlers) {
    const std::uint64_t before = pixvane_bitmap_bytes();
    {
        IPixvane control;
        control.NewImage(30, 20);
        int heard = 0;
        control.on_OnDropFile([&](std::string_view) { ++heard; });
        IPixvane moved(std::move(control));
        EXPECT_EQ(moved.ImageWidth(), 30);
        EXPECT_EQ(control.handle(), nullptr);  // NOLINT(bugprone-use-after-move): this is what is tested
        EXPECT_THROW(control.Invert(), pixvane::Error);
        IPixvane third;
        third.NewImage(50, 50);
        third = std::move(moved);
        third.drop({"x"});
        EXPECT_EQ(heard, 1);
        EXPECT_EQ(third.ImageWidth(), 30);
    }
    EXPECT_EQ(pixvane_bitmap_bytes(), before);
}

TEST(CppFace, APreviewTakesTheArgumentsOfItsCommand) {
    IPixvane control, direct;
    const std::vector<std::int32_t> kernel = {0, 1, 0, 1, 4, 1, 0, 1, 0};
    for (IPixvane* c : {&control, &direct}) c->NewImage(8, 8);
    const auto preview_and_apply = [&](const char* name, const auto&... values) {
        control.BeginPreview();
        control.Preview(name, values...);
        control.EndPreview(true);
    };
    preview_and_apply("AddGradientBorder", 3, 0x123456u, 0xFEDCBAu, 2);
    direct.AddGradientBorder(3, 0x123456, 0xFEDCBA, 2);
    preview_and_apply("UserEffect", kernel);
    direct.UserEffect(kernel);
    preview_and_apply("Gamma", 0.7);
    direct.Gamma(0.7);
    preview_and_apply("Invert");
    direct.Invert();
    EXPECT_EQ(control.GetImageArray(), direct.GetImageArray());
    EXPECT_THROW(control.Preview("NoCommand"), pixvane::Error);
    EXPECT_THROW(control.Preview("Gamma", "text"), pixvane::Error);
}

TEST(CppFace, WindowAndHost) {
    pixvane_host host{};
    host.struct_size = sizeof host;
    IPixvane control(&host);
    control.resize(64, 48);
    control.NewImage(16, 16);
    control.zoom_at(1, 10, 10);
    EXPECT_DOUBLE_EQ(control.Zoom(), 1.1);
    control.wheel(-1, 10, 10);
    EXPECT_DOUBLE_EQ(control.Zoom(), 1.0);
    EXPECT_THROW(control.mouse_down(9, 0, 0), pixvane::Error);
    const pixvane::Frame frame = control.frame();
    EXPECT_EQ(frame.width, 64);
    EXPECT_EQ(frame.pixels.size(), 64u * 48u * 4u);
    EXPECT_TRUE(control.timers().empty());
    EXPECT_EQ(pixvane::cursor_image(208).hotX + 11, 16);
    EXPECT_THROW(pixvane::cursor_image(1), pixvane::Error);
}

}  // namespace
