// Several processes on one contacts.vcf.

#include "tests/platform/contacts/contacts_fixture.h"

#include <csignal>

#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using SharedFile = ContactsTest;

TEST_F(SharedFile, TwoProcessesLoseNothing) {
    constexpr int kRounds = 25;
    std::vector<pid_t> children;
    for (const char* name : {"Ada", "Bo"}) {
        const pid_t child = fork();
        if (child == 0) {
            bool done = true;
            for (int i = 0; i < kRounds; ++i) {
                done = addAndSave(newPerson((name + std::to_string(i) + ".").c_str())) && done;
            }
            _exit(done ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const std::string content = contentOf(file());
    for (int i = 0; i < kRounds; ++i) {
        EXPECT_NE(content.find("FN:Ada" + std::to_string(i) + "."), std::string::npos) << i;
        EXPECT_NE(content.find("FN:Bo" + std::to_string(i) + "."), std::string::npos) << i;
    }
}

TEST_F(SharedFile, AKilledProcessLeavesNoLock) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        const int locked = open(folder().c_str(), O_RDONLY | O_DIRECTORY);
        const char taken = flock(locked, LOCK_EX) == 0 ? 'y' : 'n';
        if (write(ends[1], &taken, 1) == 1) {
            pause();
        }
        _exit(1);
    }
    char taken = 0;
    ASSERT_EQ(read(ends[0], &taken, 1), 1);
    EXPECT_EQ(taken, 'y');
    const int probe = open(folder().c_str(), O_RDONLY | O_DIRECTORY);
    EXPECT_NE(flock(probe, LOCK_EX | LOCK_NB), 0);
    close(probe);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(addAndSave(newPerson("Ada")));
    close(ends[0]);
    close(ends[1]);
}

}  // namespace
