// Blocks of memory from the kernel, and what a forked child finds.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstring>

#include "core/parallel_rows.h"
#include "platform/linux/linux_platform.h"

namespace pixvane::test {
namespace {

TEST(LinuxMemory, BlocksOfAllSizesAreAlignedAndUsable) {
    PageSource& source = linux_page_source();
    for (const std::size_t size : {std::size_t{4096}, std::size_t{1} << 20, (std::size_t{8} << 20) - 4096,
                                   std::size_t{8} << 20, (std::size_t{33} << 20) + 4096}) {
        auto* block = static_cast<std::uint8_t*>(source.allocate(size));
        ASSERT_NE(block, nullptr);
        const std::uintptr_t alignment = size >= std::size_t{8} << 20 ? 2 << 20 : 64;
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0u);
        std::memset(block, 1, size);
        source.release(block, size);
    }
    EXPECT_EQ(source.allocate(SIZE_MAX / 2 + 1), nullptr);
    EXPECT_EQ(source.allocate(std::size_t{1} << 60), nullptr);
    EXPECT_GE(source.machine_memory(), std::size_t{64} << 20);
    EXPECT_LE(source.machine_memory(), static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) *
                                           static_cast<std::size_t>(sysconf(_SC_PAGESIZE)));
}

std::int32_t rows_done() {
    std::atomic<std::int32_t> rows{0};
    parallel_rows(1000, 1e6, [&](std::int32_t first, std::int32_t last) { rows += last - first; });
    return rows;
}

TEST(LinuxFork, AChildWorksWithThreadsOfItsOwn) {
    install_fork_handler();
    install_fork_handler();
    const WorkerThreads threads;
    set_worker_threads(3);
    ASSERT_EQ(rows_done(), 1000);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        alarm(20);  // a child that waits for the parent's threads waits for ever
        _exit(rows_done() == 1000 && worker_threads() == 3 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(rows_done(), 1000);
}

}  // namespace
}  // namespace pixvane::test
