#include "host/script/script_parser.h"

#include "platform/foundation/message.h"
#include "platform/toolbox/Notices.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace script {

namespace {

struct SyntaxError {
    int column;
    std::string reason;
};

struct Word {
    std::string text;
    int column;
};

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

/// The character that an escaped one stands for.
std::optional<char> unescaped(char c) {
    switch (c) {
        case '"':
        case '\\':
            return c;
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case 'b':
            return '\b';
        default:
            return std::nullopt;
    }
}

/// Reads from behind a quotation mark to the closing one; returns the position behind that.
std::size_t readQuoted(std::string_view line, std::size_t at, std::string* text) {
    const auto column = static_cast<int>(at);  // of the opening mark, from 1
    for (; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] != '\\') {
            *text += line[at];
            continue;
        }
        ++at;
        const auto character = at < line.size() ? unescaped(line[at]) : std::nullopt;
        if (!character) {
            throw SyntaxError{static_cast<int>(at), messageText("a backslash stands only before %1", {"\" \\ n t b"})};
        }
        *text += *character;
    }
    if (at == line.size()) {
        throw SyntaxError{column, messageText("the quotation mark is never closed")};
    }
    return at + 1;
}

std::vector<Word> split(std::string_view line) {
    std::vector<Word> words;
    std::size_t at = 0;
    while (true) {
        while (at < line.size() && isBlank(line[at])) {
            ++at;
        }
        if (at == line.size() || line[at] == '#') {
            return words;
        }
        Word word{{}, static_cast<int>(at) + 1};
        while (at < line.size() && !isBlank(line[at])) {
            if (line[at] == '"') {
                at = readQuoted(line, at + 1, &word.text);
            } else {
                word.text += line[at++];
            }
        }
        words.push_back(std::move(word));
    }
}

