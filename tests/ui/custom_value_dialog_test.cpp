// The dialog that asks for one text, used as a user would while its modal loop runs.

#include "ui/custom_value_dialog.h"

#include "platform/toolbox/Automation.h"
#include "tests/panels/plugin_fixture.h"

#include <optional>

namespace {

class CustomValueDialogTest : public testing::Test {
protected:
    /// Runs the dialog; `use` gets its window once it is up, and must end it.
    std::optional<std::string> run(const char* initial, SInt32 maximum, std::function<void(WindowRef)> use) {
        use_ = std::move(use);
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0.01, 0,
            [](EventLoopTimerRef, void* self) {
                static_cast<CustomValueDialogTest*>(self)->use_(FrontNonFloatingWindow());
            },
            this, &timer);
        const CFRef<CFStringRef> given = initial != nullptr ? String(initial) : nullptr;
        CFStringRef text = given.get();
        result = 0;
        status = RunModalCustomValueDialog(plugin.bundle(), maximum, &text, &result);
        RemoveEventLoopTimer(timer);
        const auto owner = CFRef<CFStringRef>::adopt(text);
        return text != nullptr ? std::optional(Text(text)) : std::nullopt;
    }
    static ControlRef field(WindowRef window) {
        const ControlID id{FourCharCode("TPDE"), 123456};
        ControlRef control = nullptr;
        EXPECT_EQ(GetControlByID(window, &id, &control), noErr);
        return control;
    }
    static void press(WindowRef window, OSStatus (*buttonOf)(WindowRef, ControlRef*)) {
        ControlRef button = nullptr;
        EXPECT_EQ(buttonOf(window, &button), noErr);
        EXPECT_EQ(AutomationClick(button), noErr);
    }

    PluginBundle plugin;
    OSStatus status = noErr;
    SInt16 result = 0;

private:
    std::function<void(WindowRef)> use_;
};

TEST_F(CustomValueDialogTest, OKGivesTheTypedTextWithinTheLimit) {
    const auto text = run("abc", 5, [](WindowRef window) {
        CFStringRef shown = nullptr;
        GetControlData(field(window), kControlEntireControl, kControlEditTextCFStringTag, sizeof shown, &shown,
                       nullptr);
        EXPECT_EQ(Text(CFRef<CFStringRef>::adopt(shown).get()), "abc");
        ControlRef focused = nullptr;
        GetKeyboardFocus(window, &focused);
        EXPECT_EQ(focused, field(window));
        AutomationType(field(window), CFSTR("1234567"));
        press(window, GetWindowDefaultButton);
    });
    EXPECT_EQ(text, "12345");
    EXPECT_EQ(result, kCustomValueOK);
    EXPECT_EQ(status, noErr);
}

TEST_F(CustomValueDialogTest, CancelGivesNoText) {
    const auto text = run(nullptr, 5, [](WindowRef window) {
        AutomationType(field(window), CFSTR("123"));
        press(window, GetWindowCancelButton);
    });
    EXPECT_EQ(text, std::nullopt);
    EXPECT_EQ(result, kCustomValueCancel);
    EXPECT_EQ(status, noErr);
}

TEST_F(CustomValueDialogTest, AMissingNibCountsAsCancelled) {
    TestBundle empty("com.example.empty");
    CFStringRef text = CFSTR("given");
    EXPECT_EQ(RunModalCustomValueDialog(empty.bundle(), 5, &text, &result), kNibNotFoundErr);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(result, kCustomValueCancel);
}

}  // namespace
