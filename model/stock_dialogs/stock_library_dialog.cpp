#include "model/stock_dialogs/stock_library_dialog.h"

#include "model/stock/stock_columns.h"
#include "model/stock/stock_library.h"
#include "model/stock/stock_search.h"
#include "model/stock/stock_summary.h"
#include "model/stock_dialogs/advanced_stock_selection.h"
#include "model/stock_dialogs/stock_library_notices.h"
#include "model/stock_dialogs/stock_menu.h"
#include "model/stock_dialogs/stock_view.h"
#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/Navigation.h"
#include "ui/control_utilities.h"
#include "ui/dialog_window.h"
#include "ui/help.h"
#include "ui/list_control.h"
#include "ui/localization.h"
#include "ui/message_text.h"
#include "ui/text_input.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

enum ControlNumber : SInt32 {
    kSearch = 23000,
    kList = 23001,
    kIcon = 23002,
    kSummary = 23003,
    kNote = 23004,
    kNew = 23010,
    kEdit = 23011,
    kDuplicate = 23012,
    kDelete = 23013,
    kImport = 23014,
    kExport = 23015,
    kUse = 23016,
};

constexpr OSType kNewCommand = FourCharCode("Nnew");
constexpr OSType kEditCommand = FourCharCode("Nedt");
constexpr OSType kDuplicateCommand = FourCharCode("Ndup");
constexpr OSType kDeleteCommand = FourCharCode("Ndel");
constexpr OSType kImportCommand = FourCharCode("Nimp");
constexpr OSType kExportCommand = FourCharCode("Nexp");

constexpr OSType kCreator = FourCharCode("TPDE");
constexpr OSType kContextTag = FourCharCode("SLib");

constexpr CFIndex kLongestInCell = 160;  // a cell lays out all of its text to draw the part that fits
constexpr SInt32 kLongestSearch = 200;

struct LibraryDialog {
    explicit LibraryDialog(CFBundleRef bundle) : window(bundle) {}

    DialogWindow window;
    SInt16 result = kStockLibraryCancel;
    StockLibrary library;
    std::optional<StockSearch> search;
    std::optional<StockOrder> order;
    Stock shown;  // the selected paper
    bool isFilling = false;
    _StockMenuCommandEventHandlerData data{};
};

// ---- Rows: a paper's is its place, from 1

DataBrowserItemID RowOf(std::size_t place) {
    return place + 1;
}

std::size_t PlaceOf(DataBrowserItemID row) {
    return row - 1;
}

const Stock& PaperOf(const LibraryDialog& dialog, DataBrowserItemID row) {
    return dialog.library.papers[PlaceOf(row)];
}

struct ColumnRow {
    DataBrowserPropertyID property;
    StockColumn column;
};
constexpr std::array kColumns{
    // property, column
    ColumnRow{FourCharCode("NAME"), StockColumn::name},   ColumnRow{FourCharCode("SIZE"), StockColumn::size},
    ColumnRow{FourCharCode("COLR"), StockColumn::color},  ColumnRow{FourCharCode("TYPE"), StockColumn::type},
    ColumnRow{FourCharCode("WGHT"), StockColumn::weight}, ColumnRow{FourCharCode("DESC"), StockColumn::description},
};
static_assert(kColumns.size() == kStockColumns);

std::optional<StockColumn> ColumnOf(DataBrowserPropertyID property) {
    const auto* const row = std::ranges::find(kColumns, property, &ColumnRow::property);
    return row == kColumns.end() ? std::nullopt : std::optional(row->column);
}

std::vector<const Stock*> Selected(const LibraryDialog& dialog) {
    std::vector<const Stock*> papers;
    std::ranges::transform(SelectedRows(dialog.window.control(kList)), std::back_inserter(papers),
                           [&](DataBrowserItemID row) { return &PaperOf(dialog, row); });
    return papers;
}

const Stock* OnlySelected(const LibraryDialog& dialog) {
    const std::vector<const Stock*> papers = Selected(dialog);
    return papers.size() == 1 ? papers.front() : nullptr;
}

LibraryDialog* DialogOf(ControlRef browser) {
    LibraryDialog* dialog = nullptr;
    GetControlProperty(browser, kCreator, kContextTag, sizeof dialog, nullptr, &dialog);
    return dialog;
}

// ---- What the window shows

