#include "panels/layout/booklet_finishing_dialog.h"

#include "model/records/booklet_fold.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/nib_window.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr ControlID kFinishingID = {FourCharCode("Tshl"), 1000};
constexpr ControlID kPictureID = {FourCharCode("Tshl"), 1001};

// The fold option of each item.
constexpr std::array kFoldOptions = {SInt32{kFoldNone}, SInt32{kFoldBooklet}, SInt32{kFoldAndStapleBooklet}};

struct BookletFinishingContext {
    CFBundleRef bundle;
    WindowRef window;
    ControlRef finishing;
    ControlRef picture;
    bool drawOutlines;
    bool accepted;
};

OSStatus EndDialog(BookletFinishingContext* context, bool accepted) {
    context->accepted = accepted;
    return QuitAppModalLoopForWindow(context->window);
}

OSStatus BookletFinishingCommandHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<BookletFinishingContext*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("ok  "):
            return EndDialog(context, true);
        case FourCharCode("not!"):
            return EndDialog(context, false);
        case FourCharCode("Thlp"):
            return DisplayHelp(context->bundle, nullptr, CFSTR("popup_DB/Office_DB/IDH_Booklet_Finishing.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus BookletFinishingHitHandler(EventHandlerCallRef, EventRef, void* userData) {
    Draw1Control(static_cast<BookletFinishingContext*>(userData)->picture);
    return eventNotHandledErr;
}

OSStatus BookletFinishingDrawHandler(EventHandlerCallRef, EventRef, void* userData) {
    const auto& context = *static_cast<BookletFinishingContext*>(userData);
    DrawImage(BookletFinishingPicture(GetControl32BitValue(context.finishing), context.drawOutlines), context.picture,
              false);
    return noErr;
}

}  // namespace

SInt32 BookletFinishingItem(SInt32 foldOption) {
    const auto* found = std::ranges::find(kFoldOptions, foldOption);
    return found != kFoldOptions.end() ? static_cast<SInt32>(found - kFoldOptions.begin()) + 1 : 1;
}

SInt32 FoldOptionForBookletFinishingItem(SInt32 item) {
    return kFoldOptions[item >= 2 && item <= 3 ? static_cast<std::size_t>(item) - 1 : 0];
}

CFStringRef BookletFinishingPicture(SInt32 item, bool drawOutlines) {
    return BookletFoldPicture(FoldOptionForBookletFinishingItem(item), drawOutlines);
}

OSStatus RunModalBookletFinishingDialog(CFBundleRef bundle, Boolean drawOutlines, SInt32* foldOption) {
    if (foldOption == nullptr) {
        return paramErr;
    }
    WindowFromNib window;
    if (const OSStatus status = window.load(bundle, CFSTR("BookletCreation"), CFSTR("BookletFinishing"));
        status != noErr) {
        return status;
    }
    BookletFinishingContext context{bundle, window.get(), nullptr, nullptr, drawOutlines != 0, false};
    GetControlByID(window.get(), &kFinishingID, &context.finishing);
    GetControlByID(window.get(), &kPictureID, &context.picture);
    SetControl32BitValue(context.finishing, BookletFinishingItem(*foldOption));

    static constexpr EventTypeSpec kCommands[] = {{kEventClassCommand, kEventCommandProcess}};
    static constexpr EventTypeSpec kHits[] = {{kEventClassControl, kEventControlHit}};
    static constexpr EventTypeSpec kDraws[] = {{kEventClassControl, kEventControlDraw}};
    InstallWindowEventHandler(window.get(), BookletFinishingCommandHandler, std::size(kCommands), kCommands, &context,
                              nullptr);
    InstallControlEventHandler(context.finishing, BookletFinishingHitHandler, std::size(kHits), kHits, &context,
                               nullptr);
    InstallControlEventHandler(context.picture, BookletFinishingDrawHandler, std::size(kDraws), kDraws, &context,
                               nullptr);
    RunAppModalLoopForWindow(window.get());

    if (context.accepted) {
        *foldOption = FoldOptionForBookletFinishingItem(GetControl32BitValue(context.finishing));
    }
    return noErr;
}
