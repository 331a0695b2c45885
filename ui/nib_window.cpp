#include "ui/nib_window.h"

#include "ui/control_utilities.h"

WindowFromNib::~WindowFromNib() {
    if (window_ != nullptr) {
        DisposeWindow(window_);
    }
}

OSStatus WindowFromNib::load(CFBundleRef bundle, CFStringRef nibName, CFStringRef windowName) {
    IBNibRef nib = nullptr;
    OSStatus status = CreateNibReferenceWithCFBundle(bundle, nibName, &nib);
    if (status == noErr) {
        status = CreateWindowFromNib(nib, windowName, &window_);
        DisposeNibReference(nib);
    }
    return status;
}

namespace {

/// Moves the control so that its middle is the middle of the frame.
void CentreControl(ControlRef control, const Rect& frame) {
    Rect bounds{};
    GetControlBounds(control, &bounds);
    const int left = frame.left + ((frame.right - frame.left) / 2 - (bounds.right - bounds.left) / 2);
    const int top = frame.top + ((frame.bottom - frame.top) / 2 - (bounds.bottom - bounds.top) / 2);
    MoveControl(control, static_cast<SInt16>(left), static_cast<SInt16>(top));
}

}  // namespace

OSStatus EmbedPaneFromNib(CFBundleRef bundle, CFStringRef nibName, CFStringRef windowName, ControlID paneID,
                          ControlRef hostPane, ControlRef* pane) {
    WindowFromNib window;
    OSStatus status = window.load(bundle, nibName, windowName);
    ControlRef found = nullptr;
    if (status == noErr) {
        status = GetControlByID(window.get(), &paneID, &found);
    }
    if (status != noErr) {
        return status;
    }
    Rect host{};
    GetControlBounds(hostPane, &host);
    EmbedAndShowControl(hostPane, found);
    CentreControl(found, host);
    *pane = found;
    return noErr;
}
