#include "panels/special_pages/special_pages_list.h"

#include "panels/special_pages/special_pages_context.h"
#include "panels/special_pages/special_pages_descriptions.h"
#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFString.h"
#include "ui/list_control.h"
#include "ui/localization.h"

namespace {

constexpr DataBrowserPropertyID kPagesColumn = FourCharCode("PAGE");
constexpr DataBrowserPropertyID kKindColumn = FourCharCode("TYPE");
constexpr DataBrowserPropertyID kAttributesColumn = FourCharCode("ATTR");
constexpr UInt16 kAttributesWidth = 450;

DataBrowserItemID RowOf(const SpecialPage* page) {
    return reinterpret_cast<DataBrowserItemID>(page);
}

const SpecialPage* PageOf(DataBrowserItemID row) {
    return reinterpret_cast<const SpecialPage*>(row);  // NOLINT(performance-no-int-to-ptr): a row is its page's address
}

CFRef<CFStringRef> CoverText(const Cover& cover, DataBrowserPropertyID column) {
    const CFBundleRef bundle = gSpecialPages->bundle;
    switch (column) {
        case kPagesColumn:
            return CopyLocalizedText(bundle, &cover == gSpecialPages->records.frontCover.get()
                                                 ? CFSTR("SpecialPageSummaryFront")
                                                 : CFSTR("SpecialPageSummaryBack"));
        case kKindColumn:
            return CopyLocalizedText(bundle, CFSTR("SpecialPageSummaryCover"));
        default:
            return CreateCoverAttributesDescription(bundle, cover);
    }
}

CFRef<CFStringRef> InsertText(const Insert& insert, DataBrowserPropertyID column) {
    const CFBundleRef bundle = gSpecialPages->bundle;
    switch (column) {
        case kPagesColumn:
            return CreateInsertPagesDescription(bundle, insert);
        case kKindColumn:
            return CopyLocalizedText(bundle, CFSTR("SpecialPageSummaryInsert"));
        default:
            return CreateInsertAttributesDescription(bundle, insert);
    }
}

CFRef<CFStringRef> ExceptionText(const ExceptionPage& page, DataBrowserPropertyID column) {
    const CFBundleRef bundle = gSpecialPages->bundle;
    switch (column) {
        case kPagesColumn:
            return CFRef<CFStringRef>::adopt(
                CFNumberListCreateLocalized(kCFAllocatorDefault, CreateExceptionPagesDescription(page).get()));
        case kKindColumn:
            return CopyLocalizedText(bundle, CFSTR("SpecialPageSummaryException"));
        default:
            return CreateExceptionAttributesDescription(bundle, page);
    }
}

CFRef<CFStringRef> CellText(const SpecialPage* page, DataBrowserPropertyID column) {
    if (const auto* cover = dynamic_cast<const Cover*>(page)) {
        return CoverText(*cover, column);
    }
    if (const auto* insert = dynamic_cast<const Insert*>(page)) {
        return InsertText(*insert, column);
    }
    return ExceptionText(dynamic_cast<const ExceptionPage&>(*page), column);
}

ItemCount CountRows(DataBrowserItemState state) {
    ItemCount count = 0;
    GetDataBrowserItemCount(gSpecialPages->list, kDataBrowserNoItem, false, state, &count);
    return count;
}

void SetEnabled(ControlRef control, bool enabled) {
    enabled ? EnableControl(control) : DisableControl(control);
}

}  // namespace

std::vector<const SpecialPage*> SpecialPagesInOrder(const SpecialPageRecords& records) {
    const CFIndex insertCount = records.inserts.count();
    const CFIndex exceptionCount = records.exceptions.count();
    std::vector<const SpecialPage*> pages;
    pages.reserve(static_cast<std::size_t>(insertCount + exceptionCount) + 2);
    if (records.frontCover) {
        pages.push_back(records.frontCover.get());
    }
    CFIndex i = 0;
    CFIndex e = 0;
    while (i < insertCount || e < exceptionCount) {
        const Insert* const insert = records.inserts.pageAtIndex(i);
        const ExceptionPage* const exception = records.exceptions.pageAtIndex(e);
        if (insert == nullptr || (exception != nullptr && exception->startPage() <= insert->startPage())) {
            pages.push_back(exception);
            ++e;
        } else {
            pages.push_back(insert);
            ++i;
        }
    }
    if (records.backCover) {
        pages.push_back(records.backCover.get());
    }
    return pages;
}

void ConfigureSpecialPagesListAndInstallCallbacks(ControlRef list, DataBrowserItemNotificationUPP notification) {
    SetListCallbacks(list, SpecialPagesListItemDataCallback, notification);
    SetDataBrowserTableViewNamedColumnWidth(list, kAttributesColumn, kAttributesWidth);
}

OSStatus SpecialPagesListItemDataCallback(ControlRef, DataBrowserItemID item, DataBrowserPropertyID property,
                                          DataBrowserItemDataRef itemData, Boolean) {
    if (property != kPagesColumn && property != kKindColumn && property != kAttributesColumn) {
        return errDataBrowserPropertyNotSupported;
    }
    if (gSpecialPages == nullptr) {
        return errDataBrowserItemNotFound;  // the window outlives the panel and its pages
    }
    return SetDataBrowserItemDataText(itemData, CellText(PageOf(item), property).get());
}

void UpdateSpecialPagesSummary() {
    if (gSpecialPages == nullptr || gSpecialPages->list == nullptr) {
        return;
    }
    const ControlRef list = gSpecialPages->list;
    RemoveDataBrowserItems(list, kDataBrowserNoItem, 0, nullptr, kDataBrowserItemNoProperty);
    const std::vector<const SpecialPage*> pages = SpecialPagesInOrder(gSpecialPages->records);
    std::vector<DataBrowserItemID> rows;
    rows.reserve(pages.size());
    for (const SpecialPage* page : pages) {
        rows.push_back(RowOf(page));
    }
    AddDataBrowserItems(list, kDataBrowserNoItem, rows.size(), rows.data(), kDataBrowserItemNoProperty);
    UpdateSpecialPagesCommandButtons();
}

void UpdateSpecialPagesCommandButtons() {
    if (gSpecialPages == nullptr || gSpecialPages->list == nullptr) {
        return;
    }
    const SpecialPagesButtons buttons =
        ButtonsForRows(CountRows(kDataBrowserItemAnyState), CountRows(kDataBrowserItemIsSelected));
    SetEnabled(gSpecialPages->editButton, buttons.edit);
    SetEnabled(gSpecialPages->deleteButton, buttons.deleteSelected);
    SetEnabled(gSpecialPages->deleteAllButton, buttons.deleteAll);
}

std::vector<const SpecialPage*> SelectedSpecialPages() {
    const std::vector<DataBrowserItemID> rows = SelectedRows(gSpecialPages->list);
    std::vector<const SpecialPage*> pages;
    pages.reserve(rows.size());
    for (const DataBrowserItemID row : rows) {
        pages.push_back(PageOf(row));
    }
    return pages;
}
