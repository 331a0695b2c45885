// The user's library of paper: stocks that are kept under names of their own, in a file of the user's, and files of
// them that people give each other.
//
// Both are property lists: a dictionary with "Format", "Version" and an array "Papers" of what Stock::asTicket makes.
// A file is replaced as a whole, private to the user. Several programs may change the library at once: a change is made
// to what the file has at that moment.
#pragma once

#include "model/stock/stock.h"

#include <span>
#include <vector>

enum class StockLibraryFault {
    none,
    newer,       // made by a newer version of this program: it can be read as far as we know it, and is not changed
    unreadable,  // damaged: the user's own is kept beside the new one when something is stored
    otherFile,   // no list of papers
    outOfReach,  // cannot be opened
    nameTaken,   // there is a paper of this name
    notWritten,
};

struct StockLibrary {
    std::vector<Stock> papers;  // each with a name, in the order of these
    StockLibraryFault fault = StockLibraryFault::none;
    SInt32 error = 0;  // errno.h, with outOfReach

    [[nodiscard]] bool canBeChanged() const {
        return fault == StockLibraryFault::none || fault == StockLibraryFault::unreadable;
    }
};

/// What the user's file has now; read again only when it has changed. Valid until the next call.
const StockLibrary& UsersStockLibrary();

/// The papers of a file that somebody gave the user.
StockLibrary ReadStockLibrary(CFURLRef file);
/// What the bytes of such a file say.
StockLibrary StockLibraryIn(CFDataRef bytes);

/// Makes the stock the paper, with its name. The size of the job's own stays, which is the page setup's.
void UseNamedStock(const Stock& paper, JobContext context, Stock* stock);

struct StockLibraryChange {
    StockLibraryFault fault = StockLibraryFault::none;
    SInt32 error = 0;  // errno.h, with outOfReach and notWritten
};

/// Stores the paper under its name in the place of the one called `own`, or as a new one when that is null or gone.
/// Another one of its name, in upper or lower case, gives way only if it `mayReplace` it.
StockLibraryChange StoreStock(const Stock& paper, CFStringRef own, bool mayReplace);

StockLibraryChange DeleteStocks(std::span<const Stock* const> papers);

/// Adds papers. One that the library has already is passed over; one of another paper's name gets a number behind it.
/// *added is how many are new.
StockLibraryChange AddStocks(std::span<const Stock> papers, std::size_t* added);

/// The bytes of a file for others; null for papers that no file can hold.
CFRef<CFDataRef> CopyStockLibraryData(std::span<const Stock* const> papers);
/// Writes it.
StockLibraryChange WriteStockLibrary(CFURLRef file, std::span<const Stock* const> papers);

/// A name that the library does not have yet: the one given, or that with a number behind it.
CFRef<CFStringRef> CopyFreeStockName(CFStringRef name);

/// A text as the order of papers and the search for them take it: without case and diacritics.
[[nodiscard]] std::u16string FoldedStockText(CFStringRef text);
