// Bundles: folders with an Info.plist, an executable, resources and texts.
//
// Layout: NAME/Contents/{Info.plist, Linux/EXECUTABLE, Resources/…, Resources/LANGUAGE.lproj/TABLE.strings, PlugIns/…}.
#pragma once

#include "platform/foundation/CFBase.h"

/// A new bundle for the folder; null when its Info.plist is missing or does not parse. The same folder asked for
/// again gives the same object with one count more.
CFBundleRef CFBundleCreate(CFAllocatorRef allocator, CFURLRef url);
/// Why the last CFBundleCreate or CFBundleLoadExecutable failed, in one line that names the file; lent, null when it
/// did not fail. Not of the platform: its own calls give no reason, and a person who looks at a broken
/// installation needs one.
CFStringRef CFBundleGetLastError();
/// The living bundle with that identifier, lent; null when there is none.
CFBundleRef CFBundleGetBundleWithIdentifier(CFStringRef identifier);

/// Loads the executable with its symbols; true when it is loaded, or was already.
Boolean CFBundleLoadExecutable(CFBundleRef bundle);
/// An exported function of the executable, which is loaded if need be; null when there is none of that name.
void* CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef name);

CFURLRef CFBundleCopyBundleURL(CFBundleRef bundle);
CFURLRef CFBundleCopyBuiltInPlugInsURL(CFBundleRef bundle);
/// A new address of Resources/[subfolder/]NAME[.type], else of the file of that name for the user's language
/// (LANGUAGE.lproj); null when neither exists. The type and the subfolder may be null. Names are case-sensitive.
CFURLRef CFBundleCopyResourceURL(CFBundleRef bundle, CFStringRef name, CFStringRef type, CFStringRef subfolder);

/// The text of a key in a table ("Localizable" when null) in the user's language, else in English, as a new
/// string. A missing key gives `value`, or the key itself when that is null or empty.
CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value, CFStringRef table);
/// A value of Info.plist, the InfoPlist.strings of the user's language first; lent, null when absent.
CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle, CFStringRef key);
/// The dictionary of InfoPlist.strings in the user's language, else English; lent, null when there is none.
CFDictionaryRef CFBundleGetLocalInfoDictionary(CFBundleRef bundle);
