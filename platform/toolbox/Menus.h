// Menus: items with a text, a command code, a reference value, a mark and perhaps a submenu. Items count from 1.
#pragma once

#include "platform/toolbox/ToolboxTypes.h"

using MenuItemAttributes = UInt32;
inline constexpr MenuItemAttributes kMenuItemAttrDisabled = 1 << 0;
inline constexpr MenuItemAttributes kMenuItemAttrSeparator = 1 << 2;

UInt16 CountMenuItems(MenuRef menu);
/// *item is the new item's number; may be null.
OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, MenuItemAttributes attributes, OSType command,
                                        MenuItemIndex* item);
/// Removes `count` items from `first` on; those beyond the end are ignored.
OSStatus DeleteMenuItems(MenuRef menu, MenuItemIndex first, ItemCount count);

OSStatus SetMenuItemTextWithCFString(MenuRef menu, MenuItemIndex item, CFStringRef text);
OSStatus CopyMenuItemTextAsCFString(MenuRef menu, MenuItemIndex item, CFStringRef* text);
OSStatus GetMenuItemCommandID(MenuRef menu, MenuItemIndex item, OSType* command);

/// An item's reference value is wide enough for a pointer; item 0's is the menu's own.
using MenuRefCon = std::intptr_t;
OSStatus SetMenuItemRefCon(MenuRef menu, MenuItemIndex item, MenuRefCon refCon);
OSStatus GetMenuItemRefCon(MenuRef menu, MenuItemIndex item, MenuRefCon* refCon);

void EnableMenuItem(MenuRef menu, MenuItemIndex item);
void DisableMenuItem(MenuRef menu, MenuItemIndex item);
Boolean IsMenuItemEnabled(MenuRef menu, MenuItemIndex item);
/// A check mark beside the item.
void CheckMenuItem(MenuRef menu, MenuItemIndex item, Boolean checked);
Boolean IsMenuItemChecked(MenuRef menu, MenuItemIndex item);
