#include "platform/files/user_names.h"

#include <gtest/gtest.h>

namespace {

TEST(UserNames, TheFullNameEndsAtTheFirstComma) {
    EXPECT_EQ(fullNameInAccount("Ann Example"), "Ann Example");
    EXPECT_EQ(fullNameInAccount("Ann Example,Room 5,,"), "Ann Example");
    EXPECT_EQ(fullNameInAccount("  Ann Example , x"), "Ann Example");
    EXPECT_EQ(fullNameInAccount(",,,"), "");
    EXPECT_EQ(fullNameInAccount("   "), "");
    EXPECT_EQ(fullNameInAccount(""), "");
}

}  // namespace
