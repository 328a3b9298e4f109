// Files through the system calls: read whole, and written whole or not at all.
// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <array>
#include <cstdio>
#include <new>
#include <optional>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/linux_platform.h"

namespace pixvane {
namespace {

bool usable(const std::string& path) { return !path.empty() && path.find('\0') == std::string::npos; }

/// The folder part of a path, with its slash; empty for a bare name.
std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

/// Follows symbolic links by hand, since what the last of them points at need not exist yet.
std::optional<std::string> follow_links(std::string path) {
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        std::array<char, 4096> target;
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) return path;  // no link, or nothing there: what follows finds out
        if (length == 0 || static_cast<std::size_t>(length) == target.size()) return std::nullopt;
        const std::string next(target.data(), static_cast<std::size_t>(length));
        path = next.front() == '/' ? next : folder_of(path) + next;
    }
    return std::nullopt;
}

/// A new file with a name of its own in `folder`, gone again unless it is renamed to its place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& folder) {
        for (int attempt = 0; attempt < 16 && !file_.valid(); ++attempt) {
            std::uint64_t random = 0;
            if (::getrandom(&random, sizeof random, GRND_NONBLOCK) != sizeof random)
                random = static_cast<std::uint64_t>(::getpid()) << 32 | static_cast<std::uint64_t>(attempt);
            std::array<char, 40> name;
            std::snprintf(name.data(), name.size(), ".pixvane-%016llx.tmp",
                          static_cast<unsigned long long>(random));
            path_ = folder + name.data();
            file_ = FileDescriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
            if (!file_.valid() && errno != EEXIST && errno != EINTR) break;
        }
        created_ = file_.valid();
    }
    ~TemporaryFile() {
        if (created_) ::unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool created() const { return created_; }

    bool write(ByteSpan bytes) {
        return write_fully(file_.get(), bytes.data(), bytes.size()) && ::fsync(file_.get()) == 0;
    }

    bool take_permissions(const struct stat& old) {
        // Who may not give the file away leaves it his own; its permissions he can always keep.
        struct stat mine {};
        if (::fstat(file_.get(), &mine) != 0) return false;
        if ((mine.st_uid != old.st_uid || mine.st_gid != old.st_gid) &&
            ::fchown(file_.get(), old.st_uid, old.st_gid) != 0)
            return ::fchmod(file_.get(), old.st_mode & 0777) == 0;
        return ::fchmod(file_.get(), old.st_mode & 07777) == 0;
    }

    bool rename_to(const std::string& path) {
        if (!file_.close() || ::rename(path_.c_str(), path.c_str()) != 0) return false;
        created_ = false;
        return true;
    }

private:
    std::string path_;
    FileDescriptor file_;
    bool created_ = false;
};

/// Makes a rename in the folder last. The new file is in place already, so there is nothing to answer if
/// this fails, as it does on file systems that sync no folders.
void sync_folder(const std::string& folder) {
    const FileDescriptor file(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file.valid()) ::fsync(file.get());
}

class LinuxFileSystem final : public FileSystem {
public:
    bool read(const std::string& path, ByteBuffer& bytes) override {
        if (!usable(path)) return false;
        // Non-blocking, or opening a pipe would wait for somebody to write into it.
        const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        struct stat status {};
        if (!file.valid() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
        const auto size = static_cast<std::uint64_t>(status.st_size);
        // A file with holes may claim any size; memory that the machine doesn't have ends the process.
        if (size > linux_page_source().machine_memory() / 2) return false;
        try {
            ByteBuffer content(static_cast<std::size_t>(size));
            const std::ptrdiff_t got = read_fully(file.get(), content.data(), content.size());
            if (got < 0) return false;
            content.shrink(static_cast<std::size_t>(got));
            bytes = std::move(content);
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    bool write_whole(const std::string& path, ByteSpan bytes) override {
        if (!usable(path)) return false;
        const std::optional<std::string> target = follow_links(path);
        if (!target || target->back() == '/') return false;
        struct stat old {};
        const bool replaces = ::stat(target->c_str(), &old) == 0;
        if (!replaces && errno != ENOENT) return false;
        // A rename would replace a file that is closed to us as well: its permissions are asked here.
        if (replaces && (!S_ISREG(old.st_mode) || ::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS)))
            return false;

        const std::string folder = folder_of(*target);
        TemporaryFile temporary(folder);
        if (!temporary.created() || (replaces && !temporary.take_permissions(old)) ||
            !temporary.write(bytes) || !temporary.rename_to(*target))
            return false;
        sync_folder(folder);
        return true;
    }
};

}  // namespace

FileSystem& linux_file_system() {
    static auto* fileSystem = new LinuxFileSystem;
    return *fileSystem;
}

}  // namespace pixvane
