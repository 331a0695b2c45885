#include "panels/paper_output/paper_output_controls.h"

#include "core/features/installable_options.h"
#include "model/settings/ppd_ui_dictionary.h"
#include "model/stock_dialogs/stock_view.h"
#include "panels/paper_output/finishing_menu.h"
#include "platform/foundation/CFString.h"
#include "ui/control_utilities.h"
#include "ui/localization.h"
#include "ui/panel_operations.h"
#include "ui/ppd_menus.h"
#include "ui/setting_menus.h"

#include <utility>

namespace {

// Labels of controls that may be taken away.
constexpr SInt32 kDuplexLabel = 123;
constexpr SInt32 kCollateStapleLabel = 121;
constexpr SInt32 kOutputDestinationLabel = 120;

void SetEnabled(ControlRef control, bool enabled) {
    enabled ? EnableControl(control) : DisableControl(control);
}

/// Takes a pop-up without items away, with its label.
void RemoveIfEmpty(ControlRef pane, SInt32 label, ControlRef* popup) {
    if (CountMenuItems(GetControlPopupMenuHandle(*popup)) == 0) {
        DisposeControl(std::exchange(*popup, nullptr));
        DisposeControl(FindPanelControl(pane, label));
    }
}

/// The item of the fax; 0 when there is none.
MenuItemIndex FindFaxItem(MenuRef menu) {
    for (MenuItemIndex item = 1; item <= CountMenuItems(menu); ++item) {
        MenuRefCon jobType = 0;
        GetMenuItemRefCon(menu, item, &jobType);
        if (jobType == kJobTypeFax) {
            return item;
        }
    }
    return 0;
}

/// What the pop-up does not offer shows as none of its items.
void ShowChoice(ControlRef popup, SInt32 value) {
    SetControl32BitValue(popup, 0);
    SetPopupButtonToTicketValue(popup, value);
}

/// A printer that cannot fax offers no fax. A ticket that asks for one all the same is shown why it gets none.
void ShowThatFaxIsNotInstalled(const _PaperOutputContext& context) {
    PopulatePopupButtonFromMap(context.bundle, context.jobTypePopup, JobTypeMap, JobContext::job, 0);
    const MenuRef menu = GetControlPopupMenuHandle(context.jobTypePopup);
    const MenuItemIndex fax = FindFaxItem(menu);
    if (context.settings.job.jobType == kJobTypeFax) {
        SetLocalizedMenuTitle(context.bundle, CFSTR("Fax Not Installed"), menu, fax);
        DisableMenuItem(menu, fax);
    } else {
        DeleteMenuItems(menu, fax, 1);
    }
}

void ShowJobType(const _PaperOutputContext& context) {
    if (!getInstalledFeature(CFSTR("FaxKey"))) {
        ShowThatFaxIsNotInstalled(context);
    }
    ShowChoice(context.jobTypePopup, context.settings.job.jobType);
    HideShowJobTypeSetupButton(context);
}

void ShowOutput(const _PaperOutputContext& context) {
    ShowChoice(context.outputDestinationPopup, context.settings.outputDestination);
    ShowChoice(context.outputColorPopup, context.settings.outputColor);
}

}  // namespace

