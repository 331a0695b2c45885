// The Layout panel: booklets, the outlines of their pages, and how they are finished.

#include "model/settings/ticket_access.h"
#include "model/stock/stock.h"
#include "model/stock_dialogs/custom_stock_size.h"
#include "panels/layout/booklet_finishing_dialog.h"
#include "panels/layout/layout_sync.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "ui/draw_image.h"
#include "ui/panel_operations.h"
#include "ui/setting_menus.h"

#include <new>
#include <utility>

namespace {

enum ControlNumber : SInt32 {
    kPane = 6000,
    kBookletPopup = 6004,
    kPreview = 6005,
    kForceNewSize = 6009,
    kNewSize = 6010,
    kOutlines = 6011,
    kFinishingButton = 6013,
};

struct LayoutContext {
    bool opened;
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    ControlRef hostPane;
    LayoutSettings settings;
    // A booklet on paper of another size. The panel does not offer it: the controls go as soon as the nib is loaded.
    SInt32 forceNewSize;
    SInt32 newSize;  // ticket value of a page size
    SInt32 customWidth;
    SInt32 customLength;
    // Null until the first Open, and where the panel does not offer the control.
    ControlRef pane;
    ControlRef bookletPopup;
    ControlRef forceNewSizeCheckbox;
    ControlRef newSizePopup;
    ControlRef outlinesCheckbox;
    ControlRef finishingButton;
    ControlRef preview;
    EventHandlerRef hitHandler;
    EventHandlerRef drawHandler;
};

LayoutContext* Context(PMPDEContext context) {
    return reinterpret_cast<LayoutContext*>(context);
}

LayoutContext* InitContext() {
    auto* context = new (std::nothrow) LayoutContext{};
    if (context != nullptr) {
        context->bundle = CFBundleGetBundleWithIdentifier(kPDEBundleIdentifier);
        context->title = CopyPanelTitle(context->bundle, CFSTR("Layout"));
        context->customWidth = kTicketValueUnset;
        context->customLength = kTicketValueUnset;
    }
    return context;
}

void SetEnabled(ControlRef control, bool enabled) {
    enabled ? EnableControl(control) : DisableControl(control);
}

/// What goes with booklets is there for booklets only.
void ShowBookletControls(const LayoutContext& context) {
    const bool booklet = context.settings.bookletLayout == 1;
    SetEnabled(context.outlinesCheckbox, booklet);
    SetControlVisibility(context.finishingButton, booklet, true);
}

/// Shows the settings in the controls, as far as there are any yet.
void SetControls(const LayoutContext& context) {
    SetControl32BitValue(context.bookletPopup, context.settings.bookletLayout + 1);
    SetControl32BitValue(context.outlinesCheckbox, context.settings.drawOutlines);
    SetControl32BitValue(context.forceNewSizeCheckbox, context.forceNewSize);
    SetPopupButtonToTicketValue(context.newSizePopup, context.newSize);
    SetEnabled(context.newSizePopup, context.forceNewSize != 0);
    ShowBookletControls(context);
    Draw1Control(context.preview);
}

/// A custom size is taken over only when the user says which one it is.
void ChooseNewSize(LayoutContext* context, SInt32 size) {
    if (size == kStockSizeCustom) {
        SInt16 result = kCustomStockSizeCancel;
        RunModalCustomStockSizeDialog(context->bundle, &result, &context->customWidth, &context->customLength);
        if (result != kCustomStockSizeOK) {
            return;
        }
    }
    context->newSize = size;
}

OSStatus pdeShellLayoutEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<LayoutContext*>(userData);
    const ControlRef control = GetEventControl(event);
    switch (GetPanelControlNumber(control)) {
        case kBookletPopup:
            context->settings.bookletLayout = GetControl32BitValue(control) - 1;
            ShowBookletControls(*context);
            Draw1Control(context->preview);
            break;
        case kForceNewSize:
            context->forceNewSize = GetControl32BitValue(control);
            SetEnabled(context->newSizePopup, context->forceNewSize != 0);
            break;
        case kNewSize:
            ChooseNewSize(context, GetPopupButtonTicketValue(control));
            break;
        case kOutlines:
            context->settings.drawOutlines = GetControl32BitValue(control);
            Draw1Control(context->preview);
            break;
        case kFinishingButton:
            RunModalBookletFinishingDialog(context->bundle, context->settings.drawOutlines != 0,
                                           &context->settings.foldOption);
            Draw1Control(context->preview);
            break;
        default:
            break;
    }
    return eventNotHandledErr;
}

OSStatus pdeShellLayoutDrawIconEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    DrawImage(LayoutPicture(static_cast<LayoutContext*>(userData)->settings), GetEventControl(event), false);
    return noErr;
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    LayoutContext* context = Context(opaque);
    if (ticketsToControls) {
        ReadLayoutSettings(ticket, &context->settings);
        context->forceNewSize = 0;
        SetControls(*context);
    } else if (IsControlActive(context->preview)) {
        // Only the panel that is shown or being left writes: the sides of the job and its back cover are the business
        // of other panels too.
        WriteLayoutSettings(context->settings, ticket);
    }
    return noErr;
}

OSStatus Open(PMPDEContext opaque) {
    LayoutContext* context = Context(opaque);
    if (const auto done = EmbedPanelOnce(context, CFSTR("Layout"), CFSTR("Layout"), kPane)) {
        return *done;
    }
    context->bookletPopup = FindPanelControl(context->pane, kBookletPopup);
    context->forceNewSizeCheckbox = FindPanelControl(context->pane, kForceNewSize);
    context->newSizePopup = FindPanelControl(context->pane, kNewSize);
    context->outlinesCheckbox = FindPanelControl(context->pane, kOutlines);
    context->finishingButton = FindPanelControl(context->pane, kFinishingButton);
    context->preview = FindPanelControl(context->pane, kPreview);
    DisposeControl(std::exchange(context->forceNewSizeCheckbox, nullptr));
    DisposeControl(std::exchange(context->newSizePopup, nullptr));
    if (!context->settings.foldInstalled) {
        DisposeControl(std::exchange(context->finishingButton, nullptr));
    }
    SetControls(*context);

    static constexpr EventTypeSpec kHits[] = {{kEventClassControl, kEventControlHit}};
    static constexpr EventTypeSpec kDraws[] = {{kEventClassControl, kEventControlDraw}};
    InstallControlEventHandler(context->preview, pdeShellLayoutDrawIconEventHandler, std::size(kDraws), kDraws, context,
                               &context->drawHandler);
    return InstallControlEventHandler(context->pane, pdeShellLayoutEventHandler, std::size(kHits), kHits, context,
                                      &context->hitHandler);
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    LayoutContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    RemoveEventHandler(context->hitHandler);
    RemoveEventHandler(context->drawHandler);
    delete context;
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetLayoutPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({PanelPrologue<InitContext>, InitializePanel<LayoutContext, Sync>, Sync, GetNoSummaryText,
                               Open, CloseWithoutWork, Terminate},
                              interface);
}
