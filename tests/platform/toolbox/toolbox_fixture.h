// What the toolbox tests share: a nib window and short words for its controls.
#pragma once

#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Windows.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>
#include <functional>
#include <string>

inline constexpr OSType kTest = FourCharCode("Test");

/// Opens a window from Designer XML and finds its controls by number, signature 'Test'.
class NibWindowTest : public testing::Test {
protected:
    void open(const std::string& content) {
        bundle.addNib("Nib", "Window", content);
        IBNibRef nib = nullptr;
        ASSERT_EQ(CreateNibReferenceWithCFBundle(bundle.bundle(), CFSTR("Nib"), &nib), noErr);
        ASSERT_EQ(CreateWindowFromNib(nib, CFSTR("Window"), &window), noErr);
        DisposeNibReference(nib);
    }
    void TearDown() override { DisposeWindow(window); }

    ControlRef control(SInt32 number) const {
        const ControlID id{kTest, number};
        ControlRef found = nullptr;
        EXPECT_EQ(GetControlByID(window, &id, &found), noErr) << number;
        return found;
    }

    static std::string text(ControlRef control) {
        CFStringRef title = nullptr;
        EXPECT_EQ(CopyControlTitleAsCFString(control, &title), noErr);
        const auto owner = CFRef<CFStringRef>::adopt(title);
        char buffer[1024] = "";
        CFStringGetCString(title, buffer, sizeof buffer, kCFStringEncodingUTF8);
        return buffer;
    }

    /// Designer XML of a control: class, number, further properties, children.
    static std::string widget(const std::string& type, int number, const std::string& more = {}) {
        return "<widget class=\"" + type + "\" name=\"w" + std::to_string(number) + "\">" +
               property("signature", "string", "Test") + property("number", "number", std::to_string(number)) + more +
               "</widget>";
    }
    static std::string property(const std::string& name, const std::string& type, const std::string& value) {
        return "<property name=\"" + name + "\"><" + type + ">" + value + "</" + type + "></property>";
    }

    static std::string rectangle(int left, int top, int width, int height) {
        const auto part = [](const std::string& name, int value) {
            return "<" + name + ">" + std::to_string(value) + "</" + name + ">";
        };
        return property("geometry", "rect",
                        part("x", left) + part("y", top) + part("width", width) + part("height", height));
    }

    TestBundle bundle;
    WindowRef window = nullptr;
};

/// A handler made of a function, for as long as it lives.
class TestHandler {
public:
    using Function = std::function<OSStatus(EventHandlerCallRef, EventRef)>;

    TestHandler(EventTargetRef target, OSType eventClass, UInt32 kind, Function function)
        : function_(std::move(function)) {
        const EventTypeSpec type{eventClass, kind};
        EXPECT_EQ(InstallEventHandler(target, &call, 1, &type, this, &ref), noErr);
    }
    ~TestHandler() { RemoveEventHandler(ref); }
    TestHandler(const TestHandler&) = delete;
    TestHandler& operator=(const TestHandler&) = delete;

    EventHandlerRef ref = nullptr;

private:
    static OSStatus call(EventHandlerCallRef next, EventRef event, void* self) {
        return static_cast<TestHandler*>(self)->function_(next, event);
    }
    Function function_;
};

inline OSType commandOf(EventRef event) {
    HICommand command{};
    EXPECT_EQ(
        GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command),
        noErr);
    return command.commandID;
}