void Enable(const LibraryDialog& dialog) {
    const bool canBeChanged = dialog.library.canBeChanged();
    const std::size_t count = Selected(dialog).size();
    dialog.window.enable(kNew, canBeChanged);
    dialog.window.enable(kEdit, canBeChanged && count == 1);
    dialog.window.enable(kDuplicate, canBeChanged && count == 1);
    dialog.window.enable(kDelete, canBeChanged && count > 0);
    dialog.window.enable(kImport, canBeChanged);
    dialog.window.enable(kExport, !dialog.library.papers.empty());
    dialog.window.enable(kUse, count == 1);
}

void ShowSelected(LibraryDialog* dialog) {
    const Stock* const paper = OnlySelected(*dialog);
    if (paper != nullptr) {
        dialog->shown = *paper;
    }
    dialog->data.stock = paper != nullptr ? &dialog->shown : nullptr;
    ShowStockSummary(dialog->window.bundle(), dialog->data.summaryView, dialog->data.stock, JobContext::cover);
    Draw1Control(dialog->data.icon);
    Enable(*dialog);
}

void Select(const LibraryDialog& dialog, DataBrowserItemID row) {
    SetDataBrowserSelectedItems(dialog.window.control(kList), 1, &row, kDataBrowserItemsAssign);
    RevealDataBrowserItem(dialog.window.control(kList), row, kDataBrowserItemNoProperty, kDataBrowserRevealOnly);
}

/// Shows the papers that are searched for, and selects the one of that name, else the first.
void Fill(LibraryDialog* dialog, CFStringRef name) {
    const std::vector<std::size_t> found = dialog->search->find(dialog->window.copyText(kSearch).get());
    std::vector<DataBrowserItemID> rows(found.size());
    std::ranges::transform(found, rows.begin(), RowOf);
    dialog->isFilling = true;
    const ControlRef list = dialog->window.control(kList);
    RemoveDataBrowserItems(list, kDataBrowserNoItem, 0, nullptr, kDataBrowserItemNoProperty);
    AddDataBrowserItems(list, kDataBrowserNoItem, rows.size(), rows.data(), kDataBrowserItemNoProperty);
    const auto named = std::ranges::find_if(rows, [&](DataBrowserItemID row) {
        return name != nullptr && CFEqual(PaperOf(*dialog, row).customName(), name);
    });
    if (!rows.empty()) {
        Select(*dialog, named != rows.end() ? *named : rows.front());
    }
    dialog->isFilling = false;
    dialog->window.setText(kNote, CopyLibraryNote(dialog->window.bundle(), dialog->library, rows.size()).get());
    ShowSelected(dialog);
}

void Reload(LibraryDialog* dialog, CFStringRef name) {
    const auto kept = CFRef<CFStringRef>::retain(name);  // it may be that of a paper that goes
    RemoveDataBrowserItems(dialog->window.control(kList), kDataBrowserNoItem, 0, nullptr, kDataBrowserItemNoProperty);
    dialog->search.reset();
    dialog->order.reset();
    dialog->library = UsersStockLibrary();
    dialog->search.emplace(dialog->window.bundle(), dialog->library.papers);
    dialog->order.emplace(dialog->window.bundle(), dialog->library.papers);
    Fill(dialog, kept.get());
}

OSStatus ItemData(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                  DataBrowserItemDataRef itemData, Boolean) {
    const LibraryDialog& dialog = *DialogOf(browser);
    const auto column = ColumnOf(property);
    if (!column) {
        return errDataBrowserPropertyNotSupported;
    }
    const auto text = CopyStockColumn(dialog.window.bundle(), PaperOf(dialog, item), *column);
    return SetDataBrowserItemDataText(itemData, CopyTextForOneLine(text.get(), kLongestInCell).get());
}

Boolean ItemCompare(ControlRef browser, DataBrowserItemID one, DataBrowserItemID two, DataBrowserPropertyID property) {
    const auto column = ColumnOf(property);
    return column && DialogOf(browser)->order->comesBefore(PlaceOf(one), PlaceOf(two), *column) ? 1 : 0;
}

// ---- What the buttons do

/// A name for a paper that was given none: what it is.
CFRef<CFStringRef> CopyGivenName(CFBundleRef bundle, const Stock& paper) {
    const auto words = CopyPaperWords(bundle, paper);
    return CopyTextForOneLine(CFStringGetLength(paper.customName()) > 0 ? paper.customName() : words.get(),
                              kLongestInCell);
}

