// Data browsers: lists of rows and columns.
//
// A browser holds row ids and nothing else. What a cell shows is asked through a callback each time that it is painted,
// so there is no second copy of the rows' state; a row whose text changed is only to be painted anew
// (UpdateDataBrowserItems). An id is whatever the program likes, usually the address of the row's object; the browser
// never looks behind it. So an object may be gone before its row is removed, when nothing else happens in between.
//
// Rows that the program adds are at the end, or at their place when the browser is sorted by a column. A browser can be
// sorted, by the user or the program, when it has a compare callback.
//
// The nib says which columns there are by dynamic properties of its QTreeView:
//   columns   their property ids, four characters each, with one blank between them: "NAME FAX  EMAL"
//   widths    their widths in points, blanks between them; may be missing. The last column takes what is left.
//   headers   a list of strings, the keys of their titles; without it the browser shows no titles
// Several rows can be selected unless its selectionMode is SingleSelection.
//
// The user's keys go to the browser's handlers first (kEventRawKeyDown, with the text of the key in
// kEventParamKeyUnicodes: the delete keys are kBackspaceCharCode and kDeleteCharCode). Keys that nobody handles move in
// the list; Ctrl and a digit sorts by the column of that number, or turns its order round, as a click on its title
// does; letters search in its first column, or in the one that it is sorted by; Return and Enter are a double click on
// the selected row.
#pragma once

#include "platform/toolbox/Controls.h"

/// A row; as wide as an address.
using DataBrowserItemID = std::uintptr_t;
inline constexpr DataBrowserItemID kDataBrowserNoItem = 0;

/// A column; a four-character code.
using DataBrowserPropertyID = OSType;
inline constexpr DataBrowserPropertyID kDataBrowserItemNoProperty = 0;

inline constexpr OSStatus errDataBrowserItemNotFound = -4971;
inline constexpr OSStatus errDataBrowserItemNotAdded = -4975;
inline constexpr OSStatus errDataBrowserPropertyNotFound = -4976;
inline constexpr OSStatus errDataBrowserPropertyNotSupported = -4979;

// ---- Callbacks

/// Where the item data callback puts a cell's content. Lives during that call.
using DataBrowserItemDataRef = struct OpaqueDataBrowserItemDataRef*;
OSStatus SetDataBrowserItemDataText(DataBrowserItemDataRef itemData, CFStringRef text);

/// Gives the content of a cell. An error means an empty cell: errDataBrowserPropertyNotFound where the row has no such
/// value, errDataBrowserPropertyNotSupported for a column that the program does not know. `setValue` is always false:
/// cells cannot be edited.
using DataBrowserItemDataProcPtr = OSStatus (*)(ControlRef browser, DataBrowserItemID item,
                                                DataBrowserPropertyID property, DataBrowserItemDataRef itemData,
                                                Boolean setValue);
/// Whether the first row comes before the second one when sorted by the column. It must not change the browser.
using DataBrowserItemCompareProcPtr = Boolean (*)(ControlRef browser, DataBrowserItemID itemOne,
                                                  DataBrowserItemID itemTwo, DataBrowserPropertyID sortProperty);

using DataBrowserItemNotification = UInt32;
inline constexpr DataBrowserItemNotification kDataBrowserItemAdded = 1;
inline constexpr DataBrowserItemNotification kDataBrowserItemRemoved = 2;
inline constexpr DataBrowserItemNotification kDataBrowserItemSelected = 5;
inline constexpr DataBrowserItemNotification kDataBrowserItemDeselected = 6;
inline constexpr DataBrowserItemNotification kDataBrowserItemDoubleClicked = 7;
inline constexpr DataBrowserItemNotification kDataBrowserSelectionSetChanged = 14;  // item: kDataBrowserNoItem

/// Told after every change, whoever made it: the program's own additions, removals and selections are told as the
/// user's are. One call a row, deselected rows first; then, once, kDataBrowserSelectionSetChanged. A removed row that
/// was selected is told as deselected too; neither says that its object still lives. The callback may change or dispose
/// of the browser.
using DataBrowserItemNotificationProcPtr = void (*)(ControlRef browser, DataBrowserItemID item,
                                                    DataBrowserItemNotification message);

/// Routines' handles, for the platform's sake: they are the functions themselves.
using DataBrowserItemDataUPP = DataBrowserItemDataProcPtr;
using DataBrowserItemCompareUPP = DataBrowserItemCompareProcPtr;
using DataBrowserItemNotificationUPP = DataBrowserItemNotificationProcPtr;

