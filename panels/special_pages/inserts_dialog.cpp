#include "panels/special_pages/inserts_dialog.h"

#include "panels/special_pages/page_field.h"
#include "panels/special_pages/paper_block.h"
#include "panels/special_pages/special_pages_alerts.h"
#include "panels/special_pages/special_pages_descriptions.h"
#include "panels/special_pages/special_pages_list.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Windows.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/panel_operations.h"
#include "ui/spin_control.h"
#include "ui/text_input.h"

#include <cstdint>
#include <iterator>

namespace {

enum ControlNumber : SInt32 {
    kPicture = 3000,
    kPlace = 3001,
    kPagesLabel = 3002,
    kPagesField = 3003,
    kPagesHint = 3004,
    kQuantity = 3010,
    kQuantityField = 3011,
    kPaper = 3020,  // and the two numbers after it
};

/// Values of the radio group.
enum Place : SInt32 { kAfterPages = 1, kBeforePageOne = 2 };

struct InsertsDialog {
    DialogMode mode;
    InsertList* inserts;
    const Insert* edited;
    Stock stock;
    SpecialPagesWindow window;
    PaperBlock paper;
    ControlRef place;
    ControlRef pagesField;
    ControlRef quantity;
    ControlRef okButton;
};

/// OK is for a place that is known, and as many sheets as there may be.
void EnableOK(const InsertsDialog& dialog) {
    const bool hasPlace = GetControl32BitValue(dialog.place) == kBeforePageOne || !IsPageFieldEmpty(dialog.pagesField);
    SetControlEnabled(dialog.okButton, hasPlace && SpinControlIsInputValid(dialog.quantity));
}

void ShowPlace(const InsertsDialog& dialog) {
    const bool afterPages = GetControl32BitValue(dialog.place) == kAfterPages;
    if (!afterPages) {
        SetPageFieldText(dialog.pagesField, CFSTR(""));
    }
    for (const SInt32 number : {kPagesLabel, kPagesField, kPagesHint}) {
        SetControlEnabled(dialog.window.find(number), afterPages);
    }
    EnableOK(dialog);
}

void ShowInsert(InsertsDialog* dialog, const Insert& insert) {
    dialog->stock = insert.stock();
    dialog->paper.show(&dialog->stock);
    ShowSpinControlInput(dialog->quantity, insert.quantity());
}

void DefaultInserts(InsertsDialog* dialog) {
    Insert insert;
    DefaultStock(&insert.stock(), JobContext::insert);
    ShowInsert(dialog, insert);
    SetControl32BitValue(dialog->place, kAfterPages);
    SetPageFieldText(dialog->pagesField, CFSTR(""));
    ShowPlace(*dialog);
}

void ShowEdited(InsertsDialog* dialog) {
    ShowInsert(dialog, *dialog->edited);
    const bool beforePageOne = dialog->edited->startPage() <= 0;
    SetControl32BitValue(dialog->place, beforePageOne ? kBeforePageOne : kAfterPages);
    SetPageFieldText(dialog->pagesField, CreatePageNumberDescription(dialog->edited->startPage()).get());
    ShowPlace(*dialog);
}

/// The pages after which the sheets go. False, after a notice, when that cannot be.
bool GetPages(const InsertsDialog& dialog, std::vector<PageRange>* pages) {
    if (GetControl32BitValue(dialog.place) == kBeforePageOne) {
        *pages = {{0, 1}};
        return true;
    }
    const CFBundleRef bundle = dialog.window.bundle();
    std::vector<PageRange> ranges;
    if (const OSStatus status = GetPageFieldRanges(dialog.pagesField, &ranges); status != noErr) {
        SpecialPagesUserNotification(bundle, status);
        return false;
    }
    std::int64_t count = 0;
    for (const PageRange& range : ranges) {
        count += range.count;
    }
    if (count > kMostInsertsAtOnce) {
        TellSpecialPagesLimit(bundle, CFSTR("Too Many Inserts Title"), CFSTR("Too Many Inserts Message"),
                              kMostInsertsAtOnce);
        return false;
    }
    return GetPageFieldPages(dialog.pagesField, pages) == noErr;
}

OSStatus Accept(InsertsDialog* dialog) {
    if (!SpinControlIsInputValid(dialog->quantity)) {
        return SetKeyboardFocus(dialog->window.get(), dialog->window.find(kQuantityField));
    }
    std::vector<PageRange> pages;
    if (!GetPages(*dialog, &pages)) {
        return noErr;
    }
    SpecialPages made;
    made.reserve(pages.size());
    for (const PageRange& page : pages) {
        auto insert = std::make_unique<Insert>();
        insert->setStartPage(page.first);
        insert->setQuantity(GetControl32BitValue(dialog->quantity));
        insert->stock() = dialog->stock;
        made.push_back(std::move(insert));
    }
    if (dialog->mode == DialogMode::edit) {
        dialog->inserts->update(dialog->edited, made);
    } else {
        dialog->inserts->add(made);
    }
    UpdateSpecialPagesSummary();
    return dialog->window.end(kSpecialPagesOK);
}

OSStatus InsertsDialogEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* dialog = static_cast<InsertsDialog*>(userData);
    switch (GetEventCommand(event).commandID) {
        case FourCharCode("Iopt"):
            ShowPlace(*dialog);
            return noErr;
        case FourCharCode("ok  "):
            return Accept(dialog);
        case FourCharCode("not!"):
            return dialog->window.end(kSpecialPagesCancel);
        case FourCharCode("rvrt"):
            DefaultInserts(dialog);
            return noErr;
        case FourCharCode("Thlp"):
            return DisplayHelp(dialog->window.bundle(), nullptr, CFSTR("Mac_topics/m_add_inserts_page.htm"));
        default:
            return eventNotHandledErr;
    }
}

