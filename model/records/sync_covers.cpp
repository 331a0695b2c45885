#include "model/records/sync_covers.h"

#include "model/settings/ppd_access.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ticket_items.h"

namespace {

void WriteCover(PMTicketRef ticket, CFStringRef item, const Cover* cover) {
    if (cover == nullptr) {
        PMTicketReleaseItem(ticket, kPMTopLevel, item);
    } else if (const auto dictionary = cover->asTicket()) {
        PMTicketSetCFDictionary(ticket, CFSTR("com.tavro.print"), item, dictionary.get(), kPMUnlocked);
    }
}

/// Sets a job-control keyword to the option that a media keyword's map has for the value; a value without an option
/// leaves it as it was.
void WriteMedia(PMTicketRef ticket, CFStringRef jclKeyword, CFStringRef mediaKeyword, SInt32 value) {
    PPDSetMainKeyword(ticket, jclKeyword,
                      GetPPDOptionKeywordForTicketValue(GetPPDOptionMapForMainKeyword(mediaKeyword), value));
}

OSStatus WriteCovers(PMTicketRef ticket, const Cover* front, const Cover* back) {
    WriteCover(ticket, kFrontCoverItem, front);
    WriteCover(ticket, kBackCoverItem, back);

    CFStringRef covers = CFSTR("None");
    if (front != nullptr) {
        const bool isPair = back != nullptr;
        if (front->sidesImaged() == kCoverBlank) {
            covers = isPair ? CFSTR("BlankFrontBack") : CFSTR("BlankFront");
        } else if (front->sidesImaged() == kCoverBothSides) {
            covers = isPair ? CFSTR("FrontBack") : CFSTR("Front");
        }
        WriteMedia(ticket, isPair ? CFSTR("JCLFrontBackMediaType") : CFSTR("JCLMediaType"), CFSTR("MediaType"),
                   front->stock().type());
        WriteMedia(ticket, isPair ? CFSTR("JCLFrontBackMediaColor") : CFSTR("JCLMediaColor"), CFSTR("MediaColor"),
                   front->stock().color());
    }
    return PPDSetMainKeyword(ticket, CFSTR("JCLCovers"), covers);
}

OSStatus ReadCover(PMTicketRef ticket, CFStringRef item, std::unique_ptr<Cover>* cover) {
    CFDictionaryRef dictionary = nullptr;
    const OSStatus status = PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, item, &dictionary);
    *cover = status == noErr ? std::make_unique<Cover>(dictionary) : nullptr;
    return status;
}

}  // namespace

OSStatus SyncCovers(PMTicketRef ticket, UInt8 direction, std::unique_ptr<Cover>* frontCover,
                    std::unique_ptr<Cover>* backCover) {
    switch (direction) {
        case kCoversToTicket:
            return WriteCovers(ticket, frontCover->get(), backCover->get());
        case kCoversFromTicket:
            ReadCover(ticket, kFrontCoverItem, frontCover);
            return ReadCover(ticket, kBackCoverItem, backCover);
        default:
            return noErr;
    }
}
