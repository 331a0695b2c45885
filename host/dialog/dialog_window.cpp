#include "host/dialog/dialog_window.h"

#include "platform/foundation/message.h"
#include "platform/foundation/text.h"

Result<DialogWindow> openDialogWindow(CFBundleRef bundle) {
    IBNibRef nib = nullptr;
    WindowRef window = nullptr;
    OSStatus status = CreateNibReferenceWithCFBundle(bundle, CFSTR("PrintDialog"), &nib);
    if (status == noErr) {
        status = CreateWindowFromNib(nib, CFSTR("PrintDialog"), &window);
        DisposeNibReference(nib);
    }
    switch (status) {
        case noErr:
            return DialogWindow(window);
        case kNibNotFoundErr: {
            const auto url = CFRef<CFURLRef>::adopt(CFBundleCopyBundleURL(bundle));
            return unusable(filePath(url.get()), messageText("its nib %1 is missing", {"PrintDialog"}));
        }
        default:
            // The toolbox has told already which file does not load, and why.
            return Failure{ExitStatus::unusableInput, {}};
    }
}
