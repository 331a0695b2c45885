// The dialogs of finishing, with a finisher that can do everything.
#pragma once

#include "tests/support/gallery/pieces.h"

OSStatus runStaplePosition(const PieceRecords& records);
OSStatus runFold(const PieceRecords& records);
OSStatus runMultipleFinishing(const PieceRecords& records);
OSStatus runCustomFinishing(const PieceRecords& records);
OSStatus runOffset(const PieceRecords& records);
OSStatus runSeparators(const PieceRecords& records);
OSStatus runBookletCreation(const PieceRecords& records);
