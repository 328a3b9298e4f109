// What a run over many pictures will read and write, found out before anything is done.
// SPDX-License-Identifier: MIT
#include "play_plan.h"

#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "failure.h"
#include "picture_file.h"
#include "text.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

/// A path by which two names of one file are told to be one, the file need not be there.
std::string identity(const fs::path& path) {
    std::error_code error;
    const fs::path absolute = fs::weakly_canonical(path, error);
    return error ? fs::absolute(path, error).lexically_normal().string() : absolute.string();
}

/// The ending of a result that is to be what its source is: the source's own where that fits what is inside.
std::string ending_like(const std::string& source) {
    struct Written {
        const char* format;
        const char* ending;
        std::int32_t type;
    };
    constexpr Written kWritten[] = {
        {"BMP", ".bmp", 0}, {"JPEG", ".jpg", 1}, {"GIF", ".gif", 2}, {"TIFF", ".tif", 3}, {"PNG", ".png", 4}};
    const std::optional<std::int32_t> named = type_of_ending(source);
    const std::string format = format_of(source);
    // Nothing in it that is known: a file that is not there or is broken, which its own task will tell.
    if (format.empty() && named) return fs::path(source).extension().string();
    for (const Written& each : kWritten)
        if (format == each.format)
            return named == each.type ? fs::path(source).extension().string() : each.ending;
    return ".png";
}

}  // namespace

std::vector<PlayTask> plan_play(const std::vector<std::string>& sources, const std::string& folder,
                                const std::string& format) {
    std::set<std::string> sourceFiles;
    for (const std::string& source : sources) sourceFiles.insert(identity(source));

    std::map<std::string, std::string> resultOf;  // the source of each result so far
    std::vector<PlayTask> tasks;
    for (const std::string& source : sources) {
        const std::string ending = format.empty() ? ending_like(source) : "." + format;
        const fs::path out = fs::path(folder) / (fs::path(source).stem().string() + ending);
        const std::string file = identity(out);
        const auto [other, isNew] = resultOf.emplace(file, source);
        if (!isNew)
            throw UsageFailure(concat("the results of ", in_quotes(other->second), " and ", in_quotes(source),
                                      " would both be ", in_quotes(out.string())));
        if (sourceFiles.count(file) != 0)
            throw UsageFailure(concat("the result of ", in_quotes(source), " would replace the source ",
                                      in_quotes(out.string())));
        tasks.push_back({source, out.string(), save_type(out.string())});
    }
    return tasks;
}

}  // namespace cli
