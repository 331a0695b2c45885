#include "jobtypes/dialogs/lan_fax_setup.h"

#include "jobtypes/dialogs/fax_ab_picker.h"
#include "jobtypes/dialogs/fax_cover_setup.h"
#include "jobtypes/dialogs/fax_dialing_length.h"
#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_recipient_browser.h"
#include "jobtypes/dialogs/fax_recipient_dialog.h"
#include "jobtypes/dialogs/fax_save_group.h"
#include "jobtypes/dialogs/lan_fax_controls.h"
#include "jobtypes/dialogs/lan_fax_options.h"
#include "jobtypes/records/fax_options.h"
#include "model/settings/record_ticket.h"
#include "ui/control_utilities.h"
#include "ui/help.h"
#include "ui/text_input.h"

#include <algorithm>
#include <array>

namespace {

struct Picture {
    SInt32 number;
    const char* file;
};
constexpr Picture kPictures[] = {
    // number, file
    {1101, "AddRecipient.gif"},   {1103, "AddFromPhonebook.gif"}, {1220, "ConfirmationSheet.gif"},
    {1221, "SendSpeed.gif"},      {1222, "Resolution.gif"},       {1223, "SendTime.gif"},
    {1224, "DialingOptions.gif"}, {1225, "CoverSheet.gif"},
};
constexpr SInt32 kPanes[] = {kFaxRecipientsPane, kFaxOptionsPane, kFaxPreferencesPane};

struct LANFaxSetupContext {
    FaxWindow window;
    CFMutableDictionaryRef options;
    FaxRecipientList* list;
    FaxListContext shared = {};  // with the dialogs in front
    SInt16 result = kFaxDialogOK;

    ControlRef browser() const { return window.control(kFaxBrowser); }
};

std::vector<const void*> KeysOf(CFDictionaryRef dictionary) {
    std::vector<const void*> keys(static_cast<std::size_t>(CFDictionaryGetCount(dictionary)));
    CFDictionaryGetKeysAndValues(dictionary, keys.data(), nullptr);
    return keys;
}

/// Gives a dictionary the keys and values of another one.
void ReplaceContent(CFMutableDictionaryRef dictionary, CFDictionaryRef content) {
    for (const void* key : KeysOf(dictionary)) {
        CFDictionaryRemoveValue(dictionary, key);
    }
    for (const void* key : KeysOf(content)) {
        CFDictionarySetValue(dictionary, key, CFDictionaryGetValue(content, key));
    }
}

void UpdateTabs(const LANFaxSetupContext& context) {
    std::array<ControlRef, std::size(kPanes)> panes{};
    std::ranges::transform(kPanes, panes.begin(), [&](SInt32 number) { return context.window.control(number); });
    UpdateTabControl(context.window.control(kFaxTabs), panes.size(), panes.data());
}

void UpdateCommandButtons(const LANFaxSetupContext& context) {
    const std::size_t selected = SelectedFaxRecipients(context.browser()).size();
    context.window.enable(kFaxEditButton, selected == 1);
    context.window.enable(kFaxRemoveButton, selected > 0);
    context.window.enable(kFaxSaveGroupButton, context.list->count() > 0);
}

/// Whether there are recipients whose numbers, with the prefix and the card number, cannot be dialed. The user is asked
/// about them first, and not again before something has changed.
bool CheckMaxDialingStringExceeded(LANFaxSetupContext& context) {
    if (!context.shared.recheckDialingLength) {
        return false;
    }
    const bool valid = ValidateMaxCharacters(context.window.bundle(), DialingPrefixLength(context.window),
                                             CreditCardLength(context.window), context.list);
    context.shared.recheckDialingLength = !valid;
    UpdateCommandButtons(context);
    return !valid;
}

void EditRecipient(LANFaxSetupContext& context, FaxRecipient* recipient) {
    const SInt16 result = RunModalEditFaxRecipientDialog(context.window.bundle(), context.list, recipient);
    SelectFaxRecipient(context.browser(), recipient);
    if (result == kFaxDialogOK) {
        CheckMaxDialingStringExceeded(context);
    }
}

void RevertToDefaults(const LANFaxSetupContext& context) {
    RevertLANFaxOptions(context.options, LANFaxTab{context.window.value(kFaxTabs)});
    SyncToUI(context.window, context.options);
}

void Quit(LANFaxSetupContext& context, SInt16 result) {
    context.result = result;
    QuitAppModalLoopForWindow(context.window.get());
}

/// The notes are in both windows: they go along and come back.
void SetUpCoverSheet(const LANFaxSetupContext& context) {
    const auto options =
        CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, context.options));
    CFDictionarySetValue(options.get(), kFaxCoverSheetNotesProperty, context.window.copyText(kFaxNotes).get());
    if (RunModalFaxCoverSheetSetup(context.window.bundle(), options.get(), context.list) == kFaxDialogOK) {
        ReplaceContent(context.options, options.get());
        context.window.setText(kFaxNotes, GetRecordString(options.get(), kFaxCoverSheetNotesProperty));
    }
}

