// One extension of a print dialog while it serves a printer: its context, its pane, and the order of its operations.
#pragma once

#include "host/dialog/pde_interface.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"

#include <memory>

class Extension {
public:
    /// Starts an extension of those operations in a new pane inside `place`, which is hidden until open(). Null, and
    /// nothing left in the window, when it does not serve the printer. The session must outlive the object.
    static std::unique_ptr<Extension> start(const PDEInterface::Table& operations, ControlRef place, SInt32 number,
                                            PMPrintSession session);
    ~Extension() { stop(noErr); }
    Extension(const Extension&) = delete;
    Extension& operator=(const Extension&) = delete;

    CFStringRef title() const { return title_.get(); }
    /// Whether the keyboard's focus is in its pane.
    bool hasFocus() const;

    /// Shows the pane and hides it. What has never been shown has no controls yet.
    void open();
    void close();
    /// Ends the extension, with the status with which the dialog ends; harmless when that was done.
    void stop(OSStatus status);

    void copyTicketsToControls();
    /// One that was never shown has nothing to say: nobody has chosen anything in it.
    void copyControlsToTickets();

private:
    Extension(const PDEInterface::Table& operations, PMPrintSession session)
        : operations_(operations), session_(session) {}
    void makePane(ControlRef place, SInt32 number, UInt32 width, UInt32 height);

    PDEInterface::Table operations_;
    PMPrintSession session_;
    PDEContext context_ = nullptr;
    CFRef<CFStringRef> title_;
    ControlRef pane_ = nullptr;
    bool isOpen_ = false;
    bool wasOpened_ = false;
};
