// Sorting networks of vectors of bytes, run; included once for each instruction set.
// SPDX-License-Identifier: MIT
#if defined(PIXVANE_FILTERS_NETWORK_STEPS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXVANE_FILTERS_NETWORK_STEPS_INL_H_
#undef PIXVANE_FILTERS_NETWORK_STEPS_INL_H_
#else
#define PIXVANE_FILTERS_NETWORK_STEPS_INL_H_
#endif

#include <algorithm>
#include <utility>

#include "core/pixel_runs-inl.h"
#include "filters/effects/sorting_network.h"

// Thousands of steps one after the other take minutes to compile with checks around each; such builds, and
// those without optimisation, go through the steps in a loop.
#undef PIXVANE_UNROLLS_NETWORKS
#undef PIXVANE_NETWORK_INLINE
#if !defined(__OPTIMIZE__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define PIXVANE_UNROLLS_NETWORKS 0
#elif defined(__has_feature)
#define PIXVANE_UNROLLS_NETWORKS !(__has_feature(address_sanitizer) || __has_feature(thread_sanitizer))
#else
#define PIXVANE_UNROLLS_NETWORKS 1
#endif

#if PIXVANE_VECTORS
HWY_BEFORE_NAMESPACE();
namespace pixvane::filters::HWY_NAMESPACE {
using namespace pixvane::HWY_NAMESPACE;

#if PIXVANE_UNROLLS_NETWORKS
template <NetworkStep kStep>
HWY_INLINE void exchange(ByteVec* HWY_RESTRICT values) {
    const ByteVec a = values[kStep.low];
    const ByteVec b = values[kStep.high];
    if constexpr (kStep.keepsLow) values[kStep.low] = hn::Min(a, b);
    if constexpr (kStep.keepsHigh) values[kStep.high] = hn::Max(a, b);
}

template <const Network& kNetwork, std::size_t... kIndices>
HWY_INLINE void run_steps(ByteVec* HWY_RESTRICT values, std::index_sequence<kIndices...>) {
    (exchange<kNetwork.steps[kIndices]>(values), ...);
}

// The results of a network, in order.
template <const Network& kNetwork, std::size_t... kIndices>
HWY_INLINE void store_results(const ByteVec* values, ByteVec* results, std::index_sequence<kIndices...>) {
    ((results[kIndices] = values[kNetwork.results.places[kIndices]]), ...);
}

template <const Network& kNetwork>
HWY_INLINE void run_network(ByteVec* HWY_RESTRICT values, ByteVec* HWY_RESTRICT results) {
    run_steps<kNetwork>(values, std::make_index_sequence<kNetwork.count>());
    store_results<kNetwork>(values, results, std::make_index_sequence<kNetwork.results.count>());
}

// Written out, so that none of the values needs memory for its place in an array.
template <std::size_t... kIndices>
HWY_INLINE void load_each(const ByteVec* from, ByteVec* values, std::index_sequence<kIndices...>) {
    ((values[kIndices] = from[kIndices]), ...);
}

template <std::size_t kCount>
HWY_INLINE void load_values(const ByteVec* from, ByteVec* values) {
    load_each(from, values, std::make_index_sequence<kCount>());
}

#define PIXVANE_NETWORK_INLINE HWY_INLINE
#else
// One loop for all networks.
HWY_NOINLINE void run_steps(const Network& network, ByteVec* values, ByteVec* results) {
    for (std::size_t i = 0; i < network.count; ++i) {
        const NetworkStep& step = network.steps[i];
        const ByteVec a = values[step.low];
        const ByteVec b = values[step.high];
        if (step.keepsLow) values[step.low] = hn::Min(a, b);
        if (step.keepsHigh) values[step.high] = hn::Max(a, b);
    }
    for (std::size_t i = 0; i < network.results.count; ++i) results[i] = values[network.results.places[i]];
}

template <const Network& kNetwork>
HWY_INLINE void run_network(ByteVec* values, ByteVec* results) {
    run_steps(kNetwork, values, results);
}

template <std::size_t kCount>
HWY_INLINE void load_values(const ByteVec* from, ByteVec* values) {
    std::copy_n(from, kCount, values);
}

#define PIXVANE_NETWORK_INLINE HWY_NOINLINE
#endif

}  // namespace pixvane::filters::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif  // PIXVANE_VECTORS

#endif  // include guard for each instruction set