OSStatus HandleRecipientsCommand(LANFaxSetupContext& context, OSType command) {
    const CFBundleRef bundle = context.window.bundle();
    switch (command) {
        case FourCharCode("LFad"):
            RunModalAddFaxRecipientDialog(bundle, context.list);
            UpdateCommandButtons(context);
            CheckMaxDialingStringExceeded(context);
            return noErr;
        case FourCharCode("LFab"):
            RunModalFaxABPicker(bundle, context.list);
            UpdateCommandButtons(context);
            CheckMaxDialingStringExceeded(context);
            return noErr;
        case kFaxEditCommand:
            if (FaxRecipient* recipient = OnlySelectedFaxRecipient(context.browser())) {
                EditRecipient(context, recipient);
            }
            return noErr;
        case kFaxRemoveCommand:
            RemoveSelectedRecipients(context.browser(), context.list);
            UpdateCommandButtons(context);
            return noErr;
        case kFaxSelectionCommand:
            UpdateCommandButtons(context);
            return noErr;
        case FourCharCode("LFsg"):
            RunModalSaveGroupDialog(bundle, context.list);
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus HandleOptionsCommand(LANFaxSetupContext& context, OSType command) {
    switch (command) {
        case FourCharCode("LFst"):
            UpdateSendTimeControls(context.window);
            return noErr;
        case FourCharCode("LFdp"):
            UpdateDialingPrefixControls(context.window);
            context.shared.recheckDialingLength = true;
            return noErr;
        case FourCharCode("LFcc"):
            UpdateCreditCardControls(context.window);
            context.shared.recheckDialingLength = true;
            return noErr;
        case FourCharCode("LFcv"):
            SetUpCoverSheet(context);
            return noErr;
        case FourCharCode("LFco"):
            UpdateCoverSheetControls(context.window);
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus HandleWindowCommand(LANFaxSetupContext& context, OSType command) {
    switch (command) {
        case FourCharCode("LFtb"):
            UpdateTabs(context);
            CheckMaxDialingStringExceeded(context);
            return noErr;
        case FourCharCode("rvrt"):
            RevertToDefaults(context);
            return noErr;
        case FourCharCode("Thlp"):
            return DisplayHelp(context.window.bundle(), CFSTR("Mac_topics/M_Fax_Setup.htm"), nullptr);
        case FourCharCode("ok  "):
            if (!CheckMaxDialingStringExceeded(context)) {
                SyncFromUI(context.window, context.options);
                Quit(context, kFaxDialogOK);
            }
            return noErr;
        case FourCharCode("not!"):
            Quit(context, kFaxDialogCancel);
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus LANFaxSetupEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto& context = *static_cast<LANFaxSetupContext*>(userData);
    if (GetEventClass(event) == kEventClassTextInputChange) {
        UpdateCreditCardHint(context.window);
        context.shared.recheckDialingLength = true;
        return eventNotHandledErr;
    }
    if (GetEventClass(event) == kEventClassControl) {
        UpdateSendTimeHint(context.window);
        return eventNotHandledErr;
    }
    for (auto* handle : {HandleRecipientsCommand, HandleOptionsCommand, HandleWindowCommand}) {
        if (handle(context, CommandOf(event)) == noErr) {
            return noErr;
        }
    }
    return eventNotHandledErr;
}

void InitializeLANFaxSetup(LANFaxSetupContext& context) {
    const FaxWindow& window = context.window;
    context.shared = {.bundle = window.bundle(),
                      .browser = context.browser(),
                      .promptDuplicate = window.control(kFaxPromptDuplicate),
                      .promptRemove = window.control(kFaxPromptRemove)};
    InstallFaxRecipientBrowser(context.browser());
    std::vector<FaxRecipient*> recipients;
    for (CFIndex index = 0; index < context.list->count(); ++index) {
        recipients.push_back(context.list->recipientAtIndex(index));
    }
    AddFaxRecipientRows(context.browser(), recipients);
    SetDataBrowserScrollPosition(context.browser(), 0, 0);
    UpdateCommandButtons(context);
    LimitLANFaxFields(window);
    SyncToUI(window, context.options);
    window.handleCommands(LANFaxSetupEventHandler, &context);
    window.handle({kEventClassControl, kEventControlHit}, LANFaxSetupEventHandler, &context);
    for (const UInt32 kind : {kEventInputIsEmpty, kEventInputHasText}) {
        window.handle({kEventClassTextInputChange, kind}, LANFaxSetupEventHandler, &context);
    }
    for (const Picture& picture : kPictures) {
        window.showPicture(picture.number, CFStringMakeConstant(picture.file));
    }
    window.setValue(kFaxTabs, static_cast<SInt32>(LANFaxTab::recipients));
    UpdateTabs(context);
    window.focus(kFaxBrowser);
}

/// What the setup got, to be put back after Cancel.
class Snapshot {
public:
    Snapshot(CFMutableDictionaryRef options, FaxRecipientList* list)
        : options_(options),
          list_(list),
          formerOptions_(
              CFRef<CFMutableDictionaryRef>::adopt(CFDictionaryCreateMutableCopy(kCFAllocatorDefault, 0, options))),
          formerList_(*list) {}

    void restore() const {
        ReplaceContent(options_, formerOptions_.get());
        list_->removeAll();
        for (CFIndex index = 0; index < formerList_.count(); ++index) {
            list_->append(formerList_.recipientAtIndex(index));
        }
    }

private:
    CFMutableDictionaryRef options_;
    FaxRecipientList* list_;
    CFRef<CFMutableDictionaryRef> formerOptions_;
    FaxRecipientList formerList_;
};

}  // namespace

SInt16 RunModalLANFaxSetup(CFBundleRef bundle, CFMutableDictionaryRef options, FaxRecipientList* list) {
    const Snapshot snapshot(options, list);
    SInt16 result = kFaxDialogOK;
    {
        LANFaxSetupContext context{FaxWindow(bundle), options, list};
        if (context.window.load(CFSTR("Setup")) != noErr) {
            return result;
        }
        const FaxListScope scope(&context.shared);
        InitializeLANFaxSetup(context);
        RunAppModalLoopForWindow(context.window.get());
        result = context.result;
    }
    if (result == kFaxDialogCancel) {
        snapshot.restore();
    }
    return result;
}
