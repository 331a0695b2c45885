#include "jobtypes/dialogs/fax_recipient_browser.h"

#include "jobtypes/dialogs/fax_texts.h"
#include "platform/toolbox/Events.h"
#include "ui/list_control.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr DataBrowserPropertyID kNameColumn = FourCharCode("NAME");
constexpr CFIndex kLongestInCell = 120;  // a cell lays out all of its text to draw the part that fits

struct Column {
    DataBrowserPropertyID property;
    CFStringRef (FaxRecipient::*text)() const;
};
constexpr Column kColumns[] = {
    // property, text
    {FourCharCode("FAX "), &FaxRecipient::faxNumber},    {FourCharCode("EMAL"), &FaxRecipient::emailAddress},
    {FourCharCode("ORG "), &FaxRecipient::organization}, {FourCharCode("PHON"), &FaxRecipient::phoneNumber},
    {FourCharCode("MBOX"), &FaxRecipient::mailbox},
};

const Column* FindColumn(DataBrowserPropertyID property) {
    const auto* column = std::ranges::find(kColumns, property, &Column::property);
    return column != std::end(kColumns) ? column : nullptr;
}

FaxRecipient* RecipientOfRow(DataBrowserItemID item) {
    return reinterpret_cast<FaxRecipient*>(item);  // NOLINT(performance-no-int-to-ptr): a row is its object's address
}

std::vector<DataBrowserItemID> RowsOf(std::span<FaxRecipient* const> recipients) {
    std::vector<DataBrowserItemID> rows;
    std::ranges::transform(recipients, std::back_inserter(rows), RowOfFaxRecipient);
    return rows;
}

CFStringRef OrEmpty(CFStringRef text) {
    return text != nullptr ? text : CFSTR("");
}

void SendCommand(ControlRef browser, OSType command) {
    const HICommand content{kHICommandFromControl, command, nullptr, 0, browser};
    EventRef event = nullptr;
    if (CreateEvent(kCFAllocatorDefault, kEventClassCommand, kEventCommandProcess, 0, 0, &event) != noErr) {
        return;
    }
    SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof content, &content);
    SendEventToEventTarget(event, GetControlEventTarget(browser));
    ReleaseEvent(event);
}

// ---- Callbacks

OSStatus ItemData(ControlRef, DataBrowserItemID item, DataBrowserPropertyID property, DataBrowserItemDataRef itemData,
                  Boolean) {
    if (property != kNameColumn && FindColumn(property) == nullptr) {
        return errDataBrowserPropertyNotSupported;
    }
    const CFRef<CFStringRef> text = CopyFaxRecipientColumn(RecipientOfRow(item), property);
    return text ? SetDataBrowserItemDataText(itemData, CopyTextForOneLine(text.get(), kLongestInCell).get())
                : errDataBrowserPropertyNotFound;
}

Boolean ItemCompare(ControlRef, DataBrowserItemID one, DataBrowserItemID two, DataBrowserPropertyID property) {
    return FaxRecipientComesBefore(RecipientOfRow(one), RecipientOfRow(two), property);
}

void ItemNotification(ControlRef browser, DataBrowserItemID, DataBrowserItemNotification message) {
    if (message == kDataBrowserItemDoubleClicked) {
        SendCommand(browser, kFaxEditCommand);
    } else if (message == kDataBrowserSelectionSetChanged) {
        SendCommand(browser, kFaxSelectionCommand);
    }
}

OSStatus RemoveOnDeleteKey(EventHandlerCallRef, EventRef event, void* browser) {
    if (!IsDeleteKey(event)) {
        return eventNotHandledErr;
    }
    SendCommand(static_cast<ControlRef>(browser), kFaxRemoveCommand);
    return noErr;
}

}  // namespace

CFRef<CFStringRef> CopyFaxRecipientColumn(const FaxRecipient* recipient, DataBrowserPropertyID column) {
    if (column == kNameColumn) {
        return DisplayNameFromRecipient(recipient);
    }
    const Column* found = FindColumn(column);
    return found != nullptr ? CFRef<CFStringRef>::retain((recipient->*found->text)()) : nullptr;
}

bool FaxRecipientComesBefore(const FaxRecipient* one, const FaxRecipient* two, DataBrowserPropertyID column) {
    if (const Column* found = FindColumn(column)) {
        return CFStringCompare(OrEmpty((one->*found->text)()), OrEmpty((two->*found->text)()), 0) == kCFCompareLessThan;
    }
    return CFStringCompare(DisplayNameFromRecipient(one).get(), DisplayNameFromRecipient(two).get(), 0) ==
           kCFCompareLessThan;
}

void InstallFaxRecipientBrowser(ControlRef browser) {
    SetListCallbacks(browser, ItemData, ItemNotification, ItemCompare);
    static constexpr EventTypeSpec kKeyDown{kEventClassKeyboard, kEventRawKeyDown};
    InstallControlEventHandler(browser, RemoveOnDeleteKey, 1, &kKeyDown, browser, nullptr);
}

void AddFaxRecipientRows(ControlRef browser, std::span<FaxRecipient* const> recipients) {
    const std::vector<DataBrowserItemID> rows = RowsOf(recipients);
    AddDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(rows.size()), rows.data(),
                        kDataBrowserItemNoProperty);
}

void RemoveFaxRecipientRows(ControlRef browser, std::span<FaxRecipient* const> recipients) {
    const std::vector<DataBrowserItemID> rows = RowsOf(recipients);
    if (!rows.empty()) {  // no address would mean all rows
        RemoveDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(rows.size()), rows.data(),
                               kDataBrowserItemNoProperty);
    }
}

std::vector<FaxRecipient*> SelectedFaxRecipients(ControlRef browser) {
    std::vector<FaxRecipient*> recipients;
    std::ranges::transform(SelectedRows(browser), std::back_inserter(recipients), RecipientOfRow);
    return recipients;
}

FaxRecipient* OnlySelectedFaxRecipient(ControlRef browser) {
    const std::vector<FaxRecipient*> selected = SelectedFaxRecipients(browser);
    return selected.size() == 1 ? selected.front() : nullptr;
}

void SelectFaxRecipient(ControlRef browser, FaxRecipient* recipient) {
    const DataBrowserItemID row = RowOfFaxRecipient(recipient);
    SetDataBrowserSelectedItems(browser, 1, &row, kDataBrowserItemsAssign);
    RevealDataBrowserItem(browser, row, kDataBrowserItemNoProperty, kDataBrowserRevealOnly);
}
