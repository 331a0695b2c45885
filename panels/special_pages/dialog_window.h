// What the windows of the nib "SpecialPages" have in common.
#pragma once

#include "panels/special_pages/special_pages_context.h"
#include "ui/nib_window.h"

#include <initializer_list>

inline constexpr SInt16 kSpecialPagesOK = 1;
inline constexpr SInt16 kSpecialPagesCancel = 2;

/// A dialog's window: its controls, its modal loop, and the button that ended it.
class SpecialPagesWindow {
public:
    /// Makes the window, hidden; its commands go to the handler, with the data. Returns the status of loading the nib.
    [[nodiscard]] OSStatus load(CFBundleRef bundle, CFStringRef name, EventHandlerProcPtr commands, void* userData);
    /// Sends the draw events of panes to the handler.
    void drawPictures(std::initializer_list<SInt32> numbers, EventHandlerProcPtr handler, void* userData) const;
    [[nodiscard]] WindowRef get() const { return window_.get(); }
    [[nodiscard]] CFBundleRef bundle() const { return bundle_; }
    [[nodiscard]] ControlRef find(SInt32 number) const;

    /// Shows the window until end() is called; a window that is closed otherwise counts as cancelled.
    SInt16 run();
    OSStatus end(SInt16 result);

private:
    CFBundleRef bundle_ = nullptr;  // lent
    WindowFromNib window_;
    SInt16 result_ = kSpecialPagesCancel;
};

/// The command that an event carries.
HICommand GetEventCommand(EventRef event);
/// The number of a control with the signature of these windows; 0 for any other.
SInt32 GetSpecialPagesControlNumber(ControlRef control);
void SetControlEnabled(ControlRef control, bool enabled);
