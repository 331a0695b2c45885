#include "host/script/script_parser.h"

#include "platform/toolbox/Notices.h"

#include <gtest/gtest.h>

using namespace script;

namespace {

constexpr ControlName kShell{FourCharCode("Tshl"), 16};

/// The action of a script of one good line.
template <typename T>
T only(std::string_view text) {
    const Script script = parse(text);
    EXPECT_TRUE(script.errors.empty()) << text << ": " << (script.errors.empty() ? "" : script.errors[0].reason);
    EXPECT_EQ(script.lines.size(), 1u) << text;
    const T* action = script.lines.size() == 1 ? std::get_if<T>(&script.lines[0].action) : nullptr;
    EXPECT_NE(action, nullptr) << text;
    return action != nullptr ? *action : T{};
}

struct BadLine {
    const char* text;
    int column;
};

}  // namespace

TEST(ScriptParser, ReadsEveryAction) {
    EXPECT_EQ(only<Panel>("panel \"Paper and Output\"").titleOrNumber, "Paper and Output");
    EXPECT_EQ(only<Click>("click Tshl:16").control, kShell);
    EXPECT_EQ(only<Set>("set Tshl:16 -2").value, -2);
    EXPECT_EQ(only<Choose>("choose Tshl:16 On").text, "On");
    const Item item = only<Item>("item Tshl:16 Styp -24");
    EXPECT_EQ(item.command, FourCharCode("Styp"));
    EXPECT_EQ(item.reference, -24);
    EXPECT_EQ(only<Type>("type Tshl:16 \"\"").text, "");
    EXPECT_EQ(only<Rows>("rows Tshl:16 1 3").rows, (std::vector<UInt32>{1, 3}));
    EXPECT_TRUE(only<Rows>("rows Tshl:16").rows.empty());
    EXPECT_EQ(only<Command>("command \"ok  \"").code, FourCharCode("ok  "));
    EXPECT_EQ(only<Answer>("answer alternate").response, kCFUserNotificationAlternateResponse);
    EXPECT_TRUE(only<Answer>("answer other all").all);
    EXPECT_EQ(only<File>("file \"my book.vcf\"").path, "my book.vcf");
    EXPECT_EQ(only<Expect>("expect Tshl:16 value 3").number, 3);
    EXPECT_EQ(only<Expect>("expect Tshl:16 text \"a b\"").text, "a b");
    EXPECT_EQ(only<Expect>("expect Tshl:16 hidden").aspect, Aspect::hidden);
    EXPECT_EQ(only<Expect>("expect Tshl:16 rows 0").aspect, Aspect::rows);
    EXPECT_EQ(only<ExpectConflicts>("expect conflicts 2").number, 2);
    EXPECT_EQ(only<ExpectConflicts>("expect no conflicts").number, 0);
    EXPECT_EQ(only<ExpectWindow>("expect window \"Custom Size Setup\"").title, "Custom Size Setup");
    EXPECT_EQ(only<Shot>("shot first").name, "first");
    only<Controls>("controls");
    only<Ok>("ok");
    only<Cancel>("cancel");
}

TEST(ScriptParser, SplitsLinesIntoWords) {
    EXPECT_EQ(only<Choose>(" \tchoose  Tshl:16\tOn   # a comment\r\n\n# another\n").text, "On");
    EXPECT_EQ(only<Choose>("choose Tshl:16 \"# no comment\"").text, "# no comment");
    EXPECT_EQ(only<Choose>("choose Tshl:16 C#").text, "C#");
    EXPECT_EQ(only<Type>(R"(type Tshl:16 "say \"on\\off\"\n")").text, "say \"on\\off\"\n");
    EXPECT_EQ(only<Choose>("choose Tshl:16 1\" \"Staple").text, "1 Staple");
    EXPECT_EQ(only<Click>("click \"a:b \":7").control, (ControlName{FourCharCode("a:b "), 7}));
    EXPECT_EQ(only<Click>("click @okButton").control, (ControlName{0, 0, "okButton"}));

    const Script script = parse("# nothing\n\nok\ncancel");
    ASSERT_EQ(script.lines.size(), 2u);
    EXPECT_EQ(script.lines[0].number, 3);
    EXPECT_EQ(script.lines[1].number, 4);
}

TEST(ScriptParser, TellsWhereALineIsWrong) {
    constexpr BadLine kBadLines[] = {
        {"clik Tshl:16", 1},
        {"click", 1},
        {"click Tshl", 7},
        {"click Tsh:16", 7},
        {"click @", 7},
        {"click Tshl:16x", 7},
        {"click Tshl:99999999999", 7},
        {"click Tshl:16 again", 15},
        {"set Tshl:16 1.5", 13},
        {"item Tshl:16 Sty 24", 14},
        {"rows Tshl:16 1 -3", 16},
        {"command ok", 9},
        {"answer maybe", 8},
        {"answer default any", 16},
        {"file \"\"", 6},
        {"expect Tshl:16 sleepy", 16},
        {"expect Tshl:16 value", 16},
        {"expect conflicts", 8},
        {"expect no window", 11},
        {"shot ../up", 6},
        {"shot .hidden", 6},
        {"shot in/folder", 6},
        {"  type Tshl:16 \"open", 16},
        {"type Tshl:16 \"\\q\"", 15},
    };
    for (const BadLine& bad : kBadLines) {
        const Script script = parse(std::string("ok\n") + bad.text);
        ASSERT_EQ(script.errors.size(), 1u) << bad.text;
        EXPECT_EQ(script.errors[0].line, 2) << bad.text;
        EXPECT_EQ(script.errors[0].column, bad.column) << bad.text << ": " << script.errors[0].reason;
    }
}

TEST(ScriptParser, NeverRepeatsWhatMayBeAPassword) {
    for (const char* text : {"type Tshl:16 \"se4cret", "type Tshl:16 se4cret se4cret", "type se4cret Tshl:16"}) {
        for (const Error& error : parse(text).errors) {
            EXPECT_EQ(error.reason.find("se4cret"), std::string::npos) << error.reason;
        }
        EXPECT_FALSE(parse(text).errors.empty()) << text;
    }
}
