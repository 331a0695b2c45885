#include "panels/image_options/image_options_sync.h"

#include "model/settings/ppd_access.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "platform/foundation/CFString.h"

namespace {

#define kResolutionMainKeyword CFSTR("Resolution")
#define kImageQualityMainKeyword CFSTR("TRImageQuality")
#define kEconomodeMainKeyword CFSTR("TREconomode")

constexpr CFIndex kImageQualityCount = kDarkest - kLightest + 1;
constexpr CFIndex kEconomodeCount = 2;

/// A list that has exactly `count` options; null for any other.
CFRef<CFArrayRef> CopyListOf(CFIndex count, CFStringRef mainKeyword) {
    const CFArrayRef options = PPDGetGlobalOptions(mainKeyword);
    return options != nullptr && CFArrayGetCount(options) == count ? CFRef<CFArrayRef>::retain(options) : nullptr;
}

SInt32 ReadIndex(PMTicketRef ticket, CFStringRef mainKeyword, const CFRef<CFArrayRef>& options, SInt32 missing) {
    CFIndex index = -1;
    PPDGetMainKeywordValueIndex(ticket, mainKeyword, options.get(), &index);
    return index >= 0 ? static_cast<SInt32>(index) : missing;
}

}  // namespace

ImageOptionLists CopyImageOptionLists() {
    return {CFRef<CFArrayRef>::retain(PPDGetGlobalOptions(kResolutionMainKeyword)),
            CopyListOf(kImageQualityCount, kImageQualityMainKeyword),
            CopyListOf(kEconomodeCount, kEconomodeMainKeyword)};
}

ImageOptionsSettings ReadImageOptions(PMTicketRef ticket, const ImageOptionLists& lists) {
    return {ReadIndex(ticket, kResolutionMainKeyword, lists.resolution, 0),
            ReadIndex(ticket, kImageQualityMainKeyword, lists.imageQuality, kMiddleImageQuality),
            ReadIndex(ticket, kEconomodeMainKeyword, lists.economode, 0)};
}

void WriteResolution(SInt32 index, const ImageOptionLists& lists, PMTicketRef ticket) {
    PPDSetMainKeywordIndex(ticket, lists.resolution.get(), index);
}

void WriteImageQuality(SInt32 index, const ImageOptionLists& lists, PMTicketRef ticket) {
    PPDSetMainKeywordIndex(ticket, lists.imageQuality.get(), index);
}

void WriteEconomode(SInt32 index, const ImageOptionLists& lists, PMTicketRef ticket) {
    PPDSetMainKeywordIndex(ticket, lists.economode.get(), index);
}

CFStringRef TonerPicture(SInt32 economodeIndex) {
    return economodeIndex == 1 ? CFSTR("Toner-Saver-B&W.gif") : CFSTR("Standard-B&W.gif");
}
