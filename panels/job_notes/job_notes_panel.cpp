// The Job Notes panel: names and messages that go with the job. The bundle exports it; the shell's list of panels does
// not have it.

#include "model/settings/ticket_access.h"
#include "panels/job_notes/job_notes_preferences_dialog.h"
#include "panels/job_notes/job_notes_texts.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"
#include "ui/dialog_window.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/panel_operations.h"
#include "ui/text_input.h"

#include <array>

namespace {

enum ControlNumber : SInt32 {
    kPane = 2000,
    kJobName = 2001,
    kSenderName = 2002,
    kRecipientName = 2003,
    kSheetMessage = 2004,
    kSheetMessagePicture = 2007,
    kMessagePicture = 2008,
};

constexpr OSType kPreferencesCommand = FourCharCode("Tjnp");
constexpr OSType kHelpCommand = FourCharCode("Thlp");

struct JobNotesContext {
    bool opened;
    CFBundleRef bundle;  // lent
    CFRef<CFStringRef> title;
    ControlRef hostPane;
    JobNotesTexts texts;
    JobNotesSources sources;
    JobNotesPreferencesOptions preferences;
    ControlRef pane;  // null until the first Open
    WindowRef window;
    EventHandlerRef helpHandler;
};

JobNotesContext* Context(PMPDEContext context) {
    return reinterpret_cast<JobNotesContext*>(context);
}

JobNotesContext* InitContext() {
    return MakePanelRecord<JobNotesContext>(CFSTR("JobNotes"));
}

/// Shows the texts. Those that follow a preference cannot be changed.
void ShowTexts(JobNotesContext* context) {
    FollowSender(context->preferences, &context->texts);
    for (const JobNote& note : kJobNotes) {
        const ControlRef field = FindPanelControl(context->pane, note.field);
        const CFStringRef text = (context->texts.*note.text).get();
        SetControlData(field, kControlEntireControl, kControlEditTextCFStringTag, sizeof text, &text);
        IsJobNoteFieldEnabled(note.field, context->preferences) ? EnableControl(field) : DisableControl(field);
    }
}

/// Takes what the fields show, so that a refill shows what was typed. A field that cannot be read is empty.
void TakeTexts(JobNotesContext* context) {
    for (const JobNote& note : kJobNotes) {
        CFStringRef text = nullptr;
        GetControlData(FindPanelControl(context->pane, note.field), kControlEntireControl, kControlEditTextCFStringTag,
                       sizeof text, &text, nullptr);
        context->texts.*note.text =
            text != nullptr ? CFRef<CFStringRef>::adopt(text) : CFRef<CFStringRef>::retain(CFSTR(""));
    }
}

void FocusFirstField(const JobNotesContext& context) {
    for (const SInt32 field : {kJobName, kSenderName, kRecipientName, kSheetMessage}) {
        if (IsJobNoteFieldEnabled(field, context.preferences)) {
            SetKeyboardFocus(context.window, FindPanelControl(context.pane, field));
            return;
        }
    }
}

void UpdateJobNotesEditFields(JobNotesContext* context) {
    ClearKeyboardFocus(context->window);
    ShowTexts(context);
    if (IsControlActive(FindPanelControl(context->pane, kSheetMessage))) {
        FocusFirstField(*context);
    }
}

OSStatus ChangePreferences(JobNotesContext* context) {
    TakeTexts(context);
    const JobNotesPreferencesOptions before = context->preferences;
    SInt16 result = kJobNotesPreferencesCancel;
    const OSStatus status = RunModalJobNotesPreferencesDialog(context->bundle, DialogMode::add, JobContext::job,
                                                              &context->preferences, &result);
    if (result == kJobNotesPreferencesOK) {
        FollowNewPreferences(before, context->preferences, context->sources, &context->texts);
        UpdateJobNotesEditFields(context);
    }
    return status;
}

OSStatus pdeShellJobNotesEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* context = static_cast<JobNotesContext*>(userData);
    if (GetEventClass(event) == kEventClassControl) {
        TakeTexts(context);
        UpdateJobNotesEditFields(context);
        return eventNotHandledErr;
    }
    return CommandOf(event) == kPreferencesCommand ? ChangePreferences(context) : eventNotHandledErr;
}

