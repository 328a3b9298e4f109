// Counts what a program takes from the heap.
// SPDX-License-Identifier: MIT
#include "support/allocations.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define PIXVANE_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define PIXVANE_SANITIZED
#endif

namespace {
thread_local int newCalls = 0;
thread_local int mallocCalls = 0;
}  // namespace

namespace pixvane::test {
int new_calls() { return newCalls; }
int malloc_calls() { return mallocCalls; }
}  // namespace pixvane::test

// Inlined, GCC takes the pair of new and free() for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++newCalls;
#ifdef PIXVANE_SANITIZED
    ++mallocCalls;
#endif
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

#ifndef PIXVANE_SANITIZED
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
    ++mallocCalls;
    return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    ++mallocCalls;
    return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
    ++mallocCalls;
    return __libc_realloc(memory, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    ++mallocCalls;
    return __libc_memalign(alignment, size);
}
}
#endif
