// What becomes of the user's stores when a program that saves one is killed, and when the system refuses it something.
//
//   tavro-reliability kills ROUNDS     kill -9 at a random moment of saving, so many times a store
//   tavro-reliability faults           each call of the system that a save makes fails once, one after the other
//   tavro-reliability memory           each allocation, too, which takes minutes
//
// A store has afterwards what it had or what was saved, whole; what was reported as saved is there, and what was
// refused changed nothing. Nothing is left beside it. One line a store on standard output; 1 when anything broke.

#include "platform/files/litter.h"
#include "reliability/faults.h"
#include "reliability/stores.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// What a child process tells.
struct Told {
    int number;
    bool saved;
    bool isSaving;
    long calls;
};

class Lab {
public:
    Lab() {
        std::string pattern = (fs::temp_directory_path() / "tavro-reliability-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        putStoresInto(folder_);
        void* const shared = mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (shared == MAP_FAILED) {
            std::perror("tavro-reliability");
            std::exit(EXIT_FAILURE);
        }
        told_ = static_cast<volatile Told*>(shared);
    }
    ~Lab() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    Lab(const Lab&) = delete;
    Lab& operator=(const Lab&) = delete;

    volatile Told& told() { return *told_; }

    /// A process of its own, which knows of no earlier reading, and says nothing.
    static pid_t start(const std::function<void()>& work) {
        const pid_t child = fork();
        if (child == 0) {
            const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
            dup2(nowhere, STDERR_FILENO);
            work();
            _exit(0);
        }
        return child;
    }
    /// The signal that ended it; 0 for none.
    static int run(const std::function<void()>& work) {
        int status = 0;
        waitpid(start(work), &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    int numberOf(const UserStore& store) {
        told_->number = kDamaged;
        const int signal = run([&] { told_->number = store.read(); });
        return signal == 0 ? told_->number : kDamaged;
    }
    bool save(const UserStore& store, int number) {
        told_->saved = false;
        return run([&] { told_->saved = store.save(number); }) == 0 && told_->saved;
    }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_)) {
            if (entry.is_regular_file()) {
                names.push_back(fs::relative(entry.path(), folder_).string());
            }
        }
        std::ranges::sort(names);
        return names;
    }
    /// Makes what killed programs left an hour old: what is newer may still be in use, and nobody takes it away.
    void passAnHour() const {
        const fs::file_time_type then = fs::file_time_type::clock::now() - std::chrono::hours(1);
        for (const std::string& name : files()) {
            if (fs::path(name).filename().string().starts_with(kLitterPrefix)) {
                fs::last_write_time(folder_ + "/" + name, then);
            }
        }
    }

private:
    std::string folder_;
    volatile Told* told_ = nullptr;
};

int broken = 0;

void report(const UserStore& store, const std::string& what) {
    ++broken;
    std::printf("%s: %s\n", store.name, what.c_str());
}

/// What is left beside the stores after one more save, an hour later.
void checkLeftovers(Lab* lab, const UserStore& store, std::size_t usualFiles) {
    lab->passAnHour();
    if (!lab->save(store, lab->numberOf(store) + 1)) {
        report(store, "cannot be saved any more");
    }
    const std::vector<std::string> files = lab->files();
    if (files.size() != usualFiles) {
        std::string names;
        for (const std::string& name : files) {
            names += " " + name;
        }
        report(store, "leaves files:" + names);
    }
}

