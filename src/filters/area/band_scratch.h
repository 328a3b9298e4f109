// Memory that the bands of one picture work in.
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace pixvane::filters {

/// One block for each worker thread, got before the bands start, so that no band can fail for want of memory.
class BandScratch {
public:
    static constexpr std::size_t kAlignment = 64;

    /// Blocks of `bytes` bytes each; throws std::bad_alloc.
    explicit BandScratch(std::size_t bytes);

    /// A block for as long as this lives.
    class Block {
    public:
        explicit Block(BandScratch& owner) : owner_(owner), data_(owner.take()) {}
        ~Block() { owner_.give_back(data_); }
        Block(const Block&) = delete;
        Block& operator=(const Block&) = delete;
        std::byte* data() const { return data_; }

    private:
        BandScratch& owner_;
        std::byte* data_;
    };

private:
    struct Free {
        void operator()(std::byte* data) const { ::operator delete[](data, std::align_val_t{kAlignment}); }
    };

    std::byte* take();
    void give_back(std::byte* block);

    std::vector<std::unique_ptr<std::byte, Free>> blocks_;
    std::mutex mutex_;
    std::condition_variable returned_;
    std::vector<std::byte*> unused_;
};

/// Cuts arrays off a block, one after the other.
class ScratchCutter {
public:
    explicit ScratchCutter(std::byte* at) : at_(at) {}

    template <class T>
    T* cut(std::size_t count) {
        T* array = reinterpret_cast<T*>(at_);
        at_ += bytes<T>(count);
        return array;
    }

    /// What an array takes; each one starts aligned.
    template <class T>
    static constexpr std::size_t bytes(std::size_t count) {
        constexpr std::size_t unit = BandScratch::kAlignment;
        return (count * sizeof(T) + unit - 1) / unit * unit;
    }

private:
    std::byte* at_;
};

}  // namespace pixvane::filters
