// Two pieces of work timed in turn, so that a change of the machine's speed meets both, and the row that tells of them.
//
// What scripts/bench says by the environment: TAVRO_BENCH_RATIOS, a file to which every row is added as name, ours,
// peer (microseconds) and ratio, between tabs; TAVRO_BENCH_PART, the first word of the names in place of the program's;
// and TAVRO_BENCH_ROW, the only row to measure.
#pragma once

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double medianOf(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Microseconds that one call of the work takes.
template <typename Work>
double microseconds(Work&& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

/// The name of a row, the same in every run: the part or program, and the title; a title met again has its number.
inline std::string nameOfRow(const std::string& title) {
    static std::map<std::string, int> met;
    const char* const part = std::getenv("TAVRO_BENCH_PART");
    std::string name = part != nullptr ? part : program_invocation_short_name;
    name += ": " + title.substr(std::min(title.find_first_not_of(' '), title.size()));
    const int number = ++met[name];
    return number == 1 ? name : name + " (" + std::to_string(number) + ")";
}

/// Whether the row is to be measured in this run.
inline bool isWanted(const std::string& row) {
    const char* const only = std::getenv("TAVRO_BENCH_ROW");
    return only == nullptr || row == only;
}

/// Adds a row, its times in microseconds, to the file that scripts/bench makes its table of.
inline void addRow(const std::string& row, double ours, double peer, double ratio) {
    const char* const path = std::getenv("TAVRO_BENCH_RATIOS");
    std::FILE* const file = path != nullptr ? std::fopen(path, "ae") : nullptr;
    if (file != nullptr) {
        std::fprintf(file, "%s\t%.1f\t%.1f\t%.3f\n", row.c_str(), ours, peer, ratio);
        std::fclose(file);
    }
}

/// Runs both works `rounds` times in turn after one warm-up and prints their medians and the median of the ratios. Of a
/// row that is not wanted the warm-up alone is run, since what comes later may stand on what the works leave.
template <typename Ours, typename Peer>
void compare(const char* title, int rounds, const char* oursName, Ours&& ours, const char* peerName, Peer&& peer) {
    const std::string row = nameOfRow(std::string(title) + ", " + oursName + "/" + peerName);
    std::vector<double> oursTimes;
    std::vector<double> peerTimes;
    std::vector<double> ratios;
    ours();
    peer();
    if (!isWanted(row)) {
        return;
    }
    for (int i = 0; i < rounds; ++i) {
        oursTimes.push_back(microseconds(ours));
        peerTimes.push_back(microseconds(peer));
        ratios.push_back(oursTimes.back() / peerTimes.back());
    }
    std::printf("%-34s %s %9.1f us   %s %9.1f us   ratio %.2f\n", title, oursName, medianOf(oursTimes), peerName,
                medianOf(peerTimes), medianOf(ratios));
    addRow(row, medianOf(oursTimes), medianOf(peerTimes), medianOf(ratios));
}

}  // namespace bench
