// Clock controls: their date records, and times as users of different countries type them.

#include "platform/toolbox/Automation.h"
#include "platform/toolbox/objects.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <QGuiApplication>
#include <QLocale>

namespace {

class ClockTest : public NibWindowTest {
protected:
    void show(const char* locale) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        open(widget("QTimeEdit", 1, rectangle(10, 10, 150, 30)) +
             widget("QDateTimeEdit", 2, rectangle(10, 50, 250, 30)) +
             widget("QLineEdit", 3, rectangle(10, 90, 150, 30)));
        ShowWindow(window);
    }
    void TearDown() override {
        NibWindowTest::TearDown();
        QLocale::setDefault(QLocale::system());
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

    OSStatus set(SInt32 number, const LongDateRec& date) const {
        return SetControlData(control(number), kControlEntireControl, kControlClockLongDateTag, sizeof date, &date);
    }
    LongDateTime seconds(SInt32 number) const {
        LongDateRec date{};
        EXPECT_EQ(GetControlData(control(number), kControlEntireControl, kControlClockLongDateTag, sizeof date, &date,
                                 nullptr),
                  noErr);
        LongDateTime moment = 0;
        LongDateToSeconds(&date, &moment);
        return moment;
    }
    OSStatus type(SInt32 number, const char* words) const {
        const auto string = CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, words, kCFStringEncodingUTF8));
        return AutomationType(control(number), string.get());
    }
};

TEST_F(ClockTest, KeepsTheMomentThatItWasGiven) {
    show("de_DE");
    ASSERT_EQ(GetControlKind(control(1)), ControlKind::clock);
    int hits = 0;
    const TestHandler handler(GetWindowEventTarget(window), kEventClassControl, kEventControlHit,
                              [&](EventHandlerCallRef, EventRef) { return ++hits, noErr; });
    // A time that this day does not have where clocks are changed, and moments at both ends.
    for (const LongDateRec& date : {LongDateRec{{2026, 3, 29, 2, 30, 0}}, LongDateRec{{1904, 1, 1, 0, 0, 0}},
                                    LongDateRec{{2040, 2, 29, 23, 59, 59}}, LongDateRec{{9999, 12, 31, 12, 0, 0}}}) {
        LongDateTime moment = 0;
        LongDateToSeconds(&date, &moment);
        for (const SInt32 number : {1, 2}) {
            EXPECT_EQ(set(number, date), noErr) << date.ld.year;
            EXPECT_EQ(seconds(number), moment) << date.ld.year;
        }
    }
    const LongDateTime before = seconds(1);
    for (const LongDateRec& wrong : {LongDateRec{{2026, 2, 29, 0, 0, 0}}, LongDateRec{{2026, 1, 1, 24, 0, 0}},
                                     LongDateRec{{0, 1, 1, 0, 0, 0}}, LongDateRec{{32767, 12, 31, 0, 0, 0}}}) {
        EXPECT_EQ(set(1, wrong), paramErr);
        EXPECT_EQ(seconds(1), before);
    }
    EXPECT_EQ(hits, 0) << "the program sets no events off";
    const LongDateRec any{{2026, 1, 1, 0, 0, 0}};
    EXPECT_EQ(set(3, any), errDataNotSupported);
    EXPECT_EQ(SetControlData(control(1), 0, kControlClockLongDateTag, 1, &any), paramErr);
}

TEST_F(ClockTest, IsReadAndTypedInTheUsersWay) {
    // locale, typed, shown, hour, minute
    struct Case {
        const char* locale;
        const char* typed;
        const char* shown;
        SInt16 hour;
        SInt16 minute;
    };
    constexpr Case kCases[] = {
        {"de_DE", "18:30", "18:30", 18, 30},       {"de_DE", "9:05", "09:05", 9, 5},
        {"en_US", "6:30 PM", "6:30 PM", 18, 30},   {"en_US", "12:00 AM", "12:00 AM", 0, 0},
        {"en_US", "11:59 AM", "11:59 AM", 11, 59}, {"ar_EG", "٦:٣٠ م", "٦:٣٠ م", 18, 30},
    };
    for (const Case& c : kCases) {
        QGuiApplication::setLayoutDirection(QLocale(QString::fromLatin1(c.locale)).textDirection());
        show(c.locale);
        int hits = 0;
        const TestHandler handler(GetControlEventTarget(control(1)), kEventClassControl, kEventControlHit,
                                  [&](EventHandlerCallRef, EventRef) { return ++hits, noErr; });
        set(1, {{2026, 11, 21, 15, 45, 0}});
        EXPECT_EQ(type(1, c.typed), noErr) << c.typed;
        LongDateTime expected = 0;
        const LongDateRec date{{2026, 11, 21, c.hour, c.minute, 0}};
        LongDateToSeconds(&date, &expected);
        EXPECT_EQ(seconds(1), expected) << c.typed;
        std::string shown = text(control(1));
        if (const std::size_t narrow = shown.find("\u202F"); narrow != std::string::npos) {
            shown.replace(narrow, 3, " ");  // what newer locales have in front of "PM"
        }
        EXPECT_EQ(shown, c.shown);
        EXPECT_GT(hits, 0);
        ControlRef focused = nullptr;
        GetKeyboardFocus(window, &focused);
        EXPECT_EQ(focused, control(1));
        EXPECT_EQ(type(1, "1:2:3:4"), paramErr);
        DisableControl(control(1));
        EXPECT_EQ(type(1, c.typed), kControlNotUsableErr);
        DisposeWindow(window);
        window = nullptr;
    }
}

}  // namespace
