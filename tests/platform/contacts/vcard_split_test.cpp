// A file of cards is taken apart without the loss of a byte.

#include "platform/contacts/vcard_split.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(SplittingCards, TakesEachCardAsItStands) {
    const std::string one = "BEGIN:VCARD\r\nNOTE:a\r\n END:VCARD\r\n\r\nEND:VCARD\r\n";
    const std::string two = "begin:vcard \nFN:\xff\nEnd:vCard\n";
    const SplitCards split = splitCards("\xEF\xBB\xBF\r\n" + one + "\n \t\n" + two + "BEGIN:VCARD\nEND:VCARD");
    EXPECT_TRUE(split.problems.empty());
    EXPECT_EQ(split.cards, (std::vector<std::string>{one, two, "BEGIN:VCARD\nEND:VCARD\r\n"}));
    EXPECT_EQ(split.lines, (std::vector<std::size_t>{2, 9, 12}));
    EXPECT_TRUE(splitCards("").cards.empty());
    EXPECT_TRUE(splitCards("").problems.empty());
}

TEST(SplittingCards, KnowsACardInsideOfACard) {
    const std::string card =
        "BEGIN:VCARD\r\nVERSION:2.1\r\nAGENT:\r\nBEGIN:VCARD\r\nFN:Agent\r\nEND:VCARD\r\nFN:Boss\r\nEND:VCARD\r\n";
    const SplitCards split = splitCards(card + card);
    EXPECT_TRUE(split.problems.empty());
    EXPECT_EQ(split.cards, (std::vector<std::string>{card, card}));
}

TEST(SplittingCards, TellsWhatItCouldNotTake) {
    const std::string good = "BEGIN:VCARD\nFN:x\nEND:VCARD\n";
    const struct {
        std::string file;
        std::size_t cards;
        SplitFault fault;
        std::size_t line;
    } rows[] = {
        {"\nhello\nyou", 0, SplitFault::TextOutside, 2},
        {good + "hello\n\nyou\n" + good, 2, SplitFault::TextOutside, 4},
        {"END:VCARD\n" + good, 1, SplitFault::TextOutside, 1},
        {good + "BEGIN:VCARD\nFN:cut o", 1, SplitFault::NoEnd, 4},
        {"BEGIN:VCARD\nFN:no end\n" + good, 1, SplitFault::NoEnd, 1},
        {good + "BEGIN:VCARD\nFN:zero\0\nEND:VCARD\n"s, 1, SplitFault::ZeroByte, 4},
    };
    for (const auto& row : rows) {
        const SplitCards split = splitCards(row.file);
        EXPECT_EQ(split.cards, std::vector<std::string>(row.cards, good)) << row.file;
        ASSERT_EQ(split.problems.size(), 1u) << row.file;
        EXPECT_EQ(split.problems[0].fault, row.fault) << row.file;
        EXPECT_EQ(split.problems[0].line, row.line) << row.file;
    }
}

}  // namespace
