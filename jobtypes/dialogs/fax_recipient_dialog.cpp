#include "jobtypes/dialogs/fax_recipient_dialog.h"

#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_texts.h"
#include "jobtypes/dialogs/fax_window.h"
#include "jobtypes/records/fax_numbers.h"
#include "platform/foundation/CFCharacterSet.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/text_input.h"

#include <string>

namespace {

enum ControlNumber : SInt32 {
    kName = 1000,
    kFaxNumber = 1001,
    kOrganization = 1002,
    kPhone = 1003,
    kEMail = 1004,
    kMailbox = 1005,
    kAddToAddressBook = 1006,
    kOK = 1007,
    kCancel = 1008,
    kPicture = 1009,
    kFaxNumberHint = 1010,
};

constexpr SInt32 kLongestFaxNumber = 50;
constexpr SInt32 kLongestMailbox = 4;

struct FieldOfText {
    SInt32 field;
    CFStringRef (FaxRecipient::*text)() const;
    void (FaxRecipient::*setText)(CFStringRef text);
};
/// Fields that may be left empty.
constexpr FieldOfText kOptionalFields[] = {
    // field, text, setText
    {kOrganization, &FaxRecipient::organization, &FaxRecipient::setOrganization},
    {kPhone, &FaxRecipient::phoneNumber, &FaxRecipient::setPhoneNumber},
    {kEMail, &FaxRecipient::emailAddress, &FaxRecipient::setEmailAddress},
    {kMailbox, &FaxRecipient::mailbox, &FaxRecipient::setMailbox},
};

bool IsEmpty(CFStringRef text) {
    return CFStringGetLength(text) == 0;
}

class RecipientDialog {
public:
    /// Adds when there is no recipient to edit.
    RecipientDialog(CFBundleRef bundle, FaxRecipientList* list, FaxRecipient* edited)
        : window_(bundle), list_(list), edited_(FaxRecipientRetain(edited)) {}

    SInt16 run();

private:
    static OSStatus handleCommand(EventHandlerCallRef, EventRef event, void* self);
    static void tellRefusedInput(const RefusedInput& refused, void* self);
    static OSStatus handleEmptyField(EventHandlerCallRef, EventRef event, void* self);
    void showFaxNumberHint(bool isTooLong) const;
    void showRecipient();
    void refuse(SInt32 field, CFStringRef messageKey) const;
    bool syncDialogToFaxRecipient(FaxRecipient& recipient) const;
    bool add();
    bool edit();
    void commitIfWanted(FaxRecipient& recipient) const;

