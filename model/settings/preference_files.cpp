#include "model/settings/preference_files.h"

#include "model/settings/record_ticket.h"
#include "platform/files/folders.h"
#include "platform/files/url_access.h"
#include "platform/foundation/CFPropertyList.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/terminal_text.h"
#include "platform/foundation/text.h"

#include <cerrno>
#include <cstdio>

namespace {

using URL = CFRef<CFURLRef>;

enum class Content { Dictionary, Unparsable, Missing, OutOfReach };

struct File {
    Content content;
    CFRef<CFMutableDictionaryRef> root;  // with Content::Dictionary
    CFRef<CFDataRef> bytes;              // with Content::Unparsable
    SInt32 error;                        // with Content::OutOfReach
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
        return {error == ENOENT ? Content::Missing : Content::OutOfReach, {}, {}, error};
    }
    auto bytes = CFRef<CFDataRef>::adopt(data);
    CFStringRef reason = nullptr;
    const auto root = CFRef<CFTypeRef>::adopt(
        CFPropertyListCreateFromXMLData(kCFAllocatorDefault, data, kCFPropertyListMutableContainersAndLeaves, &reason));
    const auto ownedReason = CFRef<CFStringRef>::adopt(reason);
    if (CFGetTypeID(root.get()) != CFDictionaryGetTypeID()) {
        printLine(stderr, std::string(reader) + "()::CFPropertyListCreateFromXMLData() error: " +
                              (reason != nullptr ? utf8Text(reason) : "not a dictionary"));
        return {Content::Unparsable, {}, std::move(bytes), 0};
    }
    auto* const dictionary = static_cast<CFMutableDictionaryRef>(const_cast<void*>(root.get()));
    return {Content::Dictionary, CFRef<CFMutableDictionaryRef>::retain(dictionary), {}, 0};
}

/// Writes the bytes beside the file under the first name that is free. 0, or the error's number.
SInt32 KeepUnreadable(CFURLRef file, CFDataRef bytes) {
    const std::string beside = filePath(file) + ".unreadable";
    for (int number = 1;; ++number) {
        const URL url = makeFileURL(number > 1 ? beside + "-" + std::to_string(number) : beside);
        if (FSRef taken; CFURLGetFSRef(url.get(), &taken)) {
            continue;
        }
        SInt32 error = 0;
        CFURLWriteDataAndPropertiesToResource(url.get(), bytes, nullptr, &error);
        return error;
    }
}

/// Puts the root in the place of what was read from the URL. 0, or the error's number; the old file is then untouched.
SInt32 Replace(const File& file, CFURLRef url, CFDictionaryRef root) {
    if (file.content == Content::OutOfReach) {
        return file.error;  // it may be as good as ever
    }
    const auto data = CFRef<CFDataRef>::adopt(CFPropertyListCreateXMLData(kCFAllocatorDefault, root));
    if (!data) {
        return EINVAL;
    }
    if (CFDataGetLength(data.get()) > kPropertyListMaximumBytes) {
        return EFBIG;  // nobody could read it back
    }
    SInt32 error = file.content == Content::Unparsable ? KeepUnreadable(url, file.bytes.get()) : 0;
    if (error == 0) {
        CFURLWriteDataAndPropertiesToResource(url, data.get(), nullptr, &error);
    }
    return error;
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

SInt32 ChangeStore(CFStringRef fileName, StoreUse use, const std::function<bool(CFMutableDictionaryRef)>& change) {
    const auto url = URL::adopt(CopyPreferenceFileURL(fileName));
    const File file = Read(url.get(), "CopyXMLData");
    if (file.content != Content::Dictionary && use == StoreUse::Existing) {
        return file.content == Content::OutOfReach ? file.error : 0;
    }
    const auto root = file.root ? file.root : CreateRecordDictionary();
    if (!change(root.get())) {
        return 0;
    }
    const SInt32 error = url ? Replace(file, url.get(), root.get()) : ENOENT;
    if (error != 0) {
        std::fprintf(stderr, "The store %s was not written (%d)\n", utf8Text(fileName).c_str(), error);
    }
    return error;
}

FolderLock LockStores() {
    const auto url = URL::adopt(CopyPreferenceFileURL(CFSTR(".")));
    FSRef folder = {};
    return FolderLock(CFURLGetFSRef(url.get(), &folder) ? folder.path : "");
}

CFMutableDictionaryRef CopyUserPreferences(CFStringRef fileName) {
    return Read(CreatePreferencesURL(fileName).get(), __func__).root.leak();
}

Boolean WriteUserPreferences(CFStringRef fileName, CFDictionaryRef preferences) {
    const URL url = CreatePreferencesURL(fileName);
    const SInt32 error = Replace(Read(url.get(), "CopyUserPreferences"), url.get(), preferences);
    if (error != 0) {
        std::fprintf(stderr, "WriteUserPreferences() failed (%d)\n", error);
    }
    return error == 0;
}