template <typename Number>
std::optional<Number> numberOf(std::string_view text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::optional<OSType> codeOf(std::string_view text) {
    if (text.size() != 4) {
        return std::nullopt;
    }
    OSType code = 0;
    for (const char c : text) {
        code = (code << 8) | static_cast<unsigned char>(c);
    }
    return code;
}

/// The words behind a line's first one, taken one by one.
class Arguments {
public:
    explicit Arguments(const std::vector<Word>& words) : words_(&words) {}

    bool more() const { return next_ < words_->size(); }

    const Word& word(const char* what) {
        if (!more()) {
            const Word& last = words_->back();
            throw SyntaxError{last.column, messageText("%1 is missing", {messageText(what)})};
        }
        return (*words_)[next_++];
    }

    ControlName control() {
        const Word& name = word("a control (SIGNATURE:NUMBER)");
        if (name.text.size() > 1 && name.text.front() == '@') {
            return {0, 0, name.text.substr(1)};
        }
        const auto colon = name.text.rfind(':');
        if (colon != std::string::npos) {
            const auto signature = codeOf(std::string_view(name.text).substr(0, colon));
            const auto number = numberOf<SInt32>(std::string_view(name.text).substr(colon + 1));
            if (signature && number) {
                return {*signature, *number};
            }
        }
        throw SyntaxError{name.column,
                          messageText("a control is four characters, a colon and a number, or @ and a name")};
    }

    template <typename Number = SInt32>
    Number number(const char* what) {
        const Word& text = word(what);
        if (const auto value = numberOf<Number>(text.text)) {
            return *value;
        }
        throw SyntaxError{text.column, messageText("%1 is a whole number", {messageText(what)})};
    }

    OSType code() {
        const Word& text = word("a command (four characters)");
        if (const auto code = codeOf(text.text)) {
            return *code;
        }
        throw SyntaxError{text.column, messageText("a command is four characters; quote blanks: %1", {"\"ok  \""})};
    }

    std::string text() { return word("a text").text; }

private:
    const std::vector<Word>* words_;
    std::size_t next_ = 1;
};

Action readRows(Arguments& arguments) {
    Rows rows{arguments.control(), {}};
    while (arguments.more()) {
        rows.rows.push_back(arguments.number<UInt32>("a row"));
    }
    return rows;
}

Action readAnswer(Arguments& arguments) {
    // word, response
    static constexpr std::array<std::pair<std::string_view, CFOptionFlags>, 3> kResponses{{
        {"default", kCFUserNotificationDefaultResponse},
        {"alternate", kCFUserNotificationAlternateResponse},
        {"other", kCFUserNotificationOtherResponse},
    }};
    const Word& word = arguments.word("default, alternate or other");
    const auto row = std::ranges::find(kResponses, word.text, [](const auto& r) { return r.first; });
    if (row == kResponses.end()) {
        throw SyntaxError{word.column, messageText("an answer is default, alternate or other")};
    }
    Answer answer{row->second, false};
    if (arguments.more()) {
        const Word& all = arguments.word("all");
        if (all.text != "all") {
            throw SyntaxError{all.column, messageText("only \"all\" may follow an answer")};
        }
        answer.all = true;
    }
    return answer;
}

Action readExpect(Arguments& arguments) {
    enum class Needs { nothing, number, text };
    struct AspectRow {
        std::string_view word;
        Aspect aspect;
        Needs needs;
    };
    // clang-format off
    static constexpr AspectRow kAspects[] = {
        // word, aspect, what follows it
        {"value", Aspect::value, Needs::number},
        {"text", Aspect::text, Needs::text},
        {"enabled", Aspect::enabled, Needs::nothing},
        {"disabled", Aspect::disabled, Needs::nothing},
        {"hidden", Aspect::hidden, Needs::nothing},
        {"visible", Aspect::visible, Needs::nothing},
        {"items", Aspect::items, Needs::number},
        {"rows", Aspect::rows, Needs::number},
    };
    // clang-format on
    Arguments ahead = arguments;
    const std::string& first = ahead.word("a control, window, conflicts or no conflicts").text;
    if (first == "window") {
        arguments = ahead;
        return ExpectWindow{arguments.text()};
    }
    if (first == "conflicts") {
        arguments = ahead;
        return ExpectConflicts{arguments.number("a number")};
    }
    if (first == "no") {
        arguments = ahead;
        if (const Word& what = arguments.word("conflicts"); what.text != "conflicts") {
            throw SyntaxError{what.column, messageText("only \"conflicts\" may follow no")};
        }
        return ExpectConflicts{0};
    }
    Expect expect{arguments.control(), {}, 0, {}};
    const Word& word = arguments.word("what is expected");
    const auto row = std::ranges::find(kAspects, word.text, &AspectRow::word);
    if (row == std::end(kAspects)) {
        throw SyntaxError{word.column, messageText("expected may be: %1",
                                                   {"value, text, enabled, disabled, hidden, visible, items, rows"})};
    }
    expect.aspect = row->aspect;
    if (row->needs == Needs::number) {
        expect.number = arguments.number("a number");
    } else if (row->needs == Needs::text) {
        expect.text = arguments.text();
    }
    return expect;
}

Action readShot(Arguments& arguments) {
    const Word& name = arguments.word("a name");
    if (name.text.empty() || name.text.front() == '.' || name.text.find('/') != std::string::npos) {
        throw SyntaxError{name.column, messageText("a shot's name is a plain file name")};
    }
    return Shot{name.text};
}

// The actions that are their arguments, in order.
Action readPanel(Arguments& arguments) {
    return Panel{arguments.text()};
}
Action readClick(Arguments& arguments) {
    return Click{arguments.control()};
}
Action readSet(Arguments& arguments) {
    return Set{arguments.control(), arguments.number("a value")};
}
Action readChoose(Arguments& arguments) {
    return Choose{arguments.control(), arguments.text()};
}
Action readItem(Arguments& arguments) {
    return Item{arguments.control(), arguments.code(), arguments.number("a reference value")};
}
Action readType(Arguments& arguments) {
    return Type{arguments.control(), arguments.text()};
}
Action readFile(Arguments& arguments) {
    const Word& path = arguments.word("a file");
    if (path.text.empty()) {
        throw SyntaxError{path.column, messageText("a file has a name")};
    }
    return File{path.text};
}
Action readCommand(Arguments& arguments) {
    return Command{arguments.code()};
}
template <typename Plain>
Action readPlain(Arguments&) {
    return Plain{};
}

struct ActionRow {
    std::string_view word;
    Action (*read)(Arguments&);
};
// clang-format off
constexpr ActionRow kActions[] = {
    // word, reader of its arguments
    {"panel", readPanel},
    {"click", readClick},
    {"set", readSet},
    {"choose", readChoose},
    {"item", readItem},
    {"type", readType},
    {"rows", readRows},
    {"command", readCommand},
    {"answer", readAnswer},
    {"file", readFile},
    {"expect", readExpect},
    {"controls", readPlain<Controls>},
    {"shot", readShot},
    {"ok", readPlain<Ok>},
    {"cancel", readPlain<Cancel>},
};
static_assert(std::size(kActions) + 3 == std::variant_size_v<Action>,
              "expect is one word for three actions, and a program's own have none here");
// clang-format on

std::optional<Action> readLine(std::string_view line, std::span<const std::string_view> ownActions) {
    const std::vector<Word> words = split(line);
    if (words.empty()) {
        return std::nullopt;
    }
    const Word& first = words.front();
    const auto row = std::ranges::find(kActions, first.text, &ActionRow::word);
    const bool isOwn = std::ranges::find(ownActions, first.text) != ownActions.end();
    if (row == std::end(kActions) && !isOwn) {
        throw SyntaxError{first.column, messageText("there is no such action")};
    }
    Arguments arguments(words);
    std::optional<Action> action;
    if (isOwn) {
        action = Own{first.text, arguments.text()};
    } else {
        action = row->read(arguments);
    }
    if (arguments.more()) {
        throw SyntaxError{arguments.word("").column, messageText("there is one word too many")};
    }
    return action;
}

}  // namespace

std::string controlNameText(const ControlName& name) {
    if (!name.name.empty()) {
        return "@" + name.name;
    }
    return FourCharCodeText(name.signature) + ":" + std::to_string(name.number);
}

Script parse(std::string_view text, std::span<const std::string_view> ownActions) {
    Script script;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        try {
            if (auto action = readLine(text.substr(0, end), ownActions)) {
                script.lines.push_back({number, std::move(*action)});
            }
        } catch (const SyntaxError& error) {
            script.errors.push_back({number, error.column, error.reason});
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return script;
}

}  // namespace script
