// The pictures of the plug-in, loaded from its resources when they are first drawn and kept.
#pragma once

#include "platform/foundation/CFRef.h"
#include "platform/toolbox/Views.h"

#include <map>
#include <memory>

/// Loads pictures by file name ("MacUp.png") or path inside the bundle's resources folder ("Layout/Booklet.gif") and
/// owns them. The shell keeps one while its panels live; that one serves DrawImage for all of them.
class ImageImportManager {
public:
    explicit ImageImportManager(CFBundleRef bundle);
    ~ImageImportManager();
    ImageImportManager(const ImageImportManager&) = delete;
    ImageImportManager& operator=(const ImageImportManager&) = delete;

    /// The picture, lent as long as the manager lives. Null for a null name and for a file that is missing or cannot
    /// be read, which is tried only once.
    CGImageRef image(CFStringRef fileName);

    /// The manager made last; null when there is none. Managers go in the reverse order of their making.
    static ImageImportManager* current();

private:
    struct Release {
        void operator()(CGImageRef image) const { CGImageRelease(image); }
    };
    struct Less {
        bool operator()(const CFRef<CFStringRef>& left, const CFRef<CFStringRef>& right) const;
    };

    CFRef<CFBundleRef> bundle_;
    ImageImportManager* previous_;
    std::map<CFRef<CFStringRef>, std::unique_ptr<OpaqueCGImageRef, Release>, Less> images_;
};
