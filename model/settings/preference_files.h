// The user's property-list files: stores, in the folder "Tavro" of the application-support folder, and preferences, in
// the preferences folder. The root of each is a dictionary.
//
// A file is replaced as a whole. What Copy functions return is the caller's, and everything in it can be changed.
#pragma once

#include "platform/files/folder_lock.h"
#include "platform/foundation/CFCollections.h"

#include <functional>

/// The address of the store of that name, which need not exist; its folder is made. Null when the folder cannot be
/// found or made.
CFURLRef CopyPreferenceFileURL(CFStringRef fileName);

/// The root of the store; null when the file is missing or cannot be read. A line on standard error says what is
/// wrong with a file that is no property list.
CFMutableDictionaryRef CopyXMLData(CFStringRef fileName);

enum class StoreUse { Existing, NewIfNone };

/// Reads the root of the store, lets `change` change it, and writes it back. Without a store that can be parsed an
/// empty root takes its place, or nothing is done at all, as `use` says. A store that cannot be parsed is kept beside
/// the new one, as NAME.unreadable; one that cannot be opened is left alone. Nothing is written when `change` returns
/// false. 0, or the error's number (errno.h) and a line on standard error; the store is then as it was. There is no
/// locking here: of two programs that change a store at once, one may lose, unless they hold LockStores().
SInt32 ChangeStore(CFStringRef fileName, StoreUse use, const std::function<bool(CFMutableDictionaryRef)>& change);

/// Has other programs wait for their turn at the stores, as long as it lives.
FolderLock LockStores();

/// The preferences of that name; null when the file is missing or cannot be read.
CFMutableDictionaryRef CopyUserPreferences(CFStringRef fileName);

/// Replaces the preferences of that name; what cannot be parsed or opened is treated as ChangeStore does. False, and a
/// line with the error's number on standard error, when they could not be written; the old file is then untouched.
Boolean WriteUserPreferences(CFStringRef fileName, CFDictionaryRef preferences);
