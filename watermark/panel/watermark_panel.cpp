// The Watermark panel: one of the stored watermarks or none, on which pages, in front of or behind what they show.

#include "model/settings/ticket_access.h"
#include "model/settings/ticket_items.h"
#include "platform/foundation/CFBundle.h"
#include "platform/printing/PMPrinter.h"
#include "platform/toolbox/Windows.h"
#include "ui/draw_image.h"
#include "ui/localization.h"
#include "ui/nib_window.h"
#include "ui/panel_operations.h"
#include "watermark/panel/watermark_editing.h"
#include "watermark/panel/watermark_editor.h"
#include "watermark/records/watermark_font.h"
#include "watermark/records/watermark_list.h"

#include <array>
#include <new>
#include <utility>

namespace {

#define kWatermarkCreator CFSTR("com.tavro.printingmanager")
#define kWatermarkPanelKind CFSTR("com.tavro.print.pde.WatermarkKind")

constexpr UInt32 kPanelWidth = 540;
constexpr UInt32 kPanelHeight = 491;
constexpr SInt32 kLandscape = 2;
constexpr SInt32 kReverseLandscape = 3;

WatermarkContext* Context(PMPDEContext context) {
    return reinterpret_cast<WatermarkContext*>(context);
}

WatermarkContext* InitContext() {
    auto* context = new (std::nothrow) WatermarkContext{};
    if (context != nullptr) {
        context->bundle = CFBundleGetBundleWithIdentifier(kPDEBundleIdentifier);
        context->title = CopyPanelTitle(context->bundle, CFSTR("Watermark"));
        context->option = kWatermarkForeground;
    }
    return context;
}

// ---- Tickets

double NumberAt(CFArrayRef numbers, CFIndex index) {
    double number = 0;
    CFNumberGetValue(static_cast<CFNumberRef>(CFArrayGetValueAtIndex(numbers, index)), kCFNumberDoubleType, &number);
    return number;
}

/// The page as it is read: a landscape page is as wide as its paper is high. Nothing when the ticket has no paper.
PaperExtents ReadPaperExtents(PMPrintSession session) {
    PMTicketRef pageFormat = 0;
    CFArrayRef sides = nullptr;  // top, left, bottom, right
    if (GetTicketFromSession(session, kPDE_PMPageFormatKey, &pageFormat) != noErr ||
        PMTicketGetCFArray(pageFormat, kPMTopLevel, kPMTopLevel, kPMUnadjustedPaperRectKey, &sides) != noErr) {
        return {};
    }
    PaperExtents extents{NumberAt(sides, 2) - NumberAt(sides, 0), NumberAt(sides, 3) - NumberAt(sides, 1)};
    const SInt32 orientation = GetTicketNumber(pageFormat, kPMOrientationKey, 1);
    if (orientation == kLandscape || orientation == kReverseLandscape) {
        std::swap(extents.a, extents.b);
    }
    return extents;
}

void ReadTicket(PMTicketRef ticket, WatermarkContext* context) {
    CFStringRef name = nullptr;
    PMTicketGetCFString(ticket, kPMTopLevel, kPMTopLevel, kWatermarkItem, &name);
    const CFStringRef listed = name != nullptr ? FindWatermark(listOfWatermarks.get(), name, nullptr) : nullptr;
    context->selection = listed != nullptr ? listed : context->noneName.get();
    context->firstPageOnly = GetTicketNumber(ticket, kWatermarkFirstPageOnlyItem, 0);
    context->option = GetTicketNumber(ticket, kWatermarkOptionItem, kWatermarkForeground);
}

void WriteTicket(const WatermarkContext& context, PMTicketRef ticket) {
    if (IsWatermarkSelected(context)) {
        PMTicketSetCFString(ticket, kWatermarkCreator, kWatermarkItem, context.selection, kPMUnlocked);
        convertFont(context.selection);
    } else {
        PMTicketReleaseItem(ticket, kPMTopLevel, kWatermarkItem);
    }
    SetTicketNumber(ticket, kWatermarkCreator, kWatermarkFirstPageOnlyItem, context.firstPageOnly);
    SetTicketNumber(ticket, kWatermarkCreator, kWatermarkOptionItem, context.option);
}

// ---- Controls

void SetControls(WatermarkContext* context) {
    SelectWatermark(context, context->selection);
    SetControl32BitValue(FindWatermarkControl(*context, kWatermarkFirstPageOnly), context->firstPageOnly != 0 ? 1 : 0);
    SetControl32BitValue(FindWatermarkControl(*context, kWatermarkOption),
                         context->option == kWatermarkBackground ? kWatermarkBackground : kWatermarkForeground);
    Draw1Control(context->pane);
}

OSStatus WatermarkEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<WatermarkContext*>(userData);
    const ControlRef control = GetEventControl(event);
    ControlID id{};
    GetControlID(control, &id);
    switch (id.signature == kWatermarkSignature ? id.id : 0) {
        case kWatermarkBrowser:
            toggleControls(*context);
            break;
        case kWatermarkFirstPageOnly:
            context->firstPageOnly = GetControl32BitValue(control);
            break;
        case kWatermarkOption:
            context->option = GetControl32BitValue(control);
            break;
        case kWatermarkNew:
            CreateWatermark(context);
            break;
        case kWatermarkEdit:
            EditSelectedWatermark(context);
            break;
        case kWatermarkDelete:
            DeleteSelectedWatermark(context);
            break;
        default:
            break;
    }
    return eventNotHandledErr;
}

