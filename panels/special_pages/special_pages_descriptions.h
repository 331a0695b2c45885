// What the list says about special pages.
//
// Words come from the bundle's table "Localizable"; a missing one shows as "STRING NOT FOUND". Results are new strings.
#pragma once

#include "model/records/special_page.h"

// The attributes, joined by ";  ": for a cover what is printed on it, for an insert how many sheets, for an exception
// its sides; then the paper, joined by ", ". What is not set is left out, and so are sides that have no name.
[[nodiscard]] CFRef<CFStringRef> CreateCoverAttributesDescription(CFBundleRef bundle, const Cover& cover);
[[nodiscard]] CFRef<CFStringRef> CreateInsertAttributesDescription(CFBundleRef bundle, const Insert& insert);
[[nodiscard]] CFRef<CFStringRef> CreateExceptionAttributesDescription(CFBundleRef bundle, const ExceptionPage& page);

/// The page that an insert follows, or that it comes before page 1.
[[nodiscard]] CFRef<CFStringRef> CreateInsertPagesDescription(CFBundleRef bundle, const Insert& insert);
/// "5" or "5-7": as a page field takes it.
[[nodiscard]] CFRef<CFStringRef> CreateExceptionPagesDescription(const ExceptionPage& page);
/// "5".
[[nodiscard]] CFRef<CFStringRef> CreatePageNumberDescription(SInt32 page);

/// How far the image moves to stay clear of tabs, with its unit; that it does not when no shift is chosen.
[[nodiscard]] CFRef<CFStringRef> CreateImageShiftDescription(CFBundleRef bundle, const _IS_Options& options);
