// What the fax dialogs do with the list of recipients that the setup shows: every change reaches its table too.
#pragma once

#include "jobtypes/records/fax_recipient_list.h"
#include "platform/toolbox/Controls.h"

#include <optional>

/// More recipients are never added.
inline constexpr CFIndex kMaxFaxRecipients = 1000;

/// The setup, as far as the dialogs in front of it need to know.
struct FaxListContext {
    CFBundleRef bundle = nullptr;
    ControlRef browser = nullptr;          // the setup's table
    ControlRef promptDuplicate = nullptr;  // check box: ask before a recipient is added once more
    ControlRef promptRemove = nullptr;     // check box: ask before recipients are removed
    /// Numbers may have become too long since they were checked last.
    bool recheckDialingLength = true;
    /// What the user said of all further duplicates among the recipients that are being added together.
    std::optional<bool> addDuplicates;
};

/// Makes the context the one that the functions below work on, as long as it lives. There is one setup at a time.
class FaxListScope {
public:
    explicit FaxListScope(FaxListContext* context);
    ~FaxListScope();
    FaxListScope(const FaxListScope&) = delete;
    FaxListScope& operator=(const FaxListScope&) = delete;

private:
    FaxListContext* former_;
};

// ---- All of these need a living FaxListScope.

/// Adds a recipient, after asking when the list has the same one already and the user wants to be asked. False when the
/// user does not want it. Whoever adds several at once says so, and the question then offers an answer for the rest.
bool AddRecipient(FaxRecipientList* list, FaxRecipient* recipient, bool isOneOfSeveral);
/// Several recipients are going to be added, or were: an answer for the rest holds no longer.
void ForgetAnswerForDuplicates();

/// Removes the recipients that are selected in a table (the setup's or another one's), after asking when the user wants
/// to be asked. False when nothing was removed.
bool RemoveSelectedRecipients(ControlRef browser, FaxRecipientList* list);

/// The same two without a question.
void AppendRecipient(FaxRecipientList* list, FaxRecipient* recipient);
void TakeOutRecipient(FaxRecipientList* list, FaxRecipient* recipient);

/// Whether so many more may be added; warns under the header when not.
bool HasRoomForRecipients(const FaxRecipientList& list, CFIndex more, CFStringRef headerKey);
