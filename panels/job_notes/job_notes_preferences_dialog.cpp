#include "panels/job_notes/job_notes_preferences_dialog.h"

#include "platform/foundation/CFString.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"
#include "ui/dialog_window.h"
#include "ui/help.h"
#include "ui/panel_operations.h"

#include <array>

namespace {

constexpr OSType kDialogSignature = FourCharCode("Tjnp");

struct CheckBox {
    SInt32 number;
    SInt32 JobNotesPreferencesOptions::*field;
};

constexpr CheckBox kCheckBoxes[] = {
    // number, field
    {9000, &JobNotesPreferencesOptions::useDocumentNameAsJobName},
    {9001, &JobNotesPreferencesOptions::useLoginNameAsSenderName},
    {9002, &JobNotesPreferencesOptions::useLoginNameAsRecipientName},
};
static_assert(std::size(kCheckBoxes) == 3);

struct PreferencesDialogContext {
    CFBundleRef bundle;
    WindowRef window;
    JobNotesPreferencesOptions preferences;
    SInt16 result;
};

OSStatus End(PreferencesDialogContext& context, SInt16 result) {
    context.result = result;
    return QuitAppModalLoopForWindow(context.window);
}

OSStatus HandleCommand(PreferencesDialogContext& context, OSType command) {
    switch (command) {
        case FourCharCode("ok  "):
            return End(context, kJobNotesPreferencesOK);
        case FourCharCode("not!"):
            return End(context, kJobNotesPreferencesCancel);
        case FourCharCode("Thlp"):
            return DisplayHelp(context.bundle, nullptr, CFSTR("Mac_topics/M_Job_Notes_Preferences.htm"));
        default:
            return eventNotHandledErr;
    }
}

void TakeCheckBox(PreferencesDialogContext& context, ControlRef control) {
    ControlID id{};
    GetControlID(control, &id);
    for (const CheckBox& box : kCheckBoxes) {
        if (id.signature == kDialogSignature && id.id == box.number) {
            context.preferences.*box.field = GetControl32BitValue(control);
        }
    }
}

OSStatus PreferencesDialogEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<PreferencesDialogContext*>(userData);
    if (GetEventClass(event) == kEventClassControl) {
        TakeCheckBox(context, GetEventControl(event));
        return eventNotHandledErr;
    }
    return HandleCommand(context, CommandOf(event));
}

}  // namespace

OSStatus RunModalJobNotesPreferencesDialog(CFBundleRef bundle, DialogMode, JobContext,
                                           JobNotesPreferencesOptions* preferences, SInt16* result) {
    if (preferences == nullptr || result == nullptr) {
        return paramErr;
    }
    *result = kJobNotesPreferencesCancel;
    WindowFromNib window;
    if (const OSStatus status = window.load(bundle, CFSTR("JobNotes"), CFSTR("JobNotesPrefs")); status != noErr) {
        return status;
    }
    PreferencesDialogContext context{bundle, window.get(), JobNotesPreferencesOrDefaults(), kJobNotesPreferencesCancel};
    for (const CheckBox& box : kCheckBoxes) {
        const ControlID id{kDialogSignature, box.number};
        ControlRef control = nullptr;
        GetControlByID(window.get(), &id, &control);
        SetControl32BitValue(control, context.preferences.*box.field != 0 ? 1 : 0);
    }
    static constexpr std::array kEvents{EventTypeSpec{kEventClassControl, kEventControlHit},
                                        EventTypeSpec{kEventClassCommand, kEventCommandProcess}};
    InstallWindowEventHandler(window.get(), PreferencesDialogEventHandler, kEvents.size(), kEvents.data(), &context,
                              nullptr);
    RunAppModalLoopForWindow(window.get());
    if (context.result == kJobNotesPreferencesOK) {
        StoreJobNotesPreferences(context.preferences);
        *preferences = context.preferences;
        *result = kJobNotesPreferencesOK;
    }
    return noErr;
}
