// Only what a fax device understands reaches it.

#include "jobtypes/records/fax_numbers.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

TEST(DialingStrings, KeepTheDialingCharactersInTheirOrder) {
    const struct {
        const char *typed, *dialed;
    } rows[] = {
        {"+1 (555) 010-99 x2", "1555010992"},
        {"9,1-800", "9,1800"},
        {"*#=:!,/S$<>ABCD", "*#=:!,/S$<>ABCD"},
        {"abcds", ""},
        {"EFTW", ""},
        {"\u0661\u0662\uff13", ""},      // digits, but of other scripts
        {"\U0001d7ce1\U0001f4e0", "1"},  // beyond 16 bits
        {"", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOfCF(CopyDialingStringFromFaxNumber(makeCFString(row.typed).get()).get()), row.dialed)
            << row.typed;
    }
    EXPECT_EQ(textOfCF(CopyDialingStringFromFaxNumber(nullptr).get()), "");
}

}  // namespace
