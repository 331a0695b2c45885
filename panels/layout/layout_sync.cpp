#include "panels/layout/layout_sync.h"

#include "core/features/installable_options.h"
#include "model/records/special_page.h"
#include "model/settings/ppd_choice.h"
#include "model/settings/ticket_access.h"
#include "model/settings/ticket_items.h"
#include "platform/foundation/CFString.h"

#include <iterator>

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")
#define kPMDuplexingKey CFSTR("com.apple.print.PrintSettings.PMDuplexing")
#define kDuplexMainKeyword CFSTR("Duplex")
#define kFoldMainKeyword CFSTR("TRFoldOptions")

// Values of PlexMap.
constexpr SInt32 kOneSided = 1;
constexpr SInt32 kLongEdge = 2;
constexpr SInt32 kShortEdge = 3;

bool ReadBoolean(PMTicketRef ticket, CFStringRef key) {
    CFBooleanRef value = nullptr;
    return PMTicketGetCFBoolean(ticket, kPMTopLevel, kPMTopLevel, key, &value) == noErr && value == kCFBooleanTrue;
}

/// The sides that the ticket asks for; kNoTicketValue for an option that no number stands for, which then stays.
SInt32 ReadSides(PMTicketRef ticket) {
    return ReadPPDChoice(
        ticket, kDuplexMainKeyword,
        GetTicketNumber(ticket, kPMDuplexingKey, GetTicketNumber(ticket, kFinishingDuplexItem, kOneSided)));
}

void WriteSides(SInt32 sides, PMTicketRef ticket) {
    SetTicketNumber(ticket, kCreator, kPMDuplexingKey, sides);
    SetTicketNumber(ticket, kCreator, kFinishingDuplexItem, sides);
    WritePPDChoiceOfMap(sides, kDuplexMainKeyword, ticket);
}

void RemoveEqualBackCover(PMTicketRef ticket) {
    CFDictionaryRef front = nullptr;
    CFDictionaryRef back = nullptr;
    if (PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kFrontCoverItem, &front) == noErr &&
        PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kBackCoverItem, &back) == noErr &&
        Cover(front) == Cover(back)) {
        PMTicketReleaseItem(ticket, kPMTopLevel, kBackCoverItem);
    }
}

struct FoldPicture {
    SInt32 foldOption;
    const char* withOutlines;
    const char* plain;
};
// clang-format off
constexpr FoldPicture kFoldPictures[] = {
    // fold option          with outlines                                           without
    {kFoldBooklet,          "Layout/Booklet-Fold-Outlines-Portrait.gif",            "Layout/Booklet-Fold-Portrait.gif"},
    {kFoldAndStapleBooklet, "Layout/Booklet-Fold-Staple-Outlines-Portrait.gif",     "Layout/Booklet-Fold-Staple-Portrait.gif"},
    {kFoldNone,             "Layout/Booklet-Outlines-Portrait.gif",                 "Layout/Booklet-Portrait.gif"},
};
static_assert(std::size(kFoldPictures) == 3);
// clang-format on

}  // namespace

void ReadLayoutSettings(PMTicketRef ticket, LayoutSettings* settings) {
    settings->foldInstalled = getInstalledFeature(CFSTR("BookletFoldKey"));
    settings->foldOption =
        settings->foldInstalled ? ReadPPDChoice(ticket, kFoldMainKeyword, kFoldNone) : SInt32{kFoldNotInstalled};
    settings->bookletLayout = ReadBoolean(ticket, kBookletLayoutItem) ? 1 : 0;
    if (settings->bookletLayout == 1) {
        settings->drawOutlines = GetTicketNumber(ticket, kBookletDrawOutlinesItem, 0);
    }
}

void WriteLayoutSettings(const LayoutSettings& settings, PMTicketRef ticket) {
    const bool booklet = settings.bookletLayout == 1;
    PMTicketSetCFBoolean(ticket, kCreator, kBookletLayoutItem, booklet ? kCFBooleanTrue : kCFBooleanFalse, kPMUnlocked);
    WriteSides(SidesForLayout(booklet, ReadSides(ticket)), ticket);
    SetTicketNumber(ticket, kCreator, kBookletDrawOutlinesItem, settings.drawOutlines);
    WritePPDChoiceOfMap(settings.foldOption, kFoldMainKeyword, ticket);
    RemoveEqualBackCover(ticket);
}

SInt32 SidesForLayout(bool booklet, SInt32 sides) {
    if (booklet) {
        return kShortEdge;
    }
    return sides == kShortEdge ? kLongEdge : sides;
}

CFStringRef LayoutPicture(const LayoutSettings& settings) {
    if (settings.bookletLayout != 1) {
        return CFSTR("Booklet Creation/None.gif");
    }
    const FoldPicture* row = std::begin(kFoldPictures);
    while (row->foldOption != settings.foldOption && row->foldOption != kFoldNone) {
        ++row;
    }
    return CFStringMakeConstant(settings.drawOutlines != 0 ? row->withOutlines : row->plain);
}
