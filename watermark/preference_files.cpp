#include "watermark/preference_files.h"

#include "model/record_ticket.h"
#include "platform/files/folders.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFURL.h"
#include "watermark/utf8.h"

#include <cerrno>
#include <cstdio>

namespace {

using URL = CFRef<CFURLRef>;

enum class Content { Dictionary, Unparsable, Missing, OutOfReach };

struct File {
    Content content;
    CFRef<CFMutableDictionaryRef> root;  // with Content::Dictionary
    CFRef<CFDataRef> bytes;              // with Content::Unparsable
};

URL CreateURLInside(CFURLRef folder, CFStringRef name, bool isFolder) {
    return folder != nullptr && CFStringGetLength(name) > 0
               ? URL::adopt(CFURLCreateCopyAppendingPathComponent(kCFAllocatorDefault, folder, name, isFolder))
               : nullptr;
}

/// One of the user's folders; null when it cannot be found or made.
URL CreateFolderURL(OSType kind) {
    FSRef folder = {};
    if (FSFindFolder(kUserDomain, kind, true, &folder) != noErr) {
        return nullptr;
    }
    const auto path =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(kCFAllocatorDefault, folder.path, kCFStringEncodingUTF8));
    return URL::adopt(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, path.get(), kCFURLPOSIXPathStyle, true));
}

URL CreatePreferencesURL(CFStringRef fileName) {
    return CreateURLInside(CreateFolderURL(kPreferencesFolderType).get(), fileName, false);
}

File Read(CFURLRef url, const char* reader) {
    CFDataRef data = nullptr;
    SInt32 error = 0;
    if (!CFURLCreateDataAndPropertiesFromResource(kCFAllocatorDefault, url, &data, nullptr, nullptr, &error)) {
        return {error == ENOENT ? Content::Missing : Content::OutOfReach};
    }
    auto bytes = CFRef<CFDataRef>::adopt(data);
    CFStringRef reason = nullptr;
    const auto root = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateFromXMLData(kCFAllocatorDefault, data, kCFPropertyListMutableContainersAndLeaves, &reason));
    const auto ownedReason = CFRef<CFStringRef>::adopt(reason);
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        std::fprintf(stderr, "%s()::CFPropertyListCreateFromXMLData() error: %s\n", reader,
                     reason != nullptr ? Utf8Of(reason).c_str() : "not a dictionary");
        return {Content::Unparsable, {}, std::move(bytes)};
    }
    auto* const dictionary = static_cast<CFMutableDictionaryRef>(const_cast<void*>(root.get()));
    return {Content::Dictionary, CFRef<CFMutableDictionaryRef>::retain(dictionary), {}};
}

/// 0, or the error's number.
SInt32 Write(CFURLRef url, CFDictionaryRef root) {
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(kCFAllocatorDefault, root));
    if (CFDataGetLength(data.get()) > kPropertyListMaximumBytes) {
        return EFBIG;  // nobody could read it back
    }
    SInt32 error = 0;
    CFURLWriteDataAndPropertiesToResource(url, data.get(), nullptr, &error);
    return error;
}

/// Writes the bytes beside the store under the first name that is free. 0, or the error's number.
SInt32 KeepUnreadable(CFStringRef fileName, CFDataRef bytes) {
    for (int number = 1;; ++number) {
        const std::string name =
            Utf8Of(fileName) + ".unreadable" + (number > 1 ? "-" + std::to_string(number) : std::string());
        const auto text = CFRef<CFStringRef>::adopt(
            CFStringCreateWithCString(kCFAllocatorDefault, name.c_str(), kCFStringEncodingUTF8));
        const auto url = URL::adopt(CopyPreferenceFileURL(text.get()));
        if (FSRef taken; CFURLGetFSRef(url.get(), &taken)) {
            continue;
        }
        SInt32 error = 0;
        CFURLWriteDataAndPropertiesToResource(url.get(), bytes, nullptr, &error);
        return error;
    }
}

}  // namespace

CFURLRef CopyPreferenceFileURL(CFStringRef fileName) {
    const URL support = CreateFolderURL(kApplicationSupportFolderType);
    const URL folder = CreateURLInside(support.get(), CFSTR("Tavro"), true);
    return FSpDirCreate(folder.get()) == noErr ? CreateURLInside(folder.get(), fileName, false).leak() : nullptr;
}

CFMutableDictionaryRef CopyXMLData(CFStringRef fileName) {
    const auto url = URL::adopt(CopyPreferenceFileURL(fileName));
    return Read(url.get(), __func__).root.leak();
}

void ChangeStore(CFStringRef fileName, StoreUse use, const std::function<bool(CFMutableDictionaryRef)>& change) {
    const auto url = URL::adopt(CopyPreferenceFileURL(fileName));
    const File file = Read(url.get(), "CopyXMLData");
    if (file.content == Content::OutOfReach || (file.content != Content::Dictionary && use == StoreUse::Existing)) {
        return;
    }
    const auto root = file.root ? file.root : CreateRecordDictionary();
    if (!change(root.get())) {
        return;
    }
    SInt32 error = file.content == Content::Unparsable ? KeepUnreadable(fileName, file.bytes.get()) : 0;
    if (error == 0) {
        error = Write(url.get(), root.get());
    }
    if (error != 0) {
        std::fprintf(stderr, "The store %s was not written (%d)\n", Utf8Of(fileName).c_str(), error);
    }
}

CFMutableDictionaryRef CopyUserPreferences(CFStringRef fileName) {
    return Read(CreatePreferencesURL(fileName).get(), __func__).root.leak();
}

Boolean WriteUserPreferences(CFStringRef fileName, CFDictionaryRef preferences) {
    const SInt32 error = Write(CreatePreferencesURL(fileName).get(), preferences);
    if (error != 0) {
        std::fprintf(stderr, "WriteUserPreferences() failed (%d)\n", error);
    }
    return error == 0;
}