OSStatus DrawBackgroundForm(EventHandlerCallRef, EventRef event, void*) {
    DrawImage(CFSTR("BackgroundForms.gif"), GetEventControl(event), false);
    return noErr;
}

/// The printers have no background forms yet, so there is nothing to set up.
void PrepareBackgroundForm(const WatermarkContext& context) {
    const ControlRef setup = FindWatermarkControl(context, kBackgroundFormSetup);
    SetLocalizedStaticText(context.bundle, CFSTR("Background Form:"),
                           FindWatermarkControl(context, kBackgroundFormLabel));
    SetLocalizedStaticText(context.bundle, CFSTR("<None>"), FindWatermarkControl(context, kBackgroundFormValue));
    SetLocalizedControlTitle(context.bundle, CFSTR("Setup..."), setup);
    DisableControl(setup);
    static constexpr EventTypeSpec kDraw{kEventClassControl, kEventControlDraw};
    InstallControlEventHandler(FindWatermarkControl(context, kBackgroundFormPicture), DrawBackgroundForm, 1, &kDraw,
                               nullptr, nullptr);
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    WatermarkContext* context = Context(opaque);
    if (ticketsToControls) {
        context->extents = ReadPaperExtents(session);
        ReadTicket(ticket, context);
        if (context->pane != nullptr) {
            SetControls(context);
        }
    } else {
        WriteTicket(*context, ticket);
    }
    return noErr;
}

OSStatus Prologue(PMPDEContext* opaque, OSType* creator, CFStringRef* kind, CFStringRef* title, UInt32* maximumWidth,
                  UInt32* maximumHeight) {
    const OSStatus status = AnswerPrologue(InitContext(), opaque, creator, kind, title, maximumWidth, maximumHeight);
    if (status == noErr) {
        *kind = kWatermarkPanelKind;
        *maximumWidth = kPanelWidth;
        *maximumHeight = kPanelHeight;
    }
    return status;
}

OSStatus Initialize(PMPDEContext opaque, PMPDEFlags*, PMPDERef, ControlRef parentPane, PMPrintSession session) {
    WatermarkContext* context = Context(opaque);
    if (context == nullptr || session == nullptr) {
        return kPMInvalidPDEContext;
    }
    gMyContext = context;
    listOfWatermarks = LoadListOfWatermarks(context->bundle);
    context->noneName = CopyLocalizedText(context->bundle, CFSTR("NoWatermark"));
    context->hostPane = parentPane;
    return Sync(opaque, session, true);
}

OSStatus Open(PMPDEContext opaque) {
    WatermarkContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (std::exchange(context->opened, true)) {
        return noErr;
    }
    if (const OSStatus status =
            EmbedPaneFromNib(context->bundle, CFSTR("Watermark"), CFSTR("Window"),
                             {kWatermarkSignature, kWatermarkPane}, context->hostPane, &context->pane);
        status != noErr) {
        return status;
    }
    PrepareWatermarkBrowser(context);
    PrepareBackgroundForm(*context);
    context->editor = CFRef<CFBundleRef>::adopt(LoadWatermarkEditor(context->bundle));
    SetControls(context);
    static constexpr EventTypeSpec kHit{kEventClassControl, kEventControlHit};
    return InstallControlEventHandler(context->pane, WatermarkEventHandler, 1, &kHit, context, &context->hitHandler);
}

OSStatus GetSummaryText(PMPDEContext opaque, CFArrayRef* titles, CFArrayRef* summaries) {
    *titles = nullptr;
    *summaries = nullptr;
    WatermarkContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    const auto truth = [](bool value) { return value ? CFSTR(" True") : CFSTR(" False"); };
    const std::array<std::array<CFStringRef, 2>, 3> rows{{
        // title, summary
        {CFSTR("Watermark"), IsWatermarkSelected(*context) ? CFSTR(" Enabled") : CFSTR(" Disabled")},
        {CFSTR(" FirstPage"), truth(context->firstPageOnly != 0)},
        {CFSTR(" Foreground"), truth(context->option != kWatermarkBackground)},
    }};
    std::array<CFRef<CFMutableArrayRef>, 2> columns;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        columns[column] = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(nullptr, 0, &kCFTypeArrayCallBacks));
        if (!columns[column]) {
            return memFullErr;
        }
        for (const auto& row : rows) {
            CFArrayAppendValue(columns[column].get(), CopyLocalizedText(context->bundle, row[column]).get());
        }
    }
    context->summary = std::move(columns);
    *titles = context->summary[0].get();
    *summaries = context->summary[1].get();
    return noErr;
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    WatermarkContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (context == gMyContext) {
        gMyContext = nullptr;
        listOfWatermarks = nullptr;
    }
    RemoveEventHandler(context->hitHandler);
    ForgetWatermarkEditor();
    delete context;
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetWatermarkPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({Prologue, Initialize, Sync, GetSummaryText, Open, CloseWithoutWork, Terminate},
                              interface);
}
