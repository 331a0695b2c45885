#include "watermark/watermark_editing.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "watermark/watermark_editor.h"
#include "watermark/watermark_list.h"
#include "watermark/watermark_storage.h"

namespace {

CFRef<CFStringRef> CopyMessage(const WatermarkContext& context, CFStringRef key, CFStringRef name) {
    return CopyFilledInMessage(CopyLocalizedText(context.bundle, key).get(), {name});
}

/// True for yes, the default button.
bool Ask(const WatermarkContext& context, CFStringRef headerKey, CFStringRef message) {
    CFOptionFlags response = kCFUserNotificationAlternateResponse;
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                   CopyLocalizedText(context.bundle, headerKey).get(), message,
                                   CopyLocalizedText(context.bundle, CFSTR("Yes Command")).get(),
                                   CopyLocalizedText(context.bundle, CFSTR("No Command")).get(), nullptr, &response);
    return response == kCFUserNotificationDefaultResponse;
}

void Tell(const WatermarkContext& context, CFStringRef headerKey, CFStringRef message) {
    CFUserNotificationDisplayAlert(0, kCFUserNotificationCautionAlertLevel, nullptr, nullptr, nullptr,
                                   CopyLocalizedText(context.bundle, headerKey).get(), message, nullptr, nullptr,
                                   nullptr, nullptr);
}

struct EditedName {
    CFRef<CFStringRef> name;  // null when the user gave up
    CFStringRef replaced;     // of the list: the watermark that had the name and that the user gives up for this one
};

/// Runs the editor until the record has a name that it may have. `own` is the name that the watermark has in the list.
EditedName EditUntilNamed(const WatermarkContext& context, WatermarkRecord* record, CFStringRef own) {
    for (;;) {
        record->paperExtentA = context.extents.a;
        record->paperExtentB = context.extents.b;
        if (CocoaEditWatermark(record, 0, context.bundle, 0) != 0) {
            return {};
        }
        CFRef<CFStringRef> name = CreateWatermarkName(*record);
        if (CFStringGetLength(name.get()) == 0) {
            Tell(context, CFSTR("Watermark Name Missing Header"),
                 CopyLocalizedText(context.bundle, CFSTR("Watermark Name Missing Message")).get());
            continue;
        }
        const CFStringRef replaced = FindWatermark(listOfWatermarks.get(), name.get(), own);
        if (replaced == nullptr ||
            Ask(context, CFSTR("Watermark Name In Use Header"),
                CopyMessage(context, CFSTR("Watermark Name In Use Message"), name.get()).get())) {
            return {std::move(name), replaced};
        }
    }
}

/// Takes the name out of rows and list.
void Drop(const WatermarkContext& context, CFStringRef name) {
    RemoveWatermarkRow(context, name);
    RemoveWatermark(listOfWatermarks.get(), name);
}

}  // namespace

void CreateWatermark(WatermarkContext* context) {
    if (CocoaEditWatermark == nullptr) {
        return;
    }
    WatermarkRecord record = {};
    const EditedName edited = EditUntilNamed(*context, &record, nullptr);
    if (!edited.name) {
        return;
    }
    if (edited.replaced != nullptr) {
        Drop(*context, edited.replaced);
    }
    const auto name =
        CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(kCFAllocatorDefault, 0, edited.name.get()));
    CFArrayAppendValue(listOfWatermarks.get(), name.get());
    AddWatermarkRow(*context, name.get());
    SelectWatermark(context, name.get());
    saveWatermarkData(kWatermarkStore, &record);
    saveWatermarkList(kWatermarkStore, listOfWatermarks.get());
}

void EditSelectedWatermark(WatermarkContext* context) {
    if (CocoaEditWatermark == nullptr || !IsWatermarkSelected(*context)) {
        return;
    }
    const CFStringRef own = context->selection;
    WatermarkRecord record = {};
    if (!loadWatermarkData(kWatermarkStore, own, &record)) {
        Tell(*context, CFSTR("Watermark Unreadable Header"),
             CopyMessage(*context, CFSTR("Watermark Unreadable Message"), own).get());
        return;
    }
    const EditedName edited = EditUntilNamed(*context, &record, own);
    if (!edited.name) {
        return;
    }
    if (edited.replaced != nullptr) {
        Drop(*context, edited.replaced);
    }
    removeWatermarkData(kWatermarkStore, own);
    // The list's strings are its own, made to be changed (LoadListOfWatermarks, CreateWatermark).
    CFStringReplaceAll(const_cast<CFMutableStringRef>(own), edited.name.get());
    UpdateWatermarkRow(*context, own);
    saveWatermarkData(kWatermarkStore, &record);
    saveWatermarkList(kWatermarkStore, listOfWatermarks.get());
}

void DeleteSelectedWatermark(WatermarkContext* context) {
    if (!IsWatermarkSelected(*context)) {
        return;
    }
    const CFStringRef name = context->selection;
    if (!Ask(*context, CFSTR("Delete Watermark Header"),
             CopyMessage(*context, CFSTR("Delete Watermark Message"), name).get())) {
        return;
    }
    removeWatermarkData(kWatermarkStore, name);
    SelectWatermark(context, context->noneName.get());
    Drop(*context, name);
    saveWatermarkList(kWatermarkStore, listOfWatermarks.get());
}
