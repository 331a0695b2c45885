// What a script expects of controls and windows.
#include "host/script/actions.h"
#include "host/script/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Menus.h"

namespace script {

namespace {

std::optional<std::string> compare(const std::string& name, const char* what, CFIndex is, SInt32 expected) {
    if (is == expected) {
        return std::nullopt;
    }
    return name + " has " + what + " " + std::to_string(is) + ", not " + std::to_string(expected);
}

std::optional<std::string> compareText(const std::string& name, ControlRef control, const std::string& expected) {
    if (textOf(control) == expected) {
        return std::nullopt;
    }
    if (isSecret(control)) {
        return name + " holds another text than the expected one (neither is shown)";
    }
    return name + " has the text " + printableTextOf(control) + ", not " + quoted(expected);
}

/// Of its menu, or of its list where it has none.
CFIndex itemsOf(ControlRef control) {
    const MenuRef menu = GetControlPopupMenuHandle(control);
    return menu != nullptr ? CountMenuItems(menu) : AutomationCountRows(control);
}

std::optional<std::string> compareState(const std::string& name, bool isAsExpected, const char* otherwise) {
    return isAsExpected ? std::nullopt : std::optional(name + " is " + otherwise);
}

}  // namespace

std::optional<std::string> check(const Expect& expect, const Stage& stage) {
    const std::string name = controlNameText(expect.control);
    ControlRef control = findControl(stage, expect.control);
    if (control == nullptr) {
        return "there is no control " + name;
    }
    switch (expect.aspect) {
        case Aspect::value:
            return compare(name, "the value", GetControl32BitValue(control), expect.number);
        case Aspect::text:
            return compareText(name, control, expect.text);
        case Aspect::enabled:
            return compareState(name, IsControlEnabled(control), "disabled");
        case Aspect::disabled:
            return compareState(name, !IsControlEnabled(control), "enabled");
        case Aspect::hidden:
            return compareState(name, !isShown(control), "visible");
        case Aspect::visible:
            return compareState(name, isShown(control), "hidden");
        case Aspect::items:
            return compare(name, "a number of items of", itemsOf(control), expect.number);
        case Aspect::rows:
            return compare(name, "a number of rows of", AutomationCountRows(control), expect.number);
    }
    return std::nullopt;
}

std::optional<std::string> check(const ExpectWindow& expect) {
    CFStringRef title = nullptr;
    if (CopyWindowTitleAsCFString(FrontNonFloatingWindow(), &title) != noErr) {
        return "no window is open";
    }
    const std::string text = utf8(CFRef<CFStringRef>::adopt(title).get());
    if (text == expect.title) {
        return std::nullopt;
    }
    return "the front window is " + quoted(text) + ", not " + quoted(expect.title);
}

std::optional<std::string> check(const ExpectConflicts& expect, const Stage& stage) {
    if (!stage.conflicts) {
        return "there are no settings that could be in conflict";
    }
    const std::vector<std::string> conflicts = stage.conflicts();
    if (static_cast<SInt32>(conflicts.size()) == expect.number) {
        return std::nullopt;
    }
    std::string reason =
        "the number of conflicts is " + std::to_string(conflicts.size()) + ", not " + std::to_string(expect.number);
    for (const std::string& conflict : conflicts) {
        reason += "; " + conflict;
    }
    return reason;
}

}  // namespace script
