// The print dialog's window as its nib describes it, before it is known what it shows.
#pragma once

#include "host/settings/result.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Windows.h"

#include <memory>
#include <type_traits>

struct WindowDisposal {
    void operator()(WindowRef window) const { DisposeWindow(window); }
};
using DialogWindow = std::unique_ptr<std::remove_pointer_t<WindowRef>, WindowDisposal>;

/// Makes the window, hidden. It takes long, and neither printer nor document is needed for it.
Result<DialogWindow> openDialogWindow(CFBundleRef bundle);
