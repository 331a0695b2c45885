#include "jobtypes/dialogs/fax_list_editing.h"

#include "jobtypes/dialogs/fax_recipient_browser.h"
#include "jobtypes/dialogs/fax_texts.h"

#include <algorithm>
#include <utility>

namespace {

FaxListContext* gContext = nullptr;  // the setup's, while it runs

bool IsTicked(ControlRef checkBox) {
    return GetControl32BitValue(checkBox) != 0;
}

/// Whether the user wants the recipient although the list has it.
bool WantsDuplicate(const FaxRecipient* recipient, bool isOneOfSeveral) {
    if (isOneOfSeveral && gContext->addDuplicates) {
        return *gContext->addDuplicates;
    }
    const CFRef<CFStringRef> name = DisplayNameFromRecipient(recipient);
    const CFRef<CFStringRef> message =
        CopyFaxMessage(gContext->bundle, CFSTR("Duplicate Recipient Message"), {recipient->faxNumber(), name.get()});
    const FaxAnswer answer =
        AskFaxQuestion(gContext->bundle, {CFSTR("Duplicate Recipient Header"), message.get(), CFSTR("Yes Command"),
                                          CFSTR("No Command"), isOneOfSeveral ? CFSTR("Answer For All") : nullptr});
    if (answer.isChecked) {
        gContext->addDuplicates = answer.isDefault;
    }
    return answer.isDefault;
}

bool WantsRemoval(const std::vector<FaxRecipient*>& recipients) {
    const bool isOne = recipients.size() == 1;
    CFRef<CFStringRef> message;
    if (isOne) {
        const CFRef<CFStringRef> name = DisplayNameFromRecipient(recipients.front());
        message = CopyFaxMessage(gContext->bundle, CFSTR("Remove One Recipient Message"),
                                 {name.get(), recipients.front()->faxNumber()});
    } else {
        message = CopyFaxMessage(gContext->bundle, CFSTR("Remove Multiple Recipients Message"),
                                 {CopyNumberText(static_cast<CFIndex>(recipients.size())).get()});
    }
    return AskFaxQuestion(gContext->bundle,
                          {isOne ? CFSTR("Remove One Recipient Header") : CFSTR("Remove Multiple Recipients Header"),
                           message.get(), CFSTR("Remove Command"), CFSTR("Cancel Command"), nullptr})
        .isDefault;
}

}  // namespace

FaxListScope::FaxListScope(FaxListContext* context) : former_(std::exchange(gContext, context)) {}

FaxListScope::~FaxListScope() {
    gContext = former_;
}

void ForgetAnswerForDuplicates() {
    gContext->addDuplicates.reset();
}

bool AddRecipient(FaxRecipientList* list, FaxRecipient* recipient, bool isOneOfSeveral) {
    if (IsTicked(gContext->promptDuplicate) && list->containsRecipient(recipient) &&
        !WantsDuplicate(recipient, isOneOfSeveral)) {
        return false;
    }
    AppendRecipient(list, recipient);
    return true;
}

void AppendRecipient(FaxRecipientList* list, FaxRecipient* recipient) {
    list->append(recipient);
    AddFaxRecipientRows(gContext->browser, {&recipient, 1});
    gContext->recheckDialingLength = true;
}

void TakeOutRecipient(FaxRecipientList* list, FaxRecipient* recipient) {
    RemoveFaxRecipientRows(gContext->browser, {&recipient, 1});
    list->remove(recipient);
}

bool RemoveSelectedRecipients(ControlRef browser, FaxRecipientList* list) {
    const std::vector<FaxRecipient*> selected = SelectedFaxRecipients(browser);
    if (selected.empty() || (IsTicked(gContext->promptRemove) && !WantsRemoval(selected))) {
        return false;
    }
    // All rows go first: a table paints its rows from recipients that the list may be the last to hold.
    RemoveFaxRecipientRows(browser, selected);
    if (browser != gContext->browser) {
        RemoveFaxRecipientRows(gContext->browser, selected);
    }
    std::ranges::for_each(selected, [list](FaxRecipient* recipient) { list->remove(recipient); });
    return true;
}

bool HasRoomForRecipients(const FaxRecipientList& list, CFIndex more, CFStringRef headerKey) {
    const CFIndex room = std::max<CFIndex>(kMaxFaxRecipients - list.count(), 0);
    if (more <= room) {
        return true;
    }
    const CFRef<CFStringRef> message = CopyFaxMessage(
        gContext->bundle, CFSTR("Max Recipients Message"),
        {CopyNumberText(more).get(), CopyNumberText(kMaxFaxRecipients).get(), CopyNumberText(room).get()});
    ShowFaxNotice(gContext->bundle, headerKey, message.get());
    return false;
}
