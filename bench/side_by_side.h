// Two pieces of work timed in turn, so that a change of the machine's speed meets both.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
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

/// Runs both works `rounds` times in turn after one warm-up and prints their medians and the median of the ratios.
template <typename Ours, typename Peer>
void compare(const char* title, int rounds, const char* oursName, Ours&& ours, const char* peerName, Peer&& peer) {
    std::vector<double> oursTimes;
    std::vector<double> peerTimes;
    std::vector<double> ratios;
    ours();
    peer();
    for (int i = 0; i < rounds; ++i) {
        oursTimes.push_back(microseconds(ours));
        peerTimes.push_back(microseconds(peer));
        ratios.push_back(oursTimes.back() / peerTimes.back());
    }
    std::printf("%-34s %s %9.1f us   %s %9.1f us   ratio %.2f\n", title, oursName, medianOf(oursTimes), peerName,
                medianOf(peerTimes), medianOf(ratios));
}

}  // namespace bench
