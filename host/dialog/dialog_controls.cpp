#include "host/dialog/dialog_controls.h"

#include "platform/foundation/text.h"

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
    return utf8Text(CFRef<CFStringRef>::adopt(text).get());
}

void setFieldText(ControlRef field, const CFRef<CFStringRef>& text) {
    const CFStringRef string = text.get();
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof string, &string);
}
