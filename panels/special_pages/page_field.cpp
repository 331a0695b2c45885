#include "panels/special_pages/page_field.h"

#include "panels/special_pages/special_pages_alerts.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Events.h"
#include "ui/panel_operations.h"
#include "ui/text_input.h"

#include <algorithm>
#include <iterator>

namespace {

CFRef<CFStringRef> CopyText(ControlRef field) {
    CFStringRef text = nullptr;
    GetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text, nullptr);
    return CFRef<CFStringRef>::adopt(text);
}

OSStatus RefuseLongPageLists(EventHandlerCallRef, EventRef event, void* bundle) {
    const ControlRef field = GetEventControl(event);
    ByteCount size = 0;
    GetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, nullptr, 0, &size, nullptr);
    ControlEditTextSelectionRec selection{};
    GetControlData(field, kControlEntireControl, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    const CFIndex kept = CFStringGetLength(CopyText(field).get()) - (selection.selEnd - selection.selStart);
    if (kept + static_cast<CFIndex>(size / sizeof(UniChar)) <= kLongestPageList) {
        return eventNotHandledErr;
    }
    TellSpecialPagesLimit(static_cast<CFBundleRef>(bundle), CFSTR("Page List Too Long Title"),
                          CFSTR("Page List Too Long Message"), kLongestPageList);
    return noErr;
}

OSStatus GetRanges(ControlRef field, bool asRanges, std::vector<PageRange>* ranges) {
    const auto plain = CFRef<CFStringRef>::adopt(CFNumberListCreatePlain(kCFAllocatorDefault, CopyText(field).get()));
    const OSStatus status = CreatePageRangesBySeparatingString(plain.get(), asRanges, ranges);
    if (status != noErr) {
        return status;
    }
    const bool hasPageZero = std::ranges::find(*ranges, 0, &PageRange::first) != ranges->end();
    return hasPageZero ? OSStatus{kPageRangeErrPageNumber} : noErr;
}

/// Once the text has gone in, or was refused.
OSStatus ShowFault(EventHandlerCallRef next, EventRef event, void* userData) {
    const ControlRef field = GetEventControl(event);
    const auto bundle = static_cast<CFBundleRef>(userData);
    const CFRef<CFStringRef> before = CopyText(field);
    const OSStatus status = CallNextEventHandler(next, event);
    const bool isRefused = CFEqual(CopyText(field).get(), before.get());
    const auto plain = CFRef<CFStringRef>::adopt(CFNumberListCreatePlain(kCFAllocatorDefault, CopyText(field).get()));
    const OSStatus fault = IsPageFieldEmpty(field) ? OSStatus{noErr} : CheckPageRanges(plain.get());
    HIViewSetFieldMessage(
        field, CopySpecialPagesFault(bundle, isRefused && fault == noErr ? OSStatus{kPageRangeErrSyntax} : fault).get(),
        fault != noErr);
    return status;
}

}  // namespace

void PreparePageField(ControlRef field, CFBundleRef bundle) {
    static constexpr EventTypeSpec kText[] = {{kEventClassTextInput, kEventTextInputUnicodeForKeyEvent}};
    InstallControlEventHandler(field, PageRangeInputEventHandler, std::size(kText), kText, nullptr, nullptr);
    // Newer, so it sees the text first.
    InstallControlEventHandler(field, RefuseLongPageLists, std::size(kText), kText,
                               const_cast<void*>(static_cast<const void*>(bundle)), nullptr);
    InstallControlEventHandler(field, ShowFault, std::size(kText), kText,
                               const_cast<void*>(static_cast<const void*>(bundle)), nullptr);
}

void SetPageFieldText(ControlRef field, CFStringRef text) {
    const auto localized = CFRef<CFStringRef>::adopt(CFNumberListCreateLocalized(kCFAllocatorDefault, text));
    const CFStringRef data = localized.get();
    SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof data, &data);
    HIViewSetFieldMessage(field, nullptr, false);
}

bool IsPageFieldEmpty(ControlRef field) {
    return CFStringGetLength(CopyText(field).get()) == 0;
}

OSStatus GetPageFieldRanges(ControlRef field, std::vector<PageRange>* ranges) {
    return GetRanges(field, true, ranges);
}

OSStatus GetPageFieldPages(ControlRef field, std::vector<PageRange>* pages) {
    return GetRanges(field, false, pages);
}