/// Edits the paper until it is stored or given up. `own` is the name that it is stored under.
void Edit(LibraryDialog* dialog, Stock paper, CFStringRef own) {
    const CFBundleRef bundle = dialog->window.bundle();
    const auto kept = CFRef<CFStringRef>::retain(own);
    for (;;) {
        SInt16 result = kAdvancedStockSelectionCancel;
        RunModalAdvancedStockSelection(bundle, own == nullptr ? DialogMode::add : DialogMode::edit, JobContext::cover,
                                       NamedPaperContext::stockLibrary, &paper, &result);
        if (result != kAdvancedStockSelectionOK) {
            return;
        }
        paper.setCustomName(CopyGivenName(bundle, paper).get());
        StockLibraryChange change = StoreStock(paper, kept.get(), false);
        if (change.fault == StockLibraryFault::nameTaken) {
            if (!AskToReplacePaper(bundle, paper.customName())) {
                continue;
            }
            change = StoreStock(paper, kept.get(), true);
        }
        if (change.fault != StockLibraryFault::none) {
            TellPapersNotSaved(bundle, change);
            continue;
        }
        dialog->window.setText(kSearch, CFSTR(""));
        Reload(dialog, paper.customName());
        return;
    }
}

void EditNew(LibraryDialog* dialog) {
    Stock paper;
    DefaultStock(&paper, JobContext::cover);
    Edit(dialog, paper, nullptr);
}

void Duplicate(LibraryDialog* dialog) {
    if (const Stock* const paper = OnlySelected(*dialog)) {
        Stock copy(*paper);
        const auto pattern = CopyLocalizedText(dialog->window.bundle(), CFSTR("Paper Copy Name"));
        copy.setCustomName(CopyFreeStockName(CopyFilledInMessage(pattern.get(), {paper->customName()}).get()).get());
        Edit(dialog, copy, nullptr);
    }
}

void Delete(LibraryDialog* dialog) {
    const std::vector<const Stock*> papers = Selected(*dialog);
    if (papers.empty() || !AskToDeletePapers(dialog->window.bundle(), papers)) {
        return;
    }
    const StockLibraryChange change = DeleteStocks(papers);
    if (change.fault != StockLibraryFault::none) {
        TellPapersNotSaved(dialog->window.bundle(), change);
    }
    Reload(dialog, nullptr);
}

void Import(LibraryDialog* dialog) {
    const CFBundleRef bundle = dialog->window.bundle();
    const auto title = CopyLocalizedText(bundle, CFSTR("Paper Import Title"));
    const auto kindName = CopyLocalizedText(bundle, CFSTR("Paper File Kind"));
    const NavFileKind kind{kindName.get(), CFSTR("*.tavropapers")};
    CFURLRef chosen = nullptr;
    if (NavChooseFile(title.get(), 1, &kind, &chosen) != noErr) {
        return;
    }
    const auto file = CFRef<CFURLRef>::adopt(chosen);
    const StockLibrary given = ReadStockLibrary(file.get());
    if (given.fault != StockLibraryFault::none) {
        TellPapersNotImported(bundle, file.get(), given.fault);
        return;
    }
    std::size_t added = 0;
    const StockLibraryChange change = AddStocks(given.papers, &added);
    if (change.fault != StockLibraryFault::none) {
        TellPapersNotSaved(bundle, change);
        return;
    }
    Reload(dialog, nullptr);
    TellPapersImported(bundle, added, given.papers.size());
}

/// The selected papers, or all that are searched for.
void Export(LibraryDialog* dialog) {
    const CFBundleRef bundle = dialog->window.bundle();
    std::vector<const Stock*> papers = Selected(*dialog);
    if (papers.size() <= 1) {
        papers.clear();
        for (const std::size_t place : dialog->search->find(dialog->window.copyText(kSearch).get())) {
            papers.push_back(&dialog->library.papers[place]);
        }
    }
    const auto title = CopyLocalizedText(bundle, CFSTR("Paper Export Title"));
    const auto kindName = CopyLocalizedText(bundle, CFSTR("Paper File Kind"));
    const auto name = CopyLocalizedText(bundle, CFSTR("Paper File Name"));
    const NavFileKind kind{kindName.get(), CFSTR("*.tavropapers")};
    CFURLRef chosen = nullptr;
    if (NavChooseNewFile(title.get(), &kind, name.get(), &chosen) != noErr) {
        return;
    }
    const auto file = CFRef<CFURLRef>::adopt(chosen);
    if (WriteStockLibrary(file.get(), papers).fault != StockLibraryFault::none) {
        TellPapersNotExported(bundle);
    }
}

