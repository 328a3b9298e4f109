// The rows that a scaling makes, on their way to the target; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_SCALE_RESULT_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_SCALE_RESULT_INL_H_
#undef PIXVANE_CORE_SCALE_RESULT_INL_H_
#else
#define PIXVANE_CORE_SCALE_RESULT_INL_H_
#endif

#include <cstddef>
#include <cstdint>
#include <optional>

#include "core/pixel_rows.h"
#include "core/pixel_runs-inl.h"
#include "core/scaling/scale.h"
#include "core/scaling/scale_columns-inl.h"
#include "core/scaling/scale_sums-inl.h"
#include "core/scratch.h"
#include "core/streaming.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// Whether vectors may be streamed right into the rows of a target.
bool can_stream(PixelArea target) {
    return target.width % kColumns == 0 && target.pitch % kColumns == 0 &&
           reinterpret_cast<std::uintptr_t>(target.data) % (kColumns * sizeof(Pixel)) == 0;
}

bool is_large(PixelArea target, std::int32_t first, std::int32_t last) {
    const std::size_t rowBytes = static_cast<std::size_t>(target.width) * sizeof(Pixel);
    return rowBytes * static_cast<std::size_t>(last - first) >= kStreamingBytes;
}

// A scaling under way, and what becomes of a row that is made. A row that turns out to be wrong half way is
// made anew; so it is made in a line of its own where the target still counts.
class ResultRows {
public:
    ResultRows(ConstPixelBuffer source, PixelArea target, const Scaling& scaling, Ground ground)
        : source_(source), target_(target), scaling_(scaling), ground_(ground) {
        const auto width = static_cast<std::size_t>(target.width) + hn::MaxLanes(PixelTag());
        if (needs_line()) line_ = thread_scratch<Pixel>(Scratch::ScaledLine, width);
    }
    bool is_valid() const { return !needs_line() || line_ != nullptr; }
    bool needs_line() const { return ground_.kind == Ground::Kind::Target; }

    // Where row y may be made.
    Pixel* place(std::int32_t y) const { return needs_line() ? line_ : target_.row(y); }
    void finish_opaque(std::int32_t y, const Pixel* made, bool streaming) const {
        if (made != target_.row(y)) copy_run(made, target_.row(y), count(), streaming);
    }

    // A row that is not opaque, where rows are tried as opaque ones first.
    void make_other(std::int32_t y) {
        if (!scaler_) scaler_.emplace(source_, scaling_);
        if (scaler_->is_valid()) {
            scaler_->make_row(y, place(y));
            finish(y, place(y));
        } else {
            make_plain(y, y + 1);
        }
    }
    void make_plain(std::int32_t first, std::int32_t last) const {
        plain::scale_rows(source_, target_, scaling_, first, last, ground_);
    }

    // Rows by a scaler that does opaque ones only, the others in the usual way. False if it can't do the
    // scaling.
    template <class Scaler>
    bool make_by(std::int32_t first, std::int32_t last) {
        Scaler scaler(source_, scaling_);
        if (!scaler.is_valid()) return false;
        make_rows(scaler, first, last);
        return true;
    }
    void make_by_sums(std::int32_t first, std::int32_t last) {
        scaler_.emplace(source_, scaling_);
        if (scaler_->is_valid()) {
            make_rows(*scaler_, first, last);
        } else {
            make_plain(first, last);
        }
    }

private:
    // Not past the caches: rows of any place and length would take a copy for it, which costs more than it
    // saves.
    template <class Scaler>
    void make_rows(Scaler& scaler, std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y) {
            if (scaler.make_opaque_row(y, place(y))) {
                finish_opaque(y, place(y), false);
            } else {
                make_other(y);
            }
        }
    }
    void finish(std::int32_t y, const Pixel* made) const {
        if (ground_.kind == Ground::Kind::Color)
            flatten_row(target_.row(y), made, count(), ground_.color, false);
        if (ground_.kind == Ground::Kind::Target) blend_row(target_.row(y), made, count());
    }
    std::size_t count() const { return static_cast<std::size_t>(target_.width); }

    ConstPixelBuffer source_;
    PixelArea target_;
    const Scaling& scaling_;
    Ground ground_;
    Pixel* line_ = nullptr;
    std::optional<SumScaler> scaler_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
