#include "ui/control_utilities.h"

#include "platform/foundation/CFString.h"

namespace {

template <typename T>
OSStatus SetData(ControlRef control, OSType tag, const T& value) {
    return SetControlData(control, kControlEntireControl, tag, sizeof value, &value);
}

}  // namespace

void EmbedAndShowControl(ControlRef parent, ControlRef child) {
    EmbedControl(child, parent);
    ShowControl(child);
}

void UpdateTabControl(ControlRef tabControl, UInt16 paneCount, const ControlRef* panes) {
    const SInt32 shown = GetControl32BitValue(tabControl) - 1;
    for (UInt16 i = 0; i < paneCount; ++i) {
        if (i == shown) {
            ActivateControl(panes[i]);
            SetControlVisibility(panes[i], true, true);
            EnableControl(panes[i]);
        } else {
            SetControlVisibility(panes[i], false, true);
            DisableControl(panes[i]);
            DeactivateControl(panes[i]);
        }
    }
    Draw1Control(tabControl);
}

void SetupTextViewControl(ControlRef textView, SInt16 fontSize) {
    SetData(textView, kControlTextWordWrapTag, Boolean{true});
    if (fontSize != kUserFontSize) {
        SetData(textView, kControlTextFontSizeTag, fontSize);
    }
    SetData(textView, kControlEditTextCFStringTag, CFSTR(""));
}

OSStatus UpdateSummaryTextView(ControlRef textView, CFStringRef text) {
    if (text == nullptr) {
        return paramErr;
    }
    SetData(textView, kControlTextReadOnlyTag, Boolean{false});
    const OSStatus status = SetData(textView, kControlEditTextCFStringTag, text);
    SetData(textView, kControlTextReadOnlyTag, Boolean{true});
    return status;
}
