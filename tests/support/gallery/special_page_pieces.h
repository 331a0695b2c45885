// The dialogs that add special pages to those of the job.
#pragma once

#include "tests/support/gallery/pieces.h"

OSStatus runCovers(const PieceRecords& records);
OSStatus runInserts(const PieceRecords& records);
OSStatus runExceptions(const PieceRecords& records);
