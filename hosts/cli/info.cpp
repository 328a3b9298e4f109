// pixvane info IN [--json]
// SPDX-License-Identifier: MIT
#include <cinttypes>
#include <cstdio>
#include <filesystem>

#include "commands.h"
#include "failure.h"
#include "picture_file.h"
#include "pixvane/pixvane.hpp"
#include "text.h"

namespace cli {
namespace {

struct Luminance {
    int darkest = 0;
    int brightest = 0;
    double mean = 0;
};

Luminance luminance_of(const std::vector<std::int32_t>& histogram) {
    Luminance luminance;
    double pixels = 0, sum = 0;
    for (std::size_t i = 0; i < histogram.size(); ++i) {
        if (histogram[i] == 0) continue;
        if (pixels == 0) luminance.darkest = static_cast<int>(i);
        luminance.brightest = static_cast<int>(i);
        pixels += histogram[i];
        sum += static_cast<double>(i) * histogram[i];
    }
    luminance.mean = pixels > 0 ? sum / pixels : 0;
    return luminance;
}

struct Info {
    std::string file;
    std::string format;
    std::uint64_t bytes = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t frames = 0;
    Luminance luminance;
};

Info info_of(const std::string& path) {
    pixvane::IPixvane control;
    load(control, path);
    std::error_code error;
    const std::uintmax_t bytes = std::filesystem::file_size(path, error);
    return {path,
            format_of(path),
            error ? 0 : bytes,
            control.ImageWidth(),
            control.ImageHeight(),
            control.FramesCount(),
            luminance_of(control.GetLHistogram())};
}

void print_json(const Info& info) {
    std::printf("{\n");
    std::printf("  \"file\": %s,\n", json_string(info.file).c_str());
    std::printf("  \"format\": %s,\n", info.format.empty() ? "null" : json_string(info.format).c_str());
    std::printf("  \"bytes\": %" PRIu64 ",\n", info.bytes);
    std::printf("  \"width\": %" PRId32 ",\n", info.width);
    std::printf("  \"height\": %" PRId32 ",\n", info.height);
    std::printf("  \"frames\": %" PRId32 ",\n", info.frames);
    std::printf("  \"luminance\": {\"darkest\": %d, \"brightest\": %d, \"mean\": %.3f}\n",
                info.luminance.darkest, info.luminance.brightest, info.luminance.mean);
    std::printf("}\n");
}

void print_text(const Info& info) {
    const double megapixels = static_cast<double>(info.width) * info.height / 1e6;
    std::printf("%s\n", info.file.c_str());
    std::printf("  format      %s\n", info.format.empty() ? "unknown" : info.format.c_str());
    std::printf("  size        %" PRId32 " x %" PRId32 " pixels", info.width, info.height);
    if (megapixels >= 0.1) std::printf(" (%.1f megapixels)", megapixels);
    std::printf("\n");
    std::printf("  frames      %" PRId32 "\n", info.frames);
    std::printf("  file        %s bytes\n", grouped_number(info.bytes).c_str());
    std::printf("  luminance   %d to %d, mean %.1f\n", info.luminance.darkest, info.luminance.brightest,
                info.luminance.mean);
}

}  // namespace

void run_info(const Arguments& arguments) {
    if (arguments.words.size() != 1)
        throw UsageFailure(arguments.words.empty() ? "needs a picture file" : "takes one picture file");
    const Info info = info_of(arguments.words[0]);
    if (arguments.has("--json"))
        print_json(info);
    else
        print_text(info);
}

}  // namespace cli
