// Files are read whole and replaced whole, whatever happens meanwhile.

#include "platform/files/url_access.h"
#include "platform/files/plain_file.h"
#include "tests/platform/files/temporary_folder.h"
#include "tests/support/cf_values.h"
#include "tests/support/full_disk.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <thread>
#include <tuple>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// 0, or the error number.
SInt32 write(const std::string& path, std::string_view text) {
    SInt32 error = -1;
    const bool done =
        CFURLWriteDataAndPropertiesToResource(makeCFURL(path).get(), makeCFData(text).get(), nullptr, &error);
    EXPECT_EQ(done, error == 0);
    return error;
}

std::string contentOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

mode_t rightsOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::size_t entriesOf(const TemporaryFolder& folder) {
    return std::size_t(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
}

TEST(ReplacingFiles, NobodyElseMayReadThem) {
    const TemporaryFolder folder;
    const mode_t before = umask(0);
    EXPECT_EQ(write(folder / "new", "one"), 0);
    EXPECT_EQ(rightsOf(folder / "new"), 0600u);

    const struct { mode_t old, kept; } rows[] = {{0644, 0600}, {0666, 0600}, {0600, 0600}, {0400, 0400}, {0440, 0400}};
    for (const auto& row : rows) {
        ASSERT_EQ(chmod((folder / "new").c_str(), row.old), 0);
        EXPECT_EQ(write(folder / "new", "two"), 0);
        EXPECT_EQ(rightsOf(folder / "new"), row.kept) << std::oct << row.old;
    }
    umask(before);
    EXPECT_EQ(contentOf(folder / "new"), "two");
    EXPECT_EQ(write(folder / "new", ""), 0);
    EXPECT_EQ(contentOf(folder / "new"), "");
    EXPECT_EQ(entriesOf(folder), 1u);
}

TEST(ReplacingFiles, ALinkStaysAndItsTargetIsReplaced) {
    const TemporaryFolder folder;
    fs::create_directory(folder / "dotfiles");
    std::ofstream(folder / "dotfiles/settings") << "old";
    fs::create_symlink("dotfiles/settings", folder / "settings");
    EXPECT_EQ(write(folder / "settings", "new"), 0);
    EXPECT_TRUE(fs::is_symlink(folder / "settings"));
    EXPECT_EQ(contentOf(folder / "dotfiles/settings"), "new");

    fs::create_symlink(folder / "dotfiles/not yet", folder / "dangling");
    EXPECT_EQ(write(folder / "dangling", "new"), 0);
    EXPECT_EQ(contentOf(folder / "dotfiles/not yet"), "new");

    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(write(folder / "loop", "new"), ELOOP);
}

TEST(ReplacingFiles, WhatIsNoPlainFileStays) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "device").c_str(), 0600), 0);
    EXPECT_EQ(write(folder / "device", "x"), EINVAL);
    EXPECT_EQ(fs::status(folder / "device").type(), fs::file_type::fifo);
    EXPECT_EQ(write(folder.path().string(), "x"), EISDIR);
    EXPECT_EQ(write(folder / "no/such/folder", "x"), ENOENT);
    EXPECT_EQ(write(folder / "device/below", "x"), ENOTDIR);
    EXPECT_EQ(entriesOf(folder), 1u);

    SInt32 error = 0;
    EXPECT_FALSE(CFURLWriteDataAndPropertiesToResource(makeCFURL(folder / "x").get(), nullptr, nullptr, &error));
    EXPECT_EQ(error, EINVAL);
    EXPECT_FALSE(CFURLWriteDataAndPropertiesToResource(nullptr, makeCFData("x").get(), nullptr, nullptr));
}

