// Whatever is called with whatever arguments, in whatever order, from wherever: nothing breaks.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "pixvane/pixvane.h"

namespace {

constexpr std::uint64_t kBitmapBytes = 4 << 20;  // pictures beyond this fail like any lack of memory
constexpr int kCalls = 100000;
constexpr int kCallsOfOne = 500;         // of one control
constexpr std::int32_t kLargeSide = 64;  // larger pictures are given up again, to keep the pace

/// Holds one control, and calls it as a host out of its mind would.
class WildHost {
public:
    WildHost(std::uint64_t seed, const std::string& folder)
        : random_(static_cast<std::mt19937::result_type>(seed)) {
        paths_ = {"",
                  "/nowhere/at/all.png",
                  folder + "/a.png",
                  folder + "/b.jpg",
                  folder + "/c.bmp",
                  folder + "/\xff\xfe"};
        pixvane_host host{};
        host.struct_size = sizeof host;
        host.user = this;
        host.frame_ready = [](void* self) { of(self).called_back(); };
        host.set_capture = [](void* self, std::int32_t taken) { of(self).captured_ = taken != 0; };
        host.start_timer = [](void* self, std::int32_t id, std::int32_t) { of(self).ticking_ |= id == 1; };
        host.stop_timer = [](void* self, std::int32_t id) { of(self).ticking_ &= id != 1; };
        host.set_cursor = [](void* self, std::int32_t cursor) { of(self).cursor_ = cursor; };
        EXPECT_EQ(pixvane_create(&host, &control_), PIXVANE_OK);
        for (std::size_t i = 0; i < pixvane_member_count(); ++i) {
            const pixvane_member_info* member = pixvane_member_at(i);
            if (member->type != PIXVANE_EVENT) {
                members_.push_back(member);
                if (member->edits != 0) commands_.push_back(member);
                continue;
            }
            const auto handler = [](void* self, const pixvane_value*, std::size_t) {
                of(self).called_back();
            };
            EXPECT_EQ(pixvane_subscribe(control_, member->name, handler, this, nullptr), PIXVANE_OK);
        }
        pixvane_window_resize(control_, width_, height_);
    }
    ~WildHost() {
        EXPECT_EQ(pixvane_free(control_), PIXVANE_OK);
        EXPECT_FALSE(captured_ || ticking_) << "what is freed holds on to its window";
    }
    WildHost(const WildHost&) = delete;
    WildHost& operator=(const WildHost&) = delete;

    void step() {
        act();
        held_.clear();
        const std::int32_t mode = number("PaintStatus");
        EXPECT_EQ(ticking_, mode == 7 || mode == 18);
        EXPECT_EQ(cursor_, mode == 12 ? 202 : mode == 3 ? 206 : mode == 22 ? 208 : 0);
        if (number("ImageWidth") > kLargeSide || number("ImageHeight") > kLargeSide) new_picture();
    }

private:
    static WildHost& of(void* self) { return *static_cast<WildHost*>(self); }
    void act() {
        const std::uint32_t kind = below(100);
        if (kind < 45)
            message();
        else if (kind < 90)
            call(*members_[below(members_.size())]);
        else if (kind < 94)
            preview();
        else if (kind < 97)
            new_picture();
        else
            window();
    }
    /// In the midst of a call: now and then another one, and never an end.
    void called_back() {
        if (depth_ >= 3 || below(6) != 0) return;
        ++depth_;
        EXPECT_EQ(pixvane_free(control_), PIXVANE_E_BUSY);
        act();
        --depth_;
    }

