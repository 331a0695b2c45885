#include "panels/special_pages/covers_dialog.h"

#include "model/settings/setting_map.h"
#include "panels/special_pages/cover_choice.h"
#include "panels/special_pages/paper_block.h"
#include "panels/special_pages/special_pages_list.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Menus.h"
#include "ui/draw_image.h"
#include "ui/help.h"
#include "ui/localization.h"
#include "ui/panel_operations.h"
#include "ui/setting_menus.h"

namespace {

enum ControlNumber : SInt32 {
    kOption = 2000,
    kOptionPicture = 2001,
    kFront = 2100,
    kBack = 2200,
};
/// Controls of a cover, from its own number on.
constexpr SInt32 kPrinting = 1;
constexpr SInt32 kPrintingPicture = 2;
constexpr SInt32 kPaper = 10;  // and the two numbers after it

/// A cover and its controls.
struct CoverSide {
    std::unique_ptr<Cover> cover;
    ControlRef group;
    ControlRef printing;
    ControlRef printingPicture;
};

struct CoversDialog {
    const Stock* jobStock;
    CoverOption option;
    CoverSide front;
    CoverSide back;
    SpecialPagesWindow window;
    PaperBlock frontPaper;
    PaperBlock backPaper;
    ControlRef optionPopup;
};

std::unique_ptr<Cover> Copy(const Cover* cover) {
    return cover != nullptr ? std::make_unique<Cover>(*cover) : nullptr;
}

Stock* StockOf(const CoverSide& side) {
    return side.cover ? &side.cover->stock() : nullptr;
}

/// The options of the map, and behind them the one that only settings can ask for, while it lasts.
void ShowOption(const CoversDialog& dialog) {
    const CFBundleRef bundle = dialog.window.bundle();
    PopulatePopupButtonFromMap(bundle, dialog.optionPopup, CoverOptionMap, JobContext::cover, 0);
    if (HasOwnBackCover(dialog.option)) {
        const CFStringRef key =
            dialog.option == kCoversBackOnly ? CFSTR("Back Cover Only") : CFSTR("Different Front and Back Covers");
        const MenuRef menu = GetControlPopupMenuHandle(dialog.optionPopup);
        MenuItemIndex item = 0;
        AppendMenuItemTextWithCFString(menu, CopyLocalizedText(bundle, key).get(), 0, 0, &item);
        SetMenuItemRefCon(menu, item, dialog.option);
    }
    SetPopupButtonToTicketValue(dialog.optionPopup, dialog.option);
    Draw1Control(dialog.window.find(kOptionPicture));
}

/// Sides that have no item show as none of the items.
void ShowCover(const CoverSide& side, bool canBeChanged) {
    SetControlEnabled(side.group, canBeChanged);
    SetControl32BitValue(side.printing, side.cover ? 0 : 1);
    if (side.cover) {
        SetPopupButtonToTicketValue(side.printing, side.cover->sidesImaged());
    }
    Draw1Control(side.printingPicture);
}

void ShowCovers(CoversDialog* dialog) {
    dialog->frontPaper.show(StockOf(dialog->front));
    dialog->backPaper.show(StockOf(dialog->back));
    dialog->frontPaper.enableSizes(!dialog->front.cover || !IsPrinted(*dialog->front.cover));
    ShowCover(dialog->front, dialog->front.cover != nullptr);
    ShowCover(dialog->back, HasOwnBackCover(dialog->option));
}

void ChooseOption(CoversDialog* dialog, CoverOption option) {
    // No control may point at a cover that goes.
    dialog->frontPaper.show(nullptr);
    dialog->backPaper.show(nullptr);
    dialog->option = option;
    ApplyCoverOption(option, &dialog->front.cover, &dialog->back.cover);
    ShowOption(*dialog);
    ShowCovers(dialog);
}

/// What follows from a change of the front cover.
void FrontCoverChanged(CoversDialog* dialog) {
    if (dialog->front.cover && IsPrinted(*dialog->front.cover)) {
        TakeJobSize(dialog->front.cover.get(), dialog->jobStock);
    }
    if (dialog->option == kCoversSame) {
        *dialog->back.cover = *dialog->front.cover;
    }
    ShowCovers(dialog);
}

void ChoosePrinting(CoversDialog* dialog, const CoverSide& side) {
    if (side.cover) {
        side.cover->setSidesImaged(GetPopupButtonTicketValue(side.printing));
        FrontCoverChanged(dialog);
    }
}

OSStatus CoversDialogEventHandler(EventHandlerCallRef, EventRef event, void* userData) {
    auto* dialog = static_cast<CoversDialog*>(userData);
    switch (GetEventCommand(event).commandID) {
        case FourCharCode("Copt"):
            ChooseOption(dialog, static_cast<CoverOption>(GetPopupButtonTicketValue(dialog->optionPopup)));
            return noErr;
        case FourCharCode("Cfpo"):
            ChoosePrinting(dialog, dialog->front);
            return noErr;
        case FourCharCode("Cbpo"):
            ChoosePrinting(dialog, dialog->back);
            return noErr;
        case kStockCommandDefault:
        case kStockCommandSize:
        case kStockCommandColor:
        case kStockCommandType:
        case kStockCommandAdvanced:
        case kStockCommandNamed:
            FrontCoverChanged(dialog);
            return eventNotHandledErr;
        case FourCharCode("ok  "):
            return dialog->window.end(kSpecialPagesOK);
        case FourCharCode("not!"):
            return dialog->window.end(kSpecialPagesCancel);
        case FourCharCode("rvrt"):
            ChooseOption(dialog, kCoversNone);
            return noErr;
        case FourCharCode("Thlp"):
            return DisplayHelp(dialog->window.bundle(), nullptr, CFSTR("Mac_topics/m_add_covers_page.htm"));
        default:
            return eventNotHandledErr;
    }
}

void DrawPrinting(const CoverSide& side) {
    if (side.cover) {
        const auto [paper, print] = PicturesOfCoverSides(side.cover->sidesImaged());
        DrawImage(paper, side.printingPicture, false);
        DrawImage(print, side.printingPicture, true);
    }
}

OSStatus DrawPictures(EventHandlerCallRef, EventRef event, void* userData) {
    const auto& dialog = *static_cast<const CoversDialog*>(userData);
    const ControlRef control = GetEventControl(event);
    switch (GetSpecialPagesControlNumber(control)) {
        case kOptionPicture:
            DrawImage(CoverOptionPicture(dialog.option), control, false);
            break;
        case kFront + kPrintingPicture:
            DrawPrinting(dialog.front);
            break;
        case kBack + kPrintingPicture:
            DrawPrinting(dialog.back);
            break;
        default:
            break;
    }
    return eventNotHandledErr;
}

void FindControls(const SpecialPagesWindow& window, SInt32 number, CoverSide* side) {
    side->group = window.find(number);
    side->printing = window.find(number + kPrinting);
    side->printingPicture = window.find(number + kPrintingPicture);
    PopulatePopupButtonFromMap(window.bundle(), side->printing, CoverSidesImagedMap, JobContext::cover, 0);
}

OSStatus InitializeCoversDialog(CoversDialog* dialog, CFBundleRef bundle, DialogMode mode) {
    SpecialPagesWindow& window = dialog->window;
    OSStatus status = window.load(bundle, CFSTR("Office Covers"), CoversDialogEventHandler, dialog);
    if (status != noErr) {
        return status;
    }
    window.drawPictures({kOptionPicture, kFront + kPrintingPicture, kBack + kPrintingPicture}, DrawPictures, dialog);
    if (mode == DialogMode::edit) {
        SetLocalizedWindowTitle(bundle, CFSTR("Covers Dialog Title Edit"), window.get());
    }
    dialog->optionPopup = window.find(kOption);
    FindControls(window, kFront, &dialog->front);
    FindControls(window, kBack, &dialog->back);
    status = dialog->frontPaper.install(window, kFront + kPaper, mode, JobContext::cover);
    if (status == noErr) {
        status = dialog->backPaper.install(window, kBack + kPaper, mode, JobContext::cover);
    }
    ShowOption(*dialog);
    ShowCovers(dialog);
    return status;
}

}  // namespace

OSStatus RunModalCoversDialog(CFBundleRef bundle, DialogMode mode, const Stock* jobStock,
                              std::unique_ptr<Cover>* frontCover, std::unique_ptr<Cover>* backCover, SInt16* result) {
    *result = kSpecialPagesCancel;
    CoversDialog dialog{.jobStock = jobStock, .option = CoverOptionOf(frontCover->get(), backCover->get())};
    dialog.front.cover = Copy(frontCover->get());
    dialog.back.cover = Copy(backCover->get());
    if (const OSStatus status = InitializeCoversDialog(&dialog, bundle, mode); status != noErr) {
        return status;
    }
    *result = dialog.window.run();
    if (*result == kSpecialPagesOK) {
        // The rows of the old covers go before anything can ask for them.
        std::swap(*frontCover, dialog.front.cover);
        std::swap(*backCover, dialog.back.cover);
        UpdateSpecialPagesSummary();
    }
    return noErr;
}
