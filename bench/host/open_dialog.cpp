// From the start of a process to the first frame of its print dialog, for ours and its peers in turn.
//
// A window that closes leaves work behind, to the display, to the desktop's services and to its own helpers, and one
// that opens meanwhile would wait for that. So each start has a pause before it, and each round an order of its own,
// the same in each run.
//
// Each command prints "first-frame MICROSECONDS" (of the monotonic clock) when its window is on the screen, and may
// print further lines "NAME MICROSECONDS"; the medians of ours are printed as the split of its time.
//
// usage: bench_open_dialog ROUNDS -- COMMAND... [-- PEER COMMAND...]...

#include "bench/side_by_side.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <thread>

extern char** environ;

namespace {

constexpr std::chrono::milliseconds kPause(100);

using Marks = std::vector<std::pair<std::string, double>>;  // name, microseconds since the start of the process

double now() {
    return std::chrono::duration<double, std::micro>(bench::Clock::now().time_since_epoch()).count();
}

/// Runs the command and reads its marks.
Marks run(const std::vector<char*>& command) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        std::exit(1);
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    const double start = now();
    pid_t child = 0;
    if (posix_spawnp(&child, command[0], &actions, nullptr, command.data(), environ) != 0) {
        std::fprintf(stderr, "%s: cannot be started\n", command[0]);
        std::exit(1);
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    FILE* output = fdopen(ends[0], "r");
    Marks marks;
    char name[64];
    double time = 0;
    while (std::fscanf(output, "%63s %lf", name, &time) == 2) {
        marks.emplace_back(name, time - start);
    }
    std::fclose(output);
    waitpid(child, nullptr, 0);
    if (marks.empty()) {
        std::fprintf(stderr, "%s: told nothing of its first frame\n", command[0]);
        std::exit(1);
    }
    return marks;
}

double firstFrameIn(const Marks& marks) {
    const auto found = std::ranges::find(marks, "first-frame", &Marks::value_type::first);
    return found == marks.end() ? marks.back().second : found->second;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::vector<char*>> commands;
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0) {
            commands.emplace_back();
        } else if (!commands.empty()) {
            commands.back().push_back(argv[i]);
        }
    }
    const bool isUsable = std::ranges::none_of(commands, [](const auto& command) { return command.empty(); });
    if (commands.empty() || !isUsable) {
        std::fprintf(stderr, "usage: %s ROUNDS -- COMMAND... [-- PEER COMMAND...]...\n", argv[0]);
        return 2;
    }
    for (auto& command : commands) {
        command.push_back(nullptr);
    }
    const int rounds = std::atoi(argv[1]);
    std::map<std::string, std::vector<double>> split;
    std::vector<std::string> order;
    std::vector<std::vector<double>> times(commands.size());
    std::vector<std::size_t> turns(commands.size());
    std::iota(turns.begin(), turns.end(), 0);
    std::mt19937 random;  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in each run
    for (int i = -1; i < rounds; ++i) {
        std::ranges::shuffle(turns, random);
        for (const std::size_t each : turns) {
            std::this_thread::sleep_for(kPause);
            const Marks marks = run(commands[each]);
            if (i < 0) {
                continue;  // the warm-up
            }
            times[each].push_back(firstFrameIn(marks));
            for (const auto& [name, time] : each == 0 ? marks : Marks()) {
                if (split[name].empty()) {
                    order.push_back(name);
                }
                split[name].push_back(time);
            }
        }
    }
    double before = 0;
    for (const std::string& name : order) {
        const double at = bench::medianOf(split[name]);
        std::printf("    %-14s at %7.1f ms  (+%.1f)\n", name.c_str(), at / 1000, (at - before) / 1000);
        before = at;
    }
    std::printf("  start to first frame, median of %d:  ours %.1f ms\n", rounds, bench::medianOf(times[0]) / 1000);
    for (std::size_t each = 1; each < commands.size(); ++each) {
        std::vector<double> ratios;
        for (std::size_t i = 0; i < times[0].size(); ++i) {
            ratios.push_back(times[0][i] / times[each][i]);
        }
        const char* const slash = std::strrchr(commands[each][0], '/');
        const char* const name = slash == nullptr ? commands[each][0] : slash + 1;
        std::printf("    %-24s %7.1f ms   ratio %.2f\n", name, bench::medianOf(times[each]) / 1000,
                    bench::medianOf(ratios));
        bench::addRow(bench::nameOfRow(name), bench::medianOf(times[0]), bench::medianOf(times[each]),
                      bench::medianOf(ratios));
    }
    return 0;
}
