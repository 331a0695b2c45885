#include "watermark/panel/watermark_editing.h"

#include "platform/foundation/CFString.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Notices.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "watermark/panel/watermark_editor.h"
#include "watermark/records/watermark_changes.h"
#include "watermark/records/watermark_list.h"
#include "watermark/records/watermark_storage.h"

#include <set>
#include <string>
#include <system_error>

namespace {

CFStringRef NameAt(CFArrayRef names, CFIndex index) {
    return static_cast<CFStringRef>(CFArrayGetValueAtIndex(names, index));
}

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

/// Takes the name out of rows and list.
void Drop(const WatermarkContext& context, CFStringRef name) {
    RemoveWatermarkRow(context, name);
    RemoveWatermark(listOfWatermarks.get(), name);
}

/// Lets rows and list follow the stored names, which other dialogs change too.
void ShowNames(WatermarkContext* context, CFArrayRef names) {
    std::multiset<std::string> missing;
    for (CFIndex i = 0; i < CFArrayGetCount(names); ++i) {
        missing.insert(utf8Text(NameAt(names, i)));
    }
    for (CFIndex i = CFArrayGetCount(listOfWatermarks.get()) - 1; i >= 0; --i) {
        const auto name = CFRef<CFStringRef>::retain(NameAt(listOfWatermarks.get(), i));
        if (const auto stored = missing.find(utf8Text(name.get())); stored != missing.end()) {
            missing.erase(stored);
        } else if (name.get() != context->selection) {
            Drop(*context, name.get());
        }
    }
    for (CFIndex i = 0; i < CFArrayGetCount(names) && !missing.empty(); ++i) {
        if (const auto added = missing.find(utf8Text(NameAt(names, i))); added != missing.end()) {
            missing.erase(added);
            CFArrayAppendValue(listOfWatermarks.get(), NameAt(names, i));
            AddWatermarkRow(*context, NameAt(names, i));
        }
    }
}

void TellOfFault(const WatermarkContext& context, const WatermarkChange& change) {
    if (change.fault == ChangeFault::notWritten) {
        const CFRef<CFStringRef> reason = makeString(std::generic_category().message(change.error));
        Tell(context, CFSTR("Watermark Not Saved Header"),
             CopyFilledInMessage(CopyLocalizedText(context.bundle, CFSTR("Watermark Not Saved Message")).get(),
                                 {kWatermarkStore, reason.get()})
                 .get());
        return;
    }
    Tell(context, CFSTR("Watermark Name Reserved Header"),
         CopyMessage(context,
                     change.fault == ChangeFault::nameOfList ? CFSTR("Watermark Name Of List Message")
                                                             : CFSTR("Watermark Name Of Font Message"),
                     change.name.get())
             .get());
}

/// Runs the editor until the record is stored and listed, or the user gives up, which gives false. `own` is the name
/// that the watermark has in the list.
bool EditUntilStored(WatermarkContext* context, WatermarkRecord* record, CFStringRef own) {
    for (;;) {
        record->paperExtentA = context->extents.a;
        record->paperExtentB = context->extents.b;
        if (CocoaEditWatermark(record, 0, context->bundle, 0) != 0) {
            return false;
        }
        if (CFStringGetLength(CreateWatermarkName(*record).get()) == 0) {
            Tell(*context, CFSTR("Watermark Name Missing Header"),
                 CopyLocalizedText(context->bundle, CFSTR("Watermark Name Missing Message")).get());
            continue;
        }
        WatermarkChange change = StoreWatermark(*record, own, false, listOfWatermarks.get());
        if (change.fault == ChangeFault::nameTaken) {
            if (!Ask(*context, CFSTR("Watermark Name In Use Header"),
                     CopyMessage(*context, CFSTR("Watermark Name In Use Message"), change.name.get()).get())) {
                continue;
            }
            change = StoreWatermark(*record, own, true, listOfWatermarks.get());
        }
        if (change.fault != ChangeFault::none) {
            TellOfFault(*context, change);
            continue;
        }
        if (const CFStringRef replaced = FindWatermark(listOfWatermarks.get(), change.name.get(), own)) {
            Drop(*context, replaced);
        }
        if (own != nullptr) {
            // The list's strings are its own, made to be changed (LoadListOfWatermarks).
            CFStringReplaceAll(const_cast<CFMutableStringRef>(own), change.name.get());
            UpdateWatermarkRow(*context, own);
        }
        ShowNames(context, change.names.get());
        return true;
    }
}

}  // namespace

void CreateWatermark(WatermarkContext* context) {
    if (CocoaEditWatermark == nullptr) {
        return;
    }
    WatermarkRecord record = {};
    if (EditUntilStored(context, &record, nullptr)) {
        const auto name = CreateWatermarkName(record);
        SelectWatermark(context, FindWatermark(listOfWatermarks.get(), name.get(), nullptr));
    }
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
    EditUntilStored(context, &record, own);
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
    const WatermarkChange change = DeleteWatermark(name, listOfWatermarks.get());
    if (change.fault != ChangeFault::none) {
        TellOfFault(*context, change);
        return;
    }
    SelectWatermark(context, context->noneName.get());
    Drop(*context, name);
    ShowNames(context, change.names.get());
}