/// Help is for the panel wherever the keys go in the dialog, as long as the panel is shown.
OSStatus JobNotesHelpHandler(EventHandlerCallRef, EventRef event, void* userData) {
    const auto* context = static_cast<const JobNotesContext*>(userData);
    return CommandOf(event) == kHelpCommand && IsControlActive(context->pane)
               ? DisplayHelp(context->bundle, nullptr, CFSTR("job-notes.html"))
               : eventNotHandledErr;
}

OSStatus pdeShellJobNotesDrawHandler(EventHandlerCallRef, EventRef event, void*) {
    const ControlRef control = GetEventControl(event);
    DrawImage(GetPanelControlNumber(control) == kSheetMessagePicture ? CFSTR("Banner Message.gif")
                                                                     : CFSTR("Special Instructions.gif"),
              control, false);
    return noErr;
}

// ---- The operations

OSStatus Sync(PMPDEContext opaque, PMPrintSession session, Boolean ticketsToControls) {
    PMTicketRef ticket = 0;
    if (const OSStatus status = GetTicketForSync(opaque, session, &ticket); status != noErr) {
        return status;
    }
    JobNotesContext* context = Context(opaque);
    if (ticketsToControls) {
        context->sources = CopyJobNotesSources(context->bundle, ticket);
        context->texts = ReadJobNotes(ticket, context->sources);
        if (context->pane != nullptr) {
            ShowTexts(context);
        }
    } else if (context->pane != nullptr) {
        TakeTexts(context);
        WriteJobNotes(context->texts, ticket);
    } else {
        WriteJobNotes({}, ticket);  // there are no fields to read
    }
    return noErr;
}

OSStatus Open(PMPDEContext opaque) {
    JobNotesContext* context = Context(opaque);
    if (const auto done = EmbedPanelOnce(context, CFSTR("JobNotes"), CFSTR("JobNotes"), kPane)) {
        return *done;
    }
    context->window = GetControlOwner(context->pane);
    context->preferences = JobNotesPreferencesOrDefaults();
    UpdateJobNotesEditFields(context);
    for (const JobNote& note : kJobNotes) {
        LimitInputLength(FindPanelControl(context->pane, note.field), note.limit);
    }

    static constexpr std::array kEvents{EventTypeSpec{kEventClassControl, kEventControlActivate},
                                        EventTypeSpec{kEventClassCommand, kEventCommandProcess}};
    static constexpr EventTypeSpec kDraw{kEventClassControl, kEventControlDraw};
    for (const SInt32 picture : {kSheetMessagePicture, kMessagePicture}) {
        InstallControlEventHandler(FindPanelControl(context->pane, picture), pdeShellJobNotesDrawHandler, 1, &kDraw,
                                   nullptr, nullptr);
    }
    static constexpr EventTypeSpec kCommands{kEventClassCommand, kEventCommandProcess};
    InstallWindowEventHandler(context->window, JobNotesHelpHandler, 1, &kCommands, context, &context->helpHandler);
    return InstallControlEventHandler(context->pane, pdeShellJobNotesEventHandler, kEvents.size(), kEvents.data(),
                                      context, nullptr);
}

OSStatus Terminate(PMPDEContext opaque, OSStatus) {
    JobNotesContext* context = Context(opaque);
    if (context == nullptr) {
        return kPMInvalidPDEContext;
    }
    if (IsValidWindowPtr(context->window)) {
        RemoveEventHandler(context->helpHandler);
        DisposeControl(context->pane);
    }
    delete context;
    return noErr;
}

}  // namespace

TAVRO_PLUGIN_EXPORT OSStatus GetJobNotesPanelInterface(PlugInIntf** interface) {
    return MakePanelInterface({PanelPrologue<InitContext>, InitializePanel<JobNotesContext, Sync>, Sync,
                               GetNoSummaryText, Open, CloseWithoutWork, Terminate},
                              interface);
}
