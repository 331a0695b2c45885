#include "panels/about/about_context.h"
#include "panels/about/about_logo_button.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Help.h"
#include "platform/toolbox/Windows.h"
#include "ui/draw_image.h"
#include "ui/panel_operations.h"

namespace {

constexpr OSType kLogoCommand = FourCharCode("TsLB");
constexpr UniChar kEscape = 27;

/// Opens the maker's website; the browser takes the front, so the dialog is brought back to it.
void VisitMaker(const AboutContext& context) {
    const CFTypeRef address = CFBundleGetValueForInfoDictionaryKey(context.bundle, CFSTR("TavroMakerAddress"));
    if (CFGetTypeID(address) == CFStringGetTypeID()) {
        const auto url = CFRef<CFURLRef>::adopt(
            CFURLCreateWithString(kCFAllocatorDefault, static_cast<CFStringRef>(address), nullptr));
        LSOpenCFURLRef(url.get(), nullptr);
    }
    SelectWindow(GetControlOwner(context.pane));
}

bool IsEscape(EventRef event) {
    UniChar character = 0;
    GetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, nullptr, sizeof character, nullptr, &character);
    return character == kEscape;
}

OSStatus EndModalLoop(const AboutContext& context) {
    QuitAppModalLoopForWindow(GetControlOwner(context.pane));
    return noErr;
}

}  // namespace

OSStatus pdeShellAboutEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    const auto& context = *static_cast<AboutContext*>(userData);
    const UInt32 eventKind = GetEventKind(event);
    switch (GetEventClass(event)) {
        case kEventClassCommand: {
            HICommand command{};
            GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                              &command);
            if (command.commandID == kLogoCommand) {
                VisitMaker(context);
            }
            return noErr;
        }
        case kEventClassControl:
            if (eventKind == kEventControlDraw) {
                DrawImage(CFSTR("VelmoraLogo.gif"), GetEventControl(event), false);
                return noErr;
            }
            return eventNotHandledErr;
        case kEventClassMouse:
            SetLogoButtonCursor(context.logoButton, eventKind == kEventMouseEntered);
            return eventNotHandledErr;
        case kEventClassWindow:
            return eventKind == kEventWindowClose || eventKind == kEventWindowEnds ? EndModalLoop(context)
                                                                                   : eventNotHandledErr;
        case kEventClassKeyboard:
            return IsEscape(event) ? EndModalLoop(context) : eventNotHandledErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus DeviceMimicHandler(EventHandlerCallRef, EventRef event, void* userData) {
    DrawImage(static_cast<AboutContext*>(userData)->deviceMimicFile, GetEventControl(event), true);
    return noErr;
}
