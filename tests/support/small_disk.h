// A disk of a few kilobytes, as a folder, until the object goes.
//
// Only this process and those that it starts from then on see it.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

class SmallDisk {
public:
    SmallDisk(std::filesystem::path folder, std::size_t bytes) : folder_(std::move(folder)) {
        std::filesystem::create_directories(folder_);
        fault_ = enterOwnNamespace();
        const std::string size = "size=" + std::to_string(bytes);
        if (fault_.empty() && mount("none", folder_.c_str(), "tmpfs", 0, size.c_str()) != 0) {
            fault_ = std::string("mount: ") + std::strerror(errno);
        }
    }
    ~SmallDisk() {
        if (fault_.empty()) {
            umount2(folder_.c_str(), MNT_DETACH);
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Why this machine lets nobody make one; empty when it is there. A test that needs one is skipped with it.
    [[nodiscard]] const std::string& fault() const { return fault_; }
    [[nodiscard]] const std::filesystem::path& path() const { return folder_; }

private:
    /// A namespace of mounts; for others than root in one of users, too. The process must have one thread only.
    static std::string enterOwnNamespace() {
        static bool isInside = false;
        if (std::exchange(isInside, true)) {
            return {};
        }
        const auto user = std::to_string(geteuid());
        const auto group = std::to_string(getegid());
        if (unshare(CLONE_NEWNS) != 0) {
            if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
                return std::string("unshare: ") + std::strerror(errno);
            }
            std::ofstream("/proc/self/setgroups") << "deny";
            std::ofstream("/proc/self/uid_map") << user << " " << user << " 1";
            std::ofstream("/proc/self/gid_map") << group << " " << group << " 1";
        }
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
                   ? std::string()
                   : std::string("mount: ") + std::strerror(errno);
    }

    std::filesystem::path folder_;
    std::string fault_;
};