void killSaves(Lab* lab, const UserStore& store, int rounds) {
    lab->save(store, 1);
    const std::size_t usualFiles = lab->files().size();
    std::mt19937 random(20'261'122);
    std::uniform_int_distribution<int> microseconds(0, 15'000);
    int interrupted = 0;
    const int first = lab->numberOf(store);
    int number = first;
    for (int round = 0; round < rounds; ++round) {
        lab->told().isSaving = false;
        lab->told().number = kDamaged;
        const pid_t child = Lab::start([&] {
            for (int next = number + 1;; ++next) {
                lab->told().isSaving = true;
                store.save(next);
                lab->told().isSaving = false;
                lab->told().number = next;
            }
        });
        while (lab->told().number == kDamaged) {  // the first save loads libraries, too
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        interrupted += lab->told().isSaving ? 1 : 0;
        const int now = lab->numberOf(store);
        if (now == kDamaged || now < number) {
            report(store, "has " + std::to_string(now) + " after " + std::to_string(number));
            return;
        }
        number = now;
    }
    checkLeftovers(lab, store, usualFiles);
    std::printf("%-16s %5d kills, %5d in a save, %6d saves\n", store.name, rounds, interrupted, number - first);
}

/// A save whose call of that number fails; none for 0. What the store has before and after, and what was said of it.
struct FaultRun {
    int before;
    int after;
    bool saved;
    int signal;
    long calls;  // of that kind; of no meaning when the program was ended
};
FaultRun saveWithFault(Lab* lab, const UserStore& store, Call call, long failing) {
    FaultRun run{lab->numberOf(store), 0, false, 0, 0};
    lab->told().saved = false;
    run.signal = Lab::run([&] {
        armFault(call, failing);
        const bool saved = store.save(run.before + 1);
        lab->told().calls = disarmFault(call);
        lab->told().saved = saved;
    });
    run.saved = lab->told().saved;
    run.calls = lab->told().calls;
    run.after = lab->numberOf(store);
    return run;
}

/// What is wrong with what became of the store; empty for nothing.
std::string faultOf(const FaultRun& run, Call call) {
    const std::string now = " it has " + std::to_string(run.after) + " after " + std::to_string(run.before);
    // Nobody can go on without memory: Qt, GLib and the C++ library end the program, each in its own way.
    if (run.signal != 0 && call == Call::memory) {
        return run.after == run.before || run.after == run.before + 1 ? "" : "the program ends, and" + now;
    }
    if (run.signal != 0) {
        return "ends the program by signal " + std::to_string(run.signal);
    }
    if (run.saved && call == Call::sync) {
        return "is not told: what is called saved may be gone when the system fails";
    }
    return run.after == (run.saved ? run.before + 1 : run.before)
               ? ""
               : (run.saved ? "is no fault, but" : "is told, but") + now;
}

/// Fails each call of that kind that a save makes, in turn. How many these are, and how many ended the program.
std::pair<long, int> failCalls(Lab* lab, const UserStore& store, const NamedCall& call) {
    const FaultRun clean = saveWithFault(lab, store, call.call, 0);
    if (!clean.saved) {
        report(store, "cannot be saved");
    }
    int ended = 0;
    for (long failing = 1; failing <= clean.calls; ++failing) {
        const FaultRun run = saveWithFault(lab, store, call.call, failing);
        ended += run.signal != 0 ? 1 : 0;
        if (const std::string fault = faultOf(run, call.call); !fault.empty()) {
            report(store, std::string(call.name) + " number " + std::to_string(failing) + " " + fault);
        }
        if (run.after == kDamaged) {
            break;
        }
    }
    return {clean.calls, ended};
}

void failEach(Lab* lab, const UserStore& store, bool withMemory) {
    lab->save(store, 1);
    const std::size_t usualFiles = lab->files().size();
    std::string line;
    for (const NamedCall& call : kCalls) {
        if ((call.call == Call::memory) != withMemory) {
            continue;
        }
        const auto [calls, ended] = failCalls(lab, store, call);
        line += " " + std::string(call.name) + " " + std::to_string(calls);
        if (withMemory) {
            line += ", " + std::to_string(ended) + " of them ended the program";
        }
    }
    checkLeftovers(lab, store, usualFiles);
    std::printf("%-16s failed once each:%s\n", store.name, line.c_str());
}

int usage() {
    std::fprintf(stderr, "usage: tavro-reliability kills ROUNDS | faults | memory\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string what = argc > 1 ? argv[1] : "";
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 0;
    if ((what != "kills" || rounds <= 0) && what != "faults" && what != "memory") {
        return usage();
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    for (const UserStore& store : userStores()) {
        Lab lab;  // a new one for each, so that files beside a store are its own
        if (what == "kills") {
            killSaves(&lab, store, rounds);
        } else {
            failEach(&lab, store, what == "memory");
        }
    }
    return broken == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
