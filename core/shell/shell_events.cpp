#include "core/shell/shell_events.h"

#include "core/shell/shell_selection.h"
#include "panels/paper_output/job_checks.h"
#include "panels/paper_output/paper_output_panel.h"
#include "ui/help.h"

namespace {

/// Whether the job cannot be sent as it is. The user has been told, or asked for what it lacks.
bool IsJobHeldBack(PDEShellContext* context) {
    bool heldBack = false;
    context->forEachPanel([&](const PanelRecord& panel) {
        heldBack = heldBack || (IsPaperOutputPanel(panel.table.operations) && AskForWhatJobLacks(panel.context));
    });
    return heldBack;
}

OSStatus ControlHit(PDEShellContext* context, EventRef event) {
    ControlRef control = nullptr;
    ControlID id{};
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr, &control);
    if (control == context->defaultButton) {
        return IsJobHeldBack(context) ? noErr : eventNotHandledErr;
    }
    if (GetControlID(control, &id) != noErr || id.signature != kShellSignature) {
        return eventNotHandledErr;
    }
    switch (id.id) {
        case kPanelSelector: {
            const auto number = static_cast<SInt16>(GetControl32BitValue(control));
            if (number == lastTabIndex) {
                return eventNotHandledErr;
            }
            selectPanel(number, context);
            return noErr;
        }
        case kNextPanel:
            SelectNextPanel(context);
            return noErr;
        case kPreviousPanel:
            SelectPreviousPanel(context);
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus DisplayHelpOfShownPanel(PDEShellContext* context) {
    OSStatus status = eventNotHandledErr;
    context->forEachPanel([&](const PanelRecord& panel) {
        if (panel.number == gCurrentPanel) {
            status = DisplayHelp(context->bundle.get(), nullptr, panel.helpPage);
        }
    });
    return status;
}

OSStatus Command(PDEShellContext* context, EventRef event) {
    HICommand command{};
    GetEventParameter(event, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr, &command);
    switch (command.commandID) {
        case FourCharCode("help"):
            return DisplayHelp(context->bundle.get(), nullptr, nullptr);
        case FourCharCode("Thlp"):
            return DisplayHelpOfShownPanel(context);
        case FourCharCode("TFup"):
            SelectNextPanel(context);
            return eventNotHandledErr;
        case FourCharCode("TFdn"):
            SelectPreviousPanel(context);
            return eventNotHandledErr;
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

OSStatus pdeShellEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<PDEShellContext*>(userData);
    switch (GetEventClass(event)) {
        case kEventClassControl:
            return ControlHit(context, event);
        case kEventClassCommand:
            return Command(context, event);
        case kEventClassMenu:
            return noErr;
        default:
            return eventNotHandledErr;
    }
}
