#include "platform/foundation/message.h"

#include "platform/foundation/message_places.h"

#include <cstring>
#include <optional>
#include <vector>

namespace {

// Of the characters that Unicode keeps out of texts.
constexpr std::string_view kBegin = "\uFDD0";
constexpr std::string_view kText = "\uFDD1";    // a text follows
constexpr std::string_view kNumber = "\uFDD2";  // a number follows
constexpr std::string_view kEnd = "\uFDD3";
constexpr std::size_t kMarkBytes = 3;

constexpr int kDeepest = 8;  // of messages that stand in messages: who packs them may be a stranger's victim

MessageWriter& writerOfProgram() {
    static MessageWriter writer = fillMessage;
    return writer;
}

/// Reads what packMessage() wrote, messages in messages too.
class Unpacker {
public:
    explicit Unpacker(std::string_view text) : rest_(text) {}

    std::string read() {
        std::string whole;
        while (!rest_.empty()) {
            if (!rest_.starts_with(kBegin)) {
                whole += rest_.front();
                rest_.remove_prefix(1);
                continue;
            }
            const std::string_view before = rest_;
            if (auto message = readMessage(0)) {
                whole += *message;
            } else {
                whole += before.front();
                rest_ = before.substr(1);
            }
        }
        return whole;
    }

private:
    struct Part {
        std::string text;
        bool isNumber;
    };

    bool take(std::string_view mark) {
        const bool isThere = rest_.starts_with(mark);
        rest_.remove_prefix(isThere ? kMarkBytes : 0);
        return isThere;
    }

    std::optional<std::string> readMessage(int depth) {
        if (depth == kDeepest || !take(kBegin)) {
            return std::nullopt;
        }
        std::vector<Part> parts{{{}, false}};
        while (!take(kEnd)) {
            const bool isNumber = rest_.starts_with(kNumber);
            if (rest_.empty()) {
                return std::nullopt;
            }
            if (take(kText) || take(kNumber)) {
                parts.push_back({{}, isNumber});
            } else if (rest_.starts_with(kBegin)) {
                auto inner = readMessage(depth + 1);
                if (!inner) {
                    return std::nullopt;
                }
                parts.back().text += *inner;
            } else {
                parts.back().text += rest_.front();
                rest_.remove_prefix(1);
            }
        }
        std::vector<MessageValue> values;
        for (std::size_t i = 1; i < parts.size(); ++i) {
            const bool isPlain =
                parts[i].isNumber && parts[i].text.find_first_not_of("0123456789") == std::string::npos;
            values.push_back(isPlain && parts[i].text.size() < 19 && !parts[i].text.empty()
                                 ? MessageValue(std::stoll(parts[i].text))
                                 : MessageValue(parts[i].text));
        }
        return writerOfProgram()(parts.front().text, values);
    }

    std::string_view rest_;
};

}  // namespace

std::string messageText(std::string_view english, std::initializer_list<MessageValue> values) {
    return writerOfProgram()(english, {values.begin(), values.size()});
}

std::string systemMessage(int error) {
    const char* const english = strerrordesc_np(error);  // strerror() would follow the C library's locale
    return english == nullptr ? messageText("unknown error %1", {error}) : messageText(english);
}

std::string fillMessage(std::string_view text, std::span<const MessageValue> values) {
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t number =
            text[i] == '%' && i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '0') : 0;
        if (number >= 1 && number <= values.size()) {
            filled += values[number - 1].text();
            ++i;
        } else {
            filled += text[i];
        }
    }
    return filled;
}

void setMessageWriter(MessageWriter writer) {
    writerOfProgram() = writer == nullptr ? fillMessage : writer;
}

std::string packMessage(std::string_view english, std::span<const MessageValue> values) {
    std::string packed(kBegin);
    packed += english;
    for (const MessageValue& value : values) {
        packed += value.isNumber() ? kNumber : kText;
        packed += value.text();
    }
    packed += kEnd;
    return packed;
}

std::string unpackMessages(std::string_view text) {
    return Unpacker(text).read();
}
