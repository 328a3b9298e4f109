// Picture files as the commands meet them: their names checked before work, reasons told after.
// SPDX-License-Identifier: MIT
#include "picture_file.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "failure.h"
#include "text.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const char* what, const std::string& path, const std::string& why) {
    throw FileFailure(concat(what, " ", in_quotes(path), ": ", why));
}

std::string reason(int number) { return std::strerror(number); }

}  // namespace

void check_readable(const std::string& path) {
    const char* what = "can't read";
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) fail(what, path, reason(ENOENT));
    if (error) fail(what, path, error.message());
    if (fs::is_directory(status)) fail(what, path, reason(EISDIR));
    // Opening anything but a plain file may wait, or take away what is in it.
    if (!fs::is_regular_file(status)) fail(what, path, "not a plain file");
    errno = 0;
    if (!std::ifstream(path, std::ios::binary)) fail(what, path, reason(errno));
}

void check_writable(const std::string& path) {
    const char* what = "can't write";
    std::error_code error;
    fs::path folder = fs::path(path).parent_path();
    if (folder.empty()) folder = ".";
    const fs::file_status status = fs::status(folder, error);
    if (status.type() == fs::file_type::not_found) fail(what, path, "its folder does not exist");
    if (error) fail(what, path, error.message());
    if (!fs::is_directory(status)) fail(what, path, reason(ENOTDIR));
    if (fs::is_directory(path, error)) fail(what, path, reason(EISDIR));
}

std::optional<std::int32_t> type_of_ending(const std::string& path) {
    struct Ending {
        const char* text;
        std::int32_t type;
    };
    constexpr Ending kEndings[] = {{".bmp", 0}, {".jpg", 1},  {".jpeg", 1}, {".gif", 2},
                                   {".tif", 3}, {".tiff", 3}, {".png", 4}};
    std::string ending = fs::path(path).extension().string();
    for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (const Ending& each : kEndings)
        if (ending == each.text) return each.type;
    return std::nullopt;
}

std::int32_t save_type(const std::string& path) {
    if (const auto type = type_of_ending(path)) return *type;
    throw UsageFailure(concat(in_quotes(path), " must end in .bmp .jpg .jpeg .gif .tif .tiff or .png"));
}

void load(pixvane::IPixvane& control, const std::string& path) {
    check_readable(path);
    if (!control.LoadImage(path)) fail("can't read", path, "not a picture that can be decoded");
}

std::string format_of(const std::string& path) {
    char bytes[16] = {};
    std::ifstream file(path, std::ios::binary);
    file.read(bytes, sizeof bytes);
    const std::string_view head(bytes, static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    const auto starts = [&](std::string_view mark) { return head.starts_with(mark); };
    using namespace std::string_view_literals;
    if (starts("\x89PNG\r\n\x1A\n"sv)) return "PNG";
    if (starts("\xFF\xD8\xFF"sv)) return "JPEG";
    if (starts("GIF87a"sv) || starts("GIF89a"sv)) return "GIF";
    if (starts("II*\0"sv) || starts("MM\0*"sv) || starts("II+\0"sv) || starts("MM\0+"sv)) return "TIFF";
    if (starts("RIFF"sv) && head.size() >= 12 && head.substr(8, 4) == "WEBP") return "WebP";
    if (starts("BM"sv)) return "BMP";
    if (starts("\0\0\1\0"sv)) return "ICO";
    return {};
}

}  // namespace cli
