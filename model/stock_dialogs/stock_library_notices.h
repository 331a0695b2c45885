// What the window of the library tells and asks.
#pragma once

#include "model/stock/stock_library.h"

/// The line below the list: how many papers there are and are shown, or what is wrong with the library.
CFRef<CFStringRef> CopyLibraryNote(CFBundleRef bundle, const StockLibrary& library, std::size_t shown);

/// A paper on one line: "Letter, White, Heavyweight Glossy, 250 g/m², Gloss".
CFRef<CFStringRef> CopyPaperWords(CFBundleRef bundle, const Stock& paper);

bool AskToReplacePaper(CFBundleRef bundle, CFStringRef name);
bool AskToDeletePapers(CFBundleRef bundle, const std::vector<const Stock*>& papers);
void TellPapersNotSaved(CFBundleRef bundle, const StockLibraryChange& change);
void TellPapersNotExported(CFBundleRef bundle);
void TellPapersNotImported(CFBundleRef bundle, CFURLRef file, StockLibraryFault fault);
void TellPapersImported(CFBundleRef bundle, std::size_t added, std::size_t given);
