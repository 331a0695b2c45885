// The user's saved options as text.
#include "platform/printing/lpoptions_text.h"

#include <gtest/gtest.h>

namespace {

const std::string kText =
    "# made by hand\n"
    "Dest office/draft  Duplex=None  note=\"two words\"\n"
    "default Office Duplex=DuplexNoTumble fit-to-page nocollate # for now\n"
    "\n"
    "Dest home PageSize=A4\n"
    "dest OFFICE Duplex=DuplexTumble\n"
    "Future office a=b\n"
    "Dest\n"
    "Dest office2 Duplex=None";

}  // namespace

TEST(LpoptionsText, HasTheOptionsOfADestination) {
    EXPECT_EQ(optionsInText(kText, "office"),
              (OptionList{{"collate", "false"}, {"Duplex", "DuplexTumble"}, {"fit-to-page", "true"}}));
    EXPECT_EQ(optionsInText(kText, "office/draft"), (OptionList{{"Duplex", "None"}, {"note", "two words"}}));
    EXPECT_TRUE(optionsInText(kText, "offi").empty());
    EXPECT_TRUE(optionsInText(kText, "office/other").empty());
    EXPECT_TRUE(optionsInText("", "office").empty());
}

TEST(LpoptionsText, KeepsTheLinesOfOthers) {
    EXPECT_EQ(textWithOptions(kText, "office", {{"Duplex", "None"}, {"note", R"(a "b\c" 'd')"}, {"empty", ""}}),
              "# made by hand\n"
              "Dest office/draft  Duplex=None  note=\"two words\"\n"
              "\n"
              "Dest home PageSize=A4\n"
              "Future office a=b\n"
              "Dest\n"
              "Dest office2 Duplex=None\n"
              "default office Duplex=None note=\"a \\\"b\\\\c\\\" 'd'\" empty=\"\"\n");
    for (const char* value : {R"(a "b\c" 'd')", "{x}", "plain", " "}) {
        const OptionList options{{"last", "1"}, {"note", value}};
        EXPECT_EQ(optionsInText(textWithOptions("", "office", options), "office"), options) << value;
    }
}

TEST(LpoptionsText, HasNoLineWithoutNeed) {
    EXPECT_EQ(textWithOptions("Dest office Duplex=None\nDest home a=b\n", "office", {}), "Dest home a=b\n");
    EXPECT_EQ(textWithOptions("Default office Duplex=None\n", "office", {}), "Default office\n");
    EXPECT_EQ(textWithOptions("", "office/draft", {}), "Dest office/draft\n");
    EXPECT_EQ(textWithOptions("", "office", {}), "");
}
