// The C interface: the list of members, statuses, and what concerns the whole process.
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstring>
#include <deque>
#include <exception>
#include <vector>

#include "api/platform.h"
#include "control/member_table.h"
#include "core/parallel_rows.h"
#include "core/pixel_memory.h"
#include "core/random.h"
#include "pixvane/pixvane.h"
#include "view/cursors.h"

using namespace pixvane;

namespace {

pixvane_argument_info describe(const Arg& argument) {
    const auto end = [](const Range& range, double value) { return range.is_given() ? value : 0.0; };
    const bool hasDefault = !std::isnan(argument.initial);
    return {argument.name,
            static_cast<std::int32_t>(argument.kind),
            argument.accepts.is_given() ? 1 : 0,
            end(argument.accepts, argument.accepts.minimum),
            end(argument.accepts, argument.accepts.maximum),
            argument.slider.is_given() ? 1 : 0,
            end(argument.slider, argument.slider.minimum),
            end(argument.slider, argument.slider.maximum),
            hasDefault ? 1 : 0,
            hasDefault ? argument.initial : 0.0};
}

/// The table as the interface shows it. A deque, so that the argument lists stay where they are.
struct Listing {
    std::deque<std::vector<pixvane_argument_info>> arguments;
    std::vector<pixvane_member_info> members;

    Listing() {
        for (const Row& row : member_table()) {
            auto& list = arguments.emplace_back();
            for (const Arg& argument : row.arguments) list.push_back(describe(argument));
            members.push_back({row.name, static_cast<std::int32_t>(row.type), row.category, row.help,
                               static_cast<std::int32_t>(row.result), row.putThunk != nullptr ? 1 : 0,
                               row.edits ? 1 : 0, row.macroCode, static_cast<std::int32_t>(list.size()),
                               list.data()});
        }
    }
};

const Listing* listing() noexcept {
    try {
        static const Listing made;
        return &made;
    } catch (const std::exception&) {
        return nullptr;
    }
}

static_assert(static_cast<int>(MemberType::Method) == PIXVANE_METHOD &&
              static_cast<int>(MemberType::Property) == PIXVANE_PROPERTY &&
              static_cast<int>(MemberType::Event) == PIXVANE_EVENT);

}  // namespace

extern "C" {

const char* pixvane_status_text(pixvane_status status) {
    switch (status) {
        case PIXVANE_OK:
            return "The call was made.";
        case PIXVANE_E_NULL:
            return "A pointer that must not be null is null.";
        case PIXVANE_E_MEMBER:
            return "There is no member of this name.";
        case PIXVANE_E_COUNT:
            return "Wrong number of arguments.";
        case PIXVANE_E_TYPE:
            return "An argument is of the wrong kind.";
        case PIXVANE_E_RANGE:
            return "A size or number is outside of what the function takes.";
        case PIXVANE_E_BUSY:
            return "The control is in use by another call.";
        case PIXVANE_E_MEMORY:
            return "Out of memory.";
        case PIXVANE_E_INTERNAL:
            return "An internal error.";
        default:
            return "An unknown status.";
    }
}

int32_t pixvane_find_member(const char* name) {
    if (name == nullptr || listing() == nullptr) return -1;
    const Row* row = find_member(name);
    return row == nullptr ? -1 : static_cast<std::int32_t>(row - member_table().data());
}

size_t pixvane_member_count(void) { return listing() == nullptr ? 0 : listing()->members.size(); }

const pixvane_member_info* pixvane_member_at(size_t index) {
    return index < pixvane_member_count() ? &listing()->members[index] : nullptr;
}

pixvane_status pixvane_cursor_image(int32_t cursor, void* buffer, size_t capacity, int32_t* width,
                                    int32_t* height, int32_t* hot_x, int32_t* hot_y) {
    if (width == nullptr || height == nullptr || hot_x == nullptr || hot_y == nullptr) return PIXVANE_E_NULL;
    try {
        const std::optional<CursorImage> image = cursor_image(cursor);
        if (!image) return PIXVANE_E_RANGE;
        *width = image->width;
        *height = image->height;
        *hot_x = image->hotSpot.x;
        *hot_y = image->hotSpot.y;
        if (buffer == nullptr) return PIXVANE_OK;
        const std::size_t bytes = image->pixels.size() * sizeof(Pixel);
        if (capacity < bytes) return PIXVANE_E_RANGE;
        std::memcpy(buffer, image->pixels.data(), bytes);
        return PIXVANE_OK;
    } catch (const std::bad_alloc&) {
        return PIXVANE_E_MEMORY;
    }
}

pixvane_status pixvane_set_worker_threads(int32_t count) {
    if (count < 1 || count > 64) return PIXVANE_E_RANGE;
    set_worker_threads(count);
    return PIXVANE_OK;
}

int32_t pixvane_worker_threads(void) { return worker_threads(); }

void pixvane_seed_random(uint32_t state) { thread_random().set_state(state); }

pixvane_status pixvane_set_bitmap_limit(uint64_t bytes) {
    platform();  // whose default the limit replaces
    PixelMemory::instance().set_limit(bytes);
    return PIXVANE_OK;
}

uint64_t pixvane_bitmap_limit(void) {
    platform();
    return PixelMemory::instance().limit();
}

uint64_t pixvane_bitmap_bytes(void) { return PixelMemory::instance().in_use(); }

const char* pixvane_version(void) { return PIXVANE_VERSION; }

}  // extern "C"
