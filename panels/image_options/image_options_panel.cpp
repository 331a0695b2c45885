// The Image Options panel: resolution, lighten/darken, toner saver, negative and mirrored pages.

#include "panels/image_options/image_options_sync.h"
#include "panels/image_options/invert_image.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Menus.h"
#include "platform/toolbox/Windows.h"
#include "ui/draw_image.h"
#include "ui/localization.h"
#include "ui/panel_operations.h"
#include "ui/ppd_menus.h"
#include "ui/spin_control.h"

#include <initializer_list>

namespace {

enum ControlNumber : SInt32 {
    kPane = 900,
    kNegativeImage = 911,
    kMirrorImage = 912,
    kInvertPicture = 913,
    kResolution = 941,
    kImageShiftSetup = 950,
    kImageShiftGroup = 951,
    kImageShiftPicture = 963,
    kLightenDarkenLabel = 980,
    kLightenDarkenSlider = 981,
    kLightenDarkenField = 982,
    kLightenDarkenArrows = 983,
    kLightenDarkenPicture = 984,
    kLighterLabel = 985,
    kDarkerLabel = 986,
    kPrinterDefaultLabel = 987,
    kTonerSaver = 988,
    kTonerSaverLabel = 989,
    kTonerSaverPicture = 990,
};

struct ImageOptionsContext {
    bool opened;
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    ControlRef hostPane;
    ImageOptionLists lists;
    ImageOptionsSettings settings;
    II_Options invertOptions;
    // Null until the first Open.
    WindowRef window;
    ControlRef pane;
    ControlRef resolutionPopup;
    ControlRef lightenDarkenArrows;
    ControlRef tonerSaver;
    ControlRef tonerSaverPicture;
    ControlRef invertPicture;
    InvertImageContext invertImage;
};

ImageOptionsContext* Context(PMPDEContext context) {
    return reinterpret_cast<ImageOptionsContext*>(context);
}

ImageOptionsContext* InitContext() {
    return MakePanelRecord<ImageOptionsContext>(CFSTR("ImageOptions"));
}

/// Shows the settings in the controls, as far as there are any yet. What the printer does not offer shows nothing.
void SetControls(const ImageOptionsContext& context) {
    if (context.lists.resolution) {
        SetControl32BitValue(context.resolutionPopup, context.settings.resolutionIndex + 1);
    }
    if (context.lists.imageQuality && context.lightenDarkenArrows != nullptr) {
        SetSpinControlValue(context.lightenDarkenArrows, LevelForImageQuality(context.settings.imageQualityIndex),
                            false);
    }
    if (context.lists.economode) {
        SetControl32BitValue(context.tonerSaver, context.settings.economodeIndex);
    }
    InvertImageSetControls(context.invertImage, context.invertOptions);
    Draw1Control(context.pane);
}

/// Writes what the controls show. A panel that was not opened leaves the options of the PPD alone.
void WriteControls(const ImageOptionsContext& context, PMTicketRef ticket) {
    if (context.resolutionPopup != nullptr) {
        WriteResolution(GetControl32BitValue(context.resolutionPopup) - 1, context.lists, ticket);
    }
    if (context.lightenDarkenArrows != nullptr) {
        WriteImageQuality(ImageQualityForLevel(GetControl32BitValue(context.lightenDarkenArrows)), context.lists,
                          ticket);
    }
    if (context.tonerSaver != nullptr) {
        WriteEconomode(GetControl32BitValue(context.tonerSaver), context.lists, ticket);
    }
    InvertImageWriteOptions(InvertImageGetOptions(context.invertImage, context.invertOptions), ticket);
}

OSStatus pdeShellImageOptionsEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<ImageOptionsContext*>(userData);
    const ControlRef control = GetEventControl(event);
    switch (GetPanelControlNumber(control)) {
        case kNegativeImage:
        case kMirrorImage:
            context->invertOptions = InvertImageGetOptions(context->invertImage, context->invertOptions);
            Draw1Control(context->invertPicture);
            break;
        case kTonerSaver:
            context->settings.economodeIndex = GetControl32BitValue(control);
            Draw1Control(context->tonerSaverPicture);
            break;
        default:
            break;
    }
    return eventNotHandledErr;
}

OSStatus pdeShellImageOptionsDrawHandler(EventHandlerCallRef, EventRef event, void* userData) {
    const auto& context = *static_cast<ImageOptionsContext*>(userData);
    const ControlRef control = GetEventControl(event);
    switch (GetPanelControlNumber(control)) {
        case kImageShiftPicture:
            DrawImage(CFSTR("ImageShift.gif"), control, false);
            break;
        case kTonerSaverPicture:
            DrawImage(TonerPicture(context.settings.economodeIndex), control, false);
            break;
        case kLightenDarkenPicture:
            DrawImage(CFSTR("Lighten-Darken-Grayscale.gif"), control, false);
            break;
        case kInvertPicture:
            DrawImage(InvertImagePicture(context.invertOptions), control, false);
            break;
        default:
            return eventNotHandledErr;
    }
    return noErr;
}

void Disable(const ImageOptionsContext& context, std::initializer_list<SInt32> numbers) {
    for (const SInt32 number : numbers) {
        DisableControl(FindPanelControl(context.pane, number));
    }
}

