// Notices: answered as arranged in a scripted run, by buttons and keys otherwise.

#include "platform/toolbox/Notices.h"

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/automation_input.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

namespace {

constexpr CFOptionFlags kNone = 77;

CFOptionFlags ask(CFStringRef alternate, CFStringRef other = nullptr, CFStringRef defaultTitle = CFSTR("Go"),
                  CFOptionFlags level = kCFUserNotificationCautionAlertLevel) {
    CFOptionFlags response = kNone;
    EXPECT_EQ(CFUserNotificationDisplayAlert(0, level, nullptr, nullptr, nullptr, CFSTR("Really?"),
                                             CFSTR("<b>All</b> is lost."), defaultTitle, alternate, other, &response),
              noErr);
    return response;
}

CFOptionFlags askWithCheckBox() {
    CFOptionFlags response = kNone;
    EXPECT_EQ(
        CFUserNotificationDisplayAlertWithCheckBox(kCFUserNotificationCautionAlertLevel, CFSTR("Really?"), nullptr,
                                                   CFSTR("Me & all"), CFSTR("Go"), CFSTR("Stop"), &response),
        noErr);
    return response;
}
constexpr CFOptionFlags kTicked = CFUserNotificationCheckBoxChecked(0);

TEST(NoticesTest, AnArrangedTickNeedsACheckBox) {
    for (int i = 0; i < 2; ++i) {
        AutomationQueueAnswer(kCFUserNotificationAlternateResponse | kTicked);
    }
    EXPECT_EQ(ask(CFSTR("Stop")), kCFUserNotificationAlternateResponse);
    EXPECT_EQ(askWithCheckBox(), kCFUserNotificationAlternateResponse | kTicked);
    EXPECT_EQ(askWithCheckBox(), kCFUserNotificationDefaultResponse) << "unticked at first";
}

TEST(NoticesTest, ScriptedAnswersComeInOrderAndOnlyFromButtonsThatAreThere) {
    std::vector<QString> told;
    AutomationSetNoticeListener(
        [](CFStringRef header, CFStringRef message, void* list) {
            static_cast<std::vector<QString>*>(list)->push_back(toQString(header) + u'|' + toQString(message));
        },
        &told);
    AutomationQueueAnswer(kCFUserNotificationAlternateResponse);
    AutomationQueueAnswer(kCFUserNotificationOtherResponse);
    EXPECT_EQ(ask(CFSTR("Stop")), kCFUserNotificationAlternateResponse);
    EXPECT_EQ(ask(CFSTR("Stop")), kCFUserNotificationDefaultResponse) << "there is no other button";
    EXPECT_EQ(ask(CFSTR("Stop"), CFSTR("Help")), kCFUserNotificationDefaultResponse) << "nothing is arranged any more";
    AutomationSetNoticeListener(nullptr, nullptr);
    EXPECT_EQ(told, std::vector(3, QStringLiteral("Really?|<b>All</b> is lost.")));
    EXPECT_EQ(CFUserNotificationDisplayAlert(5, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                             nullptr, nullptr),
              paramErr);
}

/// Shows notices as to a user and acts on them when they are open.
class ShownNoticeTest : public testing::Test {
protected:
    void SetUp() override { toolboxState().scripted = false; }
    void TearDown() override { toolboxState().scripted = true; }

    static void whenShown(std::function<void(QMessageBox&)> act) {
        QTimer::singleShot(0, [act = std::move(act)] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            act(*box);
            if (box->isVisible()) {
                box->close();
            }
        });
    }
    static auto escape() {
        return [](QMessageBox& box) { userPresses(&box, Qt::Key_Escape); };
    }
};

TEST_F(ShownNoticeTest, EscapeIsTheAlternateAnswerOrElseTheDefault) {
    whenShown(escape());
    EXPECT_EQ(ask(CFSTR("Stop"), CFSTR("Help")), kCFUserNotificationAlternateResponse);
    whenShown(escape());
    EXPECT_EQ(ask(CFSTR("Repair"), CFSTR("Print"), CFSTR("Back"),
                  kCFUserNotificationCautionAlertLevel | kCFUserNotificationDefaultIsCancelFlag),
              kCFUserNotificationDefaultResponse);
    for (const CFStringRef other : {CFStringRef{}, CFSTR("Print")}) {
        whenShown(escape());
        EXPECT_EQ(ask(nullptr, other, nullptr), kCFUserNotificationDefaultResponse);
    }
}

TEST_F(ShownNoticeTest, ButtonsAnswerAndTextsAreShownAsTheyAre) {
    whenShown([](QMessageBox& box) {
        for (const QLabel* label : box.findChildren<QLabel*>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
        for (QAbstractButton* button : box.buttons()) {
            if (button->text() == QStringLiteral("Copy && Help")) {
                userClicks(button);
            }
        }
    });
    EXPECT_EQ(ask(CFSTR("Stop"), CFSTR("Copy & Help")), kCFUserNotificationOtherResponse);
    whenShown([](QMessageBox& box) { userPresses(&box, Qt::Key_Return); });
    EXPECT_EQ(ask(CFSTR("Stop")), kCFUserNotificationDefaultResponse);
    whenShown([](QMessageBox& box) {
        userPresses(&box, Qt::Key_Tab);
        userPresses(&box, Qt::Key_Return);
    });
    EXPECT_EQ(ask(CFSTR("Stop")), kCFUserNotificationAlternateResponse) << "the button with the focus";
}

/// Qt announces a message box when it appears, by its name and description.
TEST_F(ShownNoticeTest, CanBeReadAloud) {
    whenShown([](QMessageBox& box) {
        const QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(&box);
        EXPECT_EQ(read->text(QAccessible::Name), QStringLiteral("Really?"));
        EXPECT_EQ(read->text(QAccessible::Description), QStringLiteral("<b>All</b> is lost."));
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Really?")) << "not the program's file name";
        userPresses(&box, Qt::Key_Return);
    });
    ask(CFSTR("Stop"));
}

TEST_F(ShownNoticeTest, TheCheckBoxIsPartOfTheAnswer) {
    whenShown([](QMessageBox& box) {
        EXPECT_EQ(box.checkBox()->text(), QStringLiteral("Me && all"));
        userClicks(box.checkBox());
        userPresses(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(askWithCheckBox(), kCFUserNotificationAlternateResponse | kTicked);
    whenShown([](QMessageBox& box) { userPresses(&box, Qt::Key_Return); });
    EXPECT_EQ(askWithCheckBox(), kCFUserNotificationDefaultResponse);
}

}  // namespace