OSStatus DrawBlankSheet(EventHandlerCallRef, EventRef event, void*) {
    DrawImage(CFSTR("Blank.gif"), GetEventControl(event), false);
    return eventNotHandledErr;
}

OSStatus PageTextHandler(EventHandlerCallRef, EventRef, void* userData) {
    EnableOK(*static_cast<const InsertsDialog*>(userData));
    return noErr;
}

OSStatus InitializeInsertsDialog(InsertsDialog* dialog, CFBundleRef bundle) {
    SpecialPagesWindow& window = dialog->window;
    OSStatus status = window.load(bundle, CFSTR("Inserts"), InsertsDialogEventHandler, dialog);
    if (status != noErr) {
        return status;
    }
    window.drawPictures({kPicture}, DrawBlankSheet, nullptr);
    const bool isEdit = dialog->mode == DialogMode::edit;
    SetLocalizedWindowTitle(bundle, isEdit ? CFSTR("InsertsDialogTitleEdit") : CFSTR("InsertsDialogTitleAdd"),
                            window.get());
    dialog->place = window.find(kPlace);
    dialog->pagesField = window.find(kPagesField);
    dialog->quantity = window.find(kQuantity);
    GetWindowDefaultButton(window.get(), &dialog->okButton);
    const SInt32 field = kQuantityField;
    const SInt32 arrows = kQuantity;
    SetControlProperty(dialog->quantity, kSpinControlCreator, kSpinControlFieldTag, sizeof field, &field);
    SetControlProperty(window.find(field), kSpinControlCreator, kSpinControlArrowsTag, sizeof arrows, &arrows);
    CreateSpinControl(dialog->quantity);
    PreparePageField(dialog->pagesField, bundle);
    static constexpr EventTypeSpec kTextChanges[] = {{kEventClassTextInputChange, kEventInputHasText},
                                                     {kEventClassTextInputChange, kEventInputIsEmpty}};
    InstallWindowEventHandler(window.get(), PageTextHandler, std::size(kTextChanges), kTextChanges, dialog, nullptr);
    status = dialog->paper.install(window, kPaper, dialog->mode, JobContext::insert);
    if (status != noErr) {
        return status;
    }
    if (isEdit) {
        ShowEdited(dialog);
    } else {
        DefaultInserts(dialog);
    }
    return noErr;
}

}  // namespace

OSStatus RunModalInsertsDialog(CFBundleRef bundle, DialogMode mode, const Stock*, InsertList* inserts,
                               const Insert* edited, SInt16* result) {
    *result = kSpecialPagesCancel;
    if (mode == DialogMode::edit && edited == nullptr) {
        return paramErr;
    }
    InsertsDialog dialog{.mode = mode, .inserts = inserts, .edited = edited};
    const OSStatus status = InitializeInsertsDialog(&dialog, bundle);
    if (status == noErr) {
        *result = dialog.window.run();
    }
    return status;
}