void FillResolutions(ImageOptionsContext* context) {
    context->resolutionPopup = FindPanelControl(context->pane, kResolution);
    const MenuRef menu = GetControlPopupMenuHandle(context->resolutionPopup);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    if (PopulatePopupButtonFromPPDOptions(context->resolutionPopup, context->lists.resolution.get(), 0) == 0) {
        DisableControl(context->resolutionPopup);
    }
}

void SetSpinProperty(ControlRef control, OSType tag, SInt32 value) {
    SetControlProperty(control, kSpinControlCreator, tag, sizeof value, &value);
}

/// Ties slider, field and arrows together. Only what the user can do with them makes them a spin control, so that an
/// empty field stays empty where the printer has no such option.
void PrepareLightenDarken(ImageOptionsContext* context) {
    const ControlRef slider = FindPanelControl(context->pane, kLightenDarkenSlider);
    const ControlRef field = FindPanelControl(context->pane, kLightenDarkenField);
    context->lightenDarkenArrows = FindPanelControl(context->pane, kLightenDarkenArrows);
    SetLocalizedStaticText(context->bundle, CFSTR("Lighten/Darken:"),
                           FindPanelControl(context->pane, kLightenDarkenLabel));
    SetLocalizedStaticText(context->bundle, CFSTR("Printer Default"),
                           FindPanelControl(context->pane, kPrinterDefaultLabel));
    for (const ControlRef control : {slider, context->lightenDarkenArrows}) {
        SetControl32BitMinimum(control, kLightest);
        SetControl32BitMaximum(control, kDarkest);
    }
    if (!context->lists.imageQuality) {
        Disable(*context, {kLightenDarkenLabel, kLightenDarkenSlider, kLightenDarkenField, kLightenDarkenArrows,
                           kLighterLabel, kDarkerLabel, kPrinterDefaultLabel});
        return;
    }
    SetSpinProperty(context->lightenDarkenArrows, kSpinControlFieldTag, kLightenDarkenField);
    SetSpinProperty(context->lightenDarkenArrows, kSpinControlMirrorTag, kLightenDarkenSlider);
    SetSpinProperty(field, kSpinControlArrowsTag, kLightenDarkenArrows);
    SetSpinProperty(slider, kSpinControlArrowsTag, kLightenDarkenArrows);
    CreateSpinControl(context->lightenDarkenArrows);
    SetControlAction(slider, SpinSliderActionProc);
}

void PrepareTonerSaver(ImageOptionsContext* context) {
    context->tonerSaver = FindPanelControl(context->pane, kTonerSaver);
    context->tonerSaverPicture = FindPanelControl(context->pane, kTonerSaverPicture);
    if (!context->lists.economode) {
        Disable(*context, {kTonerSaverLabel, kTonerSaver});
    }
}

/// Image shift is offered for special pages, not for the whole job.
void RemoveImageShift(const ImageOptionsContext& context) {
    DisposeControl(FindPanelControl(context.pane, kImageShiftSetup));
    HideControl(FindPanelControl(context.pane, kImageShiftGroup));
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    ImageOptionsContext* context = Context(opaque);
    if (ticketsToControls) {
        context->settings = ReadImageOptions(ticket, context->lists);
        context->invertOptions = InvertImageReadOptions(ticket);
        SetControls(*context);
    } else {
        WriteControls(*context, ticket);
    }
    return noErr;
}

OSStatus Initialize(PMPDEContext opaque, PMPDEFlags*, PMPDERef, ControlRef parentPane, PMPrintSession session) {
    ImageOptionsContext* context = Context(opaque);
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPDEContext;
    }
    context->hostPane = parentPane;
    InvertImageInitialize(&context->invertImage, &context->invertOptions);
    context->lists = CopyImageOptionLists();
    return Sync(opaque, session, true);
}

OSStatus Open(PMPDEContext opaque) {
    ImageOptionsContext* context = Context(opaque);
    if (const auto done = EmbedPanelOnce(context, CFSTR("ImageOptions"), CFSTR("Office"), kPane)) {
        return *done;
    }
    context->window = GetControlOwner(context->pane);
    context->invertPicture = FindPanelControl(context->pane, kInvertPicture);
    RemoveImageShift(*context);
    FillResolutions(context);
    PrepareLightenDarken(context);
    PrepareTonerSaver(context);
    InvertImageOpen(context->pane, &context->invertImage);
    SetControls(*context);

    static constexpr EventTypeSpec kHits[] = {{kEventClassControl, kEventControlHit}};
    static constexpr EventTypeSpec kDraws[] = {{kEventClassControl, kEventControlDraw}};
    for (const SInt32 picture : {kImageShiftPicture, kTonerSaverPicture, kLightenDarkenPicture, kInvertPicture}) {
        InstallControlEventHandler(FindPanelControl(context->pane, picture), pdeShellImageOptionsDrawHandler,
                                   std::size(kDraws), kDraws, context, nullptr);
    }
    return InstallControlEventHandler(context->pane, pdeShellImageOptionsEventHandler, std::size(kHits), kHits, context,
                                      nullptr);
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    ImageOptionsContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (IsValidWindowPtr(context->window)) {
        DisposeControl(context->pane);
    }
    delete context;
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetImageOptionsPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface(
        {PanelPrologue<InitContext>, Initialize, Sync, GetNoSummaryText, Open, CloseWithoutWork, Terminate}, interface);
}