inline constexpr UInt32 kDataBrowserLatestCallbacks = 0;
struct DataBrowserCallbacks {
    UInt32 version;
    union {
        struct {
            DataBrowserItemDataUPP itemDataCallback;
            DataBrowserItemCompareUPP itemCompareCallback;            // null: the browser cannot be sorted
            DataBrowserItemNotificationUPP itemNotificationCallback;  // may be null
        } v1;
    } u;
};
/// Clears the record; its version must be kDataBrowserLatestCallbacks.
OSStatus InitDataBrowserCallbacks(DataBrowserCallbacks* callbacks);
/// Copies the record.
OSStatus SetDataBrowserCallbacks(ControlRef browser, const DataBrowserCallbacks* callbacks);

// ---- Rows. Containers are not supported: `container` is kDataBrowserNoItem and `recurse` has no effect.

/// Adds rows. Ids that are there already are left out, with errDataBrowserItemNotAdded at the end. The last argument,
/// the order in which the program has put them, is accepted for the platform's sake and ignored.
OSStatus AddDataBrowserItems(ControlRef browser, DataBrowserItemID container, ItemCount count,
                             const DataBrowserItemID* items, DataBrowserPropertyID preSortProperty);
/// Removes rows; all of them when `items` is null. errDataBrowserItemNotFound at the end when one was not there.
OSStatus RemoveDataBrowserItems(ControlRef browser, DataBrowserItemID container, ItemCount count,
                                const DataBrowserItemID* items, DataBrowserPropertyID preSortProperty);
/// Paints rows anew, all of them when `items` is null, and puts them at their places when the browser is sorted by the
/// property that changed (kDataBrowserItemNoProperty: any may have).
OSStatus UpdateDataBrowserItems(ControlRef browser, DataBrowserItemID container, ItemCount count,
                                const DataBrowserItemID* items, DataBrowserPropertyID preSortProperty,
                                DataBrowserPropertyID property);

using DataBrowserItemState = UInt32;
inline constexpr DataBrowserItemState kDataBrowserItemAnyState = 0xFFFFFFFF;
inline constexpr DataBrowserItemState kDataBrowserItemIsSelected = 1 << 0;
/// Number of rows in that state.
OSStatus GetDataBrowserItemCount(ControlRef browser, DataBrowserItemID container, Boolean recurse,
                                 DataBrowserItemState state, ItemCount* count);
/// The rows in that state in the order that is shown, at most `capacity` of them.
OSStatus GetDataBrowserItems(ControlRef browser, DataBrowserItemID container, Boolean recurse,
                             DataBrowserItemState state, ItemCount capacity, DataBrowserItemID* items);

// ---- Selection

using DataBrowserSetOption = UInt32;
inline constexpr DataBrowserSetOption kDataBrowserItemsAdd = 0;
inline constexpr DataBrowserSetOption kDataBrowserItemsAssign = 1;  // these and no others; none when count is 0
/// Unknown ids are left out, with errDataBrowserItemNotFound at the end. With kDataBrowserSelectOnlyOne the first one
/// counts.
OSStatus SetDataBrowserSelectedItems(ControlRef browser, ItemCount count, const DataBrowserItemID* items,
                                     DataBrowserSetOption operation);

using DataBrowserSelectionFlags = UInt32;
inline constexpr DataBrowserSelectionFlags kDataBrowserSelectOnlyOne = 1 << 1;
/// The user cannot deselect the last selected row; the program can.
inline constexpr DataBrowserSelectionFlags kDataBrowserNeverEmptySelectionSet = 1 << 6;
OSStatus SetDataBrowserSelectionFlags(ControlRef browser, DataBrowserSelectionFlags flags);

// ---- Order. A browser is unsorted at first.

using DataBrowserSortOrder = UInt16;
inline constexpr DataBrowserSortOrder kDataBrowserOrderIncreasing = 1;
inline constexpr DataBrowserSortOrder kDataBrowserOrderDecreasing = 2;
/// kDataBrowserItemNoProperty: rows stay as they are, new ones come at the end. Rows that are alike keep their order.
OSStatus SetDataBrowserSortProperty(ControlRef browser, DataBrowserPropertyID property);
OSStatus SetDataBrowserSortOrder(ControlRef browser, DataBrowserSortOrder order);

// ---- View

/// Width in points. errDataBrowserPropertyNotFound when there is no such column.
OSStatus SetDataBrowserTableViewNamedColumnWidth(ControlRef browser, DataBrowserPropertyID column, UInt16 width);

using DataBrowserRevealOptions = UInt8;
inline constexpr DataBrowserRevealOptions kDataBrowserRevealOnly = 0;
inline constexpr DataBrowserRevealOptions kDataBrowserRevealAndCenterInView = 1 << 0;
/// Scrolls until the row is seen; columns stay where they are with kDataBrowserItemNoProperty.
OSStatus RevealDataBrowserItem(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                               DataBrowserRevealOptions options);
/// Points from the first row and the first column.
OSStatus SetDataBrowserScrollPosition(ControlRef browser, UInt32 top, UInt32 left);
