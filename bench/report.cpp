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

std::string threads_text(int count) { return count == 1 ? "one thread" : std::to_string(count) + " threads"; }

/// What may stand beside a row: the size of its file, or the rate of its frames.
std::string remark(const Result& result) {
    char text[64] = "";
    if (result.fileBytes)
        std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(*result.fileBytes) / 1e6);
    if (result.framesPerSecond)
        std::snprintf(text, sizeof text, "%.0f frames a second", *result.framesPerSecond);
    return text;
}

void print_csv_row(const Result& result, double unitSeconds) {
    std::printf("\"%s\",%.4f,", result.label.c_str(), result.cost.median);
    if (result.goal)
        std::printf("%.2f,%s,", *result.goal, is_met(result) ? "yes" : "no");
    else
        std::printf(",,");
    std::printf("%.4f,%.4f,", result.cost.low, result.cost.high);
    if (result.fileBytes) std::printf("%ju", *result.fileBytes);
    std::printf(",");
    if (result.framesPerSecond) std::printf("%.1f", *result.framesPerSecond);
    std::printf(",%.4f,", unitSeconds * 1e3);
    if (result.compared) std::printf("%.4f", result.compared->median);
    std::printf("\n");
}

}  // namespace

Report::Report(const Setting& setting, bool csv, std::size_t labelWidth)
    : setting_(setting), csv_(csv), labelWidth_(static_cast<int>(std::max<std::size_t>(labelWidth, 22))) {
    if (csv) {
        std::printf(
            "command,cost,goal,met,lower_quartile,upper_quartile,file_bytes,frames_per_second,memcpy_ms,"
            "cost_compared\n");
        return;
    }
    std::printf("Pixvane %s, %s, %d rounds; %s: %s\n", pixvane_version(),
                threads_text(setting.threads).c_str(), setting.rounds, processor_info("model name").c_str(),
                instruction_set().c_str());
    std::printf("Costs as multiples of a memcpy of 3840 x 2160 pixels\n\n");
    if (setting.compared > 0)
        std::printf("| %-*s | %10s | %10s | part left |\n|---|---|---|---|\n", labelWidth_, "command",
                    threads_text(setting.threads).c_str(), threads_text(setting.compared).c_str());
    else
        std::printf("| %-*s |   cost |   goal |        | %16s | file or rate |\n|---|---|---|---|---|---|\n",
                    labelWidth_, "command", "quartiles");
}

void Report::add(const Result& result, double unitSeconds) {
    unitSeconds_.push_back(unitSeconds);
    if (csv_)
        print_csv_row(result, unitSeconds);
    else
        add_to_table(result);
    std::fflush(stdout);
}

void Report::add_to_table(const Result& result) const {
    if (result.compared) {
        std::printf("| %-*s | %10.2f | %10.2f | %9.2f |\n", labelWidth_, result.label.c_str(),
                    result.cost.median, result.compared->median,
                    result.compared->median / result.cost.median);
        return;
    }
    std::printf("| %-*s | %6.2f | ", labelWidth_, result.label.c_str(), result.cost.median);
    if (result.goal)
        std::printf("%6.2f | %-6s", *result.goal, is_met(result) ? "met" : "missed");
    else
        std::printf("%6s | %-6s", "", "");
    std::printf(" | %6.2f to %6.2f | %s |\n", result.cost.low, result.cost.high, remark(result).c_str());
}

void Report::finish() const {
    if (csv_ || unitSeconds_.empty()) return;
    std::vector<double> sorted = unitSeconds_;
    std::sort(sorted.begin(), sorted.end());
    std::printf("\nmemcpy took %.2f ms, in the middle of %.2f to %.2f\n", sorted[sorted.size() / 2] * 1e3,
                sorted.front() * 1e3, sorted.back() * 1e3);
}

}  // namespace bench
