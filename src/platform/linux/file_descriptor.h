// An open file that closes itself, and reads and writes that survive interruptions.
// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace pixvane {

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    ~FileDescriptor() { close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    bool valid() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }
    /// False if the system reports a write that failed late.
    bool close() {
        if (descriptor_ < 0) return true;
        // Linux closes the descriptor even if it says EINTR; a second try could close somebody else's.
        return ::close(std::exchange(descriptor_, -1)) == 0 || errno == EINTR;
    }

private:
    int descriptor_ = -1;
};

// The kernel moves at most about 2 GiB in one call.
constexpr std::size_t kMostPerCall = std::size_t{1} << 30;

/// Reads until `size` bytes are there, or the end of the file; the number of bytes read, or -1.
inline std::ptrdiff_t read_fully(int descriptor, std::uint8_t* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = ::read(descriptor, bytes + done, std::min(size - done, kMostPerCall));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return -1;
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    return static_cast<std::ptrdiff_t>(done);
}

inline bool write_fully(int descriptor, const std::uint8_t* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = ::write(descriptor, bytes + done, std::min(size - done, kMostPerCall));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<std::size_t>(n);
    }
    return true;
}

}  // namespace pixvane
