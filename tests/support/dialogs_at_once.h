// Several dialogs that save at once, as processes.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

/// Has each of four dialogs save 20 things, all with different names; `save` says whether it was done.
template <typename Save>
void saveInDialogsAtOnce(Save save) {
    std::vector<pid_t> dialogs;
    for (char dialog = 'a'; dialog < 'e'; ++dialog) {
        dialogs.push_back(fork());
        ASSERT_GE(dialogs.back(), 0);
        if (dialogs.back() == 0) {
            int faults = 0;
            for (int i = 0; i < 20; ++i) {
                faults += save(dialog + std::to_string(i)) ? 0 : 1;
            }
            _exit(faults);
        }
    }
    for (const pid_t dialog : dialogs) {
        int status = -1;
        waitpid(dialog, &status, 0);
        EXPECT_EQ(status, 0);
    }
}
