#include "host/dialog/dialog_controls.h"

#include "host/script/stage.h"
#include "host/script/text.h"
#include "platform/toolbox/Events.h"

WindowRef makeWindow(CFBundleRef bundle, CFStringRef name) {
    IBNibRef nib = nullptr;
    if (CreateNibReferenceWithCFBundle(bundle, name, &nib) != noErr) {
        return nullptr;
    }
    WindowRef window = nullptr;
    const OSStatus status = CreateWindowFromNib(nib, name, &window);
    DisposeNibReference(nib);
    return status == noErr ? window : nullptr;
}

ControlRef hostControl(WindowRef window, HostControl number) {
    const ControlID id{kHostSignature, number};
    ControlRef found = nullptr;
    GetControlByID(window, &id, &found);
    return found;
}

void setStaticText(ControlRef label, const CFRef<CFStringRef>& text) {
    const CFStringRef string = text.get();
    SetControlData(label, kControlEntireControl, kControlStaticTextCFStringTag, sizeof string, &string);
}

std::string fieldText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return utf8(CFRef<CFStringRef>::adopt(text).get());
}

void setFieldText(ControlRef field, const CFRef<CFStringRef>& text) {
    const CFStringRef string = text.get();
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof string, &string);
}

void showPanel(WindowRef window, SInt32 number) {
    ControlRef selector = nullptr;
    if (GetControlByID(window, &script::kPanelSelector, &selector) != noErr) {
        return;
    }
    SetControl32BitValue(selector, number);
    EventRef hit = nullptr;
    CreateEvent(nullptr, kEventClassControl, kEventControlHit, 0, 0, &hit);
    SetEventParameter(hit, kEventParamDirectObject, typeControlRef, sizeof selector, &selector);
    SendEventToEventTarget(hit, GetControlEventTarget(selector));
    ReleaseEvent(hit);
}
