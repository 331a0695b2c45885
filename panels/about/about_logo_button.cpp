#include "panels/about/about_logo_button.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Views.h"
#include "ui/draw_image.h"

#include <memory>

namespace {

constexpr OSType kPropertyCreator = FourCharCode("TPDE");
constexpr OSType kImageFileTag = FourCharCode("TcIF");  // CFStringRef, lent
constexpr ControlPartCode kButtonPart = 10;

constexpr EventTypeSpec kViewEvents[] = {
    {kEventClassHIObject, kEventHIObjectConstruct}, {kEventClassHIObject, kEventHIObjectInitialize},
    {kEventClassHIObject, kEventHIObjectDestruct},  {kEventClassControl, kEventControlHitTest},
    {kEventClassControl, kEventControlDraw},        {kEventClassMouse, kEventMouseEntered},
    {kEventClassMouse, kEventMouseExited},
};

/// The view's own record, the user data of its events.
struct LogoButton {
    ControlRef view;
};

OSStatus Construct(EventRef event) {
    auto button = std::make_unique<LogoButton>();
    OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof button->view,
                                        nullptr, &button->view);
    if (status == noErr) {
        void* record = button.get();
        status = SetEventParameter(event, kEventParamHIObjectInstance, typeVoidPtr, sizeof record, &record);
    }
    if (status == noErr) {
        static_cast<void>(button.release());  // Destruct deletes it
    }
    return status;
}

OSStatus HitTest(ControlRef view, EventRef event) {
    HIPoint mouse{};
    HIRect bounds{};
    OSStatus status =
        GetEventParameter(event, kEventParamMouseLocation, typeHIPoint, nullptr, sizeof mouse, nullptr, &mouse);
    if (status == noErr) {
        status = HIViewGetBounds(view, &bounds);
    }
    const bool inside = mouse.x >= bounds.origin.x && mouse.x < bounds.origin.x + bounds.size.width &&
                        mouse.y >= bounds.origin.y && mouse.y < bounds.origin.y + bounds.size.height;
    if (status != noErr || !inside) {
        return eventNotHandledErr;
    }
    return SetEventParameter(event, kEventParamControlPart, typeControlPartCode, sizeof kButtonPart, &kButtonPart);
}

void Draw(ControlRef view) {
    CFStringRef fileName = nullptr;
    GetControlProperty(view, kPropertyCreator, kImageFileTag, sizeof fileName, nullptr, &fileName);
    DrawImage(fileName, view, false);
}

}  // namespace

void RegisterLogoButtonClass() {
    static HIObjectClassRef registered = nullptr;
    if (registered == nullptr) {
        HIObjectRegisterSubclass(CFSTR("com.tavro.print.about"), kHIViewClassID, 0, CustomPushButtonViewHandler,
                                 std::size(kViewEvents), kViewEvents, nullptr, &registered);
    }
}

void SetLogoButtonImage(ControlRef button, CFStringRef fileName) {
    SetControlProperty(button, kPropertyCreator, kImageFileTag, sizeof fileName, &fileName);
}

void SetLogoButtonCursor(ControlRef button, bool mouseInside) {
    SetThemeCursor(mouseInside && IsControlActive(button) ? kThemePointingHandCursor : kThemeArrowCursor);
}

OSStatus CustomPushButtonViewHandler(EventHandlerCallRef, EventRef event, void* userData) {
    const OSType eventClass = GetEventClass(event);
    const UInt32 eventKind = GetEventKind(event);
    if (eventClass == kEventClassHIObject && eventKind == kEventHIObjectConstruct) {
        return Construct(event);
    }
    auto* button = static_cast<LogoButton*>(userData);
    if (eventClass == kEventClassHIObject) {
        if (eventKind == kEventHIObjectDestruct) {
            delete button;
        } else {
            ShowControl(button->view);
        }
        return noErr;
    }
    if (eventClass == kEventClassMouse) {
        SetLogoButtonCursor(button->view, eventKind == kEventMouseEntered);
        return eventNotHandledErr;
    }
    if (eventKind == kEventControlHitTest) {
        return HitTest(button->view, event);
    }
    Draw(button->view);
    return noErr;
}
