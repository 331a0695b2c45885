// The user's folders: where they are, and how they are made.

#include "platform/files/folders.h"
#include "tests/platform/files/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

class Folders : public testing::Test {
protected:
    Folders() {
        setenv("HOME", home_.path().c_str(), 1);
        setenv("XDG_CONFIG_HOME", (home_ / "deep/er/config").c_str(), 1);
        setenv("XDG_DATA_HOME", "", 1);
    }
    TemporaryFolder home_;
};

TEST_F(Folders, AreMadeForTheUserAlone) {
    FSRef folder = {};
    EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, false, &folder), fnfErr);
    ASSERT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, true, &folder), noErr);
    EXPECT_EQ(folder.path, home_ / "deep/er/config/tavro");
    for (const char* made : {"deep", "deep/er", "deep/er/config", "deep/er/config/tavro"}) {
        EXPECT_EQ(fs::status(home_ / made).permissions(), fs::perms::owner_all) << made;
    }
    folder = {};
    EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, false, &folder), noErr);
    EXPECT_EQ(folder.path, home_ / "deep/er/config/tavro");

    // Without the variable, or with a path that depends on the working directory, the place that the XDG rules name.
    ASSERT_EQ(FSFindFolder(kUserDomain, kApplicationSupportFolderType, true, &folder), noErr);
    EXPECT_EQ(folder.path, home_ / ".local/share/tavro");
    setenv("XDG_DATA_HOME", "share", 1);
    ASSERT_EQ(FSFindFolder(kUserDomain, kApplicationSupportFolderType, true, &folder), noErr);
    EXPECT_EQ(folder.path, home_ / ".local/share/tavro");
}

TEST_F(Folders, WhatCannotBeMadeIsNotFound) {
    FSRef folder = {};
    std::ofstream(home_ / "deep") << "a file in the way";
    EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, true, &folder), fnfErr);
    fs::create_directories(home_ / ".local/share");
    std::ofstream(home_ / ".local/share/tavro") << "a file in the way";
    EXPECT_EQ(FSFindFolder(kUserDomain, kApplicationSupportFolderType, true, &folder), fnfErr);

    unsetenv("HOME");
    EXPECT_EQ(FSFindFolder(kUserDomain, kApplicationSupportFolderType, true, &folder), fnfErr);

    EXPECT_EQ(FSFindFolder(0, kPreferencesFolderType, true, &folder), paramErr);
    EXPECT_EQ(FSFindFolder(kUserDomain, FourCharCode("font"), true, &folder), paramErr);
    EXPECT_EQ(FSFindFolder(kUserDomain, kPreferencesFolderType, true, nullptr), paramErr);
}

}  // namespace
