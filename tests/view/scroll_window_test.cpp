// The overview panel against its numbers, written out once more, on pictures and windows of random sizes.
// SPDX-License-Identifier: MIT
#include "view/scroll_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "support/pictures.h"

namespace pixvane::test {
namespace {

/// A picture in a window, zoomed so that it overflows or doesn't.
Viewport random_view(TestRandom& random) {
    // Long and narrow ones too, whose thumbnail has no width.
    const auto side = [&] {
        return static_cast<std::int32_t>(1 + random.below(1u << (1 + random.below(14))));
    };
    Viewport view;
    view.SetClientSize(random.between(0, 1999), random.between(0, 1499));
    view.set_image_size(side(), side());
    view.lay_out_document();
    for (std::uint32_t i = random.below(30); i > 0; --i) view.ZoomIn();
    view.pan(random.between(-200, 199), random.between(-200, 199));
    return view;
}

TEST(ScrollWindow, lies_in_the_corner_by_its_numbers) {
    TestRandom random(1);
    for (int i = 0; i < 2000; ++i) {
        const Viewport view = random_view(random);
        const int iw = view.image_width(), ih = view.image_height();
        const int cw = view.client_width(), ch = view.client_height();
        const int tw = iw <= ih ? iw * 108 / ih : 108;
        const int th = iw <= ih ? 108 : ih * 108 / iw;
        int px = cw - 129, pw = 128;
        if (iw <= ih && tw < 95) px = cw - 116, pw = 115;
        if (iw <= ih && tw >= 95) px = cw - tw - 21, pw = tw + 20;
        const ScrollWindowLayout expected{{px, ch - th - 51, pw, th + 40},
                                          {px - 8, ch - th - 43, 8, th + 25},
                                          {px - 8, ch - th - 51, 16, 16},
                                          {px - 8, ch - th - 43 + th + 25 - 8, 16, 15},
                                          {px + pw / 2 - tw / 2, ch - th - 31, tw, th},
                                          {cw - 20, ch - th - 46, 10, 10}};
        ASSERT_TRUE(ScrollWindowLayout::of(iw, ih, cw, ch) == expected) << iw << " x " << ih;
    }
    EXPECT_TRUE(ScrollWindowLayout::of(0, 0, 500, 500) == ScrollWindowLayout{});
}

TEST(ScrollWindow, frames_the_part_that_the_window_shows_without_jitter) {
    TestRandom random(2);
    for (int round = 0; round < 300; ++round) {
        ScrollWindow panel;
        Viewport view = random_view(random);
        int keptWidth = 0, keptHeight = 0;
        for (int step = 0; step < 20; ++step) {
            panel.update(view);
            const int iw = view.image_width(), ih = view.image_height();
            const WindowRect thumbnail = panel.layout().thumbnail;
            const ImagePoint a = view.WindowToImage(view.zoom(), {0, 0});
            const ImagePoint b = view.WindowToImage(view.zoom(), {view.client_width(), view.client_height()});
            const int left = std::clamp(a.x, 0, iw), right = std::clamp(b.x, left, iw);
            const int top = std::clamp(a.y, 0, ih), bottom = std::clamp(b.y, top, ih);
            const int width = (right - left) * thumbnail.width / iw;
            const int height = (bottom - top) * thumbnail.height / ih;
            if (std::abs(width - keptWidth) >= 2 || std::abs(height - keptHeight) >= 2)
                keptWidth = width, keptHeight = height;
            keptWidth = std::min(std::max(keptWidth, 1), thumbnail.width);
            keptHeight = std::min(std::max(keptHeight, 1), thumbnail.height);
            const WindowRect frame = panel.frame();
            const int x = std::min(left * thumbnail.width / iw, thumbnail.width - keptWidth);
            const int y = std::min(top * thumbnail.height / ih, thumbnail.height - keptHeight);
            ASSERT_EQ(frame, (WindowRect{thumbnail.x + x, thumbnail.y + y, keptWidth, keptHeight}));
            if (random.below(3) == 0) random.below(2) == 0 ? view.ZoomIn() : view.ZoomOut();
            view.pan(random.between(-20, 19), random.between(-20, 19));
        }
    }
}

TEST(ScrollWindow, follows_the_pointer_within_the_thumbnail) {
    TestRandom random(3);
    const auto anywhere = [&] {
        if (random.below(20) == 0) return random.below(2) == 0 ? INT32_MAX : INT32_MIN;
        return random.between(-1000, 1999);
    };
    for (int round = 0; round < 500; ++round) {
        ScrollWindow panel;
        const Viewport view = random_view(random);
        panel.update(view);
        const WindowRect start = panel.frame();
        const WindowRect thumbnail = panel.layout().thumbnail;
        const WindowPoint grip{start.x + start.width / 2, start.y + start.height / 2};
        EXPECT_EQ(panel.hits_frame(grip), start.width > 0 && start.height > 0);
        EXPECT_FALSE(panel.hits_frame({start.x - 1, start.y}));
        EXPECT_FALSE(panel.hits_frame({start.x, start.y + start.height}));
        const WindowRect box = panel.layout().closeBox;
        EXPECT_TRUE(panel.hits_close_box({box.x + 9, box.y + 9}));
        EXPECT_FALSE(panel.hits_close_box({box.x + 10, box.y}));

        panel.begin_drag(grip);
        for (int step = 0; step < 10; ++step) {
            const WindowPoint to{anywhere(), anywhere()};
            const ImagePoint shown = panel.drag_to(to);
            panel.update(view);
            const WindowRect frame = panel.frame();
            const auto follow = [](std::int64_t p, int grip0, int start0, int low, int high) {
                return static_cast<int>(std::clamp<std::int64_t>(p - grip0 + start0, low, high));
            };
            ASSERT_EQ(frame.x, follow(to.x, grip.x, start.x, thumbnail.x,
                                      thumbnail.x + thumbnail.width - start.width));
            ASSERT_EQ(frame.y, follow(to.y, grip.y, start.y, thumbnail.y,
                                      thumbnail.y + thumbnail.height - start.height));
            ASSERT_EQ(frame.width, start.width);
            if (thumbnail.width > 0) {
                ASSERT_EQ(shown.x, (frame.x - thumbnail.x) * view.image_width() / thumbnail.width);
            }
            if (thumbnail.height > 0) {
                ASSERT_EQ(shown.y, (frame.y - thumbnail.y) * view.image_height() / thumbnail.height);
            }
        }
        panel.end_drag();
        panel.update(view);
        EXPECT_EQ(panel.frame(), start);
    }
}

}  // namespace
}  // namespace pixvane::test