    FaxWindow window_;
    FaxRecipientList* const list_;
    const FaxRecipientOwner edited_;  // held here, for the list may be the only other one
    std::u16string leftOut_;  // of the fax number that stands there: each character once, with a blank behind it
    SInt16 result_ = kFaxDialogCancel;
};

SInt16 RecipientDialog::run() {
    if (window_.load(CFSTR("Recipient")) != noErr) {
        return kFaxDialogCancel;
    }
    LimitInputLengthAndCharacters(window_.control(kFaxNumber), kLongestFaxNumber, kFaxDialingCharacterSet);
    KeepAllowedInput(window_.control(kFaxNumber), tellRefusedInput, this);
    window_.handle({kEventClassTextInputChange, kEventInputIsEmpty}, handleEmptyField, this);
    showFaxNumberHint(false);
    LimitInputLengthAndCharacters(window_.control(kMailbox), kLongestMailbox,
                                  CFCharacterSetGetPredefined(kCFCharacterSetDecimalDigit));
    KeepAllowedInput(window_.control(kMailbox), nullptr, nullptr);
    window_.showPicture(kPicture, CFSTR("PBEntry.gif"));
    if (edited_) {
        showRecipient();
    }
    window_.handleCommands(handleCommand, this);
    window_.focus(kName);
    RunAppModalLoopForWindow(window_.get());
    return result_;
}

/// What a number loses while it is typed stays told until another one is begun.
void RecipientDialog::tellRefusedInput(const RefusedInput& refused, void* self) {
    auto& dialog = *static_cast<RecipientDialog*>(self);
    ControlEditTextSelectionRec selection{};
    GetControlData(dialog.window_.control(kFaxNumber), kControlEntireControl, kControlEditTextSelectionTag,
                   sizeof selection, &selection, nullptr);
    const SInt32 replaced = selection.selEnd - selection.selStart;
    if (replaced > 0 && replaced == CFStringGetLength(dialog.window_.copyText(kFaxNumber).get())) {
        dialog.leftOut_.clear();
    }
    for (CFIndex i = 0; i < CFStringGetLength(refused.characters); ++i) {
        const UniChar unit = CFStringGetCharacterAtIndex(refused.characters, i);
        const bool isBlank =
            CFCharacterSetIsLongCharacterMember(CFCharacterSetGetPredefined(kCFCharacterSetWhitespaceAndNewline), unit);
        if (!isBlank && dialog.leftOut_.find(unit) == std::u16string::npos) {
            dialog.leftOut_ += unit;
            dialog.leftOut_ += u' ';
        }
    }
    dialog.showFaxNumberHint(refused.isTooLong);
}

OSStatus RecipientDialog::handleEmptyField(EventHandlerCallRef, EventRef event, void* self) {
    auto& dialog = *static_cast<RecipientDialog*>(self);
    ControlRef field = nullptr;
    GetEventParameter(event, kEventParamDirectObject, typeControlRef, nullptr, sizeof field, nullptr, &field);
    if (field == dialog.window_.control(kFaxNumber)) {
        dialog.leftOut_.clear();
        dialog.showFaxNumberHint(false);
    }
    return eventNotHandledErr;
}

void RecipientDialog::showFaxNumberHint(bool isTooLong) const {
    const CFBundleRef bundle = window_.bundle();
    if (isTooLong) {
        window_.setText(
            kFaxNumberHint,
            CopyFaxMessage(bundle, CFSTR("Fax Number Too Long"), {CopyNumberText(kLongestFaxNumber).get()}).get());
    } else if (leftOut_.empty()) {
        window_.setText(kFaxNumberHint, CopyFaxText(bundle, CFSTR("Fax Number Hint")).get());
    } else {
        const auto leftOut = CFRef<CFStringRef>::adopt(CFStringCreateWithCharacters(
            kCFAllocatorDefault, leftOut_.data(), static_cast<CFIndex>(leftOut_.size()) - 1));
        const bool hasPlus = leftOut_.find(u'+') != std::u16string::npos;
        window_.setText(
            kFaxNumberHint,
            CopyFaxMessage(bundle, hasPlus ? CFSTR("Fax Number Plus") : CFSTR("Fax Number Left Out"), {leftOut.get()})
                .get());
    }
}

void RecipientDialog::showRecipient() {
    SetWindowTitleWithCFString(window_.get(), CopyFaxText(window_.bundle(), CFSTR("Fax Recipient Dialog Title")).get());
    SetLocalizedControlTitle(window_.bundle(), CFSTR("OK Command"), window_.control(kOK));
    SetLocalizedControlTitle(window_.bundle(), CFSTR("Cancel Command"), window_.control(kCancel));
    window_.setText(kName, DisplayNameFromRecipient(edited_.get()).get());
    window_.setText(kFaxNumber, edited_->faxNumber());
    for (const FieldOfText& row : kOptionalFields) {
        window_.setText(row.field, (edited_.get()->*row.text)());
    }
}

void RecipientDialog::refuse(SInt32 field, CFStringRef messageKey) const {
    ShowFaxNotice(window_.bundle(), CFSTR("Required Field Header"), CopyFaxText(window_.bundle(), messageKey).get());
    window_.focus(field);
}

/// Reads the fields into the recipient; false, and nothing read, when one that is needed is empty. The whole name
/// becomes the first name.
bool RecipientDialog::syncDialogToFaxRecipient(FaxRecipient& recipient) const {
    const CFRef<CFStringRef> name = window_.copyText(kName);
    const CFRef<CFStringRef> number = window_.copyText(kFaxNumber);
    if (IsEmpty(name.get())) {
        refuse(kName, CFSTR("Name Required Message"));
        return false;
    }
    if (IsEmpty(number.get())) {
        refuse(kFaxNumber, CFSTR("Fax Number Required Message"));
        return false;
    }
    recipient.setFirstName(name.get());
    recipient.setFaxNumber(number.get());
    for (const FieldOfText& row : kOptionalFields) {
        const CFRef<CFStringRef> text = window_.copyText(row.field);
        (recipient.*row.setText)(IsEmpty(text.get()) ? nullptr : text.get());
    }
    return true;
}

void RecipientDialog::commitIfWanted(FaxRecipient& recipient) const {
    if (window_.value(kAddToAddressBook) != 0 && !recipient.commitToAddressBook()) {
        ShowFaxNotice(window_.bundle(), CFSTR("Alert Header"),
                      CopyFaxText(window_.bundle(), CFSTR("Address Book Message")).get());
    }
}

bool RecipientDialog::add() {
    const FaxRecipientOwner recipient(new FaxRecipient);
    if (!syncDialogToFaxRecipient(*recipient) || !HasRoomForRecipients(*list_, 1, CFSTR("Alert Header")) ||
        !AddRecipient(list_, recipient.get(), false)) {
        return false;
    }
    commitIfWanted(*recipient);
    return true;
}

bool RecipientDialog::edit() {
    const FaxRecipient before(*edited_);
    if (!syncDialogToFaxRecipient(*edited_)) {
        return false;
    }
    TakeOutRecipient(list_, edited_.get());
    if (!AddRecipient(list_, edited_.get(), false)) {
        *edited_ = before;
        AppendRecipient(list_, edited_.get());
        return false;
    }
    commitIfWanted(*edited_);
    return true;
}

OSStatus RecipientDialog::handleCommand(EventHandlerCallRef, EventRef event, void* self) {
    auto& dialog = *static_cast<RecipientDialog*>(self);
    switch (CommandOf(event)) {
        case FourCharCode("ok  "):
            if (dialog.edited_ ? dialog.edit() : dialog.add()) {
                dialog.result_ = kFaxDialogOK;
                QuitAppModalLoopForWindow(dialog.window_.get());
            }
            return noErr;
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(dialog.window_.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(dialog.window_.bundle(), CFSTR("Mac_topics/m_how_to_Manage_Fax_Recipients.htm"),
                               nullptr);
        default:
            return eventNotHandledErr;
    }
}

}  // namespace

SInt16 RunModalAddFaxRecipientDialog(CFBundleRef bundle, FaxRecipientList* list) {
    return RecipientDialog(bundle, list, nullptr).run();
}

SInt16 RunModalEditFaxRecipientDialog(CFBundleRef bundle, FaxRecipientList* list, FaxRecipient* recipient) {
    return RecipientDialog(bundle, list, recipient).run();
}
