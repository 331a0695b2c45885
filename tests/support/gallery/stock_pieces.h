// The dialogs that edit paper. They work on the job's stock, "com.tavro.print.JobLevelStock"; the tab shift, which has
// no place in a job's tickets outside of its exceptions, has one of the gallery's own.
#pragma once

#include "tests/support/gallery/pieces.h"

OSStatus runStockSelection(const PieceRecords& records);          // the job's paper
OSStatus runPageStockSelection(const PieceRecords& records);      // an insert's paper: it has a size
OSStatus runStockLibrarySelection(const PieceRecords& records);   // a named paper
OSStatus runDetailedStockSelection(const PieceRecords& records);  // these three as on a production printer
OSStatus runDetailedLibrarySelection(const PieceRecords& records);
OSStatus runStockLibrary(const PieceRecords& records);
OSStatus runCustomStockSize(const PieceRecords& records);
OSStatus runStockDescription(const PieceRecords& records);
OSStatus runTabStockSetup(const PieceRecords& records);
OSStatus runTabStockSetupWithModulus(const PieceRecords& records);
