// The lines of vCards, before anybody reads what they say.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum class SplitFault {
    TextOutside,  // text that is in no card
    NoEnd,        // a card that has no end
    ZeroByte,     // a card with a zero byte
};

struct SplitProblem {
    SplitFault fault;
    /// Counted from 1: where the text or the card begins.
    std::size_t line;
};

struct SplitCards {
    /// Each card from its BEGIN line to its END line, byte for byte, ended by a line break.
    std::vector<std::string> cards;
    /// The first line of each card, counted from 1.
    std::vector<std::size_t> lines;
    /// What else there was.
    std::vector<SplitProblem> problems;
};

SplitCards splitCards(std::string_view file);
