#include "jobtypes/dialogs/fax_cover_picture.h"

#include "jobtypes/dialogs/fax_file_name.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Navigation.h"
#include "platform/toolbox/Views.h"
#include "watermark/records/watermark_storage.h"

#include <array>
#include <iterator>
#include <memory>

namespace {

bool IsPicture(CFURLRef file) {
    const std::unique_ptr<OpaqueCGImageRef, decltype(&CGImageRelease)> image(CGImageCreateWithURL(file),
                                                                             CGImageRelease);
    return image != nullptr;
}

void AppendToList(CFStringRef name) {
    CFMutableArrayRef list = nullptr;
    loadWatermarkList(kFaxImageStore, &list);
    const auto names = CFRef<CFMutableArrayRef>::adopt(
        list != nullptr ? list : CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
    for (CFIndex i = 0; i < CFArrayGetCount(names.get()); ++i) {
        if (CFEqual(CFArrayGetValueAtIndex(names.get(), i), name)) {
            return;
        }
    }
    CFArrayAppendValue(names.get(), name);
    saveWatermarkList(kFaxImageStore, names.get());
}

/// Null for a path that the store has no room for or that is no UTF-8.
CFRef<CFStringRef> StorePicture(CFURLRef file) {
    WatermarkRecord record{};
    record.kind = kImageWatermark;
    record.scale = 100;
    record.density = 100;
    if (!CFURLGetFileSystemRepresentation(file, true, reinterpret_cast<UInt8*>(record.filePath),
                                          sizeof record.filePath)) {
        return nullptr;
    }
    const CFRef<CFStringRef> fileName = CopyFileName(file);
    if (!CFStringGetCString(fileName.get(), record.fileName, sizeof record.fileName, kCFStringEncodingUTF8)) {
        return nullptr;
    }
    CFRef<CFStringRef> name = CreateWatermarkName(record);
    if (name) {
        saveWatermarkData(kFaxImageStore, &record);
        AppendToList(name.get());
    }
    return name;
}

}  // namespace

CFRef<CFStringRef> RunModalFaxCoverPictureChooser(CFBundleRef bundle) {
    const CFRef<CFStringRef> pictures = CopyFaxText(bundle, CFSTR("Picture Files"));
    const CFRef<CFStringRef> all = CopyFaxText(bundle, CFSTR("All Files"));
    const NavFileKind kinds[] = {{pictures.get(), CFSTR("*.png *.jpg *.jpeg *.gif *.bmp *.svg")},
                                 {all.get(), CFSTR("*")}};
    CFURLRef chosen = nullptr;
    if (NavChooseFile(CopyFaxText(bundle, CFSTR("Picture Title")).get(), std::size(kinds), kinds, &chosen) != noErr) {
        return nullptr;
    }
    const auto file = CFRef<CFURLRef>::adopt(chosen);
    CFRef<CFStringRef> name = IsPicture(file.get()) ? StorePicture(file.get()) : nullptr;
    if (!name) {
        ShowFaxNotice(bundle, CFSTR("Picture Error Header"),
                      CopyFaxMessage(bundle, CFSTR("Picture Error Message"), {CopyFileName(file.get()).get()}).get());
    }
    return name;
}
