// The history ring against a model, and the edges of the document store.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <optional>

#include "core/compose.h"
#include "core/image_store.h"
#include "core/pixel_memory.h"
#include "support/doubles.h"

namespace pixvane::test {
namespace {

/// A picture of one colour, told apart by it.
struct State {
    std::int32_t width = 0;
    std::int32_t height = 0;
    Pixel colour = 0;
};

/// The ring as its rules say it, with colours in the place of bitmaps.
struct Model {
    std::array<std::optional<State>, 16> slots;
    int current = -1;
    int used = 0;
    int redo = 0;
    bool modified = false;

    void start(State state) {
        *this = {};
        slots[0] = state;
        current = 0;
        used = 1;
    }
    void edit(State state) {
        if (used == 0) return;
        current = (current + 1) % 16;
        if (!slots[index()] && used < 16) ++used;
        slots[index()] = state;
        modified = true;
        redo = 0;
    }
    int previous() const { return current == 0 ? 15 : current - 1; }
    bool can_undo() const { return used > 0 && redo < 15 && slots[static_cast<std::size_t>(previous())]; }
    void undo() {
        if (!can_undo()) return;
        current = previous();
        ++redo;
    }
    void redo_step() {
        if (used < 1 || redo < 1) return;
        current = (current + 1) % used;
        --redo;
    }
    std::size_t index() const { return static_cast<std::size_t>(current); }
};

class Store : public ::testing::Test {
protected:
    void edit(State state) {
        Edit step(store, state.width, state.height);
        if (!step) return;
        fill(step.target(), state.colour);
        step.commit();
    }
    /// Starts with a random picture.
    Picture load(std::int32_t width, std::int32_t height) {
        const Picture picture = random_picture(width, height, 1);
        EXPECT_TRUE(
            store.load_array(reinterpret_cast<const std::uint8_t*>(picture.pixels.data()), width, height));
        return picture;
    }

