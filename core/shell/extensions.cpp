#include "core/shell/extensions.h"

#include "core/features/printer_model.h"
#include "platform/foundation/CFString.h"

CFArrayRef TavroPDECopyExtensionGetters() {
    const CFMutableArrayRef getters = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    const CFArrayRef listed = ListOfModel(CFSTR("Extensions"));
    for (CFIndex i = 0; i < CFArrayGetCount(listed); ++i) {
        const void* const getter = CFArrayGetValueAtIndex(listed, i);
        if (CFGetTypeID(getter) == CFStringGetTypeID()) {
            CFArrayAppendValue(getters, getter);
        }
    }
    return getters;
}
