// The table of recipients in the setup and in the alert about numbers that are too long.
//
// Its rows are the recipients themselves, by address. What the user does in it becomes a command, which the window
// handles with those of its buttons.
#pragma once

#include "jobtypes/records/fax_recipient.h"
#include "platform/foundation/four_char_code.h"
#include "platform/toolbox/DataBrowser.h"

#include <span>
#include <vector>

inline constexpr OSType kFaxEditCommand = FourCharCode("LFed");       // a row was double-clicked
inline constexpr OSType kFaxRemoveCommand = FourCharCode("LFrm");     // a delete key was pressed
inline constexpr OSType kFaxSelectionCommand = FourCharCode("LFsl");  // the selection changed

/// The text in a column, which may be null; null, too, for an unknown column.
CFRef<CFStringRef> CopyFaxRecipientColumn(const FaxRecipient* recipient, DataBrowserPropertyID column);
/// The order by a column: its texts case-sensitively, null being empty; names in any other column.
bool FaxRecipientComesBefore(const FaxRecipient* one, const FaxRecipient* two, DataBrowserPropertyID column);

/// Makes the control such a table, empty and unsorted.
void InstallFaxRecipientBrowser(ControlRef browser);

inline DataBrowserItemID RowOfFaxRecipient(const FaxRecipient* recipient) {
    return reinterpret_cast<DataBrowserItemID>(recipient);
}
void AddFaxRecipientRows(ControlRef browser, std::span<FaxRecipient* const> recipients);
/// Those that have no row are passed over; no recipient is looked at, so they may be gone already.
void RemoveFaxRecipientRows(ControlRef browser, std::span<FaxRecipient* const> recipients);
/// In the order that is shown.
std::vector<FaxRecipient*> SelectedFaxRecipients(ControlRef browser);
/// The selected one; null when none is selected or several are.
FaxRecipient* OnlySelectedFaxRecipient(ControlRef browser);
/// Selects the recipient alone and scrolls to it.
void SelectFaxRecipient(ControlRef browser, FaxRecipient* recipient);
