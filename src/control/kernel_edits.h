// Joins a history step and a kernel: what most commands are made of.
// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>

#include "core/edit.h"
#include "core/image_store.h"
#include "core/parallel_rows.h"

namespace pixvane {

/// Runs a kernel(source, target) whose every row depends on the same row alone; it may run on several bands
/// at once and must not throw.
template <class Kernel>
void run_rows(Edit& edit, double nanosecondsPerPixel, Kernel kernel) {
    const ConstPixelBuffer source = edit.source();
    const PixelBuffer target = edit.target();
    parallel_rows(source.height, source.width * nanosecondsPerPixel,
                  [&](std::int32_t first, std::int32_t last) {
                      kernel(source.rows(first, last), target.rows(first, last));
                  });
}

/// The whole command that such a kernel makes.
template <class Kernel>
void edit_rows(ImageStore& store, double nanosecondsPerPixel, Kernel kernel) {
    Edit edit(store);
    if (!edit) return;
    run_rows(edit, nanosecondsPerPixel, kernel);
    edit.commit();
}

/// A command made of a kernel(source, target, first, last) that writes rows first..last of the whole target
/// and reads what it likes of the whole source; it may run on several bands at once and must not throw. Each
/// band starts with work for as long as `leadRows` rows take.
template <class Kernel>
void edit_area(ImageStore& store, double nanosecondsPerPixel, Kernel kernel, double leadRows = 0) {
    Edit edit(store);
    if (!edit) return;
    const ConstPixelBuffer source = edit.source();
    const PixelBuffer target = edit.target();
    parallel_rows(source.height, {source.width * nanosecondsPerPixel, leadRows},
                  [&](std::int32_t first, std::int32_t last) { kernel(source, target, first, last); });
    edit.commit();
}

/// What gather(source) returns for a picture, gathered from its bands and put together by add(all, part),
/// which must not depend on the order.
template <class Gather, class Add>
auto gather_rows(ConstPixelBuffer source, double nanosecondsPerPixel, Gather gather, Add add) {
    decltype(gather(source)) all{};
    std::mutex mutex;
    parallel_rows(source.height, source.width * nanosecondsPerPixel,
                  [&](std::int32_t first, std::int32_t last) {
                      const auto part = gather(source.rows(first, last));
                      const std::lock_guard lock(mutex);
                      add(all, part);
                  });
    return all;
}

/// A kernel(source, target) that wants the whole picture.
template <class Kernel>
void edit_whole(ImageStore& store, Kernel kernel) {
    Edit edit(store);
    if (!edit) return;
    kernel(edit.source(), edit.target());
    edit.commit();
}

/// The same with a target of width x height; centres the picture, whatever its size was.
template <class Kernel>
void edit_canvas(ImageStore& store, std::int64_t width, std::int64_t height, Kernel kernel) {
    Edit edit(store, width, height);
    if (!edit) return;
    kernel(edit.source(), edit.target());
    edit.commit();
    store.view.recompute_layout();
}

/// The same with a kernel(source, target, first, last) that writes rows first..last of the target; it may run
/// on several bands at once and must not throw. The estimate is for a pixel of the target.
template <class Kernel>
void edit_canvas_area(ImageStore& store, std::int64_t width, std::int64_t height, double nanosecondsPerPixel,
                      Kernel kernel) {
    Edit edit(store, width, height);
    if (!edit) return;
    const ConstPixelBuffer source = edit.source();
    const PixelBuffer target = edit.target();
    parallel_rows(target.height, target.width * nanosecondsPerPixel,
                  [&](std::int32_t first, std::int32_t last) { kernel(source, target, first, last); });
    edit.commit();
    store.view.recompute_layout();
}

}  // namespace pixvane
