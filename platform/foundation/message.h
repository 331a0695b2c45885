// Messages: what went wrong, in sentences for people. One is made where the fault is found, of an English text, which
// is the key of its translations too, and of what stands in it.
//
// This much knows neither Qt nor the tables, so that small programs can load it. What a program's messages are read in
// is its own affair: English at first, its user's language after showMessagesOf() (message_tables.h), and what another
// program can translate after setMessageWriter(packMessage).
#pragma once

#include <concepts>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

/// What stands in a message: a text as it is, or a whole number, which is shown in the digits of the user.
class MessageValue {
public:
    MessageValue(std::string text) : text_(std::move(text)) {}  // NOLINT(google-explicit-constructor)
    MessageValue(std::string_view text) : text_(text) {}        // NOLINT(google-explicit-constructor)
    MessageValue(const char* text) : text_(text) {}             // NOLINT(google-explicit-constructor)
    template <std::integral Number>
    MessageValue(Number number)
        : text_(std::to_string(number)), isNumber_(true) {}  // NOLINT(google-explicit-constructor)

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] bool isNumber() const { return isNumber_; }

private:
    std::string text_;
    bool isNumber_ = false;
};

/// The message with the values in place of "%1", "%2" and so on, nine at the most, in UTF-8. From any thread.
std::string messageText(std::string_view english, std::initializer_list<MessageValue> values = {});

/// The system's text for an error number (errno.h), as a message.
std::string systemMessage(int error);

/// How this program writes its messages; null for English. To be set before there are threads.
using MessageWriter = std::string (*)(std::string_view english, std::span<const MessageValue> values);
void setMessageWriter(MessageWriter writer);

/// A message for another program: its key and its values between characters that no text has.
std::string packMessage(std::string_view english, std::span<const MessageValue> values);
/// A text of another program in which each packed message is as messageText() would have it. What was not packed well
/// stays as it is.
std::string unpackMessages(std::string_view text);
