// A disk that is full, for this process.
#pragma once

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>

/// Writes while no file can grow beyond so many bytes.
template <typename Write>
void onFullDisk(rlim_t bytes, Write write) {
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small = {bytes, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    write();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
}
