// Notices: shown as message boxes, or answered as a scripted run has arranged.

#include "platform/toolbox/Notices.h"

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <deque>

namespace {

/// What a scripted run has arranged for its notices.
struct Arrangement {
    std::deque<CFOptionFlags> answers;
    AutomationNoticeListener listener = nullptr;
    void* listenerData = nullptr;
};

Arrangement& arrangement() {
    static Arrangement one;
    return one;
}

QMessageBox::Icon iconOf(CFOptionFlags level) {
    switch (level) {
        case kCFUserNotificationStopAlertLevel:
            return QMessageBox::Critical;
        case kCFUserNotificationCautionAlertLevel:
            return QMessageBox::Warning;
        default:
            return QMessageBox::Information;
    }
}

struct NoticeButton {
    CFStringRef title;
    CFOptionFlags response;
    QMessageBox::ButtonRole role;
};

CFOptionFlags askUser(CFOptionFlags level, CFStringRef header, CFStringRef message,
                      const std::vector<NoticeButton>& buttons) {
    QMessageBox box(iconOf(level), {}, toQString(header), {}, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(toQString(message));
    for (QLabel* label : box.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);  // texts may hold what a file or a person is called
    }
    std::vector<QAbstractButton*> shown;
    for (const NoticeButton& button : buttons) {
        const QString title = toQString(button.title).replace(u'&', QStringLiteral("&&"));
        shown.push_back(title.isEmpty() ? box.addButton(QMessageBox::Ok) : box.addButton(title, button.role));
    }
    const auto escape = std::ranges::find(buttons, kCFUserNotificationAlternateResponse, &NoticeButton::response);
    box.setDefaultButton(static_cast<QPushButton*>(shown.front()));
    box.setEscapeButton(shown[escape == buttons.end() ? 0 : escape - buttons.begin()]);
    box.exec();
    const auto clicked = std::ranges::find(shown, box.clickedButton());
    return buttons[clicked == shown.end() ? 0 : clicked - shown.begin()].response;
}

/// The next answer that was arranged; a button that the notice does not have cannot be pressed.
CFOptionFlags arrangedAnswer(const std::vector<NoticeButton>& buttons) {
    auto& answers = arrangement().answers;
    if (answers.empty()) {
        return kCFUserNotificationDefaultResponse;
    }
    const CFOptionFlags answer = answers.front();
    answers.pop_front();
    return std::ranges::count(buttons, answer, &NoticeButton::response) ? answer : kCFUserNotificationDefaultResponse;
}

}  // namespace

SInt32 CFUserNotificationDisplayAlert(double timeout, CFOptionFlags level, CFURLRef icon, CFURLRef sound,
                                      CFURLRef localization, CFStringRef header, CFStringRef message,
                                      CFStringRef defaultButton, CFStringRef alternateButton, CFStringRef otherButton,
                                      CFOptionFlags* response) {
    if (timeout != 0 || icon || sound || localization) {
        return paramErr;
    }
    std::vector<NoticeButton> buttons{{defaultButton, kCFUserNotificationDefaultResponse, QMessageBox::AcceptRole}};
    if (alternateButton) {
        buttons.push_back({alternateButton, kCFUserNotificationAlternateResponse, QMessageBox::RejectRole});
    }
    if (otherButton) {
        buttons.push_back({otherButton, kCFUserNotificationOtherResponse, QMessageBox::ActionRole});
    }
    if (const Arrangement& a = arrangement(); a.listener) {
        a.listener(header, message, a.listenerData);
    }
    const CFOptionFlags answer =
        toolboxState().scripted ? arrangedAnswer(buttons) : askUser(level, header, message, buttons);
    if (response) {
        *response = answer;
    }
    return noErr;
}

void SysBeep(SInt16) {
    ++toolboxState().beeps;
    QApplication::beep();
}

UInt32 AutomationCountBeeps() {
    return toolboxState().beeps;
}

void AutomationQueueAnswer(CFOptionFlags response) {
    arrangement().answers.push_back(response);
}

void AutomationSetNoticeListener(AutomationNoticeListener listener, void* userData) {
    arrangement().listener = listener;
    arrangement().listenerData = userData;
}
