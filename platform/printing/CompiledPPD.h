// The compiled-PPD library: the options of a printer's PPD, by index.
//
// Main keywords, option keywords and display texts come as length-prefixed byte strings (first byte the length, at
// most 255 bytes) in the platform's Mac Roman encoding, in which PPD hexadecimal substrings ("<20>") are still to be
// decoded; a literal '<' that would be taken for one arrives as "<3C>". They are lent until the context is closed.
#pragma once

#include "platform/printing/PMTicket.h"

#include <string_view>

using PPDContext = struct OpaquePPDContext*;
using ConstPPDString = const UInt8*;

/// The texts that are shown are in Mac Roman, with hexadecimal substrings to be decoded. One with letters that Mac
/// Roman lacks begins with these bytes, and is in UTF-8.
inline constexpr std::string_view kPPDTextIsUTF8 = "\xEF\xBB\xBF";

inline constexpr OSStatus kPPDNotFound = -9601;  // no such keyword, option or index

/// What a main keyword offers.
inline constexpr UInt32 kPPDUIBoolean = 0;
inline constexpr UInt32 kPPDUIPickOne = 1;
inline constexpr UInt32 kPPDUIPickMany = 2;

struct PPDUIHeader {
    UInt32 mainIndex;
    SInt32 defaultOptionIndex;  // position among the keyword's UI options; -1 when the PPD names none
};

struct PPDUIOption {
    UInt32 optionIndex;
    UInt8 isInstallable;  // 1 for an option of an installable-options group
    UInt8 isChosen;       // 1 for the option that is marked in this context
};

/// Opens the PPD of the printer that a printer info ticket describes (see PMPrinterWriteInfoTicket), its defaults
/// marked. fnfErr when the ticket names none or it cannot be read.
OSStatus ppdOpenCompiledPPDFromTicket(PMTicketRef printerInfo, PPDContext* context);
/// Closes it; null is ignored.
void ppdCloseCompiledPPDFromTicket(PPDContext context);

/// Marks the installed options that the printer info ticket names.
OSStatus setInstallableOptions(PPDContext context, PMTicketRef printerInfo);

/// The number of main keywords with options, those outside any group first; 0 for null.
UInt32 ppdCountUIHeaders(PPDContext context);
OSStatus ppdGetIndUIHeader(PPDContext context, UInt32 headerIndex, PPDUIHeader* header);
OSStatus ppdGetUIHeader(PPDContext context, UInt32 mainIndex, PPDUIHeader* header);

OSStatus ppdGetMainIndex(PPDContext context, ConstPPDString mainKeyword, UInt32* mainIndex);
OSStatus ppdGetMainString(PPDContext context, UInt32 mainIndex, ConstPPDString* mainKeyword);
OSStatus ppdGetUIKeyType(PPDContext context, UInt32 mainIndex, UInt32* type);

UInt32 ppdCountUIOptions(PPDContext context, UInt32 mainIndex);
OSStatus ppdGetIndUIOption(PPDContext context, UInt32 mainIndex, UInt32 index, PPDUIOption* option);
OSStatus ppdGetOptionString(PPDContext context, UInt32 mainIndex, UInt32 optionIndex, ConstPPDString* optionKeyword);
OSStatus ppdGetOptionAlias(PPDContext context, UInt32 mainIndex, UInt32 optionIndex, ConstPPDString* alias);

/// The value of a main keyword without options, such as "Manufacturer", as zero-terminated bytes. kPPDNotFound when
/// the PPD has none; a value that does not fit into bufferSize bytes with its zero is cut.
OSStatus ppdGetInvocationString(PPDContext context, ConstPPDString mainKeyword, char* buffer, UInt32 bufferSize);
