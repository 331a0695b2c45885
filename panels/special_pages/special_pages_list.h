// The panel's list: all special pages of the job, each row named by its page object's address.
//
// No row outlives its object: whoever changes the records refills the list before anything else can happen.
#pragma once

#include "panels/special_pages/special_pages_sync.h"
#include "platform/toolbox/DataBrowser.h"

#include <vector>

/// Pages in the order of the rows: front cover, inserts and exceptions by their first page, back cover. An exception
/// that starts with a page comes before an insert after that page.
[[nodiscard]] std::vector<const SpecialPage*> SpecialPagesInOrder(const SpecialPageRecords& records);

/// Which buttons can be used. Edit is for one selected row.
struct SpecialPagesButtons {
    bool edit;
    bool deleteSelected;
    bool deleteAll;
    bool operator==(const SpecialPagesButtons&) const = default;
};
[[nodiscard]] constexpr SpecialPagesButtons ButtonsForRows(ItemCount rows, ItemCount selected) {
    return {selected == 1, selected > 0, rows > 0};
}

/// Prepares the list control, which tells the notification routine what happens to its rows.
void ConfigureSpecialPagesListAndInstallCallbacks(ControlRef list, DataBrowserItemNotificationUPP notification);
OSStatus SpecialPagesListItemDataCallback(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                                          DataBrowserItemDataRef itemData, Boolean setValue);

/// Refills the list from the records, with nothing selected, and updates the buttons. Nothing happens when there is no
/// panel, or none with controls.
void UpdateSpecialPagesSummary();
void UpdateSpecialPagesCommandButtons();

/// The pages of the selected rows, in their order.
[[nodiscard]] std::vector<const SpecialPage*> SelectedSpecialPages();
