// A fuzzer of macro files: loads one, plays it on a small picture, records over it and saves it.
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "control/cpixvane.h"
#include "control/member_table.h"
#include "core/parallel_rows.h"
#include "core/pixel_memory.h"
#include "core/random.h"
#include "macro_costs.h"
#include "macros/macro_file.h"
#include "platform/cairo/cairo_rasterizer.h"
#include "support/doubles.h"

namespace {

using namespace pixvane;

constexpr std::int32_t kWidth = 37;
constexpr std::int32_t kHeight = 23;
constexpr std::int64_t kLimit = std::int64_t{256} << 20;

void require(bool truth) {
    if (!truth) std::abort();
}

std::string text_of(ByteSpan bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

struct World {
    test::MemoryFiles files;
    test::RawCodec codec;
    test::CountingWindow window;
    std::unique_ptr<Rasterizer> rasterizer = make_cairo_rasterizer();
    test::Picture picture = test::random_picture(kWidth, kHeight, 1);

    World() {
        set_worker_threads(1);
        PixelMemory::instance().set_limit(kLimit);
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static World world;
    auto& files = world.files.files;
    files = {{"macro", text_of({data, size})}};
    CPixvane control({world.codec, world.files, world.window, *world.rasterizer});
    control.LoadFromImageArray(ByteSpan{reinterpret_cast<const std::uint8_t*>(world.picture.pixels.data()),
                                        world.picture.view().bytes()},
                               kWidth, kHeight);
    thread_random().set_state(1);
    if (!control.LoadMacros("macro")) {
        require(control.macro().codes().empty() && control.macro().arguments().empty());
        return 0;
    }
    const std::string saved = text_of(encode_macro(control.macro()));
    require(files["macro"].starts_with(saved) || control.macro().arguments().empty());

    files["macro"] =
        text_of(encode_macro(fuzz::without_costly_steps(control.macro(), kWidth, kHeight, kLimit)));
    if (!control.LoadMacros("macro")) return 0;
    const DrawSettings before = control.settings();
    control.PlayMacros();
    require(control.settings() == before);
    require(!control.IsEmpty());

    // Steps that are recorded now write over the start of what was loaded.
    files["recorded"] = files["macro"];
    control.BeginMacros();
    control.LoadMacros("recorded");
    const std::size_t steps = control.macro().codes().size();
    const Value value{Kind::Int32, 3, 0, nullptr, 0};
    control.record(*find_member("Saturate"), {&value, 1});
    require(control.macro().codes().size() == steps + 1);
    control.SaveMacros("again");
    return 0;
}
