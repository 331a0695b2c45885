// The journey of events: order, refusal, default behaviour, and handlers that take the ground from under themselves.

#include "platform/toolbox/Automation.h"
#include "tests/platform/toolbox/toolbox_fixture.h"

#include <vector>

namespace {

class EventsTest : public NibWindowTest {
protected:
    void SetUp() override {
        open(
            widget("QWidget", 1,
                   widget("QPushButton", 2, property("command", "string", "go  ") + property("text", "string", "Go"))));
    }
    TestHandler note(EventTargetRef target, int mark, OSStatus answer) {
        return {target, kEventClassControl, kEventControlHit, [this, mark, answer](auto, auto) {
                    order.push_back(mark);
                    return answer;
                }};
    }
    void hit(ControlRef target) {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassControl, kEventControlHit, 0, 0, &event);
        status = SendEventToEventTarget(event, GetControlEventTarget(target));
        ReleaseEvent(event);
    }

    std::vector<int> order;
    OSStatus status = noErr;
};

TEST_F(EventsTest, NewestHandlerFirstThenParentsWindowAndApplication) {
    const TestHandler application = note(GetApplicationEventTarget(), 6, eventNotHandledErr);
    const TestHandler inWindow = note(GetWindowEventTarget(window), 5, eventNotHandledErr);
    const TestHandler inPane = note(GetControlEventTarget(control(1)), 4, eventNotHandledErr);
    const TestHandler oldest = note(GetControlEventTarget(control(2)), 3, eventNotHandledErr);
    const TestHandler newest = note(GetControlEventTarget(control(2)), 2, eventNotHandledErr);
    hit(control(2));
    EXPECT_EQ(order, (std::vector{2, 3, 4, 5, 6}));
}

TEST_F(EventsTest, AnAnswerEndsTheJourneyAndTheCommand) {
    int commands = 0;
    const TestHandler command(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess,
                              [&](auto, EventRef event) {
                                  EXPECT_EQ(commandOf(event), FourCharCode("go  "));
                                  ++commands;
                                  return noErr;
                              });
    hit(control(2));
    EXPECT_EQ(commands, 1);
    {
        const TestHandler refuse = note(GetControlEventTarget(control(2)), 1, noErr);
        hit(control(2));
        EXPECT_EQ(commands, 1);
    }
    hit(control(2));
    EXPECT_EQ(commands, 2);
}

TEST_F(EventsTest, CallNextRunsTheRestOnceAndReturnsItsAnswer) {
    int defaults = 0;
    const TestHandler command(GetWindowEventTarget(window), kEventClassCommand, kEventCommandProcess, [&](auto, auto) {
        ++defaults;
        return noErr;
    });
    const TestHandler around(GetControlEventTarget(control(2)), kEventClassControl, kEventControlHit,
                             [&](EventHandlerCallRef next, EventRef event) {
                                 order.push_back(1);
                                 EXPECT_EQ(CallNextEventHandler(next, event), noErr);
                                 order.push_back(2);
                                 EXPECT_EQ(defaults, 1);
                                 return eventNotHandledErr;
                             });
    hit(control(2));
    EXPECT_EQ(order, (std::vector{1, 2}));
    EXPECT_EQ(defaults, 1);
}

TEST_F(EventsTest, HandlersMayRemoveThemselvesAndEachOther) {
    auto other = std::make_unique<TestHandler>(GetControlEventTarget(control(2)), kEventClassControl, kEventControlHit,
                                               [&](auto, auto) {
                                                   order.push_back(99);
                                                   return eventNotHandledErr;
                                               });
    EventHandlerRef own = nullptr;
    const TestHandler remover(GetControlEventTarget(control(2)), kEventClassControl, kEventControlHit, [&](auto, auto) {
        order.push_back(1);
        EXPECT_EQ(RemoveEventHandler(own), noErr);
        EXPECT_EQ(RemoveEventHandler(other->ref), noErr);
        return eventNotHandledErr;
    });
    own = remover.ref;
    hit(control(2));
    hit(control(2));
    EXPECT_EQ(order, std::vector{1});
    EXPECT_EQ(RemoveEventHandler(own), eventHandlerAlreadyRemovedErr);
    EXPECT_EQ(RemoveEventHandler(nullptr), eventHandlerAlreadyRemovedErr);
}

TEST_F(EventsTest, AHandlerMayDisposeOfItsWindowWhileAClickIsOnItsWay) {
    const TestHandler closer(GetControlEventTarget(control(2)), kEventClassControl, kEventControlHit, [&](auto, auto) {
        DisposeWindow(window);
        EXPECT_FALSE(IsValidWindowPtr(window));
        return eventNotHandledErr;
    });
    ShowWindow(window);
    EXPECT_EQ(AutomationClick(control(2)), noErr);
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST_F(EventsTest, DrawsAndTrackingStayAtTheirTarget) {
    const TestHandler pane(GetControlEventTarget(control(1)), kEventClassControl, kEventControlDraw, [&](auto, auto) {
        order.push_back(1);
        return noErr;
    });
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassControl, kEventControlDraw, 0, 0, &event);
    EXPECT_EQ(SendEventToEventTarget(event, GetControlEventTarget(control(2))), eventNotHandledErr);
    EXPECT_EQ(SendEventToEventTarget(event, GetControlEventTarget(control(1))), noErr);
    ReleaseEvent(event);
    EXPECT_EQ(order, std::vector{1});
}

TEST_F(EventsTest, ParametersKeepTypeAndSize) {
    EventRef event = nullptr;
    ASSERT_EQ(CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event), noErr);
    const SInt32 value = 7;
    SetEventParameter(event, kEventParamControlPart, typeControlPartCode, sizeof value, &value);
    SInt32 out = 0;
    ByteCount size = 0;
    EXPECT_EQ(GetEventParameter(event, kEventParamControlPart, typeVoidPtr, nullptr, sizeof out, nullptr, &out),
              eventParameterNotFoundErr);
    EXPECT_EQ(GetEventParameter(event, kEventParamControlPart, typeControlPartCode, nullptr, 2, &size, &out), noErr);
    EXPECT_EQ(size, sizeof value);
    ReleaseEvent(event);
    EXPECT_EQ(SendEventToEventTarget(nullptr, GetWindowEventTarget(window)), paramErr);
    EXPECT_EQ(InstallEventHandler(nullptr, nullptr, 0, nullptr, nullptr, nullptr), paramErr);
}

}  // namespace
