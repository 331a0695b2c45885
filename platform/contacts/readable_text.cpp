#include "platform/contacts/readable_text.h"

#include <algorithm>
#include <cstring>

#include <glib.h>

namespace {

constexpr const char* kWindows = "WINDOWS-1252";
constexpr std::string_view kBlanks = " \t\r\n";

std::string_view withoutBlanksAtTheEnd(std::string_view line) {
    return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

bool isSame(std::string_view left, std::string_view right) {
    return left.size() == right.size() && g_ascii_strncasecmp(left.data(), right.data(), left.size()) == 0;
}

/// Takes a line with its break off the text.
std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
    text.remove_prefix(line.size());
    return line;
}

/// The name and the parameters of a line.
std::string_view headOf(std::string_view line) {
    return line.substr(0, std::min(line.find(':'), line.size()));
}

/// Where the words stand, whatever their case; npos when they do not.
std::size_t findWords(std::string_view text, std::string_view words) {
    for (std::size_t at = 0; at + words.size() <= text.size(); ++at) {
        if (isSame(text.substr(at, words.size()), words)) {
            return at;
        }
    }
    return std::string_view::npos;
}

/// The library takes a carriage return for the end of a line wherever it stands.
std::string withLineBreaksAlone(std::string text) {
    for (std::size_t at = text.find('\r'); at != std::string::npos; at = text.find('\r', at + 1)) {
        const std::size_t next = text.find_first_not_of('\r', at);
        if (next == std::string::npos || text[next] != '\n') {
            text[at] = ' ';
        }
    }
    return text;
}

/// Whether a line that was folded goes on here.
bool isFolded(std::string_view text) {
    return text.starts_with(' ') || text.starts_with('\t');
}

/// Takes a line with its break off the text, unfolded.
std::string takeUnfoldedLine(std::string_view& text) {
    std::string line(takeLine(text));
    while (isFolded(text)) {
        line.erase(line.find_last_not_of("\r\n") + 1);
        line += takeLine(text).substr(1);
    }
    return line;
}

/// The parameter itself, which the library will drop; the words may also stand in a name, or in another parameter.
bool isQuotedPrintable(std::string_view head) {
    while (!head.empty()) {
        head.remove_prefix(std::min(head.find(';'), head.size() - 1) + 1);
        const std::string_view parameter = head.substr(0, head.find(';'));
        if (isSame(parameter, "ENCODING=QUOTED-PRINTABLE") || isSame(parameter, "QUOTED-PRINTABLE")) {
            return true;
        }
    }
    return false;
}

std::string withSoftBreaksJoined(std::string_view card) {
    std::string joined;
    while (!card.empty()) {
        std::string_view rest = card;
        const bool isEncoded = isQuotedPrintable(headOf(takeUnfoldedLine(rest)));
        bool isInValue = false;
        do {
            std::string_view line = takeLine(card);
            isInValue |= line.find(':') != std::string_view::npos;
            while (isEncoded && isInValue && !card.empty() && withoutBlanksAtTheEnd(line).ends_with('=')) {
                joined += withoutBlanksAtTheEnd(line);
                joined.pop_back();
                line = takeLine(card);
            }
            joined += line;
        } while (isFolded(card));
    }
    return joined;
}

/// As version 3.0 writes the card of an agent: one escaped text.
std::string withAgentsAsTexts(std::string_view card) {
    std::string result;
    int depth = 0;
    while (!card.empty()) {
        const std::string_view whole = takeLine(card);
        const std::string_view line = withoutBlanksAtTheEnd(whole);
        if (isSame(line, "BEGIN:VCARD") && ++depth == 2) {
            result.erase(withoutBlanksAtTheEnd(result).size());  // the line "AGENT:"
        }
        if (depth < 2) {
            result += whole;
        } else {
            for (const char c : line) {
                result += std::string_view("\\;,").find(c) == std::string_view::npos ? "" : "\\";
                result += c;
            }
            result += "\\n";
        }
        if (isSame(line, "END:VCARD") && --depth == 1) {
            result += "\r\n";
        }
    }
    return result;
}

std::string unfolded(std::string_view card) {
    std::string result;
    while (!card.empty()) {
        result += takeUnfoldedLine(card);
    }
    return result;
}

/// Several programs escape colons in values, as no version asks for; the library would keep the backslash.
std::string withPlainColons(std::string_view card) {
    std::string result;
    while (!card.empty()) {
        const std::string line = takeUnfoldedLine(card);
        std::size_t at = headOf(line).size();
        result.append(line, 0, at);
        for (; at < line.size(); ++at) {
            if (line[at] == '\\' && at + 1 < line.size()) {
                result += line[at + 1] == ':' ? "" : "\\";
                ++at;
            }
            result += line[at];
        }
    }
    return result;
}

bool isUtf8(std::string_view text) {
    return g_utf8_validate_len(text.data(), text.size(), nullptr);
}

/// Bytes that the character set does not have become question marks.
std::string converted(const std::string& text, const char* charset) {
    char fallback[] = "?";
    gsize length = 0;
    char* made = g_convert_with_fallback(text.data(), gssize(text.size()), "UTF-8", charset, fallback, nullptr, &length,
                                         nullptr);
    if (made) {
        std::string result(made, length);
        g_free(made);
        return result;
    }
    char* const repaired = g_utf8_make_valid(text.data(), gssize(text.size()));
    std::string result = repaired;
    g_free(repaired);
    return result;
}

/// Without the parameter that named the character set, which is no longer true.
std::string inUtf8(std::string line) {
    constexpr std::string_view kParameter = ";CHARSET=";
    std::string charset = kWindows;
    const std::string_view head = headOf(line);
    if (const std::size_t at = findWords(head, kParameter); at != std::string_view::npos) {
        const std::size_t end = std::min(head.find(';', at + 1), head.size());
        charset = line.substr(at + kParameter.size(), end - at - kParameter.size());
        line.erase(at, end - at);
    }
    const bool isLatin1 = isSame(charset, "ISO-8859-1") || isSame(charset, "US-ASCII");
    return converted(line, isLatin1 ? kWindows : charset.c_str());  // what programs mean by it
}

std::string withLinesInUtf8(std::string_view card) {
    std::string result;
    while (!card.empty()) {
        const std::string_view line = takeLine(card);
        result += isUtf8(line) ? std::string(line) : inUtf8(std::string(line));
    }
    return result;
}

}  // namespace

std::string readableText(const std::string& card) {
    std::string text = withLineBreaksAlone(card);
    // Most cards have nothing of this.
    text = strcasestr(text.c_str(), "QUOTED-PRINTABLE") ? withSoftBreaksJoined(text) : text;
    text = strcasestr(text.c_str(), "AGENT") ? withAgentsAsTexts(text) : text;
    text = isUtf8(text) ? text : withLinesInUtf8(unfolded(text));
    return text.find('\\') != std::string::npos && unfolded(text).find("\\:") != std::string::npos
               ? withPlainColons(text)
               : text;
}

bool isReadableValue(std::string_view value) {
    return value.find('\r') == std::string_view::npos && isUtf8(value);
}

std::string readableValue(const std::string& value) {
    std::string text = isUtf8(value) ? value : converted(value, kWindows);
    for (std::size_t at = text.find('\r'); at != std::string::npos; at = text.find('\r', at)) {
        text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\n");
    }
    return text;
}
