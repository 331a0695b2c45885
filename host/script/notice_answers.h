// Answers that a script gives to notices beforehand.
#pragma once

#include "host/script/script_parser.h"

#include <cstdio>
#include <deque>
#include <optional>

namespace script {

/// While it lives, prints the header and the text of each notice and answers it: with the next answer that was given,
/// else with the last one given for all, which also
/// ticks the notice's check box, else by its default button.
class NoticeAnswers {
public:
    explicit NoticeAnswers(std::FILE* output);
    ~NoticeAnswers();
    NoticeAnswers(const NoticeAnswers&) = delete;
    NoticeAnswers& operator=(const NoticeAnswers&) = delete;

    void give(Answer answer);

private:
    static void told(CFStringRef header, CFStringRef message, void* self);

    std::FILE* output_;
    std::deque<CFOptionFlags> next_;
    std::optional<CFOptionFlags> all_;
};

}  // namespace script