void PreparePaperOutputControls(_PaperOutputContext* context) {
    const ControlRef pane = context->pane;
    context->stockButton = FindPanelControl(pane, kStockButton);
    context->separatorsButton = FindPanelControl(pane, kSeparatorsButton);
    context->finishingButton = FindPanelControl(pane, kFinishingButton);
    context->finishingText = FindPanelControl(pane, kFinishingText);
    context->duplexPopup = FindPanelControl(pane, kDuplexPopup);
    context->collateStaplePopup = FindPanelControl(pane, kCollateStaplePopup);
    context->outputDestinationPopup = FindPanelControl(pane, kOutputDestinationPopup);
    context->outputColorPopup = FindPanelControl(pane, kOutputColorPopup);
    context->bookletButton = FindPanelControl(pane, kBookletButton);
    context->jobTypePopup = FindPanelControl(pane, kJobTypePopup);
    context->jobTypeSetupButton = FindPanelControl(pane, kJobTypeSetupButton);

    context->stockMenu.bundle = context->bundle;
    context->stockMenu.stock = &context->settings.stock;
    context->stockMenu.context = JobContext::job;
    context->stockMenu.summaryView = FindPanelControl(pane, kStockSummary);
    context->stockMenu.icon = FindPanelControl(pane, kStockIcon);
    SetupTextViewControl(context->stockMenu.summaryView, kUserFontSize);
    InitializeStockMenuButton(context->stockButton, &context->stockMenu);
    InitializeFinishingMenuButton(context->finishingButton, context->bundle);

    PopulateCollateStapleMenu(GetControlPopupMenuHandle(context->collateStaplePopup), context->bundle,
                              context->collateStaplePairs);
    PopulatePopupButtonFromPPDOptions(context->duplexPopup, PPDGetGlobalOptions(CFSTR("Duplex")), 0);
    PopulateOutputDestinationPopup(context->outputDestinationPopup, context->bundle);
    PopulatePopupButtonFromMap(context->bundle, context->outputColorPopup, OutputColorMap, JobContext::job, 0);
    PopulatePopupButtonFromMap(context->bundle, context->jobTypePopup, JobTypeMap, JobContext::job, 0);
    RemoveIfEmpty(pane, kDuplexLabel, &context->duplexPopup);
    RemoveIfEmpty(pane, kCollateStapleLabel, &context->collateStaplePopup);
    RemoveIfEmpty(pane, kOutputDestinationLabel, &context->outputDestinationPopup);
}

void ReleasePaperOutputControls(_PaperOutputContext* context) {
    FinalizeStockMenuButton(context->stockButton, &context->stockMenu);
    FinalizeFinishingMenuButton(context->finishingButton);
}

void ShowPaperOutputSettings(const _PaperOutputContext& context) {
    if (context.pane == nullptr) {
        return;
    }
    ShowStock(context);
    ShowFinishing(context);
    ShowSides(context);
    ShowCollateStaple(context);
    ShowOutput(context);
    ShowJobType(context);
}

void ShowStock(const _PaperOutputContext& context) {
    const PaperOutputSettings& settings = context.settings;
    const bool isTransparent = settings.stock.type() == kStockTypeTransparency;
    ShowStockSummary(context.bundle, context.stockMenu.summaryView, &settings.stock, JobContext::job);
    if (isTransparent) {
        AppendSeparatorSummary(context.stockMenu.summaryView, context.bundle, settings.separatorOption,
                               settings.separatorColor);
    }
    SetEnabled(context.separatorsButton, isTransparent);
    Draw1Control(context.stockMenu.icon);
}

void ShowFinishing(const _PaperOutputContext& context) {
    MarkFinishingMenu(GetControlPopupMenuHandle(context.finishingButton), context.settings.finishing);
    CFStringRef made = nullptr;
    CreateFinishingString(context.bundle, context.settings.finishing, &made);
    const auto text = CFRef<CFStringRef>::adopt(made);
    SetControlData(context.finishingText, kControlEntireControl, kControlStaticTextCFStringTag, sizeof made, &made);
}

void ShowSides(const _PaperOutputContext& context) {
    SetPopupButtonToTicketValue(context.duplexPopup, ShownDuplex(context.settings));
    SetEnabled(context.duplexPopup, !context.settings.booklet);
}

void ShowCollateStaple(const _PaperOutputContext& context) {
    ShowChoice(context.collateStaplePopup, context.settings.collateStaple);
}

void HideShowJobTypeSetupButton(const _PaperOutputContext& context) {
    const bool hasSetup = JobTypeHasSetup(context.settings.job.jobType);
    if (hasSetup) {
        SetLocalizedControlTitle(context.bundle, CFSTR("Setup..."), context.jobTypeSetupButton);
    }
    SetEnabled(context.jobTypeSetupButton, hasSetup);
}
