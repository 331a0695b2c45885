// The help viewer and the user's web browser.
#pragma once

#include "platform/foundation/CFURL.h"

/// Makes the help book of a bundle folder known by its "CFBundleHelpBookName"; its pages lie in the bundle's
/// "CFBundleHelpBookFolder". fnfErr when the folder is no bundle with a help book.
OSStatus AHRegisterHelpBook(const FSRef* bundle);
/// Shows an anchor of the book: a page's path, or a name inside a page after '#'. fnfErr for an unknown book or page.
OSStatus AHLookupAnchor(CFStringRef book, CFStringRef anchor);
/// Shows a page of the book, or its start page when `page` is null.
OSStatus AHGotoPage(CFStringRef book, CFStringRef page, CFStringRef anchor);

/// Opens a web address in the user's browser; in a scripted run it is printed instead.
OSStatus LSOpenCFURLRef(CFURLRef url, CFURLRef* launched);
