#include "driver/queue/option_text.h"

#include <algorithm>

namespace {

bool isBlank(char c) {
    return std::string_view(" \t\n\v\f\r").find(c) != std::string_view::npos;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSame(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lower, lower);
}

/// Takes options off the beginning of a text.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {
        if (rest_.starts_with('{') && rest_.ends_with('}')) {
            rest_.remove_prefix(1);
            rest_.remove_suffix(1);
        }
    }

    /// False at the end.
    bool next(std::string_view* name, std::string* value, bool* hasValue) {
        skipBlanks();
        const std::size_t end = static_cast<std::size_t>(
            std::ranges::find_if(rest_, [](char c) { return isBlank(c) || c == '='; }) - rest_.begin());
        *name = rest_.substr(0, end);
        rest_.remove_prefix(end);
        skipBlanks();
        value->clear();
        *hasValue = rest_.starts_with('=');
        if (*hasValue) {
            rest_.remove_prefix(1);
            readValue(value);
        }
        return !name->empty();
    }

private:
    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }
    char take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    void readQuoted(char quote, std::string* value) {
        while (!rest_.empty() && rest_.front() != quote) {
            if (rest_.size() > 1 && rest_.front() == '\\') {
                rest_.remove_prefix(1);
            }
            *value += take();
        }
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
    }
    void readCollection(std::string* value) {
        int depth = 0;
        do {
            const bool isEscaped = rest_.size() > 1 && rest_.front() == '\\';
            rest_.remove_prefix(isEscaped ? 1 : 0);
            const char c = take();
            depth += isEscaped ? 0 : c == '{' ? 1 : c == '}' ? -1 : 0;
            *value += c;
        } while (depth > 0 && !rest_.empty());
    }
    void readPlain(std::string* value) {
        while (!rest_.empty() && !isBlank(rest_.front())) {
            if (rest_.size() > 1 && rest_.front() == '\\') {
                rest_.remove_prefix(1);
            }
            *value += take();
        }
    }
    /// Quotation marks and braces are special at the beginning, and behind commas and one another.
    void readValue(std::string* value) {
        while (!rest_.empty() && !isBlank(rest_.front())) {
            const char c = rest_.front();
            if (c == ',') {
                *value += take();
            } else if (c == '\'' || c == '"') {
                readQuoted(take(), value);
            } else if (c == '{') {
                readCollection(value);
            } else {
                readPlain(value);
            }
        }
    }

    std::string_view rest_;
};

}  // namespace

std::optional<std::string> optionInText(std::string_view text, std::string_view name) {
    Reader reader(text);
    std::optional<std::string> found;
    std::string_view each;
    std::string value;
    for (bool hasValue = false; reader.next(&each, &value, &hasValue);) {
        if (isSame(each, name)) {
            found = hasValue ? value : "true";
        } else if (!hasValue && isSame(each.substr(0, 2), "no") && isSame(each.substr(2), name)) {
            found = "false";
        }
    }
    return found;
}
