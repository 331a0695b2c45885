// Taking over an address book that another program has exported.
#pragma once

#include "platform/contacts/AddressBook.h"

/// A larger file is refused: 64 MiB.
inline constexpr CFIndex kABMaximumImportBytes = CFIndex{64} * 1024 * 1024;
/// No more problems than this are told.
inline constexpr CFIndex kABMaximumImportProblems = 1000;

enum ABImportError : SInt32 {
    kABImportNoError = 0,
    kABImportCannotRead = 1,  // the file cannot be read
    kABImportTooLarge = 2,    // it is larger than kABMaximumImportBytes
    kABImportNoVCard = 3,     // there is no vCard in it
    kABImportNotSaved = 4,    // the address book cannot be read or written
};

// What is told of a part that could not be read.
#define kABImportProblemLine CFSTR("Line")      // number: the line where it begins, counted from 1
#define kABImportProblemReason CFSTR("Reason")  // number: one of the reasons below

enum ABImportReason : CFIndex {
    kABImportTextOutside = 1,    // text that is in no card
    kABImportNoEnd = 2,          // a card that has no end
    kABImportZeroByte = 3,       // a card with a zero byte, which no text has
    kABImportNothingInside = 4,  // a card without name, organization, number and address
};

/// Adds the people and groups of a vCard file to the address book in one save. Versions 2.1 (with quoted-printable,
/// base 64 and other character sets), 3.0 and 4.0 are read, in UTF-8 or UTF-16, several cards in a file.
///
/// Nothing that the address book has is changed: a card that it has already is not added again, and one whose unique id
/// is that of another card there gets a new one, which the file's groups follow.
///
/// Returns how many cards were read (0 when the file has none that can be read), and in *problems (which may be null) a
/// new array of dictionaries, one for each part that could not be read; the caller releases it. On failure -1, with the
/// reason in *error (which may be null), a null array, and one line on standard error that names the file; the address
/// book is then unchanged.
CFIndex ABImportVCardFile(ABAddressBookRef book, CFURLRef file, CFArrayRef* problems, ABImportError* error);
