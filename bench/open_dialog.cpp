// From the start of a process to the first frame of its print dialog, for two commands in turn.
//
// Each command prints "first-frame MICROSECONDS" (of the monotonic clock) when its window is on the screen, and may
// print further lines "NAME MICROSECONDS" before; their medians are printed as the split of the time.
//
// usage: bench_open_dialog ROUNDS -- COMMAND... -- PEER COMMAND...

#include "bench/side_by_side.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

extern char** environ;

namespace {

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
    if (commands.size() != 2 || commands[0].empty() || commands[1].empty()) {
        std::fprintf(stderr, "usage: %s ROUNDS -- COMMAND... -- PEER COMMAND...\n", argv[0]);
        return 2;
    }
    for (auto& command : commands) {
        command.push_back(nullptr);
    }
    const int rounds = std::atoi(argv[1]);
    std::map<std::string, std::vector<double>> split;
    std::vector<std::string> order;
    std::vector<double> ours;
    std::vector<double> peer;
    std::vector<double> ratios;
    for (int i = -1; i < rounds; ++i) {
        const Marks marks = run(commands[0]);
        const Marks peerMarks = run(commands[1]);
        if (i < 0) {
            continue;  // the warm-up
        }
        for (const auto& [name, time] : marks) {
            if (split[name].empty()) {
                order.push_back(name);
            }
            split[name].push_back(time);
        }
        ours.push_back(marks.back().second);
        peer.push_back(peerMarks.back().second);
        ratios.push_back(ours.back() / peer.back());
    }
    double before = 0;
    for (const std::string& name : order) {
        const double at = bench::medianOf(split[name]);
        std::printf("  %-14s at %7.1f ms  (+%.1f)\n", name.c_str(), at / 1000, (at - before) / 1000);
        before = at;
    }
    std::printf("start to first frame: ours %.1f ms   peer %.1f ms   ratio %.2f   (%d rounds)\n",
                bench::medianOf(ours) / 1000, bench::medianOf(peer) / 1000, bench::medianOf(ratios), rounds);
    return 0;
}
