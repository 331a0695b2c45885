// Notices: shown as message boxes, or answered as a scripted run has arranged.

#include "platform/toolbox/Notices.h"

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QCheckBox>
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
    switch (level & ~kCFUserNotificationDefaultIsCancelFlag) {
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

struct Notice {
    CFOptionFlags level;
    CFStringRef header;
    CFStringRef message;
    CFStringRef checkBox;  // null: none
    std::vector<NoticeButton> buttons;
};

/// A title in which '&' is a character like others.
QString literal(CFStringRef title) {
    return toQString(title).replace(u'&', QStringLiteral("&&"));
}

CFOptionFlags askUser(const Notice& notice) {
    // Also of a program that is behind another one just now.
    const WindowRef front = FrontNonFloatingWindow();
    QWidget* const active = QApplication::activeWindow();
    QMessageBox box(iconOf(notice.level), {}, toQString(notice.header), {},
                    active != nullptr || front == nullptr ? active : front->widget);
    // Without a title of its own a notice has the program's file name.
    box.setWindowTitle(box.parentWidget() != nullptr ? box.parentWidget()->windowTitle() : box.text());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(toQString(notice.message));
    // What is read aloud when the box appears, which Qt announces.
    box.setAccessibleName(toQString(notice.header));
    box.setAccessibleDescription(toQString(notice.message));
    if (notice.checkBox != nullptr) {
        box.setCheckBox(new QCheckBox(literal(notice.checkBox)));
    }
    std::vector<QAbstractButton*> shown;
    for (const NoticeButton& button : notice.buttons) {
        const QString title = literal(button.title);
        shown.push_back(title.isEmpty() ? box.addButton(QMessageBox::Ok) : box.addButton(title, button.role));
    }
    const auto escape =
        (notice.level & kCFUserNotificationDefaultIsCancelFlag) != 0
            ? notice.buttons.begin()
            : std::ranges::find(notice.buttons, kCFUserNotificationAlternateResponse, &NoticeButton::response);
    box.setDefaultButton(static_cast<QPushButton*>(shown.front()));
    box.setEscapeButton(shown[escape == notice.buttons.end() ? 0 : escape - notice.buttons.begin()]);
    box.exec();
    const auto clicked = std::ranges::find(shown, box.clickedButton());
    const bool ticked = box.checkBox() != nullptr && box.checkBox()->isChecked();
    return notice.buttons[clicked == shown.end() ? 0 : clicked - shown.begin()].response |
           (ticked ? CFUserNotificationCheckBoxChecked(0) : 0);
}

/// The next answer that was arranged; a button that the notice does not have cannot be pressed, nor a check box ticked.
CFOptionFlags arrangedAnswer(const Notice& notice) {
    auto& answers = arrangement().answers;
    if (answers.empty()) {
        return kCFUserNotificationDefaultResponse;
    }
    const CFOptionFlags answer = answers.front();
    answers.pop_front();
    const CFOptionFlags button = answer & kCFUserNotificationResponseMask;
    const CFOptionFlags ticks = notice.checkBox != nullptr ? answer & CFUserNotificationCheckBoxChecked(0) : 0;
    const bool has = std::ranges::count(notice.buttons, button, &NoticeButton::response) > 0;
    return (has ? button : kCFUserNotificationDefaultResponse) | ticks;
}

SInt32 display(const Notice& notice, CFOptionFlags* response) {
    if (const Arrangement& a = arrangement(); a.listener) {
        a.listener(notice.header, notice.message, a.listenerData);
    }
    const CFOptionFlags answer = toolboxState().scripted ? arrangedAnswer(notice) : askUser(notice);
    if (response) {
        *response = answer;
    }
    return noErr;
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
    return display({level, header, message, nullptr, std::move(buttons)}, response);
}

SInt32 CFUserNotificationDisplayAlertWithCheckBox(CFOptionFlags level, CFStringRef header, CFStringRef message,
                                                  CFStringRef checkBox, CFStringRef defaultButton,
                                                  CFStringRef alternateButton, CFOptionFlags* response) {
    return display({level,
                    header,
                    message,
                    checkBox,
                    {{defaultButton, kCFUserNotificationDefaultResponse, QMessageBox::AcceptRole},
                     {alternateButton, kCFUserNotificationAlternateResponse, QMessageBox::RejectRole}}},
                   response);
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
