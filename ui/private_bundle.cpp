#include "ui/private_bundle.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFURL.h"

Boolean LoadPrivateBundle(CFBundleRef bundle, CFStringRef name, CFBundleRef* privateBundle) {
    *privateBundle = nullptr;
    const auto folder = CFRef<CFURLRef>::adopt(CFBundleCopyBuiltInPlugInsURL(bundle));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateCopyAppendingPathComponent(kCFAllocatorDefault, folder.get(), name, true));
    auto found = CFRef<CFBundleRef>::adopt(CFBundleCreate(kCFAllocatorDefault, url.get()));
    if (!found || !CFBundleLoadExecutable(found.get())) {
        return false;
    }
    *privateBundle = found.leak();
    return true;
}