    RawCodec codec;
    MemoryFiles files;
    ImageStore store{codec, files};
};

TEST_F(Store, keeps_no_more_states_than_it_is_told_to) {
    const auto color = [&] { return store.current().data[0]; };
    for (std::int32_t kept = 2; kept <= ImageStore::kSlots; ++kept) {
        store.set_kept_states(ImageStore::kSlots);
        ASSERT_TRUE(store.NewImage(8, 8));
        const auto bytes = PixelMemory::instance().in_use();
        store.set_kept_states(kept);
        for (Pixel made = 0; made < 40; ++made) edit({8, 8, made});
        EXPECT_EQ(PixelMemory::instance().in_use(), bytes * static_cast<std::uint64_t>(kept));
        for (std::int32_t age = 1; age < kept; ++age) {
            ASSERT_TRUE(store.can_undo());
            store.Undo();
            EXPECT_EQ(color(), static_cast<Pixel>(39 - age));
        }
        EXPECT_FALSE(store.can_undo());
        store.Undo();
        store.Redo();
        EXPECT_EQ(color(), static_cast<Pixel>(41 - kept));
        edit({8, 8, 100});
        EXPECT_FALSE(store.can_redo());
        store.Undo();
        EXPECT_EQ(color(), static_cast<Pixel>(41 - kept));
    }
    store.set_kept_states(2);
    EXPECT_FALSE(store.can_redo());  // dropped with what is older than the state before this one
    EXPECT_TRUE(store.can_undo());
}

TEST_F(Store, follows_the_model_through_random_edits) {
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        Model model;
        TestRandom random(seed);
        store.Empty();
        store.view.SetClientSize(300, 200);
        for (int step = 0; step < 300; ++step) {
            const State state{random.between(4, 6), random.between(4, 6), random.next()};
            const std::uint32_t kind = random.below(step % 100 < 60 ? 7 : 12);
            if (kind == 0 && random.below(30) == 0) {
                store.BitmapBackColor = state.colour;
                store.NewImage(state.width, state.height);
                model.start(state);
            } else if (kind == 1) {
                EXPECT_EQ(store.GetImageArray() != nullptr, model.used > 0);
                if (model.used > 0) model.edit(*model.slots[model.index()]);
                model.undo();
            } else if (kind == 2 || kind == 3) {
                store.Redo();
                model.redo_step();
            } else if (kind > 3 && kind < 7) {
                edit(state);
                model.edit(state);
            } else if (kind > 6) {
                store.Undo();
                model.undo();
            }
            ASSERT_EQ(store.is_empty(), model.used == 0);
            ASSERT_EQ(store.can_undo(), model.can_undo());
            ASSERT_EQ(store.can_redo(), model.used > 0 && model.redo > 0);
            ASSERT_EQ(store.modified(), model.modified);
            if (model.used == 0) continue;
            const State& now = *model.slots[model.index()];
            ASSERT_EQ(Picture(store.current()), Picture(now.width, now.height, now.colour));
        }
    }
}

TEST_F(Store, keeps_the_scroll_position_unless_the_size_changes) {
    store.view.SetClientSize(50, 50);
    ASSERT_TRUE(store.NewImage(200, 200));
    store.view.ZoomIn();
    for (int i = 0; i < 20; ++i) store.view.ZoomIn();
    ASSERT_TRUE(store.view.pan(3, 2));
    const WindowPoint panned = store.view.anchor();
    edit({200, 200, 1});
    store.Undo();
    EXPECT_EQ(store.view.anchor(), panned);
    edit({210, 200, 1});
    EXPECT_EQ(store.view.anchor(), (WindowPoint{25, 25}));
    ASSERT_TRUE(store.view.pan(3, 2));
    store.Undo();
    EXPECT_EQ(store.view.anchor(), (WindowPoint{25, 25}));
}

TEST_F(Store, keeps_the_picture_when_there_is_no_memory) {
    const Picture picture = load(64, 64);
    edit({64, 64, 7});
    store.Undo();
    PixelMemory& memory = PixelMemory::instance();
    const std::uint64_t limit = memory.limit();
    memory.set_limit(memory.in_use());
    edit({500, 500, 9});
    memory.set_limit(limit);
    EXPECT_TRUE(same_pixels(picture, store.current()));
    // The step that could have been redone gave way, so there must be nothing to redo.
    EXPECT_FALSE(store.can_redo());
    store.Redo();
    EXPECT_TRUE(same_pixels(picture, store.current()));
    edit({64, 64, 8});
    EXPECT_EQ(store.current().data[0], 8u);
}

TEST_F(Store, drops_an_edit_that_is_not_committed) {
    const Picture picture = load(20, 10);
    {
        Edit step(store);
        ASSERT_TRUE(step);
        fill(step.target(), 0);
    }
    EXPECT_TRUE(same_pixels(picture, store.current()));
    EXPECT_FALSE(store.modified());
    EXPECT_FALSE(store.can_undo());
    EXPECT_FALSE(Edit(store, 0, 5));
    EXPECT_FALSE(Edit(store, 70000, 5));
    EXPECT_FALSE(Edit(store, 65535, 65535));
}

TEST_F(Store, edits_in_place_while_steps_are_suppressed) {
    load(20, 10);
    store.set_edits_suppressed(true);
    edit({20, 10, 5});
    store.set_edits_suppressed(false);
    EXPECT_EQ(store.current().data[0], 5u);
    EXPECT_FALSE(store.can_undo());
    EXPECT_TRUE(store.modified());
}

TEST_F(Store, reads_arrays_through_a_step_that_can_be_redone) {
    const Picture picture = load(9, 5);
    edit({9, 5, 1});
    store.Undo();
    const auto array = store.GetImageArray();
    ASSERT_NE(array, nullptr);
    EXPECT_TRUE(same_pixels(picture, array->pixels()));
    EXPECT_TRUE(store.modified());
    ASSERT_TRUE(store.can_redo());
    store.Redo();
    EXPECT_TRUE(same_pixels(picture, store.current()));
    // What was read stays as it was, whatever becomes of the picture.
    edit({9, 5, 2});
    store.Empty();
    EXPECT_TRUE(same_pixels(picture, array->pixels()));
}

TEST_F(Store, loads_and_saves_files) {
    files.files["a"] = RawCodec::file_of(random_picture(30, 20, 4), 3);
    files.files["broken"] = "no picture";
    ASSERT_TRUE(store.LoadImage("a"));
    EXPECT_EQ(store.frame_count(), 3);
    edit({30, 20, 1});
    EXPECT_FALSE(store.SaveImage("b", -1));
    EXPECT_FALSE(store.SaveImage("b", 5));
    files.diskFull = true;
    EXPECT_FALSE(store.SaveImage("b", 4));
    EXPECT_TRUE(store.modified());
    EXPECT_EQ(files.files.count("b"), 0u);
    files.diskFull = false;
    store.JpegQuality = 55;
    EXPECT_TRUE(store.SaveImage("b", 1));
    EXPECT_EQ(codec.lastType, SaveType::Jpeg);
    EXPECT_EQ(codec.lastQuality, 55);
    EXPECT_FALSE(store.modified());
    EXPECT_TRUE(store.IsImageFile("b"));
    EXPECT_FALSE(store.IsImageFile("broken"));
    EXPECT_FALSE(store.LoadImage("broken"));
    EXPECT_TRUE(store.is_empty());
    EXPECT_EQ(store.frame_count(), 0);
    EXPECT_FALSE(store.SaveImage("b", 4));
}

}  // namespace
}  // namespace pixvane::test
