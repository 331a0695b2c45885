// The options that the printer's PPD offers, as plain arrays and strings.
//
// A keyword info array describes one option of one main keyword by six strings. An options list is an array of them,
// one main keyword's options in the order of the PPD. The global UI dictionary holds the options list of every pick-one
// main keyword; it lives from the shell's Initialize to its Terminate.
#pragma once

#include "platform/foundation/CFCollections.h"
#include "platform/printing/CompiledPPD.h"

/// The strings of a keyword info array. The first three have their PPD hexadecimal substrings decoded; the others are
/// "true" or "false".
enum class KeywordInfo : CFIndex {
    mainKeyword = 0,
    optionKeyword = 1,
    alias = 2,        // the text to show
    installable = 3,  // the library's first flag
    isDefault = 4,
    chosen = 5,  // the library's second flag
};
inline constexpr CFIndex kKeywordInfoCount = 6;

/// A string of an options list's row, lent; null when the list has no such row.
CFStringRef GetKeywordInfo(CFArrayRef options, CFIndex row, KeywordInfo info);

/// Makes the global UI dictionary from an open PPD. 0 when it holds at least one options list, else -1; also -1 when
/// there is one already, which stays.
OSStatus PPDCreateGlobalUIDictionary(PPDContext context);
/// Main keyword to options list (CFArrayRef), lent; null when there is none.
CFDictionaryRef PPDGetGlobalUIDictionary();
void PPDReleaseGlobalUIDictionary();

/// The options list of a main keyword in the global UI dictionary, lent; null when there is none.
CFArrayRef PPDGetGlobalOptions(CFStringRef mainKeyword);

/// The text to show for a ticket value of a main keyword, lent; the constant empty string, not to be released, when the
/// keyword's option map lacks the value or the PPD lacks the option.
CFStringRef GetPPDOptionAliasForTicketValue(CFStringRef mainKeyword, SInt32 value);

/// A new options list of a main keyword, to be released by the caller. -1, with *options untouched, unless the keyword
/// is a pick-one with at least one option.
OSStatus PPDCopyOptionsForMainKeyword(PPDContext context, ConstPPDString mainKeyword, CFMutableArrayRef* options);

/// Appends a keyword info array to the list for each option of the main keyword that can be read, and counts them.
/// Returns the status of finding the main keyword.
OSStatus GetUIListFromPPD(PPDContext context, ConstPPDString mainKeyword, CFMutableArrayRef options, CFIndex* count);

/// A new keyword info array of one option, to be released by the caller. The library's status when it lacks the option.
OSStatus PPDIndexToKeywordInfoArray(PPDContext context, UInt32 mainIndex, UInt32 optionIndex, ConstPPDString alias,
                                    Boolean installable, Boolean chosen, Boolean isDefault, CFArrayRef* info);
