// Texts of the plug-in's strings tables on its controls, windows and menus.
//
// Keys are looked up in the bundle's table "Localizable". A key without a text shows as "STRING NOT FOUND", so that
// a missing text is seen in testing and not mistaken for a name.
#pragma once

#include "model/settings/setting_map.h"
#include "platform/foundation/CFRef.h"
#include "platform/toolbox/ToolboxTypes.h"

/// The text of a key; never null.
CFRef<CFStringRef> CopyLocalizedText(CFBundleRef bundle, CFStringRef key);

/// Sets a static text and redraws it. Nothing happens when an argument is null.
void SetLocalizedStaticText(CFBundleRef bundle, CFStringRef key, ControlRef staticText);
void SetLocalizedControlTitle(CFBundleRef bundle, CFStringRef key, ControlRef control);
/// The title is the text of a map row's key; rows count from 0 and must lie inside the map.
void SetLocalizedControlTitleFromMap(CFBundleRef bundle, const SettingMap* map, CFIndex row, ControlRef control);
void SetLocalizedWindowTitle(CFBundleRef bundle, CFStringRef key, WindowRef window);
void SetLocalizedMenuTitle(CFBundleRef bundle, CFStringRef key, MenuRef menu, MenuItemIndex item);