// ---- Events

OSStatus HandleCommand(LibraryDialog* dialog, OSType command) {
    switch (command) {
        case FourCharCode("ok  "):
            if (OnlySelected(*dialog) == nullptr) {
                return noErr;
            }
            dialog->result = kStockLibraryOK;
            return QuitAppModalLoopForWindow(dialog->window.get());
        case FourCharCode("not!"):
            return QuitAppModalLoopForWindow(dialog->window.get());
        case FourCharCode("Thlp"):
            return DisplayHelp(dialog->window.bundle(), nullptr, CFSTR("Mac_topics/MPRDNP_new_edit_named_paper.htm"));
        case kNewCommand:
            EditNew(dialog);
            return noErr;
        case kEditCommand:
            if (const Stock* const paper = OnlySelected(*dialog)) {
                Edit(dialog, *paper, paper->customName());
            }
            return noErr;
        case kDuplicateCommand:
            Duplicate(dialog);
            return noErr;
        case kDeleteCommand:
            Delete(dialog);
            return noErr;
        case kImportCommand:
            Import(dialog);
            return noErr;
        case kExportCommand:
            Export(dialog);
            return noErr;
        default:
            return eventNotHandledErr;
    }
}

OSStatus LibraryEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* dialog = static_cast<LibraryDialog*>(userData);
    if (GetEventClass(event) == kEventClassTextInputChange) {
        Fill(dialog, nullptr);
        return noErr;
    }
    return HandleCommand(dialog, CommandOf(event));
}

OSStatus DeleteOnKey(EventHandlerCallRef, EventRef event, void* userData) {
    auto* dialog = static_cast<LibraryDialog*>(userData);
    if (!IsDeleteKey(event)) {
        return eventNotHandledErr;
    }
    if (dialog->library.canBeChanged()) {
        Delete(dialog);
    }
    return noErr;
}

void ItemNotification(ControlRef browser, DataBrowserItemID, DataBrowserItemNotification message) {
    LibraryDialog* const dialog = DialogOf(browser);
    if (message == kDataBrowserItemDoubleClicked) {
        HandleCommand(dialog, FourCharCode("ok  "));
    } else if (message == kDataBrowserSelectionSetChanged && !dialog->isFilling) {
        ShowSelected(dialog);
    }
}

void InstallList(LibraryDialog* dialog) {
    const ControlRef list = dialog->window.control(kList);
    SetControlProperty(list, kCreator, kContextTag, sizeof dialog, &dialog);
    SetListCallbacks(list, ItemData, ItemNotification, ItemCompare);
    static constexpr EventTypeSpec kKeyDown{kEventClassKeyboard, kEventRawKeyDown};
    InstallControlEventHandler(list, DeleteOnKey, 1, &kKeyDown, dialog, nullptr);
}

OSStatus Initialize(LibraryDialog* dialog, const Stock& stock) {
    const OSStatus status = dialog->window.load(CFSTR("StockLibrary"), CFSTR("StockLibrary"));
    if (status != noErr) {
        return status;
    }
    dialog->data.bundle = dialog->window.bundle();
    dialog->data.context = JobContext::cover;
    dialog->data.summaryView = dialog->window.control(kSummary);
    dialog->data.icon = dialog->window.control(kIcon);
    SetupTextViewControl(dialog->data.summaryView, kUserFontSize);
    LimitInputLengthAndCharacters(dialog->window.control(kSearch), kLongestSearch, nullptr);
    InstallList(dialog);
    dialog->window.handleCommands(LibraryEventHandler, dialog);
    for (const UInt32 kind : {kEventInputIsEmpty, kEventInputHasText}) {
        dialog->window.handle({kEventClassTextInputChange, kind}, LibraryEventHandler, dialog);
    }
    InitializeStockMenuButton(nullptr, &dialog->data);
    Reload(dialog, stock.customName());
    dialog->window.focus(kSearch);
    return noErr;
}

}  // namespace

OSStatus RunModalStockLibrary(CFBundleRef bundle, JobContext context, Stock* stock, SInt16* result) {
    *result = kStockLibraryCancel;
    LibraryDialog dialog(bundle);
    if (const OSStatus status = Initialize(&dialog, *stock); status != noErr) {
        return status;
    }
    RunAppModalLoopForWindow(dialog.window.get());
    *result = dialog.result;
    if (dialog.result == kStockLibraryOK) {
        UseNamedStock(dialog.shown, context, stock);
    }
    return noErr;
}
