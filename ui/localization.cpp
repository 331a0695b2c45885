#include "ui/localization.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Windows.h"

CFRef<CFStringRef> CopyLocalizedText(CFBundleRef bundle, CFStringRef key) {
    return CFRef<CFStringRef>::adopt(CFBundleCopyLocalizedString(bundle, key, CFSTR("STRING NOT FOUND"), nullptr));
}

void SetLocalizedStaticText(CFBundleRef bundle, CFStringRef key, ControlRef staticText) {
    if (bundle == nullptr || key == nullptr || staticText == nullptr) {
        return;
    }
    const CFRef<CFStringRef> text = CopyLocalizedText(bundle, key);
    const CFStringRef data = text.get();
    SetControlData(staticText, kControlEntireControl, kControlStaticTextCFStringTag, sizeof data, &data);
    Draw1Control(staticText);
}

void SetLocalizedControlTitle(CFBundleRef bundle, CFStringRef key, ControlRef control) {
    SetControlTitleWithCFString(control, CopyLocalizedText(bundle, key).get());
}

void SetLocalizedControlTitleFromMap(CFBundleRef bundle, const SettingMap* map, CFIndex row, ControlRef control) {
    const auto key =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(kCFAllocatorDefault, map[row].key, kCFStringEncodingUTF8));
    SetLocalizedControlTitle(bundle, key.get(), control);
}

void SetLocalizedWindowTitle(CFBundleRef bundle, CFStringRef key, WindowRef window) {
    SetWindowTitleWithCFString(window, CopyLocalizedText(bundle, key).get());
}

void SetLocalizedMenuTitle(CFBundleRef bundle, CFStringRef key, MenuRef menu, MenuItemIndex item) {
    SetMenuItemTextWithCFString(menu, item, CopyLocalizedText(bundle, key).get());
}
