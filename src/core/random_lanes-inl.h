// The random generator in the lanes of a vector; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_CORE_RANDOM_LANES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_CORE_RANDOM_LANES_INL_H_
#undef PIXVANE_CORE_RANDOM_LANES_INL_H_
#else
#define PIXVANE_CORE_RANDOM_LANES_INL_H_
#endif

#include "core/pixel_runs-inl.h"
#include "core/random.h"

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::HWY_NAMESPACE {

// The generators one number further, and the numbers, 0..32767.
HWY_INLINE PixelVec next_draw(PixelVec states, PixelVec& drawn) {
    const PixelTag d;
    states = hn::Add(hn::Mul(states, hn::Set(d, RandomGenerator::kMultiplier)),
                     hn::Set(d, RandomGenerator::kIncrement));
    drawn = hn::And(hn::ShiftRight<16>(states), hn::Set(d, 0x7FFF));
    return states;
}

// The same number of steps, time and again.
class RandomJump {
public:
    explicit RandomJump(std::uint64_t count) {
        RandomGenerator random;
        random.set_state(0);
        random.jump(count);
        addend_ = random.state();
        random.set_state(1);
        random.jump(count);
        factor_ = random.state() - addend_;
    }

    std::uint32_t operator()(std::uint32_t state) const { return state * factor_ + addend_; }
    HWY_INLINE PixelVec operator()(PixelVec states) const {
        const PixelTag d;
        return hn::Add(hn::Mul(states, hn::Set(d, factor_)), hn::Set(d, addend_));
    }

private:
    std::uint32_t factor_, addend_;
};

}  // namespace pixvane::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