    std::uint32_t below(std::size_t limit) {
        return static_cast<std::uint32_t>((std::uint64_t{random_()} * limit) >> 32);
    }
    std::int32_t any_number() {
        using Limits = std::numeric_limits<std::int32_t>;
        constexpr std::int32_t kEdges[] = {Limits::min(), Limits::max(), -1,    0,     1,
                                           255,           256,           65535, 65536, -32769};
        const std::uint32_t kind = below(10);
        if (kind == 0) return kEdges[below(std::size(kEdges))];
        if (kind == 1) return static_cast<std::int32_t>(static_cast<std::uint32_t>(random_()));
        return static_cast<std::int32_t>(below(60)) - 10;
    }
    double any_double() {
        constexpr double kEdges[] = {0, -0.0, 1e300, -1e300, 1e-300, HUGE_VAL, -HUGE_VAL, NAN};
        if (below(5) == 0) return kEdges[below(std::size(kEdges))];
        return any_number() / 8.0;
    }
    pixvane_value any_value(std::int32_t kind) {
        // Of a wrong kind, sometimes.
        if (below(40) == 0) kind = static_cast<std::int32_t>(below(12)) - 1;
        const auto count = below(2) == 0 ? below(4) * 9 : below(300);
        if (kind == PIXVANE_INT32) return pixvane_int32(any_number());
        if (kind == PIXVANE_DOUBLE) return pixvane_double(any_double());
        if (kind == PIXVANE_BOOL) return pixvane_bool(static_cast<int>(below(2)));
        if (kind == PIXVANE_COLOR) return pixvane_color(static_cast<std::uint32_t>(random_()));
        if (kind == PIXVANE_STRING) {
            const std::string& path = paths_[below(paths_.size())];
            return pixvane_string_n(path.data(), path.size());
        }
        std::vector<std::int32_t>& numbers = held_.emplace_back(2 * 300);
        for (std::int32_t& n : numbers) n = any_number();
        pixvane_value value = pixvane_int32_array(numbers.data(), count);
        value.kind = kind;
        return value;
    }
    void append(std::vector<pixvane_value>& values, const pixvane_member_info& member) {
        for (std::int32_t i = 0; i < member.argument_count; ++i)
            if (member.arguments[i].kind != PIXVANE_VALUES)
                values.push_back(any_value(member.arguments[i].kind));
        if (below(60) == 0) values.push_back(pixvane_int32(1));
    }
    void invoke(const char* name, const std::vector<pixvane_value>& values) {
        pixvane_value result;
        const pixvane_status status = pixvane_invoke(control_, name, values.data(), values.size(), &result);
        EXPECT_TRUE(status == PIXVANE_OK || status == PIXVANE_E_COUNT || status == PIXVANE_E_TYPE ||
                    status == PIXVANE_E_MEMBER || status == PIXVANE_E_MEMORY)
            << name << ": " << pixvane_status_text(status);
    }
    void call(const pixvane_member_info& member) {
        std::vector<pixvane_value> values;
        if (member.type == PIXVANE_METHOD || below(2) == 0) append(values, member);
        invoke(member.name, values);
    }
    void preview() {
        const pixvane_member_info& command = *commands_[below(commands_.size())];
        std::vector<pixvane_value> values = {pixvane_string(command.name)};
        append(values, command);
        if (below(3) == 0) invoke("BeginPreview", {});
        invoke("Preview", values);
    }
    void new_picture() {
        const auto side = [&] { return pixvane_int32(static_cast<std::int32_t>(4 + below(40))); };
        invoke("NewImage", {side(), side()});
    }
    void message() {
        const auto what = static_cast<std::int32_t>(below(4));
        const auto button = static_cast<std::int32_t>(below(3));
        const auto near = [&](std::int32_t limit) {
            return below(30) == 0
                       ? any_number()
                       : static_cast<std::int32_t>(below(static_cast<std::uint32_t>(limit + 40))) - 20;
        };
        EXPECT_EQ(pixvane_window_mouse(control_, what, button, near(width_), near(height_),
                                       static_cast<std::int32_t>(below(8))),
                  PIXVANE_OK);
    }
    void window() {
        const std::uint32_t what = below(5);
        if (what == 0) {
            width_ = static_cast<std::int32_t>(below(200));
            height_ = static_cast<std::int32_t>(below(200));
            pixvane_window_resize(control_, width_, height_);
        }
        if (what == 1) pixvane_window_zoom_at(control_, any_number(), any_number(), any_number());
        if (what == 2) pixvane_window_pan(control_, any_number(), any_number());
        if (what == 3) pixvane_window_timer(control_, static_cast<std::int32_t>(below(4)));
        if (what != 4) return;
        std::int32_t w = 0, h = 0;
        EXPECT_EQ(pixvane_window_frame(control_, nullptr, 0, &w, &h), PIXVANE_OK);
        frame_.resize(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 4);
        EXPECT_EQ(pixvane_window_frame(control_, frame_.data(), frame_.size(), &w, &h), PIXVANE_OK);
    }
    std::int32_t number(const char* property) {
        pixvane_value value = pixvane_null();
        EXPECT_EQ(pixvane_invoke(control_, property, nullptr, 0, &value), PIXVANE_OK);
        return value.i;
    }

    pixvane_control* control_ = nullptr;
    std::mt19937 random_;
    std::vector<std::string> paths_;
    std::vector<const pixvane_member_info*> members_;
    std::vector<const pixvane_member_info*> commands_;
    std::vector<unsigned char> frame_;
    std::deque<std::vector<std::int32_t>> held_;  // what calls that are not over yet refer to
    std::int32_t width_ = 100, height_ = 80, cursor_ = 0;
    bool captured_ = false, ticking_ = false;
    int depth_ = 0;
};

TEST(RandomCalls, break_nothing) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "pixvane_random_calls";
    std::filesystem::create_directories(folder);
    const std::uint64_t limit = pixvane_bitmap_limit();
    pixvane_set_bitmap_limit(kBitmapBytes);
    for (int made = 0, seed = 1; made < kCalls && !HasFailure(); made += kCallsOfOne, ++seed) {
        SCOPED_TRACE(seed);
        WildHost host(static_cast<std::uint64_t>(seed), folder.string());
        for (int i = 0; i < kCallsOfOne; ++i) host.step();
    }
    pixvane_set_bitmap_limit(limit);
    std::filesystem::remove_all(folder);
}

}  // namespace
