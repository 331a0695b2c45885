// Menus: items with a text, a command code, a reference value, a mark and perhaps a submenu. Items count from 1.
#pragma once

#include "platform/toolbox/Events.h"

using MenuID = SInt16;
using MenuAttributes = UInt32;
inline constexpr MenuAttributes kMenuAttrExcludesMarkColumn = 1 << 0;  // no check marks, and no room for them
inline constexpr MenuAttributes kMenuAttrCondenseSeparators = 1 << 5;  // no two in a row, none at the ends
using MenuItemAttributes = UInt32;
inline constexpr MenuItemAttributes kMenuItemAttrDisabled = 1 << 0;
inline constexpr MenuItemAttributes kMenuItemAttrSeparator = 1 << 2;

/// A new menu, to be made a submenu; the identifier is ignored. The caller releases it.
OSStatus CreateNewMenu(MenuID id, MenuAttributes attributes, MenuRef* menu);
void ReleaseMenu(MenuRef menu);
/// Sets some attributes and takes others away, when the menu is shown by a button.
OSStatus ChangeMenuAttributes(MenuRef menu, MenuAttributes set, MenuAttributes clear);
/// Where the menu's own events go; those that nobody takes there go on to the control that shows it. Picking an item
/// is the control's own event.
EventTargetRef GetMenuEventTarget(MenuRef menu);

UInt16 CountMenuItems(MenuRef menu);
/// *item is the new item's number; may be null.
OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, MenuItemAttributes attributes, OSType command,
                                        MenuItemIndex* item);
/// Puts a new item behind another one, or at the top when that is 0.
OSStatus InsertMenuItemTextWithCFString(MenuRef menu, CFStringRef text, MenuItemIndex afterItem,
                                        MenuItemAttributes attributes, OSType command);
/// Removes `count` items from `first` on; those beyond the end are ignored. menuItemNotFoundErr without the first one,
/// but not for a count of 0: all items of an empty menu are none.
OSStatus DeleteMenuItems(MenuRef menu, MenuItemIndex first, ItemCount count);

OSStatus SetMenuItemTextWithCFString(MenuRef menu, MenuItemIndex item, CFStringRef text);
OSStatus CopyMenuItemTextAsCFString(MenuRef menu, MenuItemIndex item, CFStringRef* text);
OSStatus GetMenuItemCommandID(MenuRef menu, MenuItemIndex item, OSType* command);

/// An item's reference value is wide enough for a pointer; item 0's is the menu's own.
using MenuRefCon = std::intptr_t;
OSStatus SetMenuItemRefCon(MenuRef menu, MenuItemIndex item, MenuRefCon refCon);
OSStatus GetMenuItemRefCon(MenuRef menu, MenuItemIndex item, MenuRefCon* refCon);

/// Makes the menu the item's submenu, which keeps it; null takes it away. A menu is a submenu of one item only:
/// paramErr for one that belongs to a control or to another item.
OSStatus SetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef submenu);
/// The item's submenu, lent; null for an item without one.
OSStatus GetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef* submenu);

void EnableMenuItem(MenuRef menu, MenuItemIndex item);
void DisableMenuItem(MenuRef menu, MenuItemIndex item);
Boolean IsMenuItemEnabled(MenuRef menu, MenuItemIndex item);
/// The text beside the pointer when it rests on the item, and for assistive technologies; the platform's record of
/// contents holds no more here. Empty or null for none.
OSStatus HMSetMenuItemHelpContent(MenuRef menu, MenuItemIndex item, CFStringRef content);
/// A sign beside the item that something is wrong there. Not of the platform, which takes a picture.
OSStatus SetMenuItemAlert(MenuRef menu, MenuItemIndex item, Boolean alert);
/// A check mark beside the item.
void CheckMenuItem(MenuRef menu, MenuItemIndex item, Boolean checked);
Boolean IsMenuItemChecked(MenuRef menu, MenuItemIndex item);
