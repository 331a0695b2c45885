#include "panels/paper_output/paper_output_commands.h"

#include "jobtypes/dialogs/delayed_print.h"
#include "jobtypes/dialogs/lan_fax_setup.h"
#include "jobtypes/dialogs/secure_print.h"
#include "model/records/booklet_fold.h"
#include "panels/paper_output/booklet_creation_dialog.h"
#include "panels/paper_output/finishing_commands.h"
#include "panels/paper_output/finishing_menu.h"
#include "panels/paper_output/paper_output_controls.h"
#include "ui/panel_operations.h"
#include "ui/setting_menus.h"

namespace {

constexpr OSType kSeparatorsCommand = FourCharCode("Tsep");

void RunJobTypeSetup(_PaperOutputContext* context) {
    JobType& job = context->settings.job;
    switch (job.jobType) {
        case kJobTypeSecurePrint:
            RunModalSecurePrintSetup(context->bundle, &job.passcode);
            break;
        case kJobTypeDelayedPrint:
            RunModalDelayedPrintSetup(context->bundle, &job.delayedPrintTime);
            break;
        case kJobTypeFax:
            RunFaxSetup(context);
            break;
        default:
            break;
    }
}

OSStatus CreateBooklet(_PaperOutputContext* context) {
    PaperOutputSettings& settings = context->settings;
    const bool wasBooklet = settings.booklet;
    BookletCreation booklet{wasBooklet, settings.drawOutlines, settings.foldOptions, settings.forceNewSize,
                            settings.bookletSize};
    const OSStatus status = RunModalBookletCreationDialog(context->bundle, &booklet);
    settings.booklet = booklet.on != 0;
    settings.drawOutlines = booklet.drawOutlines;
    settings.foldOptions = booklet.foldOption;
    settings.forceNewSize = booklet.forceNewSize != 0;
    settings.bookletSize = booklet.size;
    SettleBooklet(wasBooklet, context->collateStaplePairs, &settings);
    ShowSides(*context);
    ShowCollateStaple(*context);
    return status;
}

OSStatus ChooseSeparators(_PaperOutputContext* context) {
    PaperOutputSettings& settings = context->settings;
    const OSStatus status =
        RunModalSeparatorsDialog(context->bundle, &settings.separatorOption, &settings.separatorColor);
    ShowStock(*context);
    return status;
}

/// The kinds that take a fold of the printer's back with whatever else was chosen.
bool EndsFolds(OSType command) {
    return command == kFinishingDefault || command == kFinishingNone || command == kFinishingSignatureBooklet ||
           command == FourCharCode("Sgbm");
}

OSStatus Finish(_PaperOutputContext* context, OSType command) {
    const OSStatus status = CarryOutFinishingCommand(context->bundle, command, &context->settings.finishing);
    if (status != eventNotHandledErr) {
        if (EndsFolds(command)) {
            context->settings.foldOptions = kFoldNone;
        }
        ShowFinishing(*context);
    }
    return status;
}

/// The choice of the item that sent the command; of the command itself when no item did.
std::optional<SInt32> CollateStapleChoice(const HICommand& command, const PPDKeywordPairs& pairs) {
    const auto choice = CollateStapleChoiceOfCommand(command.commandID, pairs);
    MenuRefCon reference = 0;
    return choice && GetMenuItemRefCon(command.menu, command.menuItemIndex, &reference) == noErr
               ? std::optional(static_cast<SInt32>(reference))
               : choice;
}

OSStatus CollateOrStaple(_PaperOutputContext* context, const HICommand& command) {
    const auto choice = CollateStapleChoice(command, context->collateStaplePairs);
    if (!choice) {
        return eventNotHandledErr;
    }
    ChooseCollateStaple(*choice, context->collateStaplePairs, &context->settings);
    ShowCollateStaple(*context);
    return noErr;
}

}  // namespace

OSStatus pdeShellPaperOutputEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<_PaperOutputContext*>(userData);
    PaperOutputSettings& settings = context->settings;
    const ControlRef control = GetEventControl(event);
    switch (GetPanelControlNumber(control)) {
        case kDuplexPopup:
            settings.duplex = GetPopupButtonTicketValue(control);
            break;
        case kOutputDestinationPopup:
            settings.outputDestination = GetPopupButtonTicketValue(control);
            break;
        case kOutputColorPopup:
            settings.outputColor = GetPopupButtonTicketValue(control);
            break;
        case kJobTypePopup:
            settings.job.jobType = GetPopupButtonTicketValue(control);
            HideShowJobTypeSetupButton(*context);
            break;
        case kJobTypeSetupButton:
            RunJobTypeSetup(context);
            break;
        default:
            break;
    }
    return eventNotHandledErr;
}

OSStatus pdeShellPaperOutputCommandHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<_PaperOutputContext*>(userData);
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case kStockCommandDefault:
        case kStockCommandColor:
        case kStockCommandType:
        case kStockCommandAdvanced:
        case kStockCommandNamed:
            ShowStock(*context);
            return eventNotHandledErr;
        case kSeparatorsCommand:
            return ChooseSeparators(context);
        case kBookletCreationCommand:
            return CreateBooklet(context);
        default: {
            const OSStatus status = Finish(context, command.commandID);
            return status != eventNotHandledErr ? status : CollateOrStaple(context, command);
        }
    }
}

void RunFaxSetup(_PaperOutputContext* context) {
    PaperOutputSettings& settings = context->settings;
    MakeFaxRecords(&settings);
    RunModalLANFaxSetup(context->bundle, settings.faxOptions.get(), settings.faxRecipients.get());
}
