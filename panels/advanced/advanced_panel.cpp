// The Advanced panel: job options that do not belong elsewhere.

#include "model/settings/ppd_ui_dictionary.h"
#include "panels/advanced/advanced_sync.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Menus.h"
#include "ui/localization.h"
#include "ui/nib_window.h"
#include "ui/panel_operations.h"
#include "ui/ppd_menus.h"
#include "ui/setting_menus.h"

namespace {

enum ControlNumber : SInt32 {
    kPane = 600,
    kBookletLayoutOrderLabel = 610,
    kBookletLayoutOrder = 611,
    kRotateImage = 621,
    kEmitTPIF = 630,
    kBannerLabel = 631,
    kBanner = 632,
    kJog = 634,
};

/// Controls of features that this panel does not offer, whatever its nib has.
constexpr SInt32 kRemovedControls[] = {2040, 2041, 2050, 2051};

struct ControlSetting {
    SInt32 number;
    SInt32 AdvancedSettings::*setting;
};

/// Settings that are their control's value.
constexpr ControlSetting kValueSettings[] = {
    // control            setting
    {kBookletLayoutOrder, &AdvancedSettings::bookletLayoutOrder},
    {kRotateImage, &AdvancedSettings::rotateImage},
    {kEmitTPIF, &AdvancedSettings::emitTPIF},
    {623, &AdvancedSettings::ombrexEmulation},
    {625, &AdvancedSettings::other625},
    {627, &AdvancedSettings::other627},
    {629, &AdvancedSettings::other629},
};
/// Settings that are the ticket value of their pop-up's item.
constexpr ControlSetting kChoiceSettings[] = {
    // control  setting
    {kBanner, &AdvancedSettings::banner},
    {kJog, &AdvancedSettings::jog},
};

struct AdvancedContext {
    bool opened;
    ControlRef hostPane;
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    // Null until the first Open.
    ControlRef pane;
    ControlRef bookletLayoutOrder;
    ControlRef rotateImage;
    ControlRef emitTPIF;
    ControlRef bannerLabel;
    ControlRef banner;
    ControlRef jog;
    AdvancedSettings settings;
};

AdvancedContext* Context(PMPDEContext context) {
    return reinterpret_cast<AdvancedContext*>(context);
}

AdvancedContext* InitContext() {
    return MakePanelRecord<AdvancedContext>(CFSTR("Advanced"));
}

/// Shows the settings in the controls, as far as there are any yet.
void SetControls(const AdvancedContext& context) {
    SetPopupButtonToTicketValue(context.banner, context.settings.banner);
    SetPopupButtonToTicketValue(context.jog, context.settings.jog);
    SetControl32BitValue(context.bookletLayoutOrder, context.settings.bookletLayoutOrder);
    SetControl32BitValue(context.rotateImage, context.settings.rotateImage);
    SetControl32BitValue(context.emitTPIF, context.settings.emitTPIF);
    Draw1Control(context.pane);
}

/// Offers the options of a main keyword; a printer that has none leaves the pop-up empty and disabled.
void FillChoice(ControlRef popup, ControlRef label, CFStringRef mainKeyword) {
    const MenuRef menu = GetControlPopupMenuHandle(popup);
    DeleteMenuItems(menu, 1, CountMenuItems(menu));
    if (PopulatePopupButtonFromPPDOptions(popup, PPDGetGlobalOptions(mainKeyword), 0) == 0) {
        DisableControl(popup);
        DisableControl(label);
    }
}

OSStatus pdeShellAdvancedEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    AdvancedSettings& settings = static_cast<AdvancedContext*>(userData)->settings;
    const ControlRef control = GetEventControl(event);
    const SInt32 hit = GetPanelControlNumber(control);
    for (const auto& [number, setting] : kValueSettings) {
        if (number == hit) {
            settings.*setting = GetControl32BitValue(control);
        }
    }
    for (const auto& [number, setting] : kChoiceSettings) {
        if (number == hit) {
            settings.*setting = GetPopupButtonTicketValue(control);
        }
    }
    return eventNotHandledErr;
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    AdvancedContext* context = Context(opaque);
    if (ticketsToControls) {
        ReadAdvancedSettings(ticket, &context->settings);
        SetControls(*context);
    } else {
        WriteAdvancedSettings(context->settings, ticket);
    }
    return noErr;
}

OSStatus Open(PMPDEContext opaque) {
    AdvancedContext* context = Context(opaque);
    if (context == nullptr || context->opened) {
        return kPMInvalidPDEContext;
    }
    context->opened = true;
    if (const OSStatus status = EmbedPaneFromNib(context->bundle, CFSTR("AdvancedPanelOffice"), CFSTR("Advanced"),
                                                 {kPanelSignature, kPane}, context->hostPane, &context->pane);
        status != noErr) {
        return status;
    }
    context->bookletLayoutOrder = FindPanelControl(context->pane, kBookletLayoutOrder);
    context->rotateImage = FindPanelControl(context->pane, kRotateImage);
    context->emitTPIF = FindPanelControl(context->pane, kEmitTPIF);
    context->bannerLabel = FindPanelControl(context->pane, kBannerLabel);
    context->banner = FindPanelControl(context->pane, kBanner);
    context->jog = FindPanelControl(context->pane, kJog);
    SetLocalizedStaticText(context->bundle, CFSTR("Booklet Layout Order:"),
                           FindPanelControl(context->pane, kBookletLayoutOrderLabel));
    FillChoice(context->banner, context->bannerLabel, kBannerMainKeyword);
    FillChoice(context->jog, nullptr, kJogMainKeyword);
    for (const SInt32 number : kRemovedControls) {
        DisposeControl(FindPanelControl(context->pane, number));
    }
    SetControls(*context);

    static constexpr EventTypeSpec kEvents[] = {{kEventClassControl, kEventControlHit}};
    return InstallControlEventHandler(context->pane, pdeShellAdvancedEventHandler, std::size(kEvents), kEvents, context,
                                      nullptr);
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetAdvancedPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({PanelPrologue<InitContext>, InitializePanel<AdvancedContext, Sync>, Sync,
                               GetNoSummaryText, Open, CloseWithoutWork, TerminatePanel<AdvancedContext>},
                              interface);
}
