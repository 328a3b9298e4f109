// The benchmark's results as a table for people and as CSV.
// SPDX-License-Identifier: MIT
#include "report.h"

#include <pixvane/pixvane.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace bench {
namespace {

/// A line of /proc/cpuinfo, without its key; empty if there is none.
std::string processor_info(const std::string& key) {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, key.size(), key) != 0) continue;
        const std::size_t colon = line.find(": ");
        if (colon != std::string::npos) return line.substr(colon + 2);
    }
    return {};
}

/// The vector instructions that the kernels can use, as far as this machine has them.
std::string instruction_set() {
    std::istringstream words(processor_info("flags"));
    const std::set<std::string> flags{std::istream_iterator<std::string>(words), {}};
    std::string found;
    for (const char* flag : {"sse4_1", "avx2", "avx512f", "avx512bw", "avx512vbmi"})
        if (flags.count(flag) != 0) found += std::string(found.empty() ? "" : " ") + flag;
    return found.empty() ? "no vector instructions known here" : found;
}

/// Rounded as it is shown, so that the verdict never contradicts the figures beside it.
bool is_met(const Result& result) { return result.cost.median < *result.goal + 0.005; }

}  // namespace

void print_table(const std::vector<Result>& results, const Setting& setting) {
    std::printf("Pixvane %s, %d thread%s, %d rounds; %s: %s\n", pixvane_version(), setting.threads,
                setting.threads == 1 ? "" : "s", setting.rounds, processor_info("model name").c_str(),
                instruction_set().c_str());
    std::printf("Costs as multiples of a memcpy of 3840 x 2160 pixels, here %.2f ms\n\n",
                setting.unitSeconds * 1e3);
    std::size_t width = 0;
    for (const Result& result : results) width = std::max(width, result.label.size());
    const int label = static_cast<int>(width);
    std::printf("%-*s  %7s  %6s  %-6s  %-15s", label, "command", "cost", "goal", "", "quartiles");
    if (setting.compared > 0) std::printf("  %2d threads  part", setting.compared);
    std::printf("  file or rate\n");
    for (const Result& result : results) {
        std::printf("%-*s  %7.2f  ", label, result.label.c_str(), result.cost.median);
        if (result.goal)
            std::printf("%6.2f  %-6s", *result.goal, is_met(result) ? "met" : "missed");
        else
            std::printf("%6s  %-6s", "-", "");
        std::printf("  %6.2f - %6.2f", result.cost.low, result.cost.high);
        if (result.compared)
            std::printf("  %10.2f  %4.2f", result.compared->median,
                        result.compared->median / result.cost.median);
        if (result.fileBytes) std::printf("  %.1f MB", static_cast<double>(*result.fileBytes) / 1e6);
        if (result.framesPerSecond) std::printf("  %.0f frames a second", *result.framesPerSecond);
        std::printf("\n");
    }
}

void print_csv(const std::vector<Result>& results, const Setting& setting) {
    std::printf(
        "command,cost,goal,met,lower_quartile,upper_quartile,file_bytes,frames_per_second,memcpy_ms,"
        "cost_compared\n");
    for (const Result& result : results) {
        std::printf("\"%s\",%.4f,", result.label.c_str(), result.cost.median);
        if (result.goal)
            std::printf("%.2f,%s,", *result.goal, is_met(result) ? "yes" : "no");
        else
            std::printf(",,");
        std::printf("%.4f,%.4f,", result.cost.low, result.cost.high);
        if (result.fileBytes) std::printf("%ju", *result.fileBytes);
        std::printf(",");
        if (result.framesPerSecond) std::printf("%.1f", *result.framesPerSecond);
        std::printf(",%.4f,", setting.unitSeconds * 1e3);
        if (result.compared) std::printf("%.4f", result.compared->median);
        std::printf("\n");
    }
}

}  // namespace bench
