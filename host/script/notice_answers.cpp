#include "host/script/notice_answers.h"

#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Notices.h"

#include <sstream>

namespace script {

NoticeAnswers::NoticeAnswers(std::FILE* output) : output_(output) {
    AutomationSetNoticeListener(told, this);
}

NoticeAnswers::~NoticeAnswers() {
    AutomationSetNoticeListener(nullptr, nullptr);
}

void NoticeAnswers::give(Answer answer) {
    if (answer.all) {
        all_ = answer.response;
    } else {
        next_.push_back(answer.response);
    }
}

void NoticeAnswers::told(CFStringRef header, CFStringRef message, void* self) {
    auto& answers = *static_cast<NoticeAnswers*>(self);
    printLine(answers.output_, "notice: " + utf8Text(header));
    std::istringstream lines(utf8Text(message));
    for (std::string line; std::getline(lines, line);) {
        printLine(answers.output_, "        " + line);
    }
    std::fflush(answers.output_);
    // The toolbox asks its queue when this returns.
    if (!answers.next_.empty()) {
        AutomationQueueAnswer(answers.next_.front());
        answers.next_.pop_front();
    } else if (answers.all_) {
        AutomationQueueAnswer(*answers.all_ | CFUserNotificationCheckBoxChecked(0));
    }
}

}  // namespace script
