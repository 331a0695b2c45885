#include "tests/support/gallery/stock_pieces.h"

#include "model/settings/plugin_state.h"
#include "model/stock_dialogs/advanced_stock_selection.h"
#include "model/stock_dialogs/custom_stock_size.h"
#include "model/stock_dialogs/stock_description.h"
#include "model/stock_dialogs/stock_library_dialog.h"
#include "model/stock_dialogs/tab_stock_setup.h"

namespace {

#define kStockKey CFSTR("com.tavro.print.JobLevelStock")
#define kTabShiftKey CFSTR("com.tavro.gallery.TabShift")

CFDictionaryRef dictionaryOf(PMTicketRef ticket, CFStringRef key) {
    CFDictionaryRef dictionary = nullptr;
    PMTicketGetCFDictionary(ticket, kPMTopLevel, kPMTopLevel, key, &dictionary);
    return dictionary;
}

/// Runs a dialog on the stock in the ticket, or on the default one.
template <typename Run>
OSStatus runOnStock(const PieceRecords& records, JobContext context, Run run) {
    Stock stock;
    DefaultStock(&stock, context);
    if (const CFDictionaryRef stored = dictionaryOf(records.ticket, kStockKey)) {
        stock = StockOfTicket(stored);
    }
    SInt16 result = 0;
    const OSStatus status = run(stock, result);
    PMTicketSetCFDictionary(records.ticket, kTicketCreator, kStockKey, stock.asTicket().get(), kPMUnlocked);
    return status;
}

/// Has dialogs look as on a production printer.
struct DetailsShown {
    DetailsShown() { SetShowsStockDetails(true); }
    ~DetailsShown() { SetShowsStockDetails(false); }
    DetailsShown(const DetailsShown&) = delete;
    DetailsShown& operator=(const DetailsShown&) = delete;
};

OSStatus runSelection(const PieceRecords& records, JobContext context, NamedPaperContext namedPaper) {
    return runOnStock(records, context, [&](Stock& stock, SInt16& result) {
        return RunModalAdvancedStockSelection(records.bundle, DialogMode::edit, context, namedPaper, &stock, &result);
    });
}

}  // namespace

OSStatus runStockSelection(const PieceRecords& records) {
    return runSelection(records, JobContext::job, NamedPaperContext::office);
}

OSStatus runPageStockSelection(const PieceRecords& records) {
    return runSelection(records, JobContext::insert, NamedPaperContext::office);
}

OSStatus runStockLibrarySelection(const PieceRecords& records) {
    return runSelection(records, JobContext::cover, NamedPaperContext::stockLibrary);
}

OSStatus runDetailedStockSelection(const PieceRecords& records) {
    const DetailsShown details;
    return runSelection(records, JobContext::cover, NamedPaperContext::office);
}

OSStatus runDetailedLibrarySelection(const PieceRecords& records) {
    const DetailsShown details;
    return runSelection(records, JobContext::cover, NamedPaperContext::stockLibrary);
}

OSStatus runStockLibrary(const PieceRecords& records) {
    const DetailsShown details;
    return runOnStock(records, JobContext::cover, [&](Stock& stock, SInt16& result) {
        return RunModalStockLibrary(records.bundle, JobContext::cover, &stock, &result);
    });
}

OSStatus runCustomStockSize(const PieceRecords& records) {
    return runOnStock(records, JobContext::job, [&](Stock& stock, SInt16& result) {
        SInt32 width = stock.width();
        SInt32 length = stock.length();
        const OSStatus status = RunModalCustomStockSizeDialog(records.bundle, &result, &width, &length);
        if (result == kCustomStockSizeOK) {
            stock.setWidth(width);
            stock.setLength(length);
        }
        return status;
    });
}

OSStatus runStockDescription(const PieceRecords& records) {
    return runOnStock(records, JobContext::job, [&](Stock& stock, SInt16& result) {
        return RunModalStockDescriptionSetup(records.bundle, DialogMode::edit, JobContext::job, &stock, &result);
    });
}

namespace {

OSStatus runTabStockSetup(const PieceRecords& records, SInt32 modulus) {
    _IS_Options options{};
    ImageShiftInitialize(records.bundle, nullptr, &options);
    if (const CFDictionaryRef stored = dictionaryOf(records.ticket, kTabShiftKey)) {
        ImageShiftSetOptionsFromTicket(&options, stored);
    }
    Stock stock;
    stock.setType(kStockTypeTabStock);
    stock.setModulus(modulus);
    SInt16 result = 0;
    const OSStatus status = RunModalTabStockSetupDialog(records.bundle, &stock, &options, &result);
    if (const auto shift = ImageShiftCreateTicketFromOptions(&options, JobContext::exception)) {
        PMTicketSetCFDictionary(records.ticket, kTicketCreator, kTabShiftKey, shift.get(), kPMUnlocked);
    } else {
        PMTicketReleaseItem(records.ticket, kPMTopLevel, kTabShiftKey);
    }
    return status;
}

}  // namespace

OSStatus runTabStockSetup(const PieceRecords& records) {
    return runTabStockSetup(records, kTicketValueUnset);
}

OSStatus runTabStockSetupWithModulus(const PieceRecords& records) {
    return runTabStockSetup(records, 5);
}
