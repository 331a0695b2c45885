// The lines of vCards, before anybody reads what they say.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct SplitCards {
    /// Each card from its BEGIN line to its END line, byte for byte, ended by a line break.
    std::vector<std::string> cards;
    /// Whether there was something else too: text outside of cards, a card without an end, a zero byte.
    bool damaged = false;
};

SplitCards splitCards(std::string_view file);

/// The card with each quoted-printable value on one line, as version 2.1 breaks them ("=" at the line's end).
std::string joinSoftBreaks(std::string_view card);
