#include "host/script/stage.h"

#include "host/script/quoted.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Menus.h"

namespace script {

ControlRef findControl(const Stage& stage, const ControlName& name) {
    if (!name.name.empty()) {
        ControlRef control = nullptr;
        AutomationFindControl(FrontNonFloatingWindow(), makeString(name.name).get(), &control);
        return control;
    }
    const ControlID id{name.signature, name.number};
    for (const WindowRef window : {FrontNonFloatingWindow(), stage.mainWindow}) {
        ControlRef control = nullptr;
        if (GetControlByID(window, &id, &control) == noErr) {
            return control;
        }
    }
    return nullptr;
}

std::string nameOf(ControlRef control) {
    const auto name = CFRef<CFStringRef>::adopt(AutomationCopyControlName(control));
    ControlID id{};
    GetControlID(control, &id);
    return name || id.signature != 0 ? controlNameText({id.signature, id.id, utf8Text(name.get())}) : std::string();
}

bool isShown(ControlRef control) {
    for (ControlRef step = control; step != nullptr; step = GetSuperControl(step)) {
        // The window itself is a control as well; it is in front, so it is shown.
        if (GetSuperControl(step) != nullptr && !IsControlVisible(step)) {
            return false;
        }
    }
    return control != nullptr;
}

bool isSecret(ControlRef control) {
    return GetControlKind(control) == ControlKind::passwordText;
}

std::string itemText(MenuRef menu, MenuItemIndex item) {
    CFStringRef text = nullptr;
    CopyMenuItemTextAsCFString(menu, item, &text);
    return utf8Text(CFRef<CFStringRef>::adopt(text).get());
}

std::string textOf(ControlRef control) {
    CFStringRef text = nullptr;
    switch (GetControlKind(control)) {
        case ControlKind::popUp:
            if (const MenuRef menu = GetControlPopupMenuHandle(control)) {
                return itemText(menu, static_cast<MenuItemIndex>(GetControl32BitValue(control)));
            }
            [[fallthrough]];
        case ControlKind::editText:
        case ControlKind::passwordText:
        case ControlKind::textView:
        case ControlKind::staticText:
        case ControlKind::clock:
            GetControlData(control, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
            break;
        case ControlKind::pushButton:
        case ControlKind::bevelButton:
        case ControlKind::checkBox:
        case ControlKind::radioButton:
        case ControlKind::groupBox:
        case ControlKind::customView:
            CopyControlTitleAsCFString(control, &text);
            break;
        default:
            break;
    }
    return utf8Text(CFRef<CFStringRef>::adopt(text).get());
}

std::string printableTextOf(ControlRef control) {
    if (isSecret(control)) {
        return textOf(control).empty() ? "\"\"" : kDots;
    }
    return quoted(textOf(control));
}

}  // namespace script
