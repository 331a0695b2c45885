// The color options panel: the printer's own ways with color, which are options of its PPD, and adjustments of the
// job's colors, which its controller makes.

#include "model/records/color_choices.h"
#include "model/settings/ppd_choice.h"
#include "model/settings/ppd_option_maps.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/settings/ticket_items.h"
#include "panels/color_options/color_options_controls.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/dialog_window.h"
#include "ui/panel_operations.h"
#include "ui/ppd_menus.h"
#include "ui/setting_menus.h"

#include <array>
#include <iterator>

namespace {

#define kCreator CFSTR("com.tavro.printingmanager")

constexpr SInt32 kPane = 7000;
constexpr OSType kClearCommand = FourCharCode("rvrt");

struct OptionRow {
    SInt32 popUp;
    const char* mainKeyword;
};
constexpr std::array kOptions{
    // pop-up, main keyword
    OptionRow{7010, "JCLColorCorrection"}, OptionRow{7011, "JCLRGBColorSpace"},    OptionRow{7012, "JCLCMYKColorSpace"},
    OptionRow{7013, "JCLPrintQuality"},    OptionRow{7014, "JCLTrueGrayGraphics"}, OptionRow{7015, "JCLTrueGrayImages"},
};

struct ColorOptionsContext {
    bool opened;
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    ControlRef hostPane;
    FullColorOptions options;
    std::array<SInt32, kOptions.size()> choices;  // ticket values; kNoTicketValue where nothing is to be written
    ControlRef pane;                              // null until the first Open
};

ColorOptionsContext* Context(PMPDEContext context) {
    return reinterpret_cast<ColorOptionsContext*>(context);
}

ColorOptionsContext* InitContext() {
    return MakePanelRecord<ColorOptionsContext>(CFSTR("ColorOptions"));
}

ControlRef PopUp(const ColorOptionsContext& context, std::size_t option) {
    return FindPanelControl(context.pane, kOptions[option].popUp);
}

void SetControls(const ColorOptionsContext& context) {
    if (context.pane == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        SetControl32BitValue(PopUp(context, i), 0);
        SetPopupButtonToTicketValue(PopUp(context, i), context.choices[i]);
    }
    ShowColorOptions(context.options, context.pane);
}

void ReadTicket(PMTicketRef ticket, ColorOptionsContext* context) {
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        context->choices[i] = ReadPPDChoice(ticket, CFStringMakeConstant(kOptions[i].mainKeyword), kNoTicketValue);
    }
    CFDictionaryRef dictionary = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, kFullColorOptionsItem, &dictionary);
    context->options = FullColorOptions(dictionary);
}

void WriteTicket(const ColorOptionsContext& context, PMTicketRef ticket) {
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        WritePPDChoice(context.choices[i], CFStringMakeConstant(kOptions[i].mainKeyword), ticket);
    }
    const auto dictionary = context.options.asTicket();
    if (CFDictionaryGetCount(dictionary.get()) > 0) {
        PMTicketSetCFDictionary(ticket, kCreator, kFullColorOptionsItem, dictionary.get(), kPMUnlocked);
    } else {
        PMTicketReleaseItem(ticket, kPMTopLevel, kFullColorOptionsItem);
    }
}

/// A printer that has no options of a main keyword leaves its pop-up empty and disabled.
void FillOptions(const ColorOptionsContext& context) {
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        const MenuRef menu = GetControlPopupMenuHandle(PopUp(context, i));
        DeleteMenuItems(menu, 1, CountMenuItems(menu));
        const CFArrayRef options = PPDGetGlobalOptions(CFStringMakeConstant(kOptions[i].mainKeyword));
        if (PopulatePopupButtonFromPPDOptions(PopUp(context, i), options, 0) == 0) {
            DisableControl(PopUp(context, i));
        }
    }
}

OSStatus pdeShellColorOptionsEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<ColorOptionsContext*>(userData);
    if (GetEventClass(event) == kEventClassCommand) {
        if (CommandOf(event) != kClearCommand) {
            return eventNotHandledErr;
        }
        context->options = FullColorOptions();
        ShowColorOptions(context->options, context->pane);
        return noErr;
    }
    const ControlRef control = GetEventControl(event);
    for (std::size_t i = 0; i < kOptions.size(); ++i) {
        if (GetPanelControlNumber(control) == kOptions[i].popUp) {
            context->choices[i] = GetPopupButtonTicketValue(control);
        }
    }
    EnableColorControls(context->pane);
    return eventNotHandledErr;
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    ColorOptionsContext* context = Context(opaque);
    if (ticketsToControls) {
        ReadTicket(ticket, context);
        SetControls(*context);
    } else {
        if (context->pane != nullptr) {
            TakeColorOptions(context->pane, &context->options);
        }
        WriteTicket(*context, ticket);
    }
    return noErr;
}

OSStatus Open(PMPDEContext opaque) {
    ColorOptionsContext* context = Context(opaque);
    if (const auto done = EmbedPanelOnce(context, CFSTR("ColorOptions"), CFSTR("ColorOptions"), kPane)) {
        return *done;
    }
    FillOptions(*context);
    PrepareColorControls(context->bundle, context->pane);
    SetControls(*context);

    static constexpr EventTypeSpec kEvents[] = {{kEventClassControl, kEventControlHit},
                                                {kEventClassCommand, kEventCommandProcess}};
    return InstallControlEventHandler(context->pane, pdeShellColorOptionsEventHandler, std::size(kEvents), kEvents,
                                      context, nullptr);
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetColorOptionsPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({PanelPrologue<InitContext>, InitializePanel<ColorOptionsContext, Sync>, Sync,
                               GetNoSummaryText, Open, CloseWithoutWork, TerminatePanel<ColorOptionsContext>},
                              interface);
}
