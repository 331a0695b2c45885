// What a script expects of controls and windows.
#include "host/script/actions.h"
#include "host/script/quoted.h"
#include "platform/foundation/message.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Menus.h"

namespace script {

namespace {

/// `english` is a message of the name, the number that it is and the one that it should be.
std::optional<std::string> compare(const std::string& name, const char* english, CFIndex is, SInt32 expected) {
    if (is == expected) {
        return std::nullopt;
    }
    return messageText(english, {name, is, expected});
}

std::optional<std::string> compareText(const std::string& name, ControlRef control, const std::string& expected) {
    if (textOf(control) == expected) {
        return std::nullopt;
    }
    if (isSecret(control)) {
        return messageText("%1 holds another text than the expected one (neither is shown)", {name});
    }
    return messageText("%1 has the text %2, not %3", {name, printableTextOf(control), quoted(expected)});
}

/// Of its menu, or of its list where it has none.
CFIndex itemsOf(ControlRef control) {
    const MenuRef menu = GetControlPopupMenuHandle(control);
    return menu != nullptr ? CountMenuItems(menu) : AutomationCountRows(control);
}

std::optional<std::string> compareState(const std::string& name, bool isAsExpected, const char* english) {
    return isAsExpected ? std::nullopt : std::optional(messageText(english, {name}));
}

}  // namespace

std::optional<std::string> check(const Expect& expect, const Stage& stage) {
    const std::string name = controlNameText(expect.control);
    ControlRef control = findControl(stage, expect.control);
    if (control == nullptr) {
        return messageText("there is no control %1", {name});
    }
    switch (expect.aspect) {
        case Aspect::value:
            return compare(name, "%1 has the value %2, not %3", GetControl32BitValue(control), expect.number);
        case Aspect::text:
            return compareText(name, control, expect.text);
        case Aspect::enabled:
            return compareState(name, IsControlEnabled(control), "%1 is disabled");
        case Aspect::disabled:
            return compareState(name, !IsControlEnabled(control), "%1 is enabled");
        case Aspect::hidden:
            return compareState(name, !isShown(control), "%1 is visible");
        case Aspect::visible:
            return compareState(name, isShown(control), "%1 is hidden");
        case Aspect::items:
            return compare(name, "%1 has a number of items of %2, not %3", itemsOf(control), expect.number);
        case Aspect::rows:
            return compare(name, "%1 has a number of rows of %2, not %3", AutomationCountRows(control), expect.number);
    }
    return std::nullopt;
}

std::optional<std::string> check(const ExpectWindow& expect) {
    CFStringRef title = nullptr;
    if (CopyWindowTitleAsCFString(FrontNonFloatingWindow(), &title) != noErr) {
        return messageText("no window is open");
    }
    const std::string text = utf8Text(CFRef<CFStringRef>::adopt(title).get());
    if (text == expect.title) {
        return std::nullopt;
    }
    return messageText("the front window is %1, not %2", {quoted(text), quoted(expect.title)});
}

std::optional<std::string> check(const ExpectConflicts& expect, const Stage& stage) {
    if (!stage.conflicts) {
        return messageText("there are no settings that could be in conflict");
    }
    const std::vector<std::string> conflicts = stage.conflicts();
    if (static_cast<SInt32>(conflicts.size()) == expect.number) {
        return std::nullopt;
    }
    std::string reason = messageText("the number of conflicts is %1, not %2", {conflicts.size(), expect.number});
    for (const std::string& conflict : conflicts) {
        reason += "; " + conflict;
    }
    return reason;
}

}  // namespace script
