#include "tests/support/gallery/special_page_pieces.h"

#include "panels/special_pages/covers_dialog.h"
#include "panels/special_pages/exceptions_dialog.h"
#include "panels/special_pages/inserts_dialog.h"
#include "panels/special_pages/special_pages_sync.h"

namespace {

/// Runs a dialog on the ticket's special pages.
template <typename Run>
OSStatus runOnSpecialPages(const PieceRecords& records, Run run) {
    SpecialPageRecords pages;
    ReadSpecialPages(records.ticket, &pages);
    SInt16 result = 0;
    const OSStatus status = run(&pages, &result);
    WriteSpecialPages(&pages, records.ticket);
    return status;
}

}  // namespace

OSStatus runCovers(const PieceRecords& records) {
    return runOnSpecialPages(records, [&](SpecialPageRecords* pages, SInt16* result) {
        return RunModalCoversDialog(records.bundle, DialogMode::add, pages->jobStock.get(), &pages->frontCover,
                                    &pages->backCover, result);
    });
}

OSStatus runInserts(const PieceRecords& records) {
    return runOnSpecialPages(records, [&](SpecialPageRecords* pages, SInt16* result) {
        return RunModalInsertsDialog(records.bundle, DialogMode::add, pages->jobStock.get(), &pages->inserts, nullptr,
                                     result);
    });
}

OSStatus runExceptions(const PieceRecords& records) {
    return runOnSpecialPages(records, [&](SpecialPageRecords* pages, SInt16* result) {
        return RunModalExceptionsDialog(records.bundle, DialogMode::add, pages->jobStock.get(), &pages->exceptions,
                                        nullptr, result);
    });
}
