// The Linux side of the ports: files whole or not at all, and blocks of memory.
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>

#include "codecs/temporary_folder.h"
#include "platform/linux/linux_platform.h"

namespace pixvane::test {
namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<std::uint8_t>;

bool write(const std::string& path, const Bytes& bytes) {
    return linux_file_system().write_whole(path, bytes);
}

bool read(const std::string& path, Bytes& bytes) {
    ByteBuffer buffer;
    if (!linux_file_system().read(path, buffer)) return false;
    bytes.assign(buffer.data(), buffer.data() + buffer.size());
    return true;
}

mode_t mode_of(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// A folder with the file that must stay as it is.
struct OldFile : TemporaryFolder {
    const std::string file = *this / "file";
    OldFile() { write_content(file, "old"); }
    ~OldFile() {
        EXPECT_EQ(content_of(file), (Bytes{'o', 'l', 'd'}));
        EXPECT_EQ(names(), std::vector<std::string>{"file"});
    }
};

const Bytes kOld{'o', 'l', 'd'};
const Bytes kNew(100'000, 'n');

TEST(LinuxFiles, RoundTripKeepsBytesAndPermissions) {
    const TemporaryFolder folder;
    const std::string path = folder / "picture \xC3\xA9.png";
    Bytes bytes;
    const mode_t mask = umask(027);
    EXPECT_TRUE(write(path, kOld));
    umask(mask);
    EXPECT_EQ(mode_of(path), 0640u);
    EXPECT_TRUE(read(path, bytes));
    EXPECT_EQ(bytes, kOld);

    ASSERT_EQ(chmod(path.c_str(), 0604), 0);
    EXPECT_TRUE(write(path, kNew));
    EXPECT_EQ(mode_of(path), 0604u);
    EXPECT_TRUE(read(path, bytes));
    EXPECT_EQ(bytes, kNew);
    EXPECT_TRUE(write(path, {}));
    EXPECT_TRUE(read(path, bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(folder.names().size(), 1u);
}

TEST(LinuxFiles, BareNamesLieInTheCurrentFolder) {
    const TemporaryFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    EXPECT_TRUE(write("bare", kOld));
    fs::current_path(before);
    EXPECT_EQ(content_of(folder / "bare"), kOld);
}

TEST(LinuxFiles, LinksStayAndTheirTargetsAreWritten) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "there");
    write_content(folder / "there/real", "old");
    fs::create_symlink("there/real", folder / "link");
    fs::create_symlink("link", folder / "second");
    fs::create_symlink(folder / "there/fresh", folder / "dangling");
    fs::create_symlink("round", folder / "round");
    EXPECT_TRUE(write(folder / "second", kNew));
    EXPECT_TRUE(write(folder / "dangling", kNew));
    EXPECT_FALSE(write(folder / "round", kNew));
    for (const char* name : {"link", "second", "dangling", "round"})
        EXPECT_TRUE(fs::is_symlink(folder / name));
    EXPECT_EQ(content_of(folder / "there/real"), kNew);
    EXPECT_EQ(content_of(folder / "there/fresh"), kNew);
}

TEST(LinuxFiles, OnlyRegularFilesCount) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_directory(folder / "folder");
    Bytes bytes;
    for (const std::string& path :
         {folder / "pipe", folder / "folder", folder / "folder/", folder / "missing",
          std::string("/dev/full"), std::string("/dev/zero"), std::string(), folder / std::string("a\0b", 3)})
        EXPECT_FALSE(read(path, bytes)) << path;
    for (const std::string& path : {folder / "pipe", folder / "folder", folder / "folder/",
                                    std::string("/dev/full"), std::string(), folder / std::string("a\0b", 3)})
        EXPECT_FALSE(write(path, kNew)) << path;
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"folder", "pipe"}));
}

TEST(LinuxFiles, NoPlaceForTheFile) {
    const OldFile folder;
    for (const std::string& path :
         {folder / "file/below", folder / "missing/below", std::string("/proc/pixvane-test")})
        EXPECT_FALSE(write(path, kNew)) << path;
}

TEST(LinuxFiles, ClosedFilesAndFoldersAreNotWritten) {
    if (geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
    const OldFile folder;
    for (const auto& [path, closed, open] :
         {std::tuple{folder.file, 0400u, 0600u}, {folder.path(), 0500u, 0700u}}) {
        ASSERT_EQ(chmod(path.c_str(), closed), 0);
        EXPECT_FALSE(write(folder.file, kNew));
        ASSERT_EQ(chmod(path.c_str(), open), 0);
    }
}

/// Fails in the middle of the bytes, as a full disk does.
TEST(LinuxFiles, AWriteThatBreaksOffLeavesTheOldFile) {
    const OldFile folder;
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 4096;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_FALSE(write(folder.file, kNew));
    EXPECT_FALSE(write(folder / "fresh", kNew));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
}

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

}  // namespace
}  // namespace pixvane::test
