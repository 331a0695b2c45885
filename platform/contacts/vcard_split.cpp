#include "platform/contacts/vcard_split.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view withoutBlanksAtTheEnd(std::string_view line) {
    return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

/// `upper` is in upper case.
bool startsWithIgnoringCase(std::string_view text, std::string_view upper) {
    return text.size() >= upper.size() && std::equal(upper.begin(), upper.end(), text.begin(), [](char u, char t) {
               return u == (t >= 'a' && t <= 'z' ? t - 'a' + 'A' : t);
           });
}

bool isIgnoringCase(std::string_view text, std::string_view upper) {
    return text.size() == upper.size() && startsWithIgnoringCase(text, upper);
}

/// Version 2.1 writes an agent's card inside of the card, after a line "AGENT:".
bool opensInnerCard(std::string_view line) {
    return startsWithIgnoringCase(line, "AGENT") && line.ends_with(':');
}

/// Takes a line with its break off the text.
std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
    text.remove_prefix(line.size());
    return line;
}

}  // namespace

SplitCards splitCards(std::string_view file) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (file.starts_with(kByteOrderMark)) {
        file.remove_prefix(kByteOrderMark.size());
    }
    SplitCards result;
    std::string card;
    std::string_view before;
    int depth = 0;
    std::size_t number = 0;
    std::size_t first = 0;  // line of the card
    bool isInText = false;  // outside of cards, which is told once for all its lines
    while (!file.empty()) {
        const std::string_view whole = takeLine(file);
        const std::string_view line = withoutBlanksAtTheEnd(whole);
        ++number;

        if (isIgnoringCase(line, "BEGIN:VCARD")) {
            if (depth > 0 && opensInnerCard(before)) {
                ++depth;
            } else {
                if (depth > 0) {
                    result.problems.push_back({SplitFault::NoEnd, first});
                }
                card.clear();
                depth = 1;
                first = number;
                isInText = false;
            }
        } else if (depth == 0) {
            if (!line.empty() && !std::exchange(isInText, true)) {
                result.problems.push_back({SplitFault::TextOutside, number});
            }
            continue;
        }
        card += whole;
        if (isIgnoringCase(line, "END:VCARD") && --depth == 0) {
            if (card.find('\0') != std::string::npos) {
                result.problems.push_back({SplitFault::ZeroByte, first});
            } else {
                result.cards.push_back(card.ends_with('\n') ? card : card + "\r\n");
                result.lines.push_back(first);
            }
        }
        before = line.empty() ? before : line;
    }
    if (depth > 0) {
        result.problems.push_back({SplitFault::NoEnd, first});
    }
    return result;
}
