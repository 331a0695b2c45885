// Dialogs of faxes, used as a user would while their modal loops run.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"
#include "model/settings/record_ticket.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"
#include "tests/panels/plugin_fixture.h"
#include "tests/platform/contacts/contacts_fixture.h"

#include <deque>
#include <functional>

class FaxDialogTest : public ContactsTest {
protected:
    FaxDialogTest() {
        AutomationSetNoticeListener(
            [](CFStringRef header, CFStringRef message, void* told) {
                static_cast<std::vector<std::string>*>(told)->push_back(textOfCF(header) + "|" + textOfCF(message));
            },
            &notices);
    }
    ~FaxDialogTest() override { AutomationSetNoticeListener(nullptr, nullptr); }

    /// One step after the other, each when the one before has opened or closed its window.
    using Step = std::function<void()>;
    template <typename Dialog>
    SInt16 runDialog(std::deque<Step> steps, Dialog dialog) {
        steps_ = std::move(steps);
        schedule();
        const SInt16 result = dialog();
        RemoveEventLoopTimer(timer_);  // of the step after the last one
        EXPECT_TRUE(steps_.empty()) << steps_.size() << " steps are left";
        steps_.clear();
        return result;
    }

    static ControlRef control(SInt32 number) {
        const ControlID id{FourCharCode("TPDE"), number};
        ControlRef found = nullptr;
        EXPECT_EQ(GetControlByID(FrontNonFloatingWindow(), &id, &found), noErr) << number;
        return found;
    }
    static std::string shown(SInt32 number) {
        CFStringRef text = nullptr;
        GetControlData(control(number), kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text,
                       nullptr);
        return textOfCF(CFRef<CFStringRef>::adopt(text).get());
    }
    static Step click(SInt32 number) {
        return [=] { EXPECT_EQ(AutomationClick(control(number)), noErr) << number; };
    }
    static Step set(SInt32 number, SInt32 value) {
        return [=] { EXPECT_EQ(AutomationSetValue(control(number), value), noErr) << number; };
    }
    static Step type(SInt32 number, const char* text) {
        return [=] { EXPECT_EQ(AutomationType(control(number), makeCFString(text).get()), noErr) << number; };
    }
    static Step select(SInt32 browser, std::vector<UInt32> rows) {
        return [=] { EXPECT_EQ(AutomationSelectRows(control(browser), ItemCount(rows.size()), rows.data()), noErr); };
    }
    static Step chooseFile(const std::filesystem::path& path) {
        return [=] { AutomationQueueFile(makeCFURL(path).get()); };
    }
    static void press(OSStatus (*buttonOf)(WindowRef, ControlRef*)) {
        ControlRef button = nullptr;
        EXPECT_EQ(buttonOf(FrontNonFloatingWindow(), &button), noErr);
        EXPECT_EQ(AutomationClick(button), noErr);
    }
    static void ok() { press(GetWindowDefaultButton); }
    static void cancel() { press(GetWindowCancelButton); }

    FaxRecipient* add(const char* name, const char* number) {
        const FaxRecipientOwner recipient(new FaxRecipient(makeCFString(name).get(), nullptr,
                                                           number != nullptr ? makeCFString(number).get() : nullptr));
        list.append(recipient.get());
        return recipient.get();
    }
    std::string option(CFStringRef key) const { return textOfCF(GetRecordString(options.get(), key)); }
    /// The first names of the list.
    std::string names() const {
        std::string names;
        for (CFIndex i = 0; i < list.count(); ++i) {
            names += textOfCF(list.recipientAtIndex(i)->firstName()) + " ";
        }
        return names;
    }

    PluginBundle plugin;
    CFRef<CFMutableDictionaryRef> options = makeCFDictionary();
    FaxRecipientList list;
    std::vector<std::string> notices;

private:
    void schedule() {
        InstallEventLoopTimer(
            0.005, 0,
            [](EventLoopTimerRef timer, void* self) {
                RemoveEventLoopTimer(timer);
                auto& test = *static_cast<FaxDialogTest*>(self);
                test.timer_ = nullptr;
                if (test.steps_.empty()) {
                    return;
                }
                const Step step = std::move(test.steps_.front());
                test.steps_.pop_front();
                test.schedule();  // before the step, which may run a dialog
                step();
            },
            this, &timer_);
    }

    std::deque<Step> steps_;
    EventLoopTimerRef timer_ = nullptr;
};
