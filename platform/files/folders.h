// The user's folders.
#pragma once

#include "platform/foundation/CFURL.h"
#include "platform/foundation/four_char_code.h"

inline constexpr SInt16 kUserDomain = -32763;
/// $XDG_CONFIG_HOME/tavro, else ~/.config/tavro.
inline constexpr OSType kPreferencesFolderType = FourCharCode("pref");
/// $XDG_DATA_HOME/tavro, else ~/.local/share/tavro.
inline constexpr OSType kApplicationSupportFolderType = FourCharCode("asup");

/// The folder of that kind, made (0700) when `create` is set. fnfErr when it does not exist and is not to be made or
/// cannot be made; paramErr for another domain or kind.
OSStatus FSFindFolder(SInt16 domain, OSType kind, Boolean create, FSRef* folder);

/// Makes the folder at the address (0700) inside one that exists; a folder that is there stays as it is. fnfErr when
/// there is none afterwards.
OSStatus FSpDirCreate(CFURLRef folder);

/// The first plain file with that name, which may begin with folders, below the user's data folder or the system's:
/// "tavro" in $XDG_DATA_DIRS, else in /usr/local/share and /usr/share. A new URL; null when there is none.
CFURLRef FSCopyDataFileURL(CFStringRef name);
