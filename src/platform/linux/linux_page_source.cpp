// Memory from the kernel: big blocks on huge pages, and how much the machine has.
// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/linux_platform.h"

namespace pixvane {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
// Below this the last, partly used huge page would be too large a share of the block.
constexpr std::size_t kBigBlock = 4 * kHugePage;
constexpr std::align_val_t kAlignment{64};

std::size_t mapped_size(std::size_t size) { return (size + kHugePage - 1) / kHugePage * kHugePage; }

void* map_huge(std::size_t size) {
    // One huge page more than needed, so that an aligned stretch lies in it; the rest goes back.
    const std::size_t whole = size + kHugePage;
    void* mapped = ::mmap(nullptr, whole, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
    auto* const start = static_cast<std::uint8_t*>(mapped);
    const std::size_t before = (kHugePage - reinterpret_cast<std::uintptr_t>(start) % kHugePage) % kHugePage;
    if (before != 0) ::munmap(start, before);
    ::munmap(start + before + size, kHugePage - before);
    ::madvise(start + before, size, MADV_HUGEPAGE);
    return start + before;
}

std::string small_file(const std::string& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::array<std::uint8_t, 4096> bytes;
    const std::ptrdiff_t got = file.valid() ? read_fully(file.get(), bytes.data(), bytes.size()) : 0;
    return {reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::size_t>(std::max<std::ptrdiff_t>(got, 0))};
}

/// The number in a limit file of a control group; no limit if it holds none or isn't there.
std::uint64_t limit_in(const std::string& path) {
    const std::string text = small_file(path);
    if (text.empty() || text[0] < '0' || text[0] > '9') return std::numeric_limits<std::uint64_t>::max();
    return std::strtoull(text.c_str(), nullptr, 10);
}

/// The path after `prefix` in the process's list of control groups.
std::string group_path(const std::string& groups, const char* prefix) {
    const std::size_t found = groups.find(prefix);
    if (found == std::string::npos) return {};
    const std::size_t start = found + std::strlen(prefix);
    return groups.substr(start, groups.find('\n', start) - start);
}

/// The smallest limit from a control group up to the root of its tree.
std::uint64_t smallest_limit(const std::string& root, std::string group, const char* file) {
    std::uint64_t smallest = limit_in(root + "/" + file);
    while (group.size() > 1) {
        smallest = std::min(smallest, limit_in(root + group + "/" + file));
        group.resize(group.rfind('/') == std::string::npos ? 0 : group.rfind('/'));
    }
    return smallest;
}

std::size_t usable_memory() {
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    std::uint64_t memory = std::uint64_t{1} << 30;
    if (pages > 0 && pageSize > 0)
        memory = static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
    const std::string groups = small_file("/proc/self/cgroup");
    memory = std::min(memory, smallest_limit("/sys/fs/cgroup", group_path(groups, "0::"), "memory.max"));
    memory = std::min(memory, smallest_limit("/sys/fs/cgroup/memory", group_path(groups, ":memory:"),
                                             "memory.limit_in_bytes"));
    return static_cast<std::size_t>(std::min<std::uint64_t>(memory, std::numeric_limits<std::size_t>::max()));
}

class LinuxPageSource final : public PageSource {
public:
    void* allocate(std::size_t size) noexcept override {
        if (size < kBigBlock) return ::operator new(size, kAlignment, std::nothrow);
        if (size > std::numeric_limits<std::size_t>::max() / 2) return nullptr;
        return map_huge(mapped_size(size));
    }
    void release(void* block, std::size_t size) noexcept override {
        if (size < kBigBlock)
            ::operator delete(block, kAlignment);
        else
            ::munmap(block, mapped_size(size));
    }
    std::size_t machine_memory() const noexcept override { return memory_; }

private:
    const std::size_t memory_ = usable_memory();
};

}  // namespace

PageSource& linux_page_source() {
    // Never destroyed: bitmaps of static objects may be freed after it.
    static auto* source = new LinuxPageSource;
    return *source;
}

}  // namespace pixvane