TEST(ReplacingFiles, AFailureLeavesTheOldFileAndNothingBesideIt) {
    const TemporaryFolder folder;
    const std::string path = folder / "settings";
    ASSERT_EQ(write(path, "old"), 0);

    // As a full disk does it: the file cannot grow beyond the limit.
    SInt32 error = 0;
    bool done = true;
    onFullDisk(4096, [&] {
        done = CFURLWriteDataAndPropertiesToResource(makeCFURL(path).get(), makeCFData(std::string(100'000, 'x')).get(),
                                                     nullptr, &error);
    });
    EXPECT_FALSE(done);
    EXPECT_EQ(error, EFBIG);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(entriesOf(folder), 1u);

    // A folder that is read-only; nobody's, because root may write everywhere.
    constexpr uid_t kNobody = 65534;
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    error = write(path, "new");
    if (isRoot) {
        ASSERT_EQ(seteuid(0), 0);
    }
    ASSERT_EQ(chmod(folder.path().c_str(), 0700), 0);
    EXPECT_EQ(error, EACCES);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(entriesOf(folder), 1u);
}

TEST(ReplacingFiles, KilledInTheMiddleTheOldOrTheNewFileIsThere) {
    const TemporaryFolder folder;
    const std::string path = folder / "settings";
    const std::string texts[] = {std::string(3'000'000, 'a'), std::string(2'000'000, 'b')};
    const auto url = makeCFURL(path);
    const CFRef<CFDataRef> data[] = {makeCFData(texts[0]), makeCFData(texts[1])};
    ASSERT_EQ(write(path, texts[0]), 0);

    std::mt19937 random(20'261'121);
    std::uniform_int_distribution<int> microseconds(0, 12'000);
    std::set<std::string> seen;
    // A busy machine may need more time for a write than there is at first.
    for (int round = 0; round < 40 || (seen.size() < 2 && round < 400); ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            umask(0);
            for (int i = 1;; ++i) {
                CFURLWriteDataAndPropertiesToResource(url.get(), data[i % 2].get(), nullptr, nullptr);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)) * (1 + round / 40));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string found = contentOf(path);
        ASSERT_TRUE(found == texts[0] || found == texts[1]) << found.size() << " bytes in round " << round;
        seen.insert(found.substr(0, 1));
        EXPECT_EQ(rightsOf(path), 0600u);
    }
    EXPECT_EQ(seen.size(), 2u) << "no round hit a write under way, so nothing was shown";
    // A kill between naming the new file and renaming it leaves that name for the next program to take away.
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        EXPECT_TRUE(entry.path() == path || entry.path().filename().string().starts_with(".tavro-")) << entry.path();
    }
}

TEST(ReadingFiles, GivesAllBytesOrTheReason) {
    const TemporaryFolder folder;
    const auto read = [](const std::string& path, SInt32* error) {
        CFDataRef data = nullptr;
        const bool done =
            CFURLCreateDataAndPropertiesFromResource(nullptr, makeCFURL(path).get(), &data, nullptr, nullptr, error);
        EXPECT_EQ(done, data != nullptr);
        return CFRef<CFDataRef>::adopt(data);
    };
    std::string bytes(300'000, '\0');
    bytes.back() = 'x';
    std::ofstream(folder / "file", std::ios::binary) << bytes;
    SInt32 error = -1;
    EXPECT_EQ(bytesOfCF(read(folder / "file", &error).get()), bytes);
    EXPECT_EQ(error, 0);
    std::ofstream(folder / "empty").flush();
    EXPECT_EQ(CFDataGetLength(read(folder / "empty", &error).get()), 0);
    // A file that has a content but no size.
    EXPECT_GT(CFDataGetLength(read("/proc/self/status", &error).get()), 0);

    // What would have us wait, or never ends.
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::ofstream(folder / "large").flush();
    fs::resize_file(folder / "large", std::uintmax_t{kMaximumFileBytes} + 1);
    sockaddr_un address{AF_UNIX, {}};
    (folder / "socket").copy(address.sun_path, sizeof address.sun_path - 1);
    const Descriptor server(socket(AF_UNIX, SOCK_STREAM, 0));
    ASSERT_EQ(bind(server.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    for (const auto& [path, expected, words] : {std::tuple{folder / "pipe", EINVAL, "is not a plain file"},
                                                {folder / "socket", EINVAL, "is not a plain file"},
                                                {std::string("/dev/zero"), EINVAL, "is not a plain file"},
                                                {folder / "large", EFBIG, "is larger than 256 MB"}}) {
        EXPECT_FALSE(read(path, &error)) << path;
        EXPECT_EQ(error, expected) << path;
        EXPECT_EQ(readFault(error, kMaximumFileBytes), words);
    }

    EXPECT_FALSE(read(folder / "missing", &error));
    EXPECT_EQ(error, ENOENT);
    EXPECT_FALSE(read(folder.path().string(), &error));
    EXPECT_EQ(error, EISDIR);
    const auto page = CFRef<CFURLRef>::adopt(CFURLCreateWithString(nullptr, CFSTR("https://example.com/"), nullptr));
    CFDataRef data = nullptr;
    EXPECT_FALSE(CFURLCreateDataAndPropertiesFromResource(nullptr, page.get(), &data, nullptr, nullptr, &error));
    EXPECT_EQ(error, EINVAL);
}

}  // namespace
