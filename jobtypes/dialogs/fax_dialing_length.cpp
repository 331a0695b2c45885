#include "jobtypes/dialogs/fax_dialing_length.h"

#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_recipient_browser.h"
#include "jobtypes/dialogs/fax_recipient_dialog.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/dialogs/fax_window.h"
#include "jobtypes/records/fax_numbers.h"

namespace {

enum ControlNumber : SInt32 {
    kDescription = 1000,
    kBrowser = 1001,
    kEdit = 1002,
    kRemove = 1003,
    kOK = 1004,
};

/// The alert, as long as there are such recipients.
class MaxCharactersAlert {
public:
    MaxCharactersAlert(CFBundleRef bundle, CFIndex prefixLength, CFIndex creditCardLength, FaxRecipientList* list)
        : window_(bundle), prefixLength_(prefixLength), creditCardLength_(creditCardLength), list_(list) {}

    void run();

private:
    static OSStatus handleCommand(EventHandlerCallRef, EventRef event, void* self);
    void rebuild();
    void updateButtons() const;
    void editSelected();

    FaxWindow window_;
    const CFIndex prefixLength_;
    const CFIndex creditCardLength_;
    FaxRecipientList* const list_;
    std::vector<FaxRecipient*> offenders_;
};

void MaxCharactersAlert::run() {
    if (window_.load(CFSTR("MaxCharacters")) != noErr) {
        return;
    }
    const CFRef<CFStringRef> description =
        CopyFaxMessage(window_.bundle(), CFSTR("Dialing String Too Long Description"),
                       {CopyNumberText(prefixLength_).get(), CopyNumberText(creditCardLength_).get(),
                        CopyNumberText(kMaxDialingCharacters).get()});
    window_.setText(kDescription, description.get());
    InstallFaxRecipientBrowser(window_.control(kBrowser));
    window_.handleCommands(handleCommand, this);
    rebuild();
    window_.focus(kBrowser);
    RunAppModalLoopForWindow(window_.get());
}

/// Shows who is left, and closes the alert when nobody is.
void MaxCharactersAlert::rebuild() {
    const ControlRef browser = window_.control(kBrowser);
    RemoveFaxRecipientRows(browser, offenders_);
    offenders_ = RecipientsBeyondDialingLength(*list_, prefixLength_, creditCardLength_);
    AddFaxRecipientRows(browser, offenders_);
    updateButtons();
    if (offenders_.empty()) {
        QuitAppModalLoopForWindow(window_.get());
    }
}

void MaxCharactersAlert::updateButtons() const {
    const std::size_t selected = SelectedFaxRecipients(window_.control(kBrowser)).size();
    window_.enable(kEdit, selected == 1);
    window_.enable(kRemove, selected > 0);
    window_.enable(kOK, !offenders_.empty());
}

void MaxCharactersAlert::editSelected() {
    if (FaxRecipient* recipient = OnlySelectedFaxRecipient(window_.control(kBrowser))) {
        RunModalEditFaxRecipientDialog(window_.bundle(), list_, recipient);
        rebuild();
    }
}

OSStatus MaxCharactersAlert::handleCommand(EventHandlerCallRef, EventRef event, void* self) {
    auto& alert = *static_cast<MaxCharactersAlert*>(self);
    switch (CommandOf(event)) {
        case kFaxSelectionCommand:
            alert.updateButtons();
            return noErr;
        case kFaxEditCommand:
            alert.editSelected();
            return noErr;
        case kFaxRemoveCommand:
            if (RemoveSelectedRecipients(alert.window_.control(kBrowser), alert.list_)) {
                alert.rebuild();
            }
            return noErr;
        case FourCharCode("ok  "):
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(alert.window_.get());
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

std::vector<FaxRecipient*> RecipientsBeyondDialingLength(const FaxRecipientList& list, CFIndex prefixLength,
                                                         CFIndex creditCardLength) {
    std::vector<FaxRecipient*> found;
    for (CFIndex index = 0; index < list.count(); ++index) {
        FaxRecipient* recipient = list.recipientAtIndex(index);
        const CFRef<CFStringRef> dialed = CopyDialingStringFromFaxNumber(recipient->faxNumber());
        if (CFStringGetLength(dialed.get()) + prefixLength + creditCardLength > kMaxDialingCharacters) {
            found.push_back(recipient);
        }
    }
    return found;
}

bool ValidateMaxCharacters(CFBundleRef bundle, CFIndex prefixLength, CFIndex creditCardLength, FaxRecipientList* list) {
    const auto isValid = [&] { return RecipientsBeyondDialingLength(*list, prefixLength, creditCardLength).empty(); };
    if (isValid()) {
        return true;
    }
    MaxCharactersAlert(bundle, prefixLength, creditCardLength, list).run();
    return isValid();
}
