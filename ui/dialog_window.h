// The window of a dialog, with its controls by their numbers.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Events.h"
#include "ui/nib_window.h"

/// A window for as long as its dialog runs. Its controls have the signature 'TPDE'; a number that the window does not
/// have is as good as a control that does nothing.
class DialogWindow {
public:
    explicit DialogWindow(CFBundleRef bundle) : bundle_(bundle) {}

    /// Makes the window of the nib, hidden. Returns the platform's status.
    [[nodiscard]] OSStatus load(CFStringRef nib, CFStringRef name) { return window_.load(bundle_, nib, name); }
    CFBundleRef bundle() const { return bundle_; }
    WindowRef get() const { return window_.get(); }

    /// Lent; null when there is none.
    ControlRef control(SInt32 number) const;
    SInt32 value(SInt32 number) const;
    void setValue(SInt32 number, SInt32 value) const;
    void enable(SInt32 number, bool enabled) const;
    void focus(SInt32 number) const;
    /// The text of a field.
    CFRef<CFStringRef> copyText(SInt32 number) const;
    /// Of a field or a static text; null empties it.
    void setText(SInt32 number, CFStringRef text) const;

    /// Shows a picture file of the bundle on a pane.
    void showPicture(SInt32 number, CFStringRef constantFileName) const;

    /// Installs the handler of the window's commands, and of more events if there are any.
    void handleCommands(EventHandlerUPP handler, void* userData) const;
    void handle(EventTypeSpec event, EventHandlerUPP handler, void* userData) const;

private:
    CFBundleRef bundle_;
    WindowFromNib window_;
};

/// The code of a command event; 0 for another event.
OSType CommandOf(EventRef event);
