#include "ui/image_import_manager.h"

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"

namespace {

ImageImportManager* currentManager = nullptr;

}  // namespace

bool ImageImportManager::Less::operator()(const CFRef<CFStringRef>& left, const CFRef<CFStringRef>& right) const {
    return CFStringCompare(left.get(), right.get(), 0) == kCFCompareLessThan;
}

ImageImportManager::ImageImportManager(CFBundleRef bundle)
    : bundle_(CFRef<CFBundleRef>::retain(bundle)), previous_(currentManager) {
    currentManager = this;
}

ImageImportManager::~ImageImportManager() {
    if (currentManager == this) {
        currentManager = previous_;
    }
}

CGImageRef ImageImportManager::image(CFStringRef fileName) {
    if (fileName == nullptr) {
        return nullptr;
    }
    const auto [entry, isNew] = images_.try_emplace(CFRef<CFStringRef>::retain(fileName));
    if (isNew) {
        const auto url = CFRef<CFURLRef>::adopt(CFBundleCopyResourceURL(bundle_.get(), fileName, nullptr, nullptr));
        if (url) {
            entry->second.reset(CGImageCreateWithURL(url.get()));
        }
    }
    return entry->second.get();
}

ImageImportManager* ImageImportManager::current() {
    return currentManager;
}
