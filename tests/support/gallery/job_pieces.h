// The dialogs that set up jobs.
#pragma once

#include "tests/support/gallery/pieces.h"

OSStatus runBookletFinishing(const PieceRecords& records);
OSStatus runDelayedPrint(const PieceRecords& records);
OSStatus runFaxAddressBook(const PieceRecords& records);
OSStatus runFaxCoverSheet(const PieceRecords& records);
OSStatus runLANFax(const PieceRecords& records);
OSStatus runSecurePrint(const PieceRecords& records);
