// Strings tables: what is read, and where a fault is found.

#include "platform/foundation/strings_table.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

namespace {

struct Result {
    CFRef<CFDictionaryRef> table;
    std::string error;
};

Result readTable(std::string_view text) {
    CFRef<CFStringRef> error;
    auto table = readStringsTable(makeCFData(text).get(), &error);
    EXPECT_NE(bool(table), bool(error)) << text;
    return {std::move(table), error ? textOfCF(error.get()) : std::string()};
}

TEST(StringsTable, ReadsEntriesEscapesAndComments) {
    const Result read = readTable(
        "\uFEFF/* A \"comment\" = \"with\"; an entry */\n"
        "\"Paper Tray\" = \"Papierfach\"; // the rest\n"
        "\"say \\\"hi\\\"\"=\"a\\\\b\\n\\tc\";\"empty\"\t=\r\n\"\" /* here too */ ;\n"
        "\"\\u00c4\" = \"\\uD83D\\ude00 // no comment\";\n"
        "\"lines\" = \"one\ntwo\";\n"
        "// the end, without a new line");
    ASSERT_EQ(read.error, "");
    const struct {
        const char *key, *text;
    } rows[] = {
        {"Paper Tray", "Papierfach"}, {"say \"hi\"", "a\\b\n\tc"}, {"empty", ""},
        {"Ä", "😀 // no comment"},     {"lines", "one\ntwo"},
    };
    EXPECT_EQ(CFDictionaryGetCount(read.table.get()), CFIndex(std::size(rows)));
    for (const auto& row : rows) {
        const void* text = CFDictionaryGetValue(read.table.get(), makeCFString(row.key).get());
        EXPECT_EQ(textOfCF(static_cast<CFStringRef>(text)), row.text) << row.key;
    }
    EXPECT_EQ(CFDictionaryGetCount(readTable("").table.get()), 0);
}

TEST(StringsTable, FaultsNameTheirPlace) {
    const struct {
        std::string text;
        const char* error;
    } rows[] = {
        {"key = \"text\";", "line 1, column 1: a text in double quotes is missing"},
        {"\"a\" = \"b\"\n\"c\" = \"d\";", "line 2, column 1: ';' is missing"},
        {"\"a\" \"b\";", "line 1, column 5: '=' is missing"},
        {"\"a\" = ;", "line 1, column 7: a text in double quotes is missing"},
        {"\"a\" =", "line 1, column 6: a text in double quotes is missing"},
        {"\n  \"a", "line 2, column 3: the text has no closing quote"},
        {"\"a\\", "line 1, column 3: unknown escape"},
        {"\"a\" = \"\\q\";", "line 1, column 8: unknown escape"},
        {"\"a\" = \"\\u12\";", "line 1, column 8: unknown escape"},
        {"\"a\" = \"\\u+123\";", "line 1, column 8: unknown escape"},
        {"\"a\" = \"\\uD83D\";", "line 1, column 7: half of a surrogate pair"},
        {"\"a\" = \"b\";\n/* open", "line 2, column 1: the comment has no end"},
        {"\"a\" /* open", "line 1, column 5: the comment has no end"},
        {"\"a\" = \"b\";\n\"a\" = \"c\";", "line 2, column 1: the key \"a\" stands there twice"},
        {"\"a\" = \"\xFF\";", "line 1, column 1: not in UTF-8"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(readTable(row.text).error, row.error) << row.text;
    }
}

}  // namespace
