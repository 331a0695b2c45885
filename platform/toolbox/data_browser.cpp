// The calls of data browsers.

#include "platform/toolbox/DataBrowser.h"

#include "platform/toolbox/data_browser_view.h"
#include "platform/toolbox/objects.h"

#include <QHeaderView>
#include <algorithm>
#include <limits>
#include <numeric>

namespace {

/// Does the work on the browser's view; controlHandleInvalidErr when the control is no browser.
template <typename Work>
OSStatus withBrowser(ControlRef control, Work work) {
    DataBrowserView* view = DataBrowserView::of(control);
    return view != nullptr ? work(*view) : controlHandleInvalidErr;
}

/// The same for the calls that name rows in a container.
template <typename Work>
OSStatus withRows(ControlRef control, DataBrowserItemID container, ItemCount count, const DataBrowserItemID* items,
                  Work work) {
    const bool valid = container == kDataBrowserNoItem && (items != nullptr || count == 0) &&
                       (items == nullptr || std::find(items, items + count, kDataBrowserNoItem) == items + count);
    return valid ? withBrowser(control, work) : paramErr;
}

std::vector<int> allRows(const DataBrowserModel& model) {
    std::vector<int> rows(model.items().size());
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

std::vector<int> rowsInState(DataBrowserView& view, DataBrowserItemState state) {
    return state == kDataBrowserItemIsSelected ? view.selectedRows() : allRows(view.rows());
}

int clampedToInt(UInt32 value) {
    return static_cast<int>(std::min<UInt32>(value, std::numeric_limits<int>::max()));
}

}  // namespace

OSStatus SetDataBrowserItemDataText(DataBrowserItemDataRef itemData, CFStringRef text) {
    if (itemData == nullptr) {
        return paramErr;
    }
    itemData->text = toQString(text);
    return noErr;
}

OSStatus InitDataBrowserCallbacks(DataBrowserCallbacks* callbacks) {
    if (callbacks == nullptr || callbacks->version != kDataBrowserLatestCallbacks) {
        return paramErr;
    }
    callbacks->u.v1 = {};
    return noErr;
}

OSStatus SetDataBrowserCallbacks(ControlRef browser, const DataBrowserCallbacks* callbacks) {
    if (callbacks == nullptr || callbacks->version != kDataBrowserLatestCallbacks) {
        return paramErr;
    }
    return withBrowser(browser, [&](DataBrowserView& view) {
        view.setCallbacks(*callbacks);
        return noErr;
    });
}

// ---- Rows

OSStatus AddDataBrowserItems(ControlRef browser, DataBrowserItemID container, ItemCount count,
                             const DataBrowserItemID* items, DataBrowserPropertyID) {
    return withRows(browser, container, count, items, [&](DataBrowserView& view) {
        return view.add({items, count}) ? noErr : errDataBrowserItemNotAdded;
    });
}

OSStatus RemoveDataBrowserItems(ControlRef browser, DataBrowserItemID container, ItemCount count,
                                const DataBrowserItemID* items, DataBrowserPropertyID) {
    return withRows(browser, container, count, items, [&](DataBrowserView& view) {
        const std::vector<int> rows = items != nullptr ? view.rows().rowsOf({items, count}) : allRows(view.rows());
        view.remove(rows);
        return items == nullptr || rows.size() == count ? noErr : errDataBrowserItemNotFound;
    });
}

OSStatus UpdateDataBrowserItems(ControlRef browser, DataBrowserItemID container, ItemCount count,
                                const DataBrowserItemID* items, DataBrowserPropertyID, DataBrowserPropertyID property) {
    return withRows(browser, container, count, items, [&](DataBrowserView& view) {
        const std::vector<int> rows = items != nullptr ? view.rows().rowsOf({items, count}) : allRows(view.rows());
        view.rows().changed(rows);
        const int section = view.header()->sortIndicatorSection();
        if (property == kDataBrowserItemNoProperty || view.sectionOf(property) == section) {
            view.sortRows();
        }
        return items == nullptr || rows.size() == count ? noErr : errDataBrowserItemNotFound;
    });
}

OSStatus GetDataBrowserItemCount(ControlRef browser, DataBrowserItemID container, Boolean, DataBrowserItemState state,
                                 ItemCount* count) {
    if (count == nullptr) {
        return paramErr;
    }
    return withRows(browser, container, 0, nullptr, [&](DataBrowserView& view) {
        *count = static_cast<ItemCount>(rowsInState(view, state).size());
        return noErr;
    });
}

OSStatus GetDataBrowserItems(ControlRef browser, DataBrowserItemID container, Boolean, DataBrowserItemState state,
                             ItemCount capacity, DataBrowserItemID* items) {
    if (items == nullptr && capacity > 0) {
        return paramErr;
    }
    return withRows(browser, container, 0, nullptr, [&](DataBrowserView& view) {
        std::vector<int> rows = rowsInState(view, state);
        rows.resize(std::min<std::size_t>(rows.size(), capacity));
        std::ranges::transform(rows, items,
                               [&](int row) { return view.rows().items()[static_cast<std::size_t>(row)]; });
        return noErr;
    });
}

// ---- Selection

OSStatus SetDataBrowserSelectedItems(ControlRef browser, ItemCount count, const DataBrowserItemID* items,
                                     DataBrowserSetOption operation) {
    const bool assigns = operation == kDataBrowserItemsAssign;
    if (!assigns && operation != kDataBrowserItemsAdd) {
        return paramErr;
    }
    return withRows(browser, kDataBrowserNoItem, count, items, [&](DataBrowserView& view) {
        const bool onlyOne = view.selectionMode() == QAbstractItemView::SingleSelection;
        const ItemCount wanted = onlyOne ? std::min<ItemCount>(count, 1) : count;
        const std::vector<int> rows = view.rows().rowsOf({items, wanted});
        const bool clears = assigns || (onlyOne && !rows.empty());
        view.select(rows, clears ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Select);
        return rows.size() == wanted ? noErr : errDataBrowserItemNotFound;
    });
}

OSStatus SetDataBrowserSelectionFlags(ControlRef browser, DataBrowserSelectionFlags flags) {
    return withBrowser(browser, [&](DataBrowserView& view) {
        view.setSelectionMode((flags & kDataBrowserSelectOnlyOne) != 0 ? QAbstractItemView::SingleSelection
                                                                       : QAbstractItemView::ExtendedSelection);
        view.neverEmpty = (flags & kDataBrowserNeverEmptySelectionSet) != 0;
        return noErr;
    });
}

// ---- Order

OSStatus SetDataBrowserSortProperty(ControlRef browser, DataBrowserPropertyID property) {
    return withBrowser(browser, [&](DataBrowserView& view) {
        const int section = view.sectionOf(property);
        if (section < 0 && property != kDataBrowserItemNoProperty) {
            return errDataBrowserPropertyNotFound;
        }
        view.header()->setSortIndicator(section, view.header()->sortIndicatorOrder());
        return noErr;
    });
}

OSStatus SetDataBrowserSortOrder(ControlRef browser, DataBrowserSortOrder order) {
    if (order != kDataBrowserOrderIncreasing && order != kDataBrowserOrderDecreasing) {
        return paramErr;
    }
    return withBrowser(browser, [&](DataBrowserView& view) {
        view.header()->setSortIndicator(view.header()->sortIndicatorSection(), order == kDataBrowserOrderDecreasing
                                                                                   ? Qt::DescendingOrder
                                                                                   : Qt::AscendingOrder);
        return noErr;
    });
}

// ---- View

OSStatus SetDataBrowserTableViewNamedColumnWidth(ControlRef browser, DataBrowserPropertyID column, UInt16 width) {
    return withBrowser(browser, [&](DataBrowserView& view) {
        const int section = view.sectionOf(column);
        if (section < 0) {
            return errDataBrowserPropertyNotFound;
        }
        view.header()->resizeSection(section, width);
        return noErr;
    });
}

OSStatus RevealDataBrowserItem(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                               DataBrowserRevealOptions options) {
    return withBrowser(browser, [&](DataBrowserView& view) {
        const int row = view.rows().rowOf(item);
        if (row < 0) {
            return errDataBrowserItemNotFound;
        }
        const bool centre = (options & kDataBrowserRevealAndCenterInView) != 0;
        const int column = view.sectionOf(property);
        view.reveal(row, column, centre ? QAbstractItemView::PositionAtCenter : QAbstractItemView::EnsureVisible);
        return noErr;
    });
}

OSStatus SetDataBrowserScrollPosition(ControlRef browser, UInt32 top, UInt32 left) {
    return withBrowser(browser, [&](DataBrowserView& view) {
        view.scrollToPoint(clampedToInt(left), clampedToInt(top));
        return noErr;
    });
}
