// The About panel: what this plug-in is, who made it, and how the printer looks.

#include "core/features/installable_options.h"
#include "panels/about/about_context.h"
#include "panels/about/about_logo_button.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "ui/nib_window.h"
#include "ui/panel_operations.h"

namespace {

enum ControlNumber : SInt32 {
    kPane = 500,
    kLogoButton = 505,
    kDeviceMimic = 506,
    kSuiteLogo = 507,
};

struct InfoText {
    SInt32 number;
    const char* key;
};
/// The static texts that show what the bundle says of itself.
constexpr InfoText kInfoTexts[] = {
    // control  key of InfoPlist.strings
    {501, "CFBundleName"},
    {502, "CFBundleGetInfoString"},
    {503, "NSHumanReadableCopyright"},
};

AboutContext* Context(PMPDEContext context) {
    return reinterpret_cast<AboutContext*>(context);
}

AboutContext* InitContext() {
    return MakePanelRecord<AboutContext>(CFSTR("About"));
}

void FillInfoTexts(const AboutContext& context) {
    const CFDictionaryRef texts = CFBundleGetLocalInfoDictionary(context.bundle);
    for (const auto& [number, name] : kInfoTexts) {
        const auto key =
            CFRef<CFStringRef>::adopt(CFStringCreateWithCString(kCFAllocatorDefault, name, kCFStringEncodingASCII));
        const auto text = static_cast<CFStringRef>(CFDictionaryGetValue(texts, key.get()));
        if (CFGetTypeID(text) == CFStringGetTypeID()) {
            SetControlData(FindPanelControl(context.pane, number), kControlEntireControl, kControlStaticTextCFStringTag,
                           sizeof text, &text);
        }
    }
}

OSStatus BuildPane(AboutContext* context) {
    RegisterLogoButtonClass();
    if (const OSStatus status = EmbedPaneFromNib(context->bundle, CFSTR("AboutPanel"), CFSTR("About"),
                                                 {kPanelSignature, kPane}, context->hostPane, &context->pane);
        status != noErr) {
        return status;
    }
    FillInfoTexts(*context);
    context->logoButton = FindPanelControl(context->pane, kLogoButton);
    SetLogoButtonImage(context->logoButton, CFSTR("TavroLogo.gif"));

    static constexpr EventTypeSpec kDrawEvents[] = {{kEventClassControl, kEventControlDraw}};
    static constexpr EventTypeSpec kPaneEvents[] = {
        {kEventClassCommand, kEventCommandProcess}, {kEventClassMouse, kEventMouseEntered},
        {kEventClassMouse, kEventMouseExited},      {kEventClassWindow, kEventWindowClose},
        {kEventClassWindow, kEventWindowEnds},      {kEventClassKeyboard, kEventRawKeyDown},
    };
    InstallControlEventHandler(context->pane, pdeShellAboutEventHandler, std::size(kPaneEvents), kPaneEvents, context,
                               nullptr);
    InstallControlEventHandler(FindPanelControl(context->pane, kSuiteLogo), pdeShellAboutEventHandler,
                               std::size(kDrawEvents), kDrawEvents, context, nullptr);
    InstallControlEventHandler(FindPanelControl(context->pane, kDeviceMimic), DeviceMimicHandler,
                               std::size(kDrawEvents), kDrawEvents, context, nullptr);
    return noErr;
}

void StartTracking(AboutContext* context) {
    constexpr MouseTrackingRegionID kRegionID = {FourCharCode("TPDE"), FourCharCode("TcRT")};
    Rect bounds{};
    GetControlBounds(context->logoButton, &bounds);
    context->trackingRegion = NewRgn();
    RectRgn(context->trackingRegion, &bounds);
    const std::array targets = {GetControlEventTarget(context->pane), GetControlEventTarget(context->logoButton)};
    for (std::size_t i = 0; i < targets.size(); ++i) {
        CreateMouseTrackingRegion(GetControlOwner(context->pane), context->trackingRegion, nullptr, 0, kRegionID,
                                  nullptr, targets[i], &context->tracking[i]);
        SetMouseTrackingRegionEnabled(context->tracking[i], true);
    }
}

void StopTracking(AboutContext* context) {
    for (MouseTrackingRef& tracking : context->tracking) {
        SetMouseTrackingRegionEnabled(tracking, false);
        ReleaseMouseTrackingRegion(tracking);
        tracking = nullptr;
    }
    DisposeRgn(context->trackingRegion);
    context->trackingRegion = nullptr;
}

// ---- The operations

OSStatus Initialize(PMPDEContext opaque, PMPDEFlags*, PMPDERef, ControlRef parentPane, PMPrintSession session) {
    AboutContext* context = Context(opaque);
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPDEContext;
    }
    context->hostPane = parentPane;
    context->deviceMimicFile = GetDeviceMimic();
    return noErr;
}

OSStatus Sync(PMPDEContext, PMPrintSession, Boolean) {
    return noErr;
}

OSStatus Open(PMPDEContext opaque) {
    AboutContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (context->pane == nullptr) {
        if (const OSStatus status = BuildPane(context); status != noErr) {
            return status;
        }
    }
    if (context->trackingRegion == nullptr) {
        StartTracking(context);
    }
    return noErr;
}

OSStatus Close(PMPDEContext opaque) {
    if (opaque != nullptr) {
        StopTracking(Context(opaque));
    }
    return noErr;
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    if (opaque == nullptr) {
        return noErr;
    }
    StopTracking(Context(opaque));
    delete Context(opaque);
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetAboutPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({PanelPrologue<InitContext>, Initialize, Sync, GetNoSummaryText, Open, Close, Terminate},
                              interface);
}
