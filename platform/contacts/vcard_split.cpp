#include "platform/contacts/vcard_split.h"

#include <algorithm>

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

bool isQuotedPrintable(std::string_view line) {
    constexpr std::string_view kEncoding = "QUOTED-PRINTABLE";
    for (std::string_view name = line.substr(0, line.find(':')); name.size() >= kEncoding.size();
         name.remove_prefix(1)) {
        if (startsWithIgnoringCase(name, kEncoding)) {
            return true;
        }
    }
    return false;
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
    while (!file.empty()) {
        const std::string_view whole = takeLine(file);
        const std::string_view line = withoutBlanksAtTheEnd(whole);

        if (isIgnoringCase(line, "BEGIN:VCARD")) {
            if (depth > 0 && opensInnerCard(before)) {
                ++depth;
            } else {
                result.damaged |= depth > 0;
                card.clear();
                depth = 1;
            }
        } else if (depth == 0) {
            result.damaged |= !line.empty();
            continue;
        }
        card += whole;
        if (isIgnoringCase(line, "END:VCARD") && --depth == 0) {
            if (card.find('\0') != std::string::npos) {
                result.damaged = true;
            } else {
                result.cards.push_back(card.ends_with('\n') ? card : card + "\r\n");
            }
        }
        before = line.empty() ? before : line;
    }
    result.damaged |= depth > 0;
    return result;
}

std::string joinSoftBreaks(std::string_view card) {
    std::string joined;
    while (!card.empty()) {
        std::string_view line = takeLine(card);
        if (isQuotedPrintable(line)) {
            while (!card.empty() && withoutBlanksAtTheEnd(line).ends_with('=')) {
                joined += withoutBlanksAtTheEnd(line);
                joined.pop_back();
                line = takeLine(card);
            }
        }
        joined += line;
    }
    return joined;
}
